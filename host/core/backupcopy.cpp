// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "backupcopy.h"

#include "newfile.h"

#include <QCryptographicHash>
#include <QDateTime>
#include <QDir>
#include <QFileInfo>
#include <QRegularExpression>
#include <QVector>

#include <algorithm>
#include <cerrno>
#include <utility>

#include <sys/stat.h>

namespace
{

constexpr mode_t OwnerOnly = 0600;

/// When a copy was made, and which of that second it is.
using Moment = std::pair<QString, int>;

/// What the names of all copies of a file begin with.
QString nameOfCopies(const QFileInfo &file)
{
    constexpr int letters = 8;
    const QByteArray folder = QCryptographicHash::hash(QFile::encodeName(file.path()), QCryptographicHash::Sha256);
    return QStringLiteral("%1.kra-%2").arg(file.fileName(), QString::fromLatin1(folder.toHex().left(letters)));
}

/// From the oldest to the newest.
QStringList copiesIn(const QDir &folder, const QString &name)
{
    const QRegularExpression pattern(
        QStringLiteral(R"(^%1\.(\d{8}-\d{6})(?:\.(\d+))?$)").arg(QRegularExpression::escape(name)));
    QVector<std::pair<Moment, QString>> copies;
    const QStringList files = folder.entryList(QDir::Files);
    for (const QString &file : files) {
        const QRegularExpressionMatch match = pattern.match(file);
        if (match.hasMatch())
            copies.append({{match.captured(1), match.captured(2).toInt()}, file});
    }
    std::sort(copies.begin(), copies.end());
    QStringList paths;
    for (const auto &copy : qAsConst(copies))
        paths.append(folder.filePath(copy.second));
    return paths;
}

bool holds(const QString &path, const QByteArray &bytes)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) && file.size() == bytes.size() && file.readAll() == bytes;
}

/// All but the oldest and the newest, so that what the system's own set-up wrote stays to be found. With a clock that
/// was set back the one that has just been made is not the newest.
void removeSuperfluous(QStringList copies, const QString &made)
{
    copies.removeAll(made);
    for (int i = 1; i < copies.size() - BackupCopy::Kept + 2; ++i)
        QFile::remove(copies.at(i));
}

} // namespace

QString BackupCopy::make(const QString &path, const QByteArray &bytes)
{
    const QDir folder(QStringLiteral("/var/backups"));
    if (!folder.mkpath(QStringLiteral(".")))
        return {};
    const QString name = nameOfCopies(QFileInfo(path));
    const QStringList before = copiesIn(folder, name);
    if (!before.isEmpty() && holds(before.last(), bytes))
        return before.last();
    NewFile copy(folder.path(), name, OwnerOnly);
    if (copy.error() != 0 || !copy.write(bytes) || !copy.sync())
        return {};
    const QString first = folder.filePath(
        QStringLiteral("%1.%2").arg(name, QDateTime::currentDateTimeUtc().toString(QStringLiteral("yyyyMMdd-hhmmss"))));
    QString target = first;
    for (int i = 1; !copy.become(target); ++i) {
        if (copy.error() != EEXIST)
            return {};
        target = QStringLiteral("%1.%2").arg(first, QString::number(i));
    }
    syncFolder(folder.path());
    removeSuperfluous(copiesIn(folder, name), target);
    return target;
}
