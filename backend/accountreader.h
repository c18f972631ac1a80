// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "kernelquota.h"
#include "localtimes.h"
#include "mounteddevice.h"
#include "quotactl.h"

#include <abstractelementdata.h>
#include <quotakind.h>

#include <QString>
#include <QStringList>

#include <vector>

class KindReader;
class Reporter;

/// What a read of accounts knows of one device before it asks for the first account.
struct AccountDevice
{
    explicit AccountDevice(MountedDevice device)
        : asked(std::move(device))
    {}

    DeviceQuota facts;    ///< everything that is alike for all accounts; nothing of an account
    QString failure;      ///< why it is not known whether the kind is on; empty where it is
    QStringList reported; ///< the errors of the device so far
    MountedDevice asked;  ///< as the kernel is asked for it
    bool areGracesAsked = false;
};

/// Asks the kernel for the quotas of any number of accounts: one question for each account and device, and one for the
/// grace periods of each device. Belongs to one thread.
class AccountReader
{
public:
    /// `kinds` and `reporter` are not owned and must live longer. Of one device each error comes once, however many
    /// accounts it is true for.
    AccountReader(QuotaKind kind, std::vector<AccountDevice> devices, KindReader &kinds, Reporter &reporter);

    /// Sets the account's quota on every device, by the record's id. The devices on which the kind is off are asked
    /// nothing; one whose question failed is left out, so that nobody takes the limits that are not known for none.
    void read(AbstractElementData &account);
    /// Sets that there is no quota of the account on any device, and why.
    void leaveOut(AbstractElementData &account, const QString &reason) const;

private:
    void read(AccountDevice &device, AbstractElementData &account);
    void askGraces(AccountDevice &device);

    const QuotaKind _kind;
    std::vector<AccountDevice> _devices;
    KindReader &_kinds;
    Reporter &_reporter;
    int _errorNumber = 0; // of the question that was asked last
    QuotaCtl _kernel;
    MemorySizes _sizes;
    LocalTimes _times;
};
