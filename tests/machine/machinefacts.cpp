// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "machinefacts.h"

#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QRegularExpression>
#include <QVector>

namespace
{

/// What a program prints; nothing where it fails, as repquota does on a device without quotas.
QString outputOf(const QString &program, const QStringList &arguments)
{
    QProcess process;
    process.start(program, arguments);
    process.waitForFinished(-1);
    return QString::fromUtf8(process.readAllStandardOutput());
}

QVector<QStringList> fields(const QString &text)
{
    QVector<QStringList> lines;
    for (const QString &line : text.split(QLatin1Char('\n'), Qt::SkipEmptyParts))
        lines.append(line.split(QLatin1Char(' '), Qt::SkipEmptyParts));
    return lines;
}

/// Source, target and options of the table, UUIDs resolved to devices.
QVector<QStringList> fstab()
{
    return fields(
        outputOf(QStringLiteral("findmnt"),
                 {QStringLiteral("--fstab"), QStringLiteral("--evaluate"), QStringLiteral("--noheadings"),
                  QStringLiteral("--raw"), QStringLiteral("--output"), QStringLiteral("SOURCE,TARGET,OPTIONS")}));
}

/// The fields of the device's line in "/proc/mounts"; none while it is not mounted.
QStringList mountOf(const QString &path)
{
    QFile file(QStringLiteral("/proc/mounts"));
    if (!file.open(QIODevice::ReadOnly))
        return {};
    for (const QStringList &line : fields(QString::fromUtf8(file.readAll()))) {
        if (line.value(0) == path)
            return line;
    }
    return {};
}

/// As repquota writes a grace period: "7days", or hours and minutes below two days.
qint64 seconds(const QString &grace)
{
    static const QRegularExpression days(QStringLiteral("^(\\d+)days?$"));
    static const QRegularExpression clock(QStringLiteral("^(\\d+):(\\d+)$"));
    const QRegularExpressionMatch inDays = days.match(grace);
    if (inDays.hasMatch())
        return inDays.captured(1).toLongLong() * 86400;
    const QRegularExpressionMatch byClock = clock.match(grace);
    return byClock.captured(1).toLongLong() * 3600 + byClock.captured(2).toLongLong() * 60;
}

/// What is said of one kind of quota in the words of several programs.
struct Sayings
{
    QStringList configured;
    QStringList inForce;
    QString states;  ///< of `quotaon -p`
    QString reports; ///< of `repquota`; nothing of a kind that is off
};

MachineFacts::Kind kind(const MachineFacts::Device &device, const Sayings &said, bool isGroup)
{
    const QString word = isGroup ? QStringLiteral("group") : QStringLiteral("user");
    const QString option = isGroup ? QStringLiteral("grpquota") : QStringLiteral("usrquota");
    MachineFacts::Kind facts;
    facts.configured = said.configured.contains(option);
    facts.inForce = said.inForce.contains(option);
    facts.hasFile = QFile::exists(QStringLiteral("%1/aquota.%2").arg(device.mountPoint, word));
    facts.on =
        said.states.contains(QStringLiteral("%1 quota on %2 (%3) is on\n").arg(word, device.mountPoint, device.path));
    const QRegularExpression graces(
        QStringLiteral("Report for %1 quotas.*\nBlock grace time: (\\S+); Inode grace time: (\\S+)").arg(word));
    const QRegularExpressionMatch match = graces.match(said.reports);
    facts.blockGrace = seconds(match.captured(1));
    facts.inodeGrace = seconds(match.captured(2));
    return facts;
}

} // namespace

QString MachineFacts::disk(const char *name)
{
    return QFileInfo(QStringLiteral("/dev/disk/by-id/virtio-%1").arg(QLatin1String(name))).canonicalFilePath();
}

QStringList MachineFacts::fstabLine(const char *mountPoint)
{
    QFile file(QStringLiteral("/etc/fstab"));
    if (!file.open(QIODevice::ReadOnly))
        return {};
    for (const QStringList &line : fields(QString::fromUtf8(file.readAll()))) {
        if (line.value(1) == QLatin1String(mountPoint))
            return line;
    }
    return {};
}

QStringList MachineFacts::quotaDevices()
{
    QStringList devices;
    for (const QStringList &line : fstab()) {
        const QString type =
            outputOf(QStringLiteral("blkid"), {QStringLiteral("--output"), QStringLiteral("value"),
                                               QStringLiteral("--match-tag"), QStringLiteral("TYPE"), line.value(0)})
                .trimmed();
        static const QStringList types{QStringLiteral("ext2"), QStringLiteral("ext3"), QStringLiteral("ext4")};
        if (types.contains(type))
            devices.append(line.value(0));
    }
    return devices;
}

MachineFacts::Device MachineFacts::device(const QString &path)
{
    Device device;
    device.path = path;
    const QStringList mount = mountOf(path);
    device.mountPoint = mount.value(1);
    device.type = mount.value(2);
    Sayings said;
    said.inForce = mount.value(3).split(QLatin1Char(','));
    for (const QStringList &line : fstab()) {
        if (line.value(0) == path)
            said.configured = line.value(2).split(QLatin1Char(','));
    }
    if (!device.mountPoint.isEmpty()) {
        said.states = outputOf(QStringLiteral("quotaon"), {QStringLiteral("-p"), device.mountPoint});
        said.reports = outputOf(QStringLiteral("repquota"), {QStringLiteral("-ug"), device.mountPoint});
    }
    device.user = kind(device, said, false);
    device.group = kind(device, said, true);
    return device;
}

MachineFacts::Accounts MachineFacts::accounts(QuotaKind kind, const QString &mountPoint)
{
    // Of the report in columns: limits in blocks of 1024 bytes, times in seconds since the epoch.
    enum Column
    {
        Name,
        BlockStatus,
        FileStatus,
        BlockUsed,
        BlockSoft,
        BlockHard,
        BlockGrace,
        FileUsed,
        FileSoft,
        FileHard,
        FileGrace
    };
    constexpr quint64 block = 1024;
    const QString kindSwitch = kind == GroupQuota ? QStringLiteral("--group") : QStringLiteral("--user");
    Accounts accounts;
    // Verbose, so that accounts without a file have their limits reported, too.
    const QString report =
        outputOf(QStringLiteral("repquota"), {kindSwitch, QStringLiteral("--verbose"), QStringLiteral("--raw-grace"),
                                              QStringLiteral("--output=csv"), mountPoint});
    for (const QString &line : report.split(QLatin1Char('\n'), Qt::SkipEmptyParts).mid(1)) {
        const QStringList cells = line.split(QLatin1Char(','));
        Account account;
        account.usedBytes = cells.value(BlockUsed).toULongLong() * block;
        account.softBytes = cells.value(BlockSoft).toULongLong() * block;
        account.hardBytes = cells.value(BlockHard).toULongLong() * block;
        account.usedFiles = cells.value(FileUsed).toULongLong();
        account.softFiles = cells.value(FileSoft).toULongLong();
        account.hardFiles = cells.value(FileHard).toULongLong();
        account.spaceForced = cells.value(BlockGrace).toLongLong();
        account.filesForced = cells.value(FileGrace).toLongLong();
        accounts.insert(cells.value(Name), account);
    }
    return accounts;
}
