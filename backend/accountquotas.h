// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <groupdata.h>
#include <quotakind.h>
#include <userdata.h>

#include <QCoreApplication>
#include <QString>

#include <memory>
#include <vector>

class AccountTable;
class DeviceTable;
class KindReader;
class Reporter;
struct AccountDevice;

/// Reads the quotas of accounts: which accounts there are, and on which devices they are read.
/// Belongs to the thread of what it is made with.
class AccountQuotas
{
    Q_DECLARE_TR_FUNCTIONS(AccountQuotas)

public:
    using Accounts = std::vector<std::unique_ptr<AbstractElementData>>;

    /// What it is made with is not owned and must live longer.
    AccountQuotas(DeviceTable &devices, KindReader &kinds, AccountTable &accounts, Reporter &reporter);

    /// See QuotaManager for these.
    UserData readUser(const QString &name);
    GroupData readGroup(const QString &name);
    Accounts readAllUsers();
    Accounts readAllGroups();

private:
    std::vector<AccountDevice> knownDevices(QuotaKind kind);
    AccountDevice knownDevice(const QString &device, QuotaKind kind);
    template<typename Record>
    Record readOne(const QString &name, QuotaKind kind);
    template<typename Record>
    Accounts readAll(QuotaKind kind);

    DeviceTable &_devices;
    KindReader &_kinds;
    AccountTable &_accounts;
    Reporter &_reporter;
};
