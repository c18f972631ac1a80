// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "bufferdata.h"

#include "programdetail.h"
#include "systemnames.h"

#include <process.h>

#include <QFile>

#include <algorithm>
#include <cstdio>
#include <memory>
#include <vector>

#include <grp.h>
#include <mntent.h>
#include <pwd.h>

namespace
{

constexpr int BlkidStartWait = 30000; // milliseconds, as is the next
constexpr int BlkidFinishWait = 30000;

/// One line of a mount table. The mount table of the kernel holds lines of several thousand bytes (overlays), which
/// the library's own buffer would cut.
constexpr std::size_t LongestMountLine = 64 * 1024;

/// Account files of megabytes are read in few pieces.
constexpr std::size_t AccountFileBuffer = 64 * 1024;

struct CloseFile
{
    void operator()(FILE *file) const { std::fclose(file); }
};
struct CloseMountTable
{
    void operator()(FILE *table) const { endmntent(table); }
};
using File = std::unique_ptr<FILE, CloseFile>;
using MountTableFile = std::unique_ptr<FILE, CloseMountTable>;

File openAccountFile(const QString &path)
{
    File file(std::fopen(QFile::encodeName(path).constData(), "re"));
    if (file)
        std::setvbuf(file.get(), nullptr, _IOFBF, AccountFileBuffer);
    return file;
}

/// A field of an account; null where its line lacks it ("+name"). What is plain ASCII, as nearly all of it is, reads
/// alike in every local encoding and needs no codec.
QString toText(const char *bytes)
{
    const QLatin1String text(bytes);
    const bool isAscii = std::all_of(text.begin(), text.end(), [](char byte) { return (byte & 0x80) == 0; });
    return isAscii ? QString(text) : QString::fromLocal8Bit(bytes);
}

/// The text of a field that most accounts have alike: it is shared with the account before.
template<typename Entry>
QString toText(const char *bytes, const QVector<Entry> &before, QString Entry::*field)
{
    const bool isAlike = !before.isEmpty() && before.constLast().*field == QLatin1String(bytes);
    return isAlike ? before.constLast().*field : toText(bytes);
}

PasswdEntry toEntry(const passwd &record, const QVector<PasswdEntry> &before)
{
    PasswdEntry entry;
    entry.name = toText(record.pw_name);
    entry.password = toText(record.pw_passwd, before, &PasswdEntry::password);
    entry.uid = record.pw_uid;
    entry.gid = record.pw_gid;
    entry.gecos = toText(record.pw_gecos);
    entry.home = toText(record.pw_dir);
    entry.shell = toText(record.pw_shell, before, &PasswdEntry::shell);
    return entry;
}

GroupEntry toEntry(const group &record, const QVector<GroupEntry> &before)
{
    GroupEntry entry;
    entry.name = toText(record.gr_name);
    entry.password = toText(record.gr_passwd, before, &GroupEntry::password);
    entry.gid = record.gr_gid;
    for (char **member = record.gr_mem; *member != nullptr; ++member)
        entry.members.append(toText(*member));
    return entry;
}

MountEntry toEntry(const mntent &record)
{
    MountEntry entry;
    entry.fsName = QString::fromLocal8Bit(record.mnt_fsname);
    entry.dir = QString::fromLocal8Bit(record.mnt_dir);
    entry.type = QString::fromLocal8Bit(record.mnt_type);
    entry.opts = QString::fromLocal8Bit(record.mnt_opts);
    entry.freq = record.mnt_freq;
    entry.passno = record.mnt_passno;
    return entry;
}

} // namespace

BufferData::BufferData(QObject *parent)
    : QObject(parent)
{}

QVector<MountEntry> BufferData::fstabEntries()
{
    if (!_fstab)
        _fstab = readMountFile(SystemNames::Fstab);
    return *_fstab;
}

QVector<MountEntry> BufferData::mtabEntries()
{
    if (!_mtab)
        _mtab = readMountFile(SystemNames::Mtab);
    return *_mtab;
}

QStringList BufferData::blkidLines()
{
    if (!_blkid)
        _blkid = readBlkid();
    return *_blkid;
}

QVector<PasswdEntry> BufferData::passwdEntries()
{
    if (!_passwd)
        _passwd = readPasswd();
    return *_passwd;
}

QVector<GroupEntry> BufferData::groupEntries()
{
    if (!_group)
        _group = readGroup();
    return *_group;
}

void BufferData::resetCache()
{
    _fstab.reset();
    _mtab.reset();
    _blkid.reset();
    _passwd.reset();
    _group.reset();
}

void BufferData::forgetFstab()
{
    _fstab.reset();
}

QVector<MountEntry> BufferData::readMountFile(const QString &path)
{
    const MountTableFile table(setmntent(QFile::encodeName(path).constData(), "ro"));
    if (!table) {
        Q_EMIT error(tr("File %1 can not be open").arg(path));
        return {};
    }
    QVector<MountEntry> entries;
    std::vector<char> line(LongestMountLine);
    mntent record = {};
    while (getmntent_r(table.get(), &record, line.data(), static_cast<int>(line.size())) != nullptr)
        entries.append(toEntry(record));
    reportIfBrokenOff(table.get(), path);
    return entries;
}

QStringList BufferData::readBlkid()
{
    const QString program = SystemNames::Blkid;
    const ProcessResult result = Process::run(program, {}, BlkidStartWait, BlkidFinishWait, Process::Messages::InC);
    Q_EMIT detail(programDetail(program, {}, result));
    switch (result.end) {
    case ProcessResult::End::NotStarted:
        Q_EMIT error(tr("Process %1 can not started").arg(program));
        return {};
    case ProcessResult::End::TimedOut:
        Q_EMIT error(tr("Process %1 can not finished").arg(program));
        return {};
    case ProcessResult::End::Crashed:
    case ProcessResult::End::Exited: // without any device it ends with code 2: what it printed is the answer either way
        break;
    }
    return QString::fromLocal8Bit(result.standardOutput).split(QLatin1Char('\n'));
}

QVector<PasswdEntry> BufferData::readPasswd()
{
    const File file = openAccountFile(SystemNames::Passwd);
    if (!file) {
        Q_EMIT error(tr("File %1 can not be open").arg(SystemNames::Passwd));
        return {};
    }
    QVector<PasswdEntry> entries;
    while (const passwd *record = fgetpwent(file.get()))
        entries.append(toEntry(*record, entries));
    reportIfBrokenOff(file.get(), SystemNames::Passwd);
    return entries;
}

QVector<GroupEntry> BufferData::readGroup()
{
    const File file = openAccountFile(SystemNames::Group);
    if (!file) {
        Q_EMIT error(tr("File %1 can not be open").arg(SystemNames::Group));
        return {};
    }
    QVector<GroupEntry> entries;
    while (const group *record = fgetgrent(file.get()))
        entries.append(toEntry(*record, entries));
    reportIfBrokenOff(file.get(), SystemNames::Group);
    return entries;
}

/// The library's readers give no more entries at the end of a file and where it cannot be read on alike.
void BufferData::reportIfBrokenOff(std::FILE *file, const QString &path)
{
    if (std::ferror(file) != 0)
        Q_EMIT error(tr("File %1 can not be open").arg(path));
}
