// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "quotamanager.h"

#include "accountquotas.h"
#include "accounttable.h"
#include "bufferdata.h"
#include "devicetable.h"
#include "fstabwriter.h"
#include "kindreader.h"
#include "limitswriter.h"
#include "mounteddevice.h"
#include "quotaprograms.h"
#include "quotaswitch.h"
#include "reporter.h"
#include "settingswriter.h"

#include <silentsource.h>

#include <sys/statvfs.h>

namespace
{

/// Of the file system, in bytes; 0 where it cannot be asked.
quint64 sizeOf(const MountedDevice &device)
{
    struct statvfs facts = {};
    const bool isKnown = device.descriptor() >= 0 && fstatvfs(device.descriptor(), &facts) == 0;
    return isKnown ? quint64(facts.f_blocks) * facts.f_frsize : 0;
}

} // namespace

/// What the parts report becomes signals of the manager.
class QuotaManager::Signals : public Reporter
{
public:
    explicit Signals(QuotaManager &manager)
        : _manager(manager)
    {}
    void detail(const QString &text) override { Q_EMIT _manager.detail(text); }
    void progress(quint64 done, quint64 total, const QString &unit) override
    {
        Q_EMIT _manager.progress(done, total, unit);
    }
    bool isCancelled() const override { return _manager._isCancelled && _manager._isCancelled(); }

protected:
    void passError(const QString &message) override { Q_EMIT _manager.error(message); }

private:
    QuotaManager &_manager;
};

QuotaManager::QuotaManager(QObject *parent)
    : QObject(parent)
    , _signals(std::make_unique<Signals>(*this))
    , _buffer(std::make_unique<BufferData>())
    , _devices(std::make_unique<DeviceTable>(*_buffer))
    , _accounts(std::make_unique<AccountTable>(*_buffer))
    , _kinds(std::make_unique<KindReader>(*_devices, *_signals))
    , _fstab(std::make_unique<FstabWriter>(*_buffer, *_devices))
    , _programs(std::make_unique<QuotaPrograms>())
    , _switch(std::make_unique<QuotaSwitch>(
          QuotaSwitch::Tools{*_devices, *_kinds, *_fstab, *_programs, [this] { resetCache(); }}))
    , _settings(std::make_unique<SettingsWriter>(
          *_kinds, *_switch, [this] { resetCache(); }, *_signals))
    , _accountQuotas(std::make_unique<AccountQuotas>(*_devices, *_kinds, *_accounts, *_signals))
    , _limits(std::make_unique<LimitsWriter>(*_kinds, *_accounts, *_switch, *_signals))
{
    connect(_buffer.get(), &BufferData::error, this, &QuotaManager::error);
    connect(_buffer.get(), &BufferData::detail, this, &QuotaManager::detail);
    connect(_buffer.get(), &BufferData::forgotten, this, [this] { _accounts->reset(); });
    connect(_devices.get(), &DeviceTable::error, this, [this](const QString &message) { _signals->error(message); });
    connect(_devices.get(), &DeviceTable::detail, this, &QuotaManager::detail);
    connect(_fstab.get(), &FstabWriter::error, this, &QuotaManager::error);
    connect(_fstab.get(), &FstabWriter::detail, this, &QuotaManager::detail);
    connect(_programs.get(), &QuotaPrograms::error, this, &QuotaManager::error);
    connect(_programs.get(), &QuotaPrograms::detail, this, &QuotaManager::detail);
    connect(_switch.get(), &QuotaSwitch::error, this, &QuotaManager::error);
    connect(_switch.get(), &QuotaSwitch::detail, this, &QuotaManager::detail);
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
    return _kinds->quotaFile(device, kind).exists();
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
    data.params.insert(silentSourceKey(), _devices->silentSource());
    return data;
}

bool QuotaManager::setFstabOption(const QString &device, QuotaKind kind, bool enable)
{
    return _fstab->setOption(device, kind, enable).isDone;
}

bool QuotaManager::writeFstab(const QString &device, const QStringList &options)
{
    return _fstab->write(device, options);
}

bool QuotaManager::remount(const QString &device)
{
    return _programs->remount(device).isDone;
}

bool QuotaManager::createQuotaFiles(const QString &device, int type)
{
    return _programs->createQuotaFiles(device, type).isDone;
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
    _settings->write(data);
}

qint32 QuotaManager::userId(const QString &name)
{
    return _accounts->id(name, UserQuota);
}

qint32 QuotaManager::groupId(const QString &name)
{
    return _accounts->id(name, GroupQuota);
}

QStringList QuotaManager::userNames()
{
    return _accounts->names(UserQuota);
}

QStringList QuotaManager::groupNames()
{
    return _accounts->names(GroupQuota);
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
    return _limits->write(account, kind);
}

void QuotaManager::resetCache()
{
    _buffer->resetCache();
}

/// The two kinds fail alike on an unmounted device: that is said once.
DeviceSettings QuotaManager::readDevice(const QString &device)
{
    DeviceSettings settings;
    const Reporter::Once once(*_signals, settings.failures);
    const KindState users = _kinds->read(device, UserQuota);
    const KindState groups = _kinds->read(device, GroupQuota);
    settings.userSettings = users.settings;
    settings.groupSettings = groups.settings;
    settings.filesystemType = mountedType(device);
    if (!settings.filesystemType.isEmpty()) {
        const MountEntry line = _devices->mountedLine(device).value_or(MountEntry());
        settings.mountPoint = line.dir;
        settings.size = sizeOf(MountedDevice(device, line.dirBytes));
    }
    if (users.isFilesystemFeature || groups.isFilesystemFeature)
        settings.features.append(DeviceSettings::quotaFeature());
    return settings;
}
