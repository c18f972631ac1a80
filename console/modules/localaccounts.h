// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QHash>
#include <QString>
#include <QStringList>
#include <QVector>

#include <functional>

/// The accounts of this machine as /etc/passwd and /etc/group list them, in the files' order. Reading takes time with
/// many accounts: it belongs on the worker thread.
struct LocalAccounts
{
    struct User
    {
        QString name;
        quint32 id = 0;
        quint32 groupId = 0;
        QString comment;
        QString home;
        QString shell;
    };
    struct Group
    {
        QString name;
        quint32 id = 0;
        QStringList members; ///< as the group's own line lists them, so without those whose primary group it is
    };

    QVector<User> users;
    QVector<Group> groups;
    QStringList failures; ///< one text for each file that could not be read to its end

    /// Ends early, with what was read so far, as soon as the work is cancelled. That is asked for each account.
    static LocalAccounts read(const std::function<bool()> &isCancelled = [] { return false; });

    /// The names of groups by their id; where several share one, the first.
    QHash<quint32, QString> groupNames() const;
};
