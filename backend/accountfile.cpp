// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "accountfile.h"

#include "cfile.h"

#include <algorithm>
#include <charconv>
#include <cstdio>
#include <cstring>
#include <optional>
#include <string_view>

#include <grp.h>
#include <pwd.h>

namespace
{

/// Nearly all are ASCII, which is the same in every locale's encoding, and which the codec takes ten times as long for.
QString toText(std::string_view field)
{
    const bool isAscii =
        std::all_of(field.begin(), field.end(), [](char byte) { return static_cast<signed char>(byte) >= 0; });
    const int size = static_cast<int>(field.size());
    return isAscii ? QString::fromLatin1(field.data(), size) : QString::fromLocal8Bit(field.data(), size);
}

/// A field that its line lacks ("+name") is null.
QString toText(const char *field)
{
    return field == nullptr ? QString() : toText(std::string_view(field));
}

PasswdEntry toEntry(const passwd &record)
{
    PasswdEntry entry;
    entry.name = toText(record.pw_name);
    entry.password = toText(record.pw_passwd);
    entry.uid = record.pw_uid;
    entry.gid = record.pw_gid;
    entry.gecos = toText(record.pw_gecos);
    entry.home = toText(record.pw_dir);
    entry.shell = toText(record.pw_shell);
    return entry;
}

GroupEntry toEntry(const group &record)
{
    GroupEntry entry;
    entry.name = toText(record.gr_name);
    entry.password = toText(record.gr_passwd);
    entry.gid = record.gr_gid;
    for (char **member = record.gr_mem; *member != nullptr; ++member)
        entry.members.append(toText(*member));
    return entry;
}

/// By the library's readers, which work on a stream alone.
template<typename Entry, typename Record>
QVector<Entry> entriesOf(QByteArray bytes, Record *(*next)(FILE *))
{
    QVector<Entry> entries;
    if (bytes.isEmpty())
        return entries;
    const CFile stream(fmemopen(bytes.data(), static_cast<std::size_t>(bytes.size()), "r"));
    while (const Record *record = stream ? next(stream.get()) : nullptr)
        entries.append(toEntry(*record));
    return entries;
}

/// Whether the line is, for the library, blank, a comment, or one that another name service is to complete, or may be.
bool mayBeNoAccount(char first)
{
    return first <= ' ' || first == '#' || first == '+' || first == '-';
}

/// The account of a line in which there is nothing to interpret: a name, a password and, each with a colon behind it,
/// `numberCount` plain numbers, of which the first is the id. None for any other line: the library knows what that is.
std::optional<AccountId> plainAccount(std::string_view line, int numberCount)
{
    if (line.empty() || mayBeNoAccount(line.front()))
        return std::nullopt;
    const std::size_t nameEnd = line.find(':');
    const std::size_t passwordEnd = nameEnd == std::string_view::npos ? nameEnd : line.find(':', nameEnd + 1);
    if (passwordEnd == std::string_view::npos || line.substr(0, passwordEnd).find('\0') != std::string_view::npos)
        return std::nullopt;
    quint32 id = 0;
    const char *at = line.data() + passwordEnd + 1;
    const char *const end = line.data() + line.size();
    for (int i = 0; i < numberCount; ++i) {
        quint32 number = 0;
        const std::from_chars_result parsed = std::from_chars(at, end, number);
        if (parsed.ec != std::errc() || parsed.ptr == end || *parsed.ptr != ':')
            return std::nullopt;
        if (i == 0)
            id = number;
        at = parsed.ptr + 1;
    }
    return AccountId{toText(line.substr(0, nameEnd)), id};
}

/// `other` reads what is no plain account.
template<typename Entry>
QVector<AccountId> idsOf(const QByteArray &bytes, int numberCount, QVector<Entry> (*other)(const QByteArray &),
                         quint32 Entry::*id)
{
    QVector<AccountId> ids;
    const std::string_view file(bytes.constData(), static_cast<std::size_t>(bytes.size()));
    for (std::size_t start = 0; start < file.size();) {
        const std::size_t length = std::min(file.find('\n', start), file.size() - 1) + 1 - start;
        const std::string_view line = file.substr(start, length); // with its line feed, where it has one
        start += length;
        if (std::optional<AccountId> plain = plainAccount(line, numberCount)) {
            ids.append(std::move(*plain));
            continue;
        }
        const QVector<Entry> entries = other(QByteArray(line.data(), static_cast<int>(line.size())));
        for (const Entry &entry : entries)
            ids.append({entry.name, entry.*id});
    }
    return ids;
}

} // namespace

QVector<PasswdEntry> AccountFile::users(const QByteArray &passwd)
{
    return entriesOf<PasswdEntry>(passwd, &fgetpwent);
}

QVector<GroupEntry> AccountFile::groups(const QByteArray &group)
{
    return entriesOf<GroupEntry>(group, &fgetgrent);
}

QVector<AccountId> AccountFile::userIds(const QByteArray &passwd)
{
    return idsOf(passwd, 2, &users, &PasswdEntry::uid); // uid and gid
}

QVector<AccountId> AccountFile::groupIds(const QByteArray &group)
{
    return idsOf(group, 1, &groups, &GroupEntry::gid);
}
