// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "backupcopy.h"

#include "filereplacement.h"

#include <QDateTime>
#include <QDir>
#include <QFileInfo>

QString BackupCopy::make(const QString &path, const QByteArray &bytes)
{
    const QDir folder(QStringLiteral("/var/backups"));
    if (!folder.mkpath(QStringLiteral(".")))
        return {};
    const QString name = QStringLiteral("%1.%2").arg(
        QFileInfo(path).fileName(), QDateTime::currentDateTimeUtc().toString(QStringLiteral("yyyyMMdd-hhmmss")));
    QString target = folder.filePath(name);
    for (int i = 1; QFileInfo::exists(target); ++i)
        target = folder.filePath(QStringLiteral("%1.%2").arg(name).arg(i));
    return replaceFile(target, bytes, FileRights::RootOnly).succeeded() ? target : QString();
}
