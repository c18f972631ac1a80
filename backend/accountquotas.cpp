// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "accountquotas.h"

#include "accountreader.h"
#include "accounttable.h"
#include "devicetable.h"
#include "kindreader.h"
#include "quotactl.h"
#include "quotactlmessages.h"
#include "quotaswitch.h"

#include <touchedpart.h>

namespace
{

/// In a long read, after how many accounts it says how far it has come.
constexpr std::size_t ProgressStep = 5000;

} // namespace

AccountQuotas::AccountQuotas(DeviceTable &devices, KindReader &kinds, AccountTable &accounts, QuotaSwitch &quotaSwitch,
                             QObject *parent)
    : QObject(parent)
    , _devices(devices)
    , _kinds(kinds)
    , _accounts(accounts)
    , _switch(quotaSwitch)
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
    return readAll<UserData>(_accounts.userNames(), UserQuota);
}

AccountQuotas::Accounts AccountQuotas::readAllGroups()
{
    return readAll<GroupData>(_accounts.groupNames(), GroupQuota);
}

bool AccountQuotas::write(const AbstractElementData &account, QuotaKind kind)
{
    const qint32 id = idOf(account.name, kind);
    if (id == AbstractElementData::NoId)
        return false;
    if (id != account.id) {
        Q_EMIT error(tr("%1 is another account by now: nothing was written").arg(account.name));
        return false;
    }
    const std::optional<TouchedPart> touched = TouchedPart::of(account);
    bool isWritten = true;
    for (auto quota = account.deviceQuotas.cbegin(); quota != account.deviceQuotas.cend(); ++quota) {
        if (!touched || touched->contains(quota.key(), kind))
            isWritten = writeOn(quota.key(), id, quota.value(), kind) && isWritten;
    }
    return isWritten;
}

/// As the machine's accounts are now; an error when there is none of that name, or none that the kernel could know.
qint32 AccountQuotas::idOf(const QString &name, QuotaKind kind)
{
    const qint32 id = kind == GroupQuota ? _accounts.groupId(name) : _accounts.userId(name);
    if (id == AbstractElementData::NoId)
        Q_EMIT error(kind == GroupQuota ? tr("There is no group %1").arg(name) : tr("There is no user %1").arg(name));
    return id;
}

/// What has to be known of the devices before their accounts are read. One that is listed twice counts once.
std::vector<AccountDevice> AccountQuotas::knownDevices(QuotaKind kind)
{
    QStringList failures;
    const auto collecting =
        connect(&_kinds, &KindReader::error, this, [&failures](const QString &message) { failures.append(message); });
    QStringList devices = _devices.quotaDevices();
    devices.removeDuplicates();
    std::vector<AccountDevice> known;
    for (const QString &device : qAsConst(devices)) {
        failures.clear();
        const KindSettings settings = _kinds.read(device, kind).settings;
        DeviceQuota facts;
        facts.deviceName = device;
        facts.filesystemType = _devices.mountedType(device);
        facts.kindIsOn = settings.quotaOn;
        facts.optionIsMounted = settings.optionInForce;
        facts.fileExists = settings.fileExists;
        facts.optionInForce = settings.optionInForce;
        facts.blockGracePeriod = settings.blockGrace;
        facts.inodeGracePeriod = settings.inodeGrace;
        known.push_back({facts, failures, device.toUtf8()});
    }
    disconnect(collecting);
    return known;
}

void AccountQuotas::read(AbstractElementData &account, const QString &name, QuotaKind kind, AccountReader &reader)
{
    account.name = name;
    account.id = idOf(name, kind);
    if (account.id != AbstractElementData::NoId)
        account.deviceQuotas = reader.read(account.id);
}

template<typename Record>
Record AccountQuotas::readOne(const QString &name, QuotaKind kind)
{
    AccountReader reader(kind, knownDevices(kind));
    connect(&reader, &AccountReader::error, this, &AccountQuotas::error);
    Record account;
    read(account, name, kind, reader);
    return account;
}

template<typename Record>
AccountQuotas::Accounts AccountQuotas::readAll(const QStringList &names, QuotaKind kind)
{
    AccountReader reader(kind, knownDevices(kind));
    connect(&reader, &AccountReader::error, this, &AccountQuotas::error);
    Accounts accounts;
    accounts.reserve(static_cast<std::size_t>(names.size()));
    for (const QString &name : names) {
        auto account = std::make_unique<Record>();
        read(*account, name, kind, reader);
        accounts.push_back(std::move(account));
        if (accounts.size() % ProgressStep == 0)
            Q_EMIT detail(tr("%1 of %2 accounts read").arg(accounts.size()).arg(names.size()));
    }
    return accounts;
}

bool AccountQuotas::writeOn(const QString &device, qint32 id, const DeviceQuota &quota, QuotaKind kind)
{
    const std::optional<bool> isOn = _kinds.askWhetherOn(device, kind);
    if (!isOn)
        return false;
    const dqblk record = toKernel(quota);
    if (!*isOn && !hasLimit(record))
        return true;
    if (!*isOn && !switchOn(device, kind))
        return false;
    QuotaCtl kernel;
    connect(&kernel, qOverload<int>(&QuotaCtl::error), this, [this, &device](int errorNumber) {
        const QStringList texts = quotaCtlMessages(device, errorNumber);
        for (const QString &text : texts)
            Q_EMIT error(text);
    });
    return kernel.setQuota(device, id, record, kind);
}

bool AccountQuotas::switchOn(const QString &device, QuotaKind kind)
{
    if (_switch.switchOnDemand(device, kind))
        return true;
    // Not each step that can fail on the way says so.
    Q_EMIT error(tr("Quotas could not be switched on on %1: the limits were not written").arg(device));
    return false;
}
