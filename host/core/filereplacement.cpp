// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "filereplacement.h"

#include <QByteArrayList>
#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

#include <cerrno>

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

namespace
{

constexpr mode_t AllModeBits = 07777;
constexpr mode_t RootWritableMode = 0644;
constexpr mode_t RootOnlyMode = 0600;

/// Lists and values are asked for twice, first for their size; a system call that fails leaves its reason in errno.
bool listAttributes(int file, QByteArrayList &names)
{
    const ssize_t size = flistxattr(file, nullptr, 0);
    if (size < 0)
        return errno == ENOTSUP;
    QByteArray list(static_cast<int>(size), Qt::Uninitialized);
    if (flistxattr(file, list.data(), static_cast<size_t>(size)) != size)
        return false;
    list.chop(1); // each name ends with a NUL
    names = list.isEmpty() ? QByteArrayList() : list.split('\0');
    return true;
}

bool copyAttribute(int from, int to, const QByteArray &name)
{
    const ssize_t size = fgetxattr(from, name.constData(), nullptr, 0);
    if (size < 0)
        return false;
    QByteArray value(static_cast<int>(size), Qt::Uninitialized);
    return fgetxattr(from, name.constData(), value.data(), static_cast<size_t>(size)) == size &&
           fsetxattr(to, name.constData(), value.constData(), static_cast<size_t>(size), 0) == 0;
}

/// A new file can have attributes of its own, such as the access list that its folder hands down.
bool copyAttributes(int from, int to)
{
    QByteArrayList wanted;
    QByteArrayList present;
    if (!listAttributes(from, wanted) || !listAttributes(to, present))
        return false;
    for (const QByteArray &name : qAsConst(present))
        if (!wanted.contains(name) && fremovexattr(to, name.constData()) != 0)
            return false;
    for (const QByteArray &name : qAsConst(wanted))
        if (!copyAttribute(from, to, name))
            return false;
    return true;
}

/// In this order: a change of the owner takes bits of the mode away.
bool give(int file, uid_t owner, gid_t group, mode_t mode)
{
    return fchown(file, owner, group) == 0 && fchmod(file, mode) == 0;
}

/// The access list comes last: together with the mode it says the same as that of the old file.
bool copyIdentity(int from, int to)
{
    struct stat old = {};
    return fstat(from, &old) == 0 && give(to, old.st_uid, old.st_gid, old.st_mode & AllModeBits) &&
           copyAttributes(from, to);
}

/// Best effort: the old name leads to the old or the new content whether or not the folder is on the disk already.
void syncFolder(const QString &folder)
{
    const int descriptor = open(QFile::encodeName(folder).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (descriptor < 0)
        return;
    fsync(descriptor);
    close(descriptor);
}

bool giveRights(const QFile &old, const QSaveFile &file, FileRights rights)
{
    switch (rights) {
    case FileRights::RootWritable:
        return give(file.handle(), 0, 0, RootWritableMode);
    case FileRights::RootOnly:
        return give(file.handle(), 0, 0, RootOnlyMode);
    case FileRights::OfOldFile:
        break;
    }
    return !old.isOpen() || copyIdentity(old.handle(), file.handle());
}

} // namespace

FileReplacement replaceFile(const QString &path, const QByteArray &content, FileRights rights)
{
    const QFileInfo present(path);
    const QFileInfo target(present.exists() ? present.canonicalFilePath() : path);
    if (present.exists() && !target.isFile())
        return {FileReplacement::End::NotOpened, QCoreApplication::translate("FileReplacement", "not a regular file")};
    QFile old(target.filePath());
    if (present.exists() && !old.open(QIODevice::ReadOnly))
        return {FileReplacement::End::NotOpened, old.errorString()};
    QSaveFile file(target.filePath());
    if (!file.open(QIODevice::WriteOnly))
        return {FileReplacement::End::NotOpened, file.errorString()};

    // commit() would not mind a disk that says only when it is asked to keep the file that it has no room for it.
    if (!giveRights(old, file, rights) || file.write(content) != content.size() || !file.flush() ||
        fsync(file.handle()) != 0) {
        const int number = errno;
        const QString reason = file.error() == QFileDevice::NoError ? qt_error_string(number) : file.errorString();
        file.cancelWriting();
        return {FileReplacement::End::NotWritten, reason};
    }
    if (!file.commit())
        return {FileReplacement::End::NotWritten, file.errorString()};
    syncFolder(target.path());
    return {};
}
