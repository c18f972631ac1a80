// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "accountid.h"

#include <quotakind.h>

#include <QCoreApplication>
#include <QString>
#include <QStringList>
#include <QVector>

#include <cstddef>
#include <optional>
#include <vector>

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
    /// The accounts of one file, found by a table of their places. One of nodes, as the library's are, takes three
    /// times as long to make, and a whole read asks it only whether two accounts have one name.
    class Table
    {
    public:
        explicit Table(QVector<AccountId> entries);

        /// In the order of the file. Of two with one name both have the id of the first.
        const QVector<AccountId> &accounts() const { return _accounts; }
        const AccountId *find(const QString &name) const;

    private:
        static constexpr int Free = -1;

        std::size_t slotOf(const QString &name) const;

        QVector<AccountId> _accounts;
        uint _hashSeed;
        std::vector<int> _places;
    };

    const Table &table(QuotaKind kind);

    BufferData &_buffer;
    std::optional<Table> _users;
    std::optional<Table> _groups;
};
