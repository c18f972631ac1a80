// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <quotakind.h>

#include <QCoreApplication>
#include <QHash>
#include <QString>
#include <QStringList>

#include <optional>

class BufferData;

/// The names and ids of the machine's local accounts, from the sources of a BufferData; belongs to its thread.
class AccountTable
{
    Q_DECLARE_TR_FUNCTIONS(AccountTable)

public:
    /// `buffer` is not owned and must live longer.
    explicit AccountTable(BufferData &buffer);

    /// Of the first account with that name; -1 when there is none. Ids above 2^31 keep their bits in the signed
    /// number.
    qint32 id(const QString &name, QuotaKind kind);
    /// In the order of the file.
    QStringList names(QuotaKind kind);
    /// Why the kernel keeps no quota under that name: there is no such account, or it has the one id that no account
    /// can have there. Empty for all others.
    QString whyWithoutQuota(const QString &name, QuotaKind kind);

    /// To be called when the buffer has forgotten its sources.
    void reset();

private:
    using Ids = QHash<QString, qint32>;

    const Ids &ids(QuotaKind kind);

    BufferData &_buffer;
    std::optional<Ids> _userIds;
    std::optional<Ids> _groupIds;
};
