// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "ordinarywrite.h"

namespace
{
Shell::Result runAs(const QString &account, const QString &command)
{
    return Shell::run(QStringLiteral("setpriv --reuid %1 --regid %1 --clear-groups %2").arg(account, command));
}
} // namespace

Shell::Result OrdinaryWrite::append(const QString &account, const QString &file, int kibibytes)
{
    return runAs(account, QStringLiteral("dd if=/dev/zero of=%1 bs=64K count=%2K iflag=count_bytes oflag=append "
                                         "conv=notrunc,fsync status=none")
                              .arg(file)
                              .arg(kibibytes));
}

Shell::Result OrdinaryWrite::create(const QString &account, const QString &nameBegin, int count)
{
    return runAs(account, QStringLiteral("touch %1{1..%2}").arg(nameBegin).arg(count));
}

bool OrdinaryWrite::isExceeded(const Shell::Result &writing)
{
    return writing.exitCode != 0 && writing.errors.contains(QLatin1String("Disk quota exceeded"));
}
