// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "localaccounts.h"

#include <QCoreApplication>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <memory>

#include <grp.h>
#include <pwd.h>

namespace
{
constexpr quint32 lastSystemId = 999;
constexpr quint32 nobodyId = 65534;

/// Hands every entry of an account file to `take`. `next` is fgetpwent or fgetgrent: both keep their entry in a buffer
/// of their own, which grows with the longest line.
template<typename Entry, typename Take>
void readFile(const char *fileName, Entry *(*next)(FILE *), QStringList &failures, const Take &take)
{
    const std::unique_ptr<FILE, int (*)(FILE *)> file(std::fopen(fileName, "re"), &std::fclose);
    int error = errno;
    if (file) {
        errno = 0;
        while (const Entry *entry = next(file.get())) {
            take(*entry);
            errno = 0;
        }
        // The end of the file leaves ENOENT in some versions of the library, and nothing in others.
        error = std::ferror(file.get()) ? errno : 0;
    }
    if (error != 0)
        failures.append(QCoreApplication::translate("LocalAccounts", "Cannot read %1: %2")
                            .arg(QString::fromLocal8Bit(fileName), QString::fromLocal8Bit(std::strerror(error))));
}

/// "+" and "-" begin lines that let accounts of a network service in or keep them out. Those are no accounts, though
/// the library reads them as some with the id 0.
bool isAccount(const char *name)
{
    return *name != '+' && *name != '-';
}

QString text(const char *bytes)
{
    return QString::fromLocal8Bit(bytes ? bytes : "");
}
} // namespace

LocalAccounts LocalAccounts::read()
{
    LocalAccounts accounts;
    readFile("/etc/passwd", &fgetpwent, accounts.failures, [&accounts](const passwd &entry) {
        if (!isAccount(entry.pw_name))
            return;
        accounts.users.append({text(entry.pw_name), entry.pw_uid, entry.pw_gid, text(entry.pw_gecos),
                               text(entry.pw_dir), text(entry.pw_shell)});
    });
    readFile("/etc/group", &fgetgrent, accounts.failures, [&accounts](const group &entry) {
        if (!isAccount(entry.gr_name))
            return;
        Group read{text(entry.gr_name), entry.gr_gid, {}};
        for (char *const *member = entry.gr_mem; member && *member; ++member)
            read.members.append(text(*member));
        accounts.groups.append(read);
    });
    return accounts;
}

QHash<quint32, QString> LocalAccounts::groupNames() const
{
    QHash<quint32, QString> names;
    names.reserve(groups.size());
    for (const Group &group : groups) {
        if (!names.contains(group.id))
            names.insert(group.id, group.name);
    }
    return names;
}

bool LocalAccounts::isSystemId(quint32 id)
{
    return id <= lastSystemId || id == nobodyId;
}
