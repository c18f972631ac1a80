// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "fstabwriter.h"

#include "bufferdata.h"
#include "devicetable.h"
#include "mountfile.h"
#include "systemnames.h"

#include <backupcopy.h>
#include <filereplacement.h>

namespace
{

/// Somebody who saves the table that often does so without end.
constexpr int MostAttempts = 20;

OptionChange changeOf(QuotaKind kind, bool enable)
{
    return {enable ? OptionChange::Step::Add : OptionChange::Step::Remove, kind};
}

} // namespace

FstabWriter::FstabWriter(BufferData &buffer, DeviceTable &devices, QObject *parent)
    : QObject(parent)
    , _buffer(buffer)
    , _devices(devices)
{}

FstabEdit FstabWriter::setOption(const QString &device, QuotaKind kind, bool enable)
{
    return change(device, changeOf(kind, enable));
}

bool FstabWriter::write(const QString &device, const QStringList &options)
{
    return change(device, {OptionChange::Step::Replace, UserQuota, options}).isDone;
}

bool FstabWriter::takeBack(const FstabEdit &edit, const QString &device, QuotaKind kind)
{
    // The table of before has its comments, and its lines for other mount points as they were.
    if (replaceFile(SystemNames::Fstab, edit.before, edit.after).succeeded()) {
        _buffer.forgetFstab();
        return true;
    }
    return setOption(device, kind, false).isDone;
}

FstabRewrite FstabWriter::preview(const QString &device, QuotaKind kind, bool enable)
{
    const MountFile file = MountFile::read(SystemNames::Fstab);
    if (!file.isWhole())
        return {}; // which is for the change itself to report
    return rewriteFstab(file.bytes, device, changeOf(kind, enable), _devices.blkid());
}

FstabEdit FstabWriter::change(const QString &device, const OptionChange &change)
{
    const BlkidTable &blkid = _devices.blkid(); // which may take a minute, in which the table can change
    const QString cannotOpen = tr("File %1 can not be open").arg(SystemNames::Fstab);
    for (int attempt = 0; attempt < MostAttempts; ++attempt) {
        const MountFile file = MountFile::read(SystemNames::Fstab);
        if (!file.isWhole()) {
            Q_EMIT error(cannotOpen);
            Q_EMIT detail(QStringLiteral("%1: %2").arg(SystemNames::Fstab, file.reason));
            return {};
        }
        const FstabRewrite rewrite = rewriteFstab(file.bytes, device, change, blkid);
        if (!rewrite.refusal.isEmpty()) {
            if (rewrite.matters)
                Q_EMIT error(rewrite.refusal);
            return {!rewrite.matters, {}, {}};
        }
        if (rewrite.content == file.bytes)
            return {true, {}, {}};
        if (rewrite.content.count('#') < file.bytes.count('#') && !keepComments(file.bytes))
            return {};

        const FileReplacement replacement = replaceFile(SystemNames::Fstab, rewrite.content, file.bytes);
        switch (replacement.end) {
        case FileReplacement::End::Replaced:
            _buffer.forgetFstab();
            return {true, file.bytes, rewrite.content};
        case FileReplacement::End::ChangedMeanwhile:
            break;
        case FileReplacement::End::NotOpened:
            Q_EMIT error(cannotOpen);
            Q_EMIT detail(QStringLiteral("%1: %2").arg(SystemNames::Fstab, replacement.reason));
            return {};
        case FileReplacement::End::NotWritten:
            Q_EMIT error(cannotOpen);
            Q_EMIT error(tr("It could not be written and is as it was before: %1").arg(replacement.reason));
            return {};
        }
    }
    Q_EMIT error(tr("File %1 was not changed: another program kept changing it; try again for %2 when that has ended")
                     .arg(SystemNames::Fstab, device));
    return {};
}

/// The rewritten table has no comments.
bool FstabWriter::keepComments(const QByteArray &table)
{
    const QString copy = BackupCopy::make(SystemNames::Fstab, table);
    if (copy.isEmpty())
        Q_EMIT error(tr("File %1 was not changed: its comments would be lost, and no copy of it could be made in "
                        "/var/backups; make room there and try again")
                         .arg(SystemNames::Fstab));
    else
        Q_EMIT detail(tr("The comments of %1 are not written again. The file as it was is kept as %2.")
                          .arg(SystemNames::Fstab, copy));
    return !copy.isEmpty();
}
