// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "accounttable.h"

#include "accountfile.h"
#include "bufferdata.h"

#include <abstractelementdata.h>
#include <accountrules.h>

#include <algorithm>
#include <utility>

AccountTable::AccountTable(BufferData &buffer)
    : _buffer(buffer)
{}

qint32 AccountTable::id(const QString &name, QuotaKind kind)
{
    const Ids &ids = table(kind).ids;
    const auto found = ids.find(name);
    return found == ids.end() ? AbstractElementData::NoId : static_cast<qint32>(found->second);
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
    return table(kind).accounts;
}

QString AccountTable::whyWithoutQuota(const QString &name, QuotaKind kind)
{
    if (id(name, kind) != AbstractElementData::NoId)
        return {};
    if (table(kind).ids.count(name) != 0)
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
    : accounts(std::move(entries))
{
    const auto isNone = [](const AccountId &entry) { return !AccountRules::isAccountName(entry.name); };
    accounts.erase(std::remove_if(accounts.begin(), accounts.end(), isNone), accounts.end());
    ids.reserve(static_cast<std::size_t>(accounts.size()));
    for (AccountId &account : accounts)
        account.id = ids.try_emplace(account.name, account.id).first->second;
}
