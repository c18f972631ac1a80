// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "devicetable.h"

#include "bufferdata.h"
#include "mounteddevice.h"
#include "systemnames.h"

#include <QFile>

#include <algorithm>

namespace
{

QVector<MountEntry> trustworthy(QVector<MountEntry> mounted)
{
    const auto isFuse = [](const MountEntry &entry) { return entry.type.startsWith(QLatin1String("fuse")); };
    mounted.erase(std::remove_if(mounted.begin(), mounted.end(), isFuse), mounted.end());
    return mounted;
}

} // namespace

DeviceTable::DeviceTable(BufferData &buffer, QObject *parent)
    : QObject(parent)
    , _buffer(buffer)
{
    connect(&buffer, &BufferData::forgotten, this, [this] {
        _blkid.reset();
        _fstab.reset();
        _mtab.reset();
        _mtabByName.reset();
        _mtabByNumber.reset();
    });
}

QString DeviceTable::resolveDevice(const QString &spec, const QStringList &lines) const
{
    return BlkidTable(lines).resolve(spec);
}

QStringList DeviceTable::fstabDevices()
{
    return fstab().devices();
}

QStringList DeviceTable::quotaDevices()
{
    const QVector<MountEntry> entries = _buffer.fstabEntries();
    const BlkidTable &known = blkid();
    QStringList devices;
    for (const MountEntry &entry : entries)
        devices.append(known.quotaDevices(entry.fsName));
    return devices;
}

QString DeviceTable::silentSource()
{
    if (!_buffer.isFstabWhole())
        return SystemNames::Fstab;
    return blkid().isEmpty() ? SystemNames::Blkid : QString();
}

QStringList DeviceTable::deviceOptions(const QString &device, const QString &fileName)
{
    const bool isFstab = fileName == SystemNames::Fstab;
    if (!isFstab && fileName != SystemNames::Mtab) {
        Q_EMIT error(tr("Unknow file name %1").arg(fileName));
        return {};
    }
    const MountEntry *line = (isFstab ? fstab() : mtab()).lineNaming(device);
    if (line != nullptr)
        return line->options();
    const std::optional<MountEntry> numbered = isFstab ? std::nullopt : lineByNumber(device);
    return numbered ? numbered->options() : QStringList();
}

QString DeviceTable::mountPoint(const QString &device)
{
    return mountedLine(device).value_or(MountEntry()).dir;
}

std::optional<MountEntry> DeviceTable::mountedLine(const QString &device)
{
    std::optional<MountEntry> line = lineInMtab(device);
    if (!line)
        Q_EMIT error(tr("Device %1 not mounted").arg(device));
    return line;
}

bool DeviceTable::isMounted(const QString &device)
{
    return lineInMtab(device).has_value();
}

QString DeviceTable::mountedType(const QString &device)
{
    const MountEntry *line = mtab().lineFor(device);
    return line != nullptr ? line->type : lineByNumber(device).value_or(MountEntry()).type;
}

/// A journaled kind is in force under another word, and then its own word never gets into "/etc/mtab".
bool DeviceTable::hasQuotaOption(const QString &device, QuotaKind kind, const QString &fileName)
{
    const QStringList options = deviceOptions(device, fileName);
    return options.contains(SystemNames::optionWord(kind)) ||
           (fileName == SystemNames::Mtab && !SystemNames::journaledOption(options, kind).isEmpty());
}

QStringList DeviceTable::passedOver()
{
    QStringList texts;
    const QVector<MountEntry> entries = _buffer.fstabEntries();
    for (const MountEntry &entry : entries) {
        if (blkid().quotaDevices(entry.fsName).isEmpty())
            texts.append(passedOverText(entry));
    }
    return texts;
}

