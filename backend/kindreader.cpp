// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "kindreader.h"

#include "devicetable.h"
#include "quotactl.h"
#include "quotactlmessages.h"
#include "reporter.h"
#include "systemnames.h"

#include <QFile>
#include <QVector>

#include <cerrno>

#include <sys/stat.h>

KindReader::KindReader(DeviceTable &devices, Reporter &reporter)
    : _devices(devices)
    , _reporter(reporter)
{}

QuotaFile KindReader::quotaFile(const QString &device, QuotaKind kind)
{
    QuotaFile file{SystemNames::quotaFileName(kind), std::nullopt};
    const std::optional<MountEntry> line = _devices.mountedLine(device);
    if (!line || line->dirBytes.isEmpty()) // not mounted: a file below "/" would be another device's
        return file;
    file.name = SystemNames::quotaFileName(line->options(), kind);
    QByteArray path = line->dirBytes;
    if (!path.endsWith('/'))
        path += '/';
    path += QFile::encodeName(file.name);
    struct stat facts = {};
    if (stat(path.constData(), &facts) == 0)
        file.date = QDateTime::fromSecsSinceEpoch(facts.st_mtime);
    return file;
}

bool KindReader::isQuotaOn(const QString &device, QuotaKind kind)
{
    return askWhetherOn(device, kind).value_or(false);
}

std::optional<bool> KindReader::askWhetherOn(const QString &device, QuotaKind kind, NotMounted notMounted)
{
    QVector<int> errorNumbers;
    QuotaCtl kernel;
    QObject::connect(&kernel, qOverload<int>(&QuotaCtl::error),
                     [&errorNumbers](int errorNumber) { errorNumbers.append(errorNumber); });
    kernel.getFormat(device, kind);

    if (errorNumbers == QVector<int>{ESRCH}) // the kernel's way to say that the kind is off
        return false;
    if (errorNumbers == QVector<int>{ENODEV} && notMounted == NotMounted::IsOff)
        return false;
    for (const int errorNumber : qAsConst(errorNumbers))
        reportQuotaCtlFailure(_reporter, device, errorNumber);
    return errorNumbers.isEmpty() ? std::make_optional(true) : std::nullopt;
}

std::optional<dqinfo> KindReader::askInfo(const QString &device, QuotaKind kind)
{
    bool isAnswered = true;
    QuotaCtl kernel;
    QObject::connect(&kernel, qOverload<int>(&QuotaCtl::error), [&](int errorNumber) {
        isAnswered = false;
        reportQuotaCtlFailure(_reporter, device, errorNumber);
    });
    const dqinfo info = kernel.getInfo(device, kind);
    return isAnswered ? std::make_optional(info) : std::nullopt;
}

KindState KindReader::read(const QString &device, QuotaKind kind)
{
    KindState state;
    KindSettings &settings = state.settings;
    settings.device = device;
    settings.optionInForce = _devices.hasQuotaOption(device, kind, SystemNames::Mtab);
    settings.optionConfigured = _devices.hasQuotaOption(device, kind, SystemNames::Fstab);
    settings.quotaOn = isQuotaOn(device, kind);
    const QuotaFile file = quotaFile(device, kind);
    settings.fileExists = file.exists();
    settings.fileName = file.name;
    if (settings.quotaOn) {
        const std::optional<dqinfo> info = askInfo(device, kind);
        if (info) {
            settings.blockGrace = TimePeriod::ofSeconds(info->dqi_bgrace);
            settings.inodeGrace = TimePeriod::ofSeconds(info->dqi_igrace);
            state.isFilesystemFeature = (info->dqi_flags & DQF_SYS_FILE) != 0;
        }
    }
    return state;
}
