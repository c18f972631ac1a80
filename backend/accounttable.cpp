// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "accounttable.h"

#include "bufferdata.h"

namespace
{

constexpr qint32 NoId = -1;

/// A line such as "+@staff::::::" lets accounts of a network service in or keeps them out and is none itself. The
/// library reads it as one with the id 0, which is root's; its own look-ups pass it over.
bool isAccount(const QString &name)
{
    return !name.startsWith(QLatin1Char('+')) && !name.startsWith(QLatin1Char('-'));
}

/// Of two accounts with one name the first counts, which replaces the other. Ids above 2^31 keep their bits in the
/// signed number.
template<typename Entry, typename Id>
QHash<QString, qint32> idsByName(const QVector<Entry> &entries, Id Entry::*id)
{
    QHash<QString, qint32> ids;
    ids.reserve(entries.size());
    for (auto entry = entries.crbegin(); entry != entries.crend(); ++entry) {
        if (isAccount(entry->name))
            ids.insert(entry->name, static_cast<qint32>((*entry).*id));
    }
    return ids;
}

template<typename Entry>
QStringList names(const QVector<Entry> &entries)
{
    QStringList all;
    all.reserve(entries.size());
    for (const Entry &entry : entries) {
        if (isAccount(entry.name))
            all.append(entry.name);
    }
    return all;
}

} // namespace

AccountTable::AccountTable(BufferData &buffer)
    : _buffer(buffer)
{}

qint32 AccountTable::userId(const QString &name)
{
    if (!_userIds)
        _userIds = idsByName(_buffer.passwdEntries(), &PasswdEntry::uid);
    return _userIds->value(name, NoId);
}

qint32 AccountTable::groupId(const QString &name)
{
    if (!_groupIds)
        _groupIds = idsByName(_buffer.groupEntries(), &GroupEntry::gid);
    return _groupIds->value(name, NoId);
}

QStringList AccountTable::userNames()
{
    return names(_buffer.passwdEntries());
}

QStringList AccountTable::groupNames()
{
    return names(_buffer.groupEntries());
}

void AccountTable::reset()
{
    _userIds.reset();
    _groupIds.reset();
}
