// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "accounttable.h"

#include "bufferdata.h"

#include <abstractelementdata.h>
#include <accountrules.h>

namespace
{

/// Of two accounts with one name the first counts, which replaces the other.
template<typename Entry, typename Id>
QHash<QString, qint32> idsByName(const QVector<Entry> &entries, Id Entry::*id)
{
    QHash<QString, qint32> ids;
    ids.reserve(entries.size());
    for (auto entry = entries.crbegin(); entry != entries.crend(); ++entry) {
        if (AccountRules::isAccountName(entry->name))
            ids.insert(entry->name, static_cast<qint32>((*entry).*id));
    }
    return ids;
}

template<typename Entry>
QStringList namesOf(const QVector<Entry> &entries)
{
    QStringList all;
    all.reserve(entries.size());
    for (const Entry &entry : entries) {
        if (AccountRules::isAccountName(entry.name))
            all.append(entry.name);
    }
    return all;
}

} // namespace

AccountTable::AccountTable(BufferData &buffer)
    : _buffer(buffer)
{}

qint32 AccountTable::id(const QString &name, QuotaKind kind)
{
    return ids(kind).value(name, AbstractElementData::NoId);
}

QStringList AccountTable::names(QuotaKind kind)
{
    return kind == GroupQuota ? namesOf(_buffer.groupEntries()) : namesOf(_buffer.passwdEntries());
}

QString AccountTable::whyWithoutQuota(const QString &name, QuotaKind kind)
{
    if (id(name, kind) != AbstractElementData::NoId)
        return {};
    if (ids(kind).contains(name))
        return tr("%1 has the id %2, for which there are no quotas")
            .arg(name, QString::number(quint32(AbstractElementData::NoId)));
    return kind == GroupQuota ? tr("There is no group %1").arg(name) : tr("There is no user %1").arg(name);
}

void AccountTable::reset()
{
    _userIds.reset();
    _groupIds.reset();
}

const AccountTable::Ids &AccountTable::ids(QuotaKind kind)
{
    std::optional<Ids> &ids = kind == GroupQuota ? _groupIds : _userIds;
    if (!ids)
        ids = kind == GroupQuota ? idsByName(_buffer.groupEntries(), &GroupEntry::gid)
                                 : idsByName(_buffer.passwdEntries(), &PasswdEntry::uid);
    return *ids;
}
