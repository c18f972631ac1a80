// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <quotakind.h>

#include <QLatin1String>
#include <QString>
#include <QStringList>

#include <algorithm>
#include <array>
#include <cstddef>

/// Files, programs and words of the system that the back end speaks with.
namespace SystemNames
{

/// QLatin1String counts its letters in a way that not every compiler takes for a constant.
template<std::size_t Size>
constexpr QLatin1String name(const char (&letters)[Size])
{
    return QLatin1String(letters, static_cast<int>(Size) - 1);
}

inline constexpr QLatin1String Fstab = name("/etc/fstab");
inline constexpr QLatin1String Mtab = name("/etc/mtab");
inline constexpr QLatin1String Passwd = name("/etc/passwd");
inline constexpr QLatin1String Group = name("/etc/group");

inline constexpr QLatin1String Blkid = name("blkid");
inline constexpr QLatin1String Mount = name("mount");
inline constexpr QLatin1String Quotacheck = name("quotacheck");
inline constexpr QLatin1String Quotaon = name("quotaon");
inline constexpr QLatin1String Quotaoff = name("quotaoff");

/// What a device can be called by in "/etc/fstab" instead of its path.
inline constexpr std::array<QLatin1String, 4> DeviceKeys = {name("UUID"), name("LABEL"), name("PARTLABEL"),
                                                            name("PARTUUID")};
/// The file systems that can carry quotas.
inline constexpr std::array<QLatin1String, 3> QuotaFilesystems = {name("ext2"), name("ext3"), name("ext4")};

inline bool isQuotaFilesystem(const QString &type)
{
    return std::find(QuotaFilesystems.cbegin(), QuotaFilesystems.cend(), type) != QuotaFilesystems.cend();
}

/// The mount option that turns on a kind of quota.
constexpr QLatin1String optionWord(QuotaKind kind)
{
    return kind == GroupQuota ? name("grpquota") : name("usrquota");
}

/// The same as usrquota, and what switches all kinds off again that stand before it.
inline constexpr QLatin1String QuotaWord = name("quota");
inline constexpr QLatin1String NoQuotaWord = name("noquota");

/// The option under which a journaled file system keeps a kind of quota, and the format of both of its files.
constexpr QLatin1String journaledWord(QuotaKind kind)
{
    return kind == GroupQuota ? name("grpjquota=") : name("usrjquota=");
}
inline constexpr QLatin1String JournaledFormat = name("jqfmt=");

/// The journaled option of a kind that names a file; empty when there is none.
inline QString journaledOption(const QStringList &options, QuotaKind kind)
{
    const QLatin1String word = journaledWord(kind);
    for (const QString &option : options) {
        if (option.startsWith(word) && option.size() > word.size())
            return option;
    }
    return {};
}

/// The file in the mount point in which the kernel keeps a kind of quota.
constexpr QLatin1String quotaFileName(QuotaKind kind)
{
    return kind == GroupQuota ? name("aquota.group") : name("aquota.user");
}

/// The same under these options of the mounted device.
inline QString quotaFileName(const QStringList &options, QuotaKind kind)
{
    const QString journaled = journaledOption(options, kind);
    return journaled.isEmpty() ? QString(quotaFileName(kind)) : journaled.mid(journaledWord(kind).size());
}

} // namespace SystemNames