QString DeviceTable::passedOverText(const MountEntry &entry)
{
    //: A line of /etc/fstab: device, mount point
    const QString line =
        entry.dir.startsWith(QLatin1Char('/')) ? tr("%1 on %2").arg(entry.fsName, entry.dir) : entry.fsName;
    if (entry.fsName.startsWith(QChar::ByteOrderMark))
        //: %1 is a line of /etc/fstab
        return tr("%1: a byte order mark stands before it, which mount takes for a part of the name").arg(line);
    if (!entry.canNameDevice && entry.fsName.contains(QChar::ReplacementCharacter))
        //: %1 is a line of /etc/fstab
        return tr("%1: its name is not valid in the character encoding of this system").arg(line);
    const std::optional<BlkidTable::Device> device = blkid().find(entry.fsName);
    const QString type = device && !device->type.isEmpty() ? device->type : entry.type;
    const bool canBeListed = type.isEmpty() || type == QLatin1String("auto") || SystemNames::isQuotaFilesystem(type);
    if (!canBeListed)
        //: %1 is a line of /etc/fstab, %2 a file system
        return tr("%1: %2, not ext2, ext3 or ext4").arg(line, type);
    if (blkid().isEmpty())
        //: %1 is a line of /etc/fstab
        return tr("%1: blkid could not be asked for it").arg(line);
    if (!device)
        return tr("%1: blkid finds no such device").arg(line);
    if (device->type.isEmpty())
        return tr("%1: blkid finds no file system on it").arg(line);
    if (device->firstType != device->type)
        //: %1 is a line of /etc/fstab, %2 and %3 are types: of a partition table, and of a file system
        return tr("%1: blkid finds %2 on it, and %3 only after that").arg(line, device->firstType, device->type);
    if (device->uuid.isEmpty())
        //: %1 is a line of /etc/fstab, %2 the path of a device
        return tr("%1: blkid lists it as %2; write that into the line").arg(line, device->path);
    //: %1 is a line of /etc/fstab, %2 the path of a device, %3 the identifier of its file system
    return tr("%1: blkid lists it as %2; write that or UUID=%3 into the line").arg(line, device->path, device->uuid);
}

/// Without the devices whose names have bytes that are no text: by what stands in place of those nobody would reach
/// them, and might reach another.
QStringList DeviceTable::readableOnes(QStringList lines)
{
    const auto isUnreadable = [this](const QString &line) {
        const QString path = line.left(line.indexOf(QLatin1String(": ")));
        if (!path.contains(QChar::ReplacementCharacter))
            return false;
        Q_EMIT detail(tr("%1: the name of this device is not valid in the character encoding of this system, so it is "
                         "left out")
                          .arg(path));
        return true;
    };
    lines.erase(std::remove_if(lines.begin(), lines.end(), isUnreadable), lines.end());
    return lines;
}

const BlkidTable &DeviceTable::blkid()
{
    if (!_blkid)
        _blkid.emplace(readableOnes(_buffer.blkidLines()));
    return *_blkid;
}

const MountTable &DeviceTable::fstab()
{
    if (!_fstab) {
        const QVector<MountEntry> entries = _buffer.fstabEntries();
        _fstab.emplace(entries, blkid());
    }
    return *_fstab;
}

const MountTable &DeviceTable::mtab()
{
    if (!_mtab) {
        const QVector<MountEntry> entries = trustworthy(_buffer.mtabEntries());
        _mtab.emplace(entries, blkid());
    }
    return *_mtab;
}

/// By the spelling of "/etc/mtab", for which "blkid" need not be asked; of two lines the first counts.
std::optional<MountEntry> DeviceTable::lineInMtab(const QString &device)
{
    if (!_mtabByName) {
        _mtabByName.emplace();
        const QVector<MountEntry> entries = trustworthy(_buffer.mtabEntries());
        for (auto entry = entries.crbegin(); entry != entries.crend(); ++entry) {
            if (entry->canNameDevice)
                _mtabByName->insert(entry->fsName, *entry);
        }
    }
    const auto line = _mtabByName->constFind(device);
    return line == _mtabByName->cend() ? lineByNumber(device) : std::make_optional(*line);
}

/// For a device that no line of "/etc/mtab" names: the kernel can have mounted it under a name of its own.
std::optional<MountEntry> DeviceTable::lineByNumber(const QString &device)
{
    const std::optional<dev_t> number = deviceNumber(QFile::encodeName(device));
    if (!number)
        return std::nullopt;
    if (!_mtabByNumber) {
        _mtabByNumber.emplace();
        const QVector<MountEntry> entries = trustworthy(_buffer.mtabEntries());
        for (auto entry = entries.crbegin(); entry != entries.crend(); ++entry) {
            // Disks only: the server of another file system may not answer.
            const bool isDisk =
                SystemNames::isQuotaFilesystem(entry->type) && entry->fsName.startsWith(QLatin1Char('/'));
            const std::optional<dev_t> shown = isDisk ? numberOfDeviceAt(entry->dirBytes) : std::nullopt;
            if (shown)
                _mtabByNumber->insert(*shown, *entry);
        }
    }
    const auto line = _mtabByNumber->constFind(*number);
    return line == _mtabByNumber->cend() ? std::nullopt : std::make_optional(*line);
}
