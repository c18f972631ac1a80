// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "quotamanager.h"

#include "accountquotas.h"
#include "accounttable.h"
#include "bufferdata.h"
#include "devicetable.h"
#include "fstabwriter.h"
#include "kindreader.h"
#include "quotaprograms.h"
#include "quotaswitch.h"

#include <touchedpart.h>

#include <QScopedValueRollback>

QuotaManager::QuotaManager(QObject *parent)
    : QObject(parent)
    , _buffer(std::make_unique<BufferData>())
    , _devices(std::make_unique<DeviceTable>(*_buffer))
    , _accounts(std::make_unique<AccountTable>(*_buffer))
    , _kinds(std::make_unique<KindReader>(*_devices))
    , _fstab(std::make_unique<FstabWriter>(*_buffer, *_devices))
    , _programs(std::make_unique<QuotaPrograms>())
    , _switch(std::make_unique<QuotaSwitch>(
          QuotaSwitch::Tools{*_devices, *_kinds, *_fstab, *_programs, [this] { resetCache(); }}))
    , _accountQuotas(std::make_unique<AccountQuotas>(*_devices, *_kinds, *_accounts, *_switch))
{
    connect(_buffer.get(), &BufferData::error, this, &QuotaManager::error);
    connect(_buffer.get(), &BufferData::detail, this, &QuotaManager::detail);
    connect(_devices.get(), &DeviceTable::error, this, &QuotaManager::report);
    connect(_kinds.get(), &KindReader::error, this, &QuotaManager::report);
    connect(_fstab.get(), &FstabWriter::error, this, &QuotaManager::error);
    connect(_fstab.get(), &FstabWriter::detail, this, &QuotaManager::detail);
    connect(_programs.get(), &QuotaPrograms::error, this, &QuotaManager::error);
    connect(_programs.get(), &QuotaPrograms::detail, this, &QuotaManager::detail);
    connect(_switch.get(), &QuotaSwitch::error, this, &QuotaManager::error);
    connect(_accountQuotas.get(), &AccountQuotas::error, this, &QuotaManager::report);
    connect(_accountQuotas.get(), &AccountQuotas::detail, this, &QuotaManager::detail);
}

QuotaManager::~QuotaManager() = default;

QString QuotaManager::resolveDevice(const QString &spec, const QStringList &lines)
{
    return _devices->resolveDevice(spec, lines);
}

QStringList QuotaManager::fstabDevices()
{
    return _devices->fstabDevices();
}

QStringList QuotaManager::quotaDevices()
{
    return _devices->quotaDevices();
}

QStringList QuotaManager::deviceOptions(const QString &device, const QString &fileName)
{
    return _devices->deviceOptions(device, fileName);
}

QString QuotaManager::mountPoint(const QString &device)
{
    return _devices->mountPoint(device);
}

QString QuotaManager::mountedType(const QString &device)
{
    return _devices->mountedType(device);
}

bool QuotaManager::hasQuotaOption(const QString &device, QuotaKind kind, const QString &fileName)
{
    return _devices->hasQuotaOption(device, kind, fileName);
}

bool QuotaManager::quotaFileExists(const QString &device, QuotaKind kind)
{
    return _kinds->quotaFileExists(device, kind);
}

bool QuotaManager::isQuotaOn(const QString &device, QuotaKind kind)
{
    return _kinds->isQuotaOn(device, kind);
}

KindSettings QuotaManager::readKindSettings(const QString &device, QuotaKind kind)
{
    return _kinds->read(device, kind).settings;
}

GeneralData QuotaManager::readGeneral()
{
    GeneralData data;
    const QStringList devices = quotaDevices();
    for (const QString &device : devices) {
        if (!data.deviceSettings.contains(device))
            data.deviceSettings.insert(device, readDevice(device));
    }
    data.params.insert(GeneralData::passedOverKey(), _devices->passedOver());
    return data;
}

