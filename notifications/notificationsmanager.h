// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "notificationsdata.h"

#include <QList>
#include <QObject>
#include <QString>
#include <QVariantMap>

#include <memory>

/// Reads and writes what the quota warnings are made of: the cron file "/etc/cron.d/warnquota" and the text files of
/// `warnquota`. Any thread; an object stays on its own.
class NotificationsManager : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

    /// Everything that can be read; what cannot is reported and left empty.
    std::unique_ptr<NotificationsData> read();
    /// Writes the jobs, and then each file in the order of the paths; goes on after a failure. Files that exist and
    /// were not edited (NotificationsData::editedFilesKey()) are left alone; of those that somebody else changed since
    /// they were read (asReadKey()) a copy is kept.
    void write(const NotificationsData &data);

    /// Replaces the cron file. One that holds lines which are not written again is kept as a copy before; without a
    /// copy nothing is written. So is one that is not as it was read, by what `asRead` says of it
    /// (NotificationsData::asReadKey()). False when the jobs were not written.
    bool writeCronJobs(const QList<WarnquotaJob> &jobs, const QVariantMap &asRead = {});
    /// The whole text of a file; empty when it cannot be read.
    QString readFile(const QString &path);
    /// Replaces a file. One that reads as this text already keeps its bytes. One that holds bytes which no text can
    /// bring back is kept as a copy before; without a copy nothing is written. False when that cannot be done; then the
    /// old file stays.
    bool writeFile(const QString &path, const QString &text);

Q_SIGNALS:
    void error(const QString &message);
    /// Among others, why the system did not let a file be written.
    void detail(const QString &text);

private:
    bool keepTable(const QVariantMap &asRead);
    bool keepWhatOthersWrote(const QString &path, const QVariantMap &asRead);
    bool keepBytes(const QString &path, const QByteArray &bytes);
    /// Makes a copy and says so in one of the texts: %1 is the path, %2 that of the copy.
    bool keep(const QString &path, const QByteArray &bytes, const QString &keptText, const QString &failedText);
};
