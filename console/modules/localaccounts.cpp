// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "localaccounts.h"

#include <accountrules.h>

#include <QCoreApplication>

#include <cerrno>
#include <cstddef>
#include <cstdio>
#include <cstring>
#include <memory>
#include <vector>

#include <grp.h>
#include <pwd.h>

namespace
{
constexpr std::size_t firstBufferSize = 1 << 16;

/// Hands every entry of an account file to `take`. `next` is fgetpwent_r or fgetgrent_r. The library's calls without
/// "_r" begin each line anew for every kilobyte that it is longer, which takes half a minute for a large group.
template<typename Entry, typename Next, typename Take>
void readFile(const char *fileName, const Next &next, const std::function<bool()> &isCancelled, QStringList &failures,
              const Take &take)
{
    const std::unique_ptr<FILE, int (*)(FILE *)> file(std::fopen(fileName, "re"), &std::fclose);
    int error = file ? 0 : errno;
    std::vector<char> buffer(firstBufferSize);
    while (error == 0 && !isCancelled()) {
        Entry entry = {};
        Entry *found = nullptr;
        error = next(file.get(), &entry, buffer.data(), buffer.size(), &found);
        if (error == ERANGE) {
            buffer.resize(2 * buffer.size());
            error = 0; // the same line again
        } else if (error == 0 && found) {
            take(*found);
        } else if (!std::ferror(file.get())) {
            return; // the end
        } else if (error == 0) {
            error = EIO;
        }
    }
    if (error != 0)
        failures.append(QCoreApplication::translate("LocalAccounts", "Cannot read %1: %2")
                            .arg(QString::fromLocal8Bit(fileName), QString::fromLocal8Bit(std::strerror(error))));
}

QString text(const char *bytes)
{
    return QString::fromLocal8Bit(bytes ? bytes : "");
}
} // namespace

LocalAccounts LocalAccounts::read(const std::function<bool()> &isCancelled)
{
    LocalAccounts accounts;
    readFile<passwd>("/etc/passwd", &fgetpwent_r, isCancelled, accounts.failures, [&accounts](const passwd &entry) {
        const QString name = text(entry.pw_name);
        if (AccountRules::isAccountName(name))
            accounts.users.append(
                {name, entry.pw_uid, entry.pw_gid, text(entry.pw_gecos), text(entry.pw_dir), text(entry.pw_shell)});
    });
    readFile<group>("/etc/group", &fgetgrent_r, isCancelled, accounts.failures, [&accounts](const group &entry) {
        Group read{text(entry.gr_name), entry.gr_gid, {}};
        if (!AccountRules::isAccountName(read.name))
            return;
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
