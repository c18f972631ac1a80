// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "devicetable.h"

#include "bufferdata.h"
#include "systemnames.h"

DeviceTable::DeviceTable(BufferData &buffer, QObject *parent)
    : QObject(parent)
    , _buffer(buffer)
{}

QString DeviceTable::resolveDevice(const QString &spec, const QStringList &lines)
{
    return blkidTable(lines).resolve(spec);
}

QStringList DeviceTable::fstabDevices()
{
    const QVector<MountEntry> entries = _buffer.fstabEntries();
    BlkidTable &blkid = blkidTable(_buffer.blkidLines());
    QStringList devices;
    for (const MountEntry &entry : entries) {
        const QString path = blkid.resolve(entry.fsName);
        devices.append(path.isEmpty() ? entry.fsName : path);
    }
    return devices;
}

QStringList DeviceTable::quotaDevices()
{
    const QVector<MountEntry> entries = _buffer.fstabEntries();
    BlkidTable &blkid = blkidTable(_buffer.blkidLines());
    QStringList devices;
    for (const MountEntry &entry : entries)
        devices.append(blkid.quotaDevices(entry.fsName));
    return devices;
}

QStringList DeviceTable::deviceOptions(const QString &device, const QString &fileName)
{
    const bool isFstab = fileName == SystemNames::Fstab;
    if (!isFstab && fileName != SystemNames::Mtab) {
        Q_EMIT error(tr("Unknow file name %1").arg(fileName));
        return {};
    }
    const MountTable &table = isFstab ? fstab() : mtab();
    const MountEntry *entry = table.spelledOrResolved(device);
    return entry ? entry->opts.split(QLatin1Char(',')) : QStringList();
}

QString DeviceTable::mountPoint(const QString &device)
{
    const QHash<QString, QString> &known = mountPoints();
    const auto found = known.constFind(device);
    if (found == known.constEnd()) {
        Q_EMIT error(tr("Device %1 not mounted").arg(device));
        return {};
    }
    return *found;
}

QString DeviceTable::mountedType(const QString &device)
{
    const MountEntry *entry = mtab().resolved(device);
    return entry ? entry->type : QString();
}

bool DeviceTable::hasQuotaOption(const QString &device, QuotaKind kind, const QString &fileName)
{
    return deviceOptions(device, fileName).contains(SystemNames::optionWord(kind));
}

QStringList DeviceTable::passedOver()
{
    const QVector<MountEntry> entries = _buffer.fstabEntries();
    BlkidTable &blkid = blkidTable(_buffer.blkidLines());
    QStringList texts;
    for (const MountEntry &entry : entries) {
        if (blkid.quotaDevices(entry.fsName).isEmpty())
            texts.append(passedOverText(entry, blkid.filesystemType(entry.fsName)));
    }
    return texts;
}

QString DeviceTable::passedOverText(const MountEntry &entry, const QString &foundType)
{
    //: A line of /etc/fstab: device, mount point
    const QString line =
        entry.dir.startsWith(QLatin1Char('/')) ? tr("%1 on %2").arg(entry.fsName, entry.dir) : entry.fsName;
    const QString type = foundType.isEmpty() ? entry.type : foundType;
    if (type.isEmpty() || type == QLatin1String("auto") || SystemNames::isQuotaFilesystem(type))
        return tr("%1: blkid finds no such device").arg(line);
    //: %1 is a line of /etc/fstab, %2 a file system
    return tr("%1: %2, not ext2, ext3 or ext4").arg(line, type);
}

void DeviceTable::reset()
{
    _blkid.reset();
    _fstab.reset();
    _mtab.reset();
    _mountPoints.reset();
}

void DeviceTable::forgetFstab()
{
    _buffer.forgetFstab();
    _fstab.reset();
}

BlkidTable &DeviceTable::blkidTable(const QStringList &lines)
{
    if (!_blkid || _blkid->lines() != lines)
        _blkid.emplace(lines);
    return *_blkid;
}

const MountTable &DeviceTable::fstab()
{
    if (!_fstab) {
        const QVector<MountEntry> entries = _buffer.fstabEntries();
        _fstab.emplace(entries, blkidTable(_buffer.blkidLines()));
    }
    return *_fstab;
}

const MountTable &DeviceTable::mtab()
{
    if (!_mtab) {
        const QVector<MountEntry> entries = _buffer.mtabEntries();
        _mtab.emplace(entries, blkidTable(_buffer.blkidLines()));
    }
    return *_mtab;
}

/// By the spelling of "/etc/mtab"; of two entries the first counts.
const QHash<QString, QString> &DeviceTable::mountPoints()
{
    if (!_mountPoints) {
        _mountPoints.emplace();
        const QVector<MountEntry> entries = _buffer.mtabEntries();
        for (const MountEntry &entry : entries) {
            if (!_mountPoints->contains(entry.fsName))
                _mountPoints->insert(entry.fsName, entry.dir);
        }
    }
    return *_mountPoints;
}
