// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "pluginplace.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <sys/stat.h>

namespace
{

struct Texts
{
    Q_DECLARE_TR_FUNCTIONS(PluginLoader)
};

QString whyWritable(const QString &path, bool isOnTheWay)
{
    struct stat state = {};
    if (lstat(QFile::encodeName(path).constData(), &state) != 0)
        return Texts::tr("%1 cannot be looked at").arg(path);
    if (state.st_uid != 0)
        return Texts::tr("%1 belongs to the user with the id %2").arg(path, QString::number(state.st_uid));
    if (isOnTheWay && S_ISDIR(state.st_mode) && (state.st_mode & S_ISVTX) != 0)
        return {};
    if ((state.st_mode & S_IWOTH) != 0)
        return Texts::tr("%1 can be written by everybody").arg(path);
    if ((state.st_mode & S_IWGRP) != 0)
        return Texts::tr("%1 can be written by its group").arg(path);
    return {};
}

} // namespace

QString PluginPlace::whyUnsafe(const QString &canonicalPath)
{
    QString path = canonicalPath;
    for (bool isOnTheWay = false;; isOnTheWay = true) {
        const QString why = whyWritable(path, isOnTheWay);
        if (!why.isEmpty() || path == QLatin1String("/"))
            return why;
        path = QFileInfo(path).path();
    }
}

bool PluginPlace::isInOwnBuildTree(const QString &canonicalPath)
{
    const QString programFolder = QFileInfo(QStringLiteral("/proc/self/exe")).canonicalPath();
    const QDir tree(QFileInfo(programFolder).path());
    return tree.exists(QStringLiteral("CMakeCache.txt")) &&
           (canonicalPath == tree.path() || canonicalPath.startsWith(tree.path() + QLatin1Char('/')));
}
