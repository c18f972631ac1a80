// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "kindreader.h"

#include "devicetable.h"
#include "quotactl.h"
#include "systemnames.h"

#include <QFileInfo>
#include <QStringList>
#include <QVector>

#include <cerrno>
#include <limits>

namespace
{

/// The kernel's number is wider than a period; one that does not fit is as long as a period can be.
TimePeriod toPeriod(quint64 seconds)
{
    constexpr quint64 Longest = std::numeric_limits<quint32>::max();
    return TimePeriod(static_cast<quint32>(qMin(seconds, Longest)));
}

} // namespace

KindReader::KindReader(DeviceTable &devices, QObject *parent)
    : QObject(parent)
    , _devices(devices)
{}

bool KindReader::quotaFileExists(const QString &device, QuotaKind kind)
{
    QString folder = _devices.mountPoint(device);
    if (folder.isEmpty()) // not mounted: a file below "/" would be another device's
        return false;
    if (folder.endsWith(QLatin1Char('/')))
        folder.chop(1);
    return QFileInfo::exists(QStringLiteral("%1/%2").arg(folder, SystemNames::quotaFileName(kind)));
}

bool KindReader::isQuotaOn(const QString &device, QuotaKind kind)
{
    return askWhetherOn(device, kind).value_or(false);
}

std::optional<bool> KindReader::askWhetherOn(const QString &device, QuotaKind kind)
{
    QVector<int> errorNumbers;
    QStringList messages;
    QuotaCtl kernel;
    connect(&kernel, qOverload<int>(&QuotaCtl::error), this,
            [&errorNumbers](int errorNumber) { errorNumbers.append(errorNumber); });
    connect(&kernel, qOverload<const QString &>(&QuotaCtl::error), this,
            [&messages](const QString &message) { messages.append(message); });
    kernel.getFormat(device, kind);

    if (errorNumbers == QVector<int>{ESRCH}) // the kernel's way to say that the kind is off
        return false;
    if (!messages.isEmpty()) {
        Q_EMIT error(messages.join(QLatin1Char(' ')));
        return std::nullopt;
    }
    return true;
}

KindState KindReader::read(const QString &device, QuotaKind kind)
{
    KindState state;
    KindSettings &settings = state.settings;
    settings.device = device;
    settings.optionInForce = _devices.hasQuotaOption(device, kind, SystemNames::Mtab);
    settings.optionConfigured = _devices.hasQuotaOption(device, kind, SystemNames::Fstab);
    settings.quotaOn = isQuotaOn(device, kind);
    settings.fileExists = quotaFileExists(device, kind);
    if (settings.quotaOn) {
        QuotaCtl kernel;
        connect(&kernel, qOverload<const QString &>(&QuotaCtl::error), this,
                qOverload<const QString &>(&KindReader::error));
        const dqinfo info = kernel.getInfo(device, kind);
        settings.blockGrace = toPeriod(info.dqi_bgrace);
        settings.inodeGrace = toPeriod(info.dqi_igrace);
        state.isFilesystemFeature = (info.dqi_flags & DQF_SYS_FILE) != 0;
    }
    return state;
}
