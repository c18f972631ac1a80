// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "fstabwriter.h"

#include "bufferdata.h"
#include "devicetable.h"
#include "fstabrewrite.h"
#include "systemnames.h"

#include <backupcopy.h>
#include <filereplacement.h>

#include <QFile>

FstabWriter::FstabWriter(BufferData &buffer, DeviceTable &devices, QObject *parent)
    : QObject(parent)
    , _buffer(buffer)
    , _devices(devices)
{}

bool FstabWriter::setOption(const QString &device, QuotaKind kind, bool enable)
{
    const QString word = SystemNames::optionWord(kind);
    _buffer.blkidLines();   // which may take its time, and must not between this read of the table and its rewrite
    _devices.forgetFstab(); // or what somebody edited since it was read would be taken back
    QStringList options = _devices.deviceOptions(device, SystemNames::Fstab);
    if (options == QStringList{QString()}) // an empty column, not an empty option
        options.clear();
    if (enable) {
        if (options.contains(word))
            return true;
        options.append(word);
    } else if (options.removeAll(word) == 0) {
        return true;
    }
    return write(device, options);
}

bool FstabWriter::write(const QString &device, const QStringList &options)
{
    const QString cannotOpen = tr("File %1 can not be open").arg(SystemNames::Fstab);
    QFile file(SystemNames::Fstab);
    const QByteArray table = file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    if (file.error() != QFileDevice::NoError) {
        Q_EMIT error(cannotOpen);
        Q_EMIT detail(file.errorString());
        return false;
    }

    const QStringList lines = _buffer.blkidLines();
    const auto resolve = [this, &lines](const QString &spec) { return _devices.resolveDevice(spec, lines); };
    const FstabRewrite rewrite = rewriteFstab(table, device, options, resolve);
    if (!rewrite.refusal.isEmpty()) {
        Q_EMIT error(rewrite.refusal);
        return false;
    }

    if (rewrite.content.count('#') < table.count('#'))
        keepComments(table);
    const FileReplacement replacement = replaceFile(SystemNames::Fstab, rewrite.content);
    switch (replacement.end) {
    case FileReplacement::End::NotOpened:
        Q_EMIT error(cannotOpen);
        Q_EMIT detail(replacement.reason);
        return false;
    case FileReplacement::End::NotWritten:
        Q_EMIT error(cannotOpen);
        Q_EMIT error(tr("It could not be written and is as it was before: %1").arg(replacement.reason));
        return false;
    case FileReplacement::End::Replaced:
        break;
    }
    _devices.forgetFstab(); // or the other kind's option would be set in the options of before
    return true;
}

void FstabWriter::keepComments(const QByteArray &table)
{
    const QString copy = BackupCopy::make(SystemNames::Fstab, table);
    if (copy.isEmpty())
        Q_EMIT detail(tr("The comments of %1 are not written again, and no copy of the file as it was could be made in "
                         "/var/backups.")
                          .arg(SystemNames::Fstab));
    else
        Q_EMIT detail(tr("The comments of %1 are not written again. The file as it was is kept as %2.")
                          .arg(SystemNames::Fstab, copy));
}
