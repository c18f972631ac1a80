// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "notificationsdata.h"

#include <QByteArrayList>
#include <QList>
#include <QObject>
#include <QString>

#include <functional>
#include <memory>
#include <optional>

struct FileReplacement;

/// Reads and writes what the quota warnings are made of: the cron file "/etc/cron.d/warnquota" and the text files of
/// `warnquota`. Any thread; an object stays on its own.
class NotificationsManager : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

    /// Whether the runs are others than those of the table that was read, in whatever order.
    static bool areRunsEdited(const NotificationsData &data);

    /// Everything that can be read; what cannot is reported and left empty.
    std::unique_ptr<NotificationsData> read();
    /// Writes the runs, and then each file in the order of the paths; goes on after a failure. What is as it was read
    /// (NotificationsData::asRead) is left alone, whatever stands there by now; of what somebody else changed meanwhile
    /// a copy is kept. Returns the paths of the files that hold what was to be written.
    QStringList write(const NotificationsData &data);

    /// Replaces the cron file. A run that was not edited keeps its line to the byte. A file with lines that the new one
    /// cannot say is kept as a copy before, and so is one that is not as it was read; without a copy nothing is
    /// written. False when the runs were not written.
    bool writeCronJobs(const QList<WarnquotaJob> &runs, const std::optional<QByteArray> &asRead = {});
    /// The whole text of a file; empty when it cannot be read.
    QString readFile(const QString &path);
    /// Replaces a file. One that reads as this text already keeps its bytes. One that holds bytes which no text can
    /// bring back is kept as a copy before, and so is one that does not read as it was read; without a copy nothing is
    /// written. False when that cannot be done; then the old file stays.
    bool writeFile(const QString &path, const QString &text, const std::optional<QString> &asRead = {});

Q_SIGNALS:
    void error(const QString &message);
    /// Among others, why the system did not let a file be written.
    void detail(const QString &text);

private:
    /// False, with a text, for a file whose content would be lost unseen.
    bool isReplaceable(const QString &path);
    /// Hands the bytes of a file, none of a missing one, to `keep` and then to `replace`, which succeeds only while the
    /// file still holds them; anew when somebody else saved it meanwhile. False when either fails.
    bool replaceLookedAt(const QString &path, const std::function<bool(const QByteArray &)> &keep,
                         const std::function<FileReplacement(const QByteArray &)> &replace);
    /// Makes a copy of a table that is to be replaced by one with these lines, where something would be lost.
    bool keepTable(const QByteArray &table, const QByteArrayList &newLines, const std::optional<QByteArray> &asRead);
    /// Makes a copy of a text that is not what it was, or that is none.
    bool keepText(const QString &path, const QByteArray &bytes, const std::optional<QString> &asRead);
    bool keepWhatOthersWrote(const QString &path, const QByteArray &bytes);
    /// Makes a copy and says so in one of the texts: %1 is the path, %2 that of the copy.
    bool keep(const QString &path, const QByteArray &bytes, const QString &keptText, const QString &failedText);
};
