// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "accountquotas.h"

#include "accountreader.h"
#include "accounttable.h"
#include "devicetable.h"
#include "kindreader.h"
#include "reporter.h"
#include "systemnames.h"

#include <silentsource.h>

namespace
{

/// In a long read, after how many accounts it says how far it has come and asks whether to go on.
constexpr std::size_t ProgressStep = 250;

} // namespace

AccountQuotas::AccountQuotas(DeviceTable &devices, KindReader &kinds, AccountTable &accounts, Reporter &reporter)
    : _devices(devices)
    , _kinds(kinds)
    , _accounts(accounts)
    , _reporter(reporter)
{}

UserData AccountQuotas::readUser(const QString &name)
{
    return readOne<UserData>(name, UserQuota);
}

GroupData AccountQuotas::readGroup(const QString &name)
{
    return readOne<GroupData>(name, GroupQuota);
}

AccountQuotas::Accounts AccountQuotas::readAllUsers()
{
    return readAll<UserData>(UserQuota);
}

AccountQuotas::Accounts AccountQuotas::readAllGroups()
{
    return readAll<GroupData>(GroupQuota);
}

/// A device that is listed twice counts once.
std::vector<AccountDevice> AccountQuotas::knownDevices(QuotaKind kind)
{
    QStringList devices = _devices.quotaDevices();
    devices.removeDuplicates();
    std::vector<AccountDevice> known;
    for (const QString &device : qAsConst(devices))
        known.push_back(knownDevice(device, kind));
    return known;
}

/// What has to be known of a device before its accounts are read.
AccountDevice AccountQuotas::knownDevice(const QString &device, QuotaKind kind)
{
    DeviceQuota facts;
    QStringList reported;
    const Reporter::Once once(_reporter, reported);
    facts.deviceName = device;
    facts.filesystemType = _devices.mountedType(device);
    MountEntry line;
    if (!facts.filesystemType.isEmpty())
        line = _devices.mountedLine(device).value_or(line);
    facts.mountPoint = line.dir;
    facts.optionInForce = _devices.hasQuotaOption(device, kind, SystemNames::Mtab);
    facts.optionIsMounted = facts.optionInForce;
    facts.fileExists = _kinds.quotaFile(device, kind).exists();
    const std::optional<bool> isOn = _kinds.askWhetherOn(device, kind);
    facts.kindIsOn = isOn.value_or(false);

    AccountDevice known(MountedDevice(device, facts.kindIsOn ? line.dirBytes : QByteArray()));
    known.facts = facts;
    if (!isOn)
        known.failure = reported.join(QLatin1Char('\n'));
    known.reported = reported;
    return known;
}

template<typename Record>
Record AccountQuotas::readOne(const QString &name, QuotaKind kind)
{
    AccountReader reader(kind, knownDevices(kind), _kinds, _reporter);
    Record account;
    account.name = name;
    account.id = _accounts.id(name, kind);
    account.params.insert(silentSourceKey(), _devices.silentSource());
    const QString reason = _accounts.whyWithoutQuota(name, kind);
    if (reason.isEmpty()) {
        reader.read(account);
    } else {
        reader.leaveOut(account, reason);
        _reporter.error(reason);
    }
    return account;
}

template<typename Record>
AccountQuotas::Accounts AccountQuotas::readAll(QuotaKind kind)
{
    const QVector<AccountId> all = _accounts.accounts(kind);
    AccountReader reader(kind, knownDevices(kind), _kinds, _reporter);
    Accounts accounts;
    accounts.reserve(static_cast<std::size_t>(all.size()));
    for (const AccountId &entry : all) {
        auto account = std::make_unique<Record>();
        account->name = entry.name;
        account->id = static_cast<qint32>(entry.id);
        if (account->id != AbstractElementData::NoId) {
            reader.read(*account);
        } else { // one account that cannot have a quota is no failure of the whole read
            const QString reason = _accounts.whyWithoutQuota(entry.name, kind);
            reader.leaveOut(*account, reason);
            _reporter.detail(reason);
        }
        accounts.push_back(std::move(account));
        if (accounts.size() % ProgressStep != 0)
            continue;
        _reporter.progress(accounts.size(), static_cast<quint64>(all.size()), tr("accounts"));
        if (_reporter.isCancelled())
            break;
    }
    return accounts;
}