bool QuotaManager::setFstabOption(const QString &device, QuotaKind kind, bool enable)
{
    return _fstab->setOption(device, kind, enable);
}

bool QuotaManager::writeFstab(const QString &device, const QStringList &options)
{
    return _fstab->write(device, options);
}

bool QuotaManager::remount(const QString &device)
{
    return _programs->remount(device);
}

bool QuotaManager::createQuotaFiles(const QString &device, int type)
{
    return _programs->createQuotaFiles(device, type);
}

bool QuotaManager::runQuotaOnOff(const QString &device, QuotaKind kind, bool on)
{
    return _programs->runQuotaOnOff(device, kind, on);
}

bool QuotaManager::setGrace(const KindSettings &settings, QuotaKind kind)
{
    return _switch->setGrace(settings, kind);
}

bool QuotaManager::applyQuotaSettings(const KindSettings &settings, QuotaKind kind)
{
    return _switch->applySettings(settings, kind, QuotaSwitch::Graces::Set);
}

bool QuotaManager::switchOnDemand(const QString &device, QuotaKind kind)
{
    return _switch->switchOnDemand(device, kind);
}

void QuotaManager::applyGeneral(const GeneralData &data)
{
    const std::optional<TouchedPart> touched = TouchedPart::of(data);
    const auto apply = [&](const QString &device, const KindSettings &settings, QuotaKind kind) {
        using Graces = QuotaSwitch::Graces;
        if (!touched || touched->contains(device, kind))
            _switch->applySettings(settings, kind,
                                   !touched || touched->graces.contains(kind) ? Graces::Set : Graces::Leave);
    };
    for (auto device = data.deviceSettings.cbegin(); device != data.deviceSettings.cend(); ++device) {
        apply(device.key(), device->userSettings, UserQuota);
        resetCache();
        apply(device.key(), device->groupSettings, GroupQuota);
    }
}

qint32 QuotaManager::userId(const QString &name)
{
    return _accounts->userId(name);
}

qint32 QuotaManager::groupId(const QString &name)
{
    return _accounts->groupId(name);
}

QStringList QuotaManager::userNames()
{
    return _accounts->userNames();
}

QStringList QuotaManager::groupNames()
{
    return _accounts->groupNames();
}

UserData QuotaManager::readUser(const QString &name)
{
    return _accountQuotas->readUser(name);
}

GroupData QuotaManager::readGroup(const QString &name)
{
    return _accountQuotas->readGroup(name);
}

QuotaManager::Accounts QuotaManager::readAllUsers()
{
    return _accountQuotas->readAllUsers();
}

QuotaManager::Accounts QuotaManager::readAllGroups()
{
    return _accountQuotas->readAllGroups();
}

bool QuotaManager::writeQuotas(const AbstractElementData &account, QuotaKind kind)
{
    return _accountQuotas->write(account, kind);
}

void QuotaManager::resetCache()
{
    _buffer->resetCache();
    _devices->reset();
    _accounts->reset();
}

DeviceSettings QuotaManager::readDevice(const QString &device)
{
    DeviceSettings settings;
    const QScopedValueRollback<QStringList *> collecting(_deviceFailures, &settings.failures);
    const KindState users = _kinds->read(device, UserQuota);
    const KindState groups = _kinds->read(device, GroupQuota);
    settings.userSettings = users.settings;
    settings.groupSettings = groups.settings;
    settings.filesystemType = mountedType(device);
    if (users.isFilesystemFeature || groups.isFilesystemFeature)
        settings.features.append(DeviceSettings::quotaFeature());
    return settings;
}

/// Passes a failure on. In a whole read the two kinds fail alike on an unmounted device: that is said once.
void QuotaManager::report(const QString &message)
{
    if (_deviceFailures) {
        if (_deviceFailures->contains(message))
            return;
        _deviceFailures->append(message);
    }
    Q_EMIT error(message);
}
