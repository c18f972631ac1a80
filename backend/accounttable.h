// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QHash>
#include <QString>
#include <QStringList>

#include <optional>

class BufferData;

/// The names and ids of the machine's local accounts, from the sources of a BufferData; belongs to its thread.
class AccountTable
{
public:
    /// `buffer` is not owned and must live longer.
    explicit AccountTable(BufferData &buffer);

    /// See QuotaManager for these.
    qint32 userId(const QString &name);
    qint32 groupId(const QString &name);
    QStringList userNames();
    QStringList groupNames();

    /// To be called after the buffer's cache was reset.
    void reset();

private:
    using Ids = QHash<QString, qint32>;

    BufferData &_buffer;
    std::optional<Ids> _userIds;
    std::optional<Ids> _groupIds;
};
