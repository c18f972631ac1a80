// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "warnquotajob.h"

#include <elementdata.h>

#include <QByteArray>
#include <QList>
#include <QMap>
#include <QString>
#include <QStringList>

#include <optional>

/// What a read found beside the runs and the texts, for the page to say.
struct NotificationNotes
{
    bool hasDailyRun = false;       ///< the system's own daily job runs `warnquota` too
    bool isTableMissing = false;    ///< there is no cron file yet
    bool isCronMissing = false;     ///< nor a folder for it
    bool isNothingBroken = true;    ///< all that could not be read does not exist yet
    QStringList droppedLines;       ///< lines of the cron file that are lost when a run is edited
    QStringList missingFiles;       ///< paths of texts that do not exist
    QStringList filesWithoutFolder; ///< those of them that cannot be made before their folder
};

/// The cron file and the texts, by path, as they were read.
struct NotificationsAsRead
{
    QByteArray table;
    QMap<QString, QString> files;
};

/// The quota warnings of the computer: who is warned when, and the texts of the files that `warnquota` uses.
class NotificationsData : public ElementData
{
public:
    ~NotificationsData() override;

    QList<WarnquotaJob> jobs;     ///< in the order of the cron file
    QMap<QString, QString> files; ///< the whole text of each file, by path

    /// With it an update writes what differs from it, and keeps a copy of what somebody else wrote since. Without it
    /// an update writes everything.
    std::optional<NotificationsAsRead> asRead;
    NotificationNotes notes;
};
