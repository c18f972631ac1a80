// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "quotaswitch.h"

#include "devicetable.h"
#include "fstabwriter.h"
#include "kindreader.h"
#include "quotactl.h"
#include "quotaprograms.h"
#include "systemnames.h"

QuotaSwitch::QuotaSwitch(Tools tools, QObject *parent)
    : QObject(parent)
    , _tools(std::move(tools))
{}

bool QuotaSwitch::setGrace(const KindSettings &settings, QuotaKind kind)
{
    QuotaCtl kernel;
    connect(&kernel, qOverload<const QString &>(&QuotaCtl::error), this, &QuotaSwitch::error);
    dqinfo info = {};
    info.dqi_bgrace = static_cast<quint64>(settings.blockGrace.toSeconds());
    info.dqi_igrace = static_cast<quint64>(settings.inodeGrace.toSeconds());
    info.dqi_valid = IIF_BGRACE | IIF_IGRACE | IIF_FLAGS;
    return kernel.setInfo(settings.device, info, kind);
}

/// Goes on after a step that failed: each step looks at what is there before it acts, so that a later run picks up
/// where this one could not go on.
bool QuotaSwitch::applySettings(const KindSettings &settings, QuotaKind kind, Graces graces)
{
    const QString &device = settings.device;
    if (!settings.quotaOn) {
        if (_tools.kinds.isQuotaOn(device, kind))
            _tools.programs.runQuotaOnOff(device, kind, false);
        _tools.fstab.setOption(device, kind, false);
        return true;
    }

    _tools.fstab.setOption(device, kind, true);
    remount(device);
    bool hasFile = _tools.kinds.quotaFileExists(device, kind);
    if (!hasFile && isMountedWithOption(device, kind)) {
        _tools.programs.createQuotaFiles(device, kind);
        hasFile = _tools.kinds.quotaFileExists(device, kind);
    }
    if (!hasFile)
        return true;
    if (_tools.kinds.isQuotaOn(device, kind)) {
        if (graces == Graces::Set)
            setGrace(settings, kind);
    } else if (isMountedWithOption(device, kind)) {
        _tools.programs.runQuotaOnOff(device, kind, true);
    }
    return true;
}

bool QuotaSwitch::switchOnDemand(const QString &device, QuotaKind kind)
{
    _tools.programs.takeComplaints();
    if (tryToSwitchOn(device, kind))
        return true;
    // Now they tell why: a full disk, a device that is not mounted.
    const QStringList complaints = _tools.programs.takeComplaints();
    for (const QString &complaint : complaints)
        Q_EMIT error(complaint);
    return false;
}

bool QuotaSwitch::tryToSwitchOn(const QString &device, QuotaKind kind)
{
    _tools.fstab.setOption(device, kind, true);
    if (!_tools.kinds.quotaFileExists(device, kind)) {
        remount(device);
        if (!isMountedWithOption(device, kind) || !_tools.programs.createQuotaFiles(device, kind))
            return false;
    }
    return _tools.programs.runQuotaOnOff(device, kind, true);
}

/// What was mounted with which options is another thing afterwards, also when it failed half-way.
void QuotaSwitch::remount(const QString &device)
{
    _tools.programs.remount(device);
    _tools.resetCache();
}

bool QuotaSwitch::isMountedWithOption(const QString &device, QuotaKind kind)
{
    return _tools.devices.hasQuotaOption(device, kind, SystemNames::Mtab);
}
