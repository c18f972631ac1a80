// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "quotafacts.h"

#include "graceperiodrow.h"

#include <devicesettings.h>
#include <elementdata.h>
#include <memorysize.h>
#include <memorysizetransfer.h>
#include <silentsource.h>

QStringList QuotaFacts::ofKind(const DeviceSettings &settings, QuotaKind kind)
{
    const bool isGroup = kind == GroupQuota;
    const KindSettings &facts = isGroup ? settings.groupSettings : settings.userSettings;
    const QString option = isGroup ? QStringLiteral("grpquota") : QStringLiteral("usrquota");
    const QString usual = isGroup ? QStringLiteral("aquota.group") : QStringLiteral("aquota.user");
    const QString file = facts.fileName.isEmpty() ? usual : facts.fileName;

    QStringList texts;
    if (isGroup)
        texts += facts.quotaOn ? tr("Group quota is on") : tr("Group quota is off");
    else
        texts += facts.quotaOn ? tr("User quota is on") : tr("User quota is off");
    if (settings.features.contains(DeviceSettings::quotaFeature())) {
        if (facts.quotaOn && !facts.optionInForce)
            texts += tr("Mounted without %1: limits stop nobody, unless quotaon was run since").arg(option);
    } else {
        // Lines of other spellings may name the device as well; they are not recognised.
        texts +=
            facts.optionConfigured
                ? tr("Configured: %1 stands in /etc/fstab").arg(option)
                : tr("Not configured: no %1 in a line of /etc/fstab that is recognised as this device").arg(option);
        if (!settings.filesystemType.isEmpty()) {
            // By one option or the other: a journaled quota has its own.
            if (isGroup)
                texts += facts.optionInForce ? tr("In force: mounted with an option for group quota")
                                             : tr("Not in force: mounted without an option for group quota");
            else
                texts += facts.optionInForce ? tr("In force: mounted with an option for user quota")
                                             : tr("Not in force: mounted without an option for user quota");
            texts +=
                facts.fileExists ? tr("Quota file %1 is present").arg(file) : tr("Quota file %1 is missing").arg(file);
        }
    }
    if (facts.quotaOn) {
        const auto text = [](const TimePeriod &grace) {
            const QString words = gracePeriodText(grace);
            return words.isEmpty() ? tr("none") : words;
        };
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
    if (!settings.mountPoint.isEmpty()) {
        const QString size = MemorySize(MemorySizeTransfer(), settings.size).text;
        facts += size.isEmpty() ? tr("Mounted on %1").arg(settings.mountPoint)
                                : tr("Mounted on %1, %2").arg(settings.mountPoint, size);
    }
    if (settings.features.contains(DeviceSettings::quotaFeature()))
        facts +=
            tr("This file system keeps its quotas in itself (ext4 feature \"quota\"): they count from every mount on. "
               "Switching them and setting grace periods is not available here, because the programs that do so "
               "work on quota files, and this file system has none.");
    return facts + settings.failures;
}

QString QuotaFacts::ofSilentSource(const ElementData &record)
{
    const QString source = record.params.value(silentSourceKey()).toString();
    if (source.isEmpty())
        return {};
    //: %1 is a program or a file: blkid, /etc/fstab
    return tr("Which devices there are is not known: %1 did not tell. Please refresh this when that is mended; "
              "the list of tasks says what went wrong.")
        .arg(source);
}

QString QuotaFacts::ofAbsentDevice()
{
    return tr("This device is missing: the last read did not find it.");
}
