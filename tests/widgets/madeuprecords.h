// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <generaldata.h>

/// Records as the back end would read them on some machine.
namespace MadeUpRecords
{

inline KindSettings kind(bool isConfigured, bool isInForce, bool isOn, bool hasFile)
{
    KindSettings settings;
    settings.optionConfigured = isConfigured;
    settings.optionInForce = isInForce;
    settings.quotaOn = isOn;
    settings.fileExists = hasFile;
    constexpr quint32 week = 604800;
    if (isOn) {
        settings.blockGrace = TimePeriod(week);
        settings.inodeGrace = TimePeriod(week);
    }
    return settings;
}

inline DeviceSettings device(const KindSettings &users, const KindSettings &groups)
{
    DeviceSettings settings;
    settings.filesystemType = QStringLiteral("ext4");
    settings.userSettings = users;
    settings.groupSettings = groups;
    return settings;
}

inline DeviceSettings fullQuota()
{
    return device(kind(true, true, true, true), kind(true, true, true, true));
}

inline DeviceSettings noQuota()
{
    return device(KindSettings(), KindSettings());
}

inline DeviceSettings ownQuota()
{
    DeviceSettings settings = device(kind(false, false, true, false), kind(false, false, true, false));
    settings.features.append(DeviceSettings::quotaFeature());
    return settings;
}

} // namespace MadeUpRecords
