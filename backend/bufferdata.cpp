// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "bufferdata.h"

#include "accountfile.h"
#include "cfile.h"
#include "mountfile.h"
#include "programdetail.h"
#include "systemnames.h"

#include <process.h>

#include <cstdio>

namespace
{

constexpr int BlkidStartWait = 30000; // milliseconds, as is the next
constexpr int BlkidFinishWait = 30000;

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
    if (!_fstab) {
        const MountFile file = MountFile::read(SystemNames::Fstab);
        _fstab = entriesOf(file, SystemNames::Fstab);
        _isFstabWhole = file.isWhole();
    }
    return *_fstab;
}

bool BufferData::isFstabWhole()
{
    fstabEntries();
    return _isFstabWhole;
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

QByteArray BufferData::passwdFile()
{
    if (!_passwd)
        _passwd = readAccountFile(SystemNames::Passwd);
    return *_passwd;
}

QByteArray BufferData::groupFile()
{
    if (!_group)
        _group = readAccountFile(SystemNames::Group);
    return *_group;
}

QVector<PasswdEntry> BufferData::passwdEntries()
{
    if (!_passwdEntries)
        _passwdEntries = AccountFile::users(passwdFile());
    return *_passwdEntries;
}

QVector<GroupEntry> BufferData::groupEntries()
{
    if (!_groupEntries)
        _groupEntries = AccountFile::groups(groupFile());
    return *_groupEntries;
}

void BufferData::resetCache()
{
    _fstab.reset();
    _mtab.reset();
    _blkid.reset();
    _passwd.reset();
    _group.reset();
    _passwdEntries.reset();
    _groupEntries.reset();
    Q_EMIT forgotten();
}

void BufferData::forgetFstab()
{
    _fstab.reset();
    Q_EMIT forgotten();
}

QVector<MountEntry> BufferData::readMountFile(const QString &path)
{
    return entriesOf(MountFile::read(path), path);
}

QVector<MountEntry> BufferData::entriesOf(const MountFile &file, const QString &path)
{
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
        if (result.standardOutput.isEmpty()) // and so it did not tell
            return {};
        break;
    case ProcessResult::End::Exited: // without any device it ends with code 2: what it printed is the answer either way
        break;
    }
    return QString::fromLocal8Bit(result.standardOutput).split(QLatin1Char('\n'));
}

/// Of a file that cannot be read to its end the whole lines count that came before.
QByteArray BufferData::readAccountFile(const QString &path)
{
    QByteArray bytes;
    const CFile file = openRegular(path, [](const char *name) { return std::fopen(name, "re"); });
    if (file && readToEnd(file.get(), bytes))
        return bytes;
    Q_EMIT error(tr("File %1 can not be open").arg(path));
    bytes.truncate(bytes.lastIndexOf('\n') + 1);
    return bytes;
}
