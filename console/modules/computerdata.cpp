// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "computerdata.h"

#include <QFile>
#include <QLocale>
#include <QMap>
#include <QSysInfo>
#include <QThread>

#include <pwd.h>
#include <unistd.h>

namespace
{
/// The fields of a file of "name: value" lines; of several with one name, the first. Such files of the kernel have no
/// size, and are read until they end.
QMap<QByteArray, QByteArray> kernelFile(const QString &fileName)
{
    QMap<QByteArray, QByteArray> fields;
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly))
        return fields;
    const QList<QByteArray> lines = file.readAll().split('\n');
    for (const QByteArray &line : lines) {
        const int colon = line.indexOf(':');
        const QByteArray name = line.left(colon).trimmed();
        if (colon > 0 && !fields.contains(name))
            fields.insert(name, line.mid(colon + 1).trimmed());
    }
    return fields;
}

/// Of "16308744 kB".
qint64 bytes(const QByteArray &kibibytes)
{
    return kibibytes.left(kibibytes.indexOf(' ')).toLongLong() * 1024;
}

QDateTime startTime()
{
    QFile file(QStringLiteral("/proc/uptime"));
    if (!file.open(QIODevice::ReadOnly))
        return {};
    bool isNumber = false;
    const double seconds = file.readAll().split(' ').constFirst().toDouble(&isNumber);
    return isNumber ? QDateTime::currentDateTime().addMSecs(-static_cast<qint64>(seconds * 1000)) : QDateTime();
}

QString userName()
{
    const passwd *entry = getpwuid(geteuid());
    return entry ? QString::fromLocal8Bit(entry->pw_name) : QString::number(geteuid());
}
} // namespace

ComputerData ComputerData::read(bool administrator)
{
    const QMap<QByteArray, QByteArray> memoryFields = kernelFile(QStringLiteral("/proc/meminfo"));
    ComputerData data;
    data.hostName = QSysInfo::machineHostName();
    data.system = QSysInfo::prettyProductName();
    data.kernel = QLatin1String("Linux ") + QSysInfo::kernelVersion();
    data.architecture = QSysInfo::currentCpuArchitecture();
    data.processor = QString::fromLocal8Bit(kernelFile(QStringLiteral("/proc/cpuinfo")).value("model name"));
    data.processors = QThread::idealThreadCount();
    data.startedAt = startTime();
    data.memory = bytes(memoryFields.value("MemTotal"));
    data.availableMemory = bytes(memoryFields.value("MemAvailable"));
    data.user = userName();
    data.administrator = administrator;
    return data;
}

QStringList ComputerData::labels()
{
    return {tr("Name"),       tr("System"),        tr("Kernel"), tr("Architecture"),
            tr("Processors"), tr("Running since"), tr("Memory"), tr("The console runs as")};
}

QStringList ComputerData::values() const
{
    const QLocale locale;
    QString processorText = processors > 0 ? QString::number(processors) : QString();
    if (!processor.isEmpty())
        processorText = tr("%1 × %2").arg(processors).arg(processor);
    const QString memoryText =
        memory > 0 ? tr("%1, of which %2 are available")
                         .arg(locale.formattedDataSize(memory, 1), locale.formattedDataSize(availableMemory, 1))
                   : QString();
    return {hostName,
            system,
            kernel,
            architecture,
            processorText,
            locale.toString(startedAt, QLocale::ShortFormat),
            memoryText,
            administrator ? tr("%1, with administrator rights").arg(user)
                          : tr("%1, without administrator rights").arg(user)};
}
