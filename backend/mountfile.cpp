// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "mountfile.h"

#include "cfile.h"

#include <QByteArrayList>

#include <cerrno>
#include <vector>

#include <mntent.h>

namespace
{

/// The library's reader works on a stream alone. One line each: of a stream it cuts lines that are longer than its
/// buffer, and takes numbers that a line lacks from the line before.
std::optional<MountColumns> columnsOf(QByteArray line)
{
    line.append('\n');
    const auto size = static_cast<std::size_t>(line.size());
    const CFile stream(fmemopen(line.data(), size, "r"));
    std::vector<char> buffer(size + 1);
    mntent read = {};
    if (!stream || getmntent_r(stream.get(), &read, buffer.data(), static_cast<int>(buffer.size())) == nullptr)
        return std::nullopt;
    return MountColumns{read.mnt_fsname, read.mnt_dir, read.mnt_type, read.mnt_opts, read.mnt_freq, read.mnt_passno};
}

bool isCommentOrBlank(const QByteArray &line)
{
    for (const char byte : line) {
        if (byte != ' ' && byte != '\t')
            return byte == '#';
    }
    return true;
}

} // namespace

QString MountColumns::spelling() const
{
    // A byte order mark is a part of the name for "mount", and would be dropped at the beginning of a text.
    return QString::fromLocal8Bit('/' + fsName).mid(1);
}

bool MountColumns::canNameDevice() const
{
    const QByteArrayList options = opts.split(',');
    const bool isOfFolder = type == "none" || type == "ecryptfs" || type.startsWith("fuse") ||
                            options.contains("bind") || options.contains("rbind");
    return !isOfFolder && spelling().toLocal8Bit() == fsName;
}

MountFile MountFile::read(const QString &path)
{
    MountFile file;
    const CFile stream = openRegular(path, [](const char *name) { return setmntent(name, "ro"); });
    if (!stream) {
        file.reason = qt_error_string(errno);
        return file;
    }
    file.isOpen = true;
    if (!readToEnd(stream.get(), file.bytes))
        file.reason = qt_error_string(errno);
    return file;
}

QVector<MountLine> mountLines(const QByteArray &table)
{
    QVector<MountLine> found;
    int number = 0;
    const QByteArrayList lines = table.split('\n');
    for (QByteArray line : lines) {
        ++number;
        if (line.endsWith('\r'))
            line.chop(1);
        if (!isCommentOrBlank(line))
            found.append({number, line, columnsOf(line)});
    }
    return found;
}
