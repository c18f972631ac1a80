// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "accounttable.h"

#include "accountfile.h"
#include "bufferdata.h"

#include <abstractelementdata.h>
#include <accountrules.h>

#include <QHash>

#include <algorithm>
#include <utility>

AccountTable::AccountTable(BufferData &buffer)
    : _buffer(buffer)
{}

qint32 AccountTable::id(const QString &name, QuotaKind kind)
{
    const AccountId *account = table(kind).find(name);
    return account ? static_cast<qint32>(account->id) : AbstractElementData::NoId;
}

QStringList AccountTable::names(QuotaKind kind)
{
    const QVector<AccountId> &all = accounts(kind);
    QStringList names;
    names.reserve(all.size());
    for (const AccountId &account : all)
        names.append(account.name);
    return names;
}

const QVector<AccountId> &AccountTable::accounts(QuotaKind kind)
{
    return table(kind).accounts();
}

QString AccountTable::whyWithoutQuota(const QString &name, QuotaKind kind)
{
    if (id(name, kind) != AbstractElementData::NoId)
        return {};
    if (table(kind).find(name))
        return tr("%1 has the id %2, for which there are no quotas")
            .arg(name, QString::number(quint32(AbstractElementData::NoId)));
    return kind == GroupQuota ? tr("There is no group %1").arg(name) : tr("There is no user %1").arg(name);
}

void AccountTable::reset()
{
    _users.reset();
    _groups.reset();
}

const AccountTable::Table &AccountTable::table(QuotaKind kind)
{
    std::optional<Table> &table = kind == GroupQuota ? _groups : _users;
    if (!table)
        table.emplace(kind == GroupQuota ? AccountFile::groupIds(_buffer.groupFile())
                                         : AccountFile::userIds(_buffer.passwdFile()));
    return *table;
}

AccountTable::Table::Table(QVector<AccountId> entries)
    : _accounts(std::move(entries))
    , _hashSeed(static_cast<uint>(qGlobalQHashSeed()))
{
    const auto isNone = [](const AccountId &entry) { return !AccountRules::isAccountName(entry.name); };
    _accounts.erase(std::remove_if(_accounts.begin(), _accounts.end(), isNone), _accounts.end());
    std::size_t size = 1; // a power of two, and twice as much as there can be in it
    while (size < 2 * static_cast<std::size_t>(_accounts.size()) + 1)
        size *= 2;
    _places.assign(size, Free);
    for (int i = 0; i < _accounts.size(); ++i) {
        AccountId &account = _accounts[i];
        int &first = _places[slotOf(account.name)];
        if (first == Free)
            first = i;
        account.id = _accounts.at(first).id;
    }
}

const AccountId *AccountTable::Table::find(const QString &name) const
{
    const int place = _places[slotOf(name)];
    return place == Free ? nullptr : &_accounts.at(place);
}

/// Where the name is, or is to be.
std::size_t AccountTable::Table::slotOf(const QString &name) const
{
    const std::size_t mask = _places.size() - 1;
    std::size_t slot = qHash(name, _hashSeed) & mask;
    while (_places[slot] != Free && _accounts.at(_places[slot]).name != name)
        slot = (slot + 1) & mask;
    return slot;
}
