// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "kernelquota.h"
#include "quotactl.h"

#include <quotakind.h>

#include <QByteArray>
#include <QMap>
#include <QObject>
#include <QString>
#include <QStringList>

#include <vector>

/// What a read of accounts knows of one device before it asks for the first account.
struct AccountDevice
{
    DeviceQuota facts;    ///< everything that is alike for all accounts; nothing of an account
    QStringList failures; ///< what was reported of the device so far
    QByteArray path;      ///< of the device, as the kernel is asked for it
};

/// Asks the kernel for the quotas of any number of accounts, one question for each account and device.
/// Belongs to one thread.
class AccountReader : public QObject
{
    Q_OBJECT

public:
    AccountReader(QuotaKind kind, std::vector<AccountDevice> devices, QObject *parent = nullptr);

    /// One account's quota on every device. The devices on which the kind is off are asked nothing; one whose question
    /// failed is left out, so that nobody takes the limits that are not known for none.
    QMap<QString, DeviceQuota> read(qint32 id);

Q_SIGNALS:
    /// Of one device each text comes once, however many accounts it is true for.
    void error(const QString &message);

private:
    void fail(int errorNumber);

    const QuotaKind _kind;
    std::vector<AccountDevice> _devices;
    AccountDevice *_asked = nullptr; // the device that the kernel is being asked about
    bool _failed = false;            // the question that was asked last
    QuotaCtl _kernel;
    MemorySizes _sizes;
};
