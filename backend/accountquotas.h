// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <groupdata.h>
#include <quotakind.h>
#include <userdata.h>

#include <QObject>
#include <QString>

#include <memory>
#include <vector>

class AccountReader;
class AccountTable;
class DeviceTable;
class KindReader;
class QuotaSwitch;
struct AccountDevice;

/// The quotas of accounts: which accounts there are, on which devices they are read, and what writing one takes.
/// Belongs to the thread of what it is made with.
class AccountQuotas : public QObject
{
    Q_OBJECT

public:
    using Accounts = std::vector<std::unique_ptr<AbstractElementData>>;

    /// What it is made with is not owned and must live longer.
    AccountQuotas(DeviceTable &devices, KindReader &kinds, AccountTable &accounts, QuotaSwitch &quotaSwitch,
                  QObject *parent = nullptr);

    /// See QuotaManager for these.
    UserData readUser(const QString &name);
    GroupData readGroup(const QString &name);
    Accounts readAllUsers();
    Accounts readAllGroups();
    bool write(const AbstractElementData &account, QuotaKind kind);

Q_SIGNALS:
    void error(const QString &message);
    void detail(const QString &text);

private:
    qint32 idOf(const QString &name, QuotaKind kind);
    std::vector<AccountDevice> knownDevices(QuotaKind kind);
    void read(AbstractElementData &account, const QString &name, QuotaKind kind, AccountReader &reader);
    template<typename Record>
    Record readOne(const QString &name, QuotaKind kind);
    template<typename Record>
    Accounts readAll(const QStringList &names, QuotaKind kind);
    bool writeOn(const QString &device, qint32 id, const DeviceQuota &quota, QuotaKind kind);
    bool switchOn(const QString &device, QuotaKind kind);

    DeviceTable &_devices;
    KindReader &_kinds;
    AccountTable &_accounts;
    QuotaSwitch &_switch;
};
