// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "bufferdata.h"

#include "cfile.h"
#include "mountfile.h"
#include "programdetail.h"
#include "systemnames.h"

#include <process.h>

#include <algorithm>
#include <cstddef>
#include <cstdio>
#include <cstring>

#include <grp.h>
#include <pwd.h>

namespace
{

constexpr int BlkidStartWait = 30000; // milliseconds, as is the next
constexpr int BlkidFinishWait = 30000;

/// Account files of megabytes are read in few pieces.
constexpr std::size_t AccountFileBuffer = 64 * 1024;

CFile openAccountFile(const QString &path)
{
    CFile file = openRegular(path, [](const char *name) { return std::fopen(name, "re"); });
    if (file)
        std::setvbuf(file.get(), nullptr, _IOFBF, AccountFileBuffer);
    return file;
}

/// A field that its line lacks ("+name") is null. Nearly all are ASCII, which is the same in every locale's encoding,
/// and which the codec takes ten times as long for.
QString toText(const char *field)
{
    const int size = field == nullptr ? 0 : static_cast<int>(std::strlen(field));
    const bool isAscii =
        std::all_of(field, field + size, [](char byte) { return static_cast<signed char>(byte) >= 0; });
    return isAscii ? QString::fromLatin1(field, size) : QString::fromLocal8Bit(field, size);
}

/// Makes one text of a field that is the same in line after line.
class RepeatedField
{
public:
    QString toText(const char *field)
    {
        if (field == nullptr)
            return {};
        if (std::strcmp(_bytes.constData(), field) != 0) {
            _bytes = field;
            _text = ::toText(field);
        }
        return _text;
    }

private:
    QByteArray _bytes;
    QString _text{QLatin1String("")};
};

struct RepeatedFields
{
    RepeatedField password;
    RepeatedField gecos;
    RepeatedField home;
    RepeatedField shell;
};

PasswdEntry toEntry(const passwd &record, RepeatedFields &repeated)
{
    PasswdEntry entry;
    entry.name = toText(record.pw_name);
    entry.password = repeated.password.toText(record.pw_passwd);
    entry.uid = record.pw_uid;
    entry.gid = record.pw_gid;
    entry.gecos = repeated.gecos.toText(record.pw_gecos);
    entry.home = repeated.home.toText(record.pw_dir);
    entry.shell = repeated.shell.toText(record.pw_shell);
    return entry;
}

GroupEntry toEntry(const group &record, RepeatedFields &repeated)
{
    GroupEntry entry;
    entry.name = toText(record.gr_name);
    entry.password = repeated.password.toText(record.gr_passwd);
    entry.gid = record.gr_gid;
    for (char **member = record.gr_mem; *member != nullptr; ++member)
        entry.members.append(toText(*member));
    return entry;
}

MountEntry toEntry(const MountColumns &columns)
{
    MountEntry entry;
    entry.fsName = columns.spelling();
    entry.canNameDevice = columns.canNameDevice();
    entry.dir = QString::fromLocal8Bit(columns.dir);
    entry.dirBytes = columns.dir;
    entry.type = QString::fromLocal8Bit(columns.type);
    entry.opts = QString::fromLocal8Bit(columns.opts);
    entry.freq = columns.freq;
    entry.passno = columns.passno;
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
    Q_EMIT forgotten();
}

void BufferData::forgetFstab()
{
    _fstab.reset();
    Q_EMIT forgotten();
}

QVector<MountEntry> BufferData::readMountFile(const QString &path)
{
    const MountFile file = MountFile::read(path);
    QVector<MountEntry> entries;
    const QVector<MountLine> lines = mountLines(file.bytes);
    for (const MountLine &line : lines) {
        if (line.columns)
            entries.append(toEntry(*line.columns));
    }
    if (!file.isWhole()) {
        Q_EMIT error(tr("File %1 can not be open").arg(path));
        Q_EMIT detail(QStringLiteral("%1: %2").arg(path, file.reason));
    }
    return entries;
}

QStringList BufferData::readBlkid()
{
    const QString program = SystemNames::Blkid;
    const ProcessResult result =
        Process::run(program, {}, BlkidStartWait, BlkidFinishWait, Process::Messages::InC, Process::Effect::ReadsOnly);
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
    const CFile file = openAccountFile(SystemNames::Passwd);
    if (!file) {
        Q_EMIT error(tr("File %1 can not be open").arg(SystemNames::Passwd));
        return {};
    }
    QVector<PasswdEntry> entries;
    RepeatedFields repeated;
    while (const passwd *record = fgetpwent(file.get()))
        entries.append(toEntry(*record, repeated));
    reportIfBrokenOff(file.get(), SystemNames::Passwd);
    return entries;
}

QVector<GroupEntry> BufferData::readGroup()
{
    const CFile file = openAccountFile(SystemNames::Group);
    if (!file) {
        Q_EMIT error(tr("File %1 can not be open").arg(SystemNames::Group));
        return {};
    }
    QVector<GroupEntry> entries;
    RepeatedFields repeated;
    while (const group *record = fgetgrent(file.get()))
        entries.append(toEntry(*record, repeated));
    reportIfBrokenOff(file.get(), SystemNames::Group);
    return entries;
}

/// The library's readers give no more entries at the end of a file and where it cannot be read on alike.
void BufferData::reportIfBrokenOff(std::FILE *file, const QString &path)
{
    if (std::ferror(file) != 0)
        Q_EMIT error(tr("File %1 can not be open").arg(path));
}
