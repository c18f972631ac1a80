// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <abstractelementdata.h>
#include <quotakind.h>

#include <QCoreApplication>
#include <QString>

#include <optional>

#include <sys/quota.h>

class AccountTable;
class KindReader;
class QuotaSwitch;
class Reporter;

/// Writes the limits of accounts. Belongs to the thread of what it is made with.
class LimitsWriter
{
    Q_DECLARE_TR_FUNCTIONS(LimitsWriter)

public:
    /// What it is made with is not owned and must live longer.
    LimitsWriter(KindReader &kinds, AccountTable &accounts, QuotaSwitch &quotaSwitch, Reporter &reporter);

    /// See QuotaManager::writeQuotas().
    bool write(const AbstractElementData &record, QuotaKind kind);

private:
    /// Whose limits are written.
    struct Account
    {
        const QString &name;
        qint32 id;
        QuotaKind kind;
    };

    bool isKnown(const Account &account);
    bool writeWhole(const QString &device, const Account &account, const DeviceQuota &quota);
    bool writeEdited(const QString &device, const Account &account, const DeviceQuota &quota,
                     const DeviceQuota &asRead);
    bool mergeInto(dqblk &now, const dqblk &wanted, const dqblk &read, const QString &device, const Account &account,
                   bool isNewlyOn);
    bool switchOn(const QString &device, QuotaKind kind);
    std::optional<dqblk> ask(const QString &device, const Account &account);
    bool set(const QString &device, const Account &account, const dqblk &record);

    KindReader &_kinds;
    AccountTable &_accounts;
    QuotaSwitch &_switch;
    Reporter &_reporter;
};
