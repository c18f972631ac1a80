// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "warnquotajob.h"

#include <elementdata.h>

#include <QList>
#include <QMap>
#include <QString>

/// The quota warnings of the machine: who is warned when, and the texts of the files that `warnquota` uses.
class NotificationsData : public ElementData
{
public:
    ~NotificationsData() override;

    /// In `params`: the lines of the cron file that writing it drops (list of texts). Set by a read, when there are
    /// any.
    static QString droppedLinesKey();
    /// In `params`: true when the system's own daily job runs `warnquota` too. Set by a read.
    static QString dailyRunKey();
    /// In `params`: the paths of the texts that were edited (list of texts). With it, an update leaves all other files
    /// that exist as they are.
    static QString editedFilesKey();
    /// In `params`: the texts of the cron file and of all files as they were read (map of texts, by path). With it, an
    /// update keeps a copy of what somebody else wrote into one of them since.
    static QString asReadKey();

    QList<WarnquotaJob> jobs;     ///< in the order of the cron file
    QMap<QString, QString> files; ///< the whole text of each file, by path
};
