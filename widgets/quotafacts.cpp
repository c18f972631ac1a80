// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "quotafacts.h"

#include <devicesettings.h>

QStringList QuotaFacts::ofKind(const DeviceSettings &settings, QuotaKind kind)
{
    const bool isGroup = kind == GroupQuota;
    const KindSettings &facts = isGroup ? settings.groupSettings : settings.userSettings;
    const QString option = isGroup ? QStringLiteral("grpquota") : QStringLiteral("usrquota");
    const QString file = isGroup ? QStringLiteral("aquota.group") : QStringLiteral("aquota.user");

    QStringList texts;
    if (isGroup)
        texts += facts.quotaOn ? tr("Group quota is on") : tr("Group quota is off");
    else
        texts += facts.quotaOn ? tr("User quota is on") : tr("User quota is off");
    if (settings.features.contains(DeviceSettings::quotaFeature())) {
        if (facts.quotaOn && !facts.optionInForce)
            texts += tr("Mounted without %1: limits stop nobody, unless quotaon was run since").arg(option);
    } else {
        texts += facts.optionConfigured ? tr("Configured: %1 stands in /etc/fstab").arg(option)
                                        : tr("Not configured: no %1 in /etc/fstab").arg(option);
        if (!settings.filesystemType.isEmpty()) {
            texts += facts.optionInForce ? tr("In force: mounted with %1").arg(option)
                                         : tr("Not in force: mounted without %1").arg(option);
            texts +=
                facts.fileExists ? tr("Quota file %1 is present").arg(file) : tr("Quota file %1 is missing").arg(file);
        }
    }
    if (facts.quotaOn) {
        const auto text = [](const TimePeriod &grace) { return grace.text.isEmpty() ? tr("none") : grace.text; };
        texts += tr("Grace period for space: %1").arg(text(facts.blockGrace));
        texts += tr("Grace period for files: %1").arg(text(facts.inodeGrace));
    }
    return texts;
}

QStringList QuotaFacts::ofDevice(const DeviceSettings &settings)
{
    QStringList facts;
    if (settings.filesystemType.isEmpty())
        facts += tr("This device is not mounted.");
    if (settings.features.contains(DeviceSettings::quotaFeature()))
        facts +=
            tr("This file system keeps its quotas in itself (ext4 feature \"quota\"): they count from every mount on. "
               "Switching them and setting grace periods is not available here, because the programs that do so "
               "work on quota files, and this file system has none.");
    return facts + settings.failures;
}
