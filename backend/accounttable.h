// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "accountid.h"

#include <quotakind.h>

#include <QCoreApplication>
#include <QString>
#include <QStringList>
#include <QVector>

#include <optional>
#include <unordered_map>

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
    /// The same names, each with what id() says of it. There until reset().
    const QVector<AccountId> &accounts(QuotaKind kind);
    /// Why the kernel keeps no quota under that name: there is no such account, or it has the one id that no account
    /// can have there. Empty for all others.
    QString whyWithoutQuota(const QString &name, QuotaKind kind);

    /// To be called when the buffer has forgotten its sources.
    void reset();

private:
    using Ids = std::unordered_map<QString, quint32>;

    struct Table
    {
        explicit Table(QVector<AccountId> entries);

        QVector<AccountId> accounts;
        Ids ids; ///< of two accounts with one name that of the first
    };

    const Table &table(QuotaKind kind);

    BufferData &_buffer;
    std::optional<Table> _users;
    std::optional<Table> _groups;
};
