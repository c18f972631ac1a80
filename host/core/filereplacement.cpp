// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "filereplacement.h"

#include "newfile.h"

#include <QByteArrayList>
#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <cerrno>
#include <optional>

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

namespace
{

constexpr mode_t AllModeBits = 07777;
constexpr mode_t RootWritableMode = 0644;
constexpr mode_t ForAll = 0666; // less the umask
constexpr mode_t OwnerOnly = 0600;
constexpr int MaximumLinks = 40;

/// They are made for one file, and wrong or refused on any other.
bool isOfOneFile(const QByteArray &attribute)
{
    return attribute == "security.evm" || attribute == "security.ima";
}

/// Lists and values are asked for twice, first for their size. Leaves a reason in errno where they changed in between.
bool isAsLongAsAsked(ssize_t size, ssize_t asked)
{
    if (size >= 0 && size != asked)
        errno = EAGAIN;
    return size == asked;
}

/// A system call that fails leaves its reason in errno.
bool listAttributes(int file, QByteArrayList &names)
{
    const ssize_t size = flistxattr(file, nullptr, 0);
    if (size < 0)
        return errno == ENOTSUP;
    QByteArray list(static_cast<int>(size), Qt::Uninitialized);
    if (!isAsLongAsAsked(flistxattr(file, list.data(), static_cast<size_t>(size)), size))
        return false;
    list.chop(1); // each name ends with a NUL
    names = list.isEmpty() ? QByteArrayList() : list.split('\0');
    names.erase(std::remove_if(names.begin(), names.end(), isOfOneFile), names.end());
    return true;
}

bool copyAttribute(int from, int to, const QByteArray &name)
{
    const ssize_t size = fgetxattr(from, name.constData(), nullptr, 0);
    if (size < 0)
        return false;
    QByteArray value(static_cast<int>(size), Qt::Uninitialized);
    return isAsLongAsAsked(fgetxattr(from, name.constData(), value.data(), static_cast<size_t>(size)), size) &&
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

/// The file as it is at one moment.
class PresentFile
{
public:
    explicit PresentFile(const QByteArray &path)
        : _descriptor(open(path.constData(), O_RDONLY | O_CLOEXEC | O_NONBLOCK))
        , _error(_descriptor < 0 ? errno : 0)
    {}
    PresentFile(const PresentFile &) = delete;
    PresentFile &operator=(const PresentFile &) = delete;
    ~PresentFile()
    {
        if (_descriptor >= 0)
            close(_descriptor);
    }

    int descriptor() const { return _descriptor; }
    bool isMissing() const { return _error == ENOENT; }
    /// Why nothing can take its place; empty when something can.
    QString whyUnfit() const
    {
        if (isMissing())
            return {};
        struct stat state = {};
        if (_error != 0 || fstat(_descriptor, &state) != 0)
            return systemText(_error != 0 ? _error : errno);
        return S_ISREG(state.st_mode) ? QString()
                                      : QCoreApplication::translate("FileReplacement", "not a regular file");
    }
    bool holds(const QByteArray &content) const { return isMissing() ? content.isEmpty() : read() == content; }
    /// Null where it cannot be read.
    QByteArray read() const
    {
        QFile file;
        return file.open(_descriptor, QIODevice::ReadOnly, QFileDevice::DontCloseHandle) ? file.readAll()
                                                                                         : QByteArray();
    }

private:
    int _descriptor;
    int _error;
};

bool giveRights(const PresentFile &old, const NewFile &file, FileRights rights)
{
    if (rights == FileRights::OfOldFile)
        return old.isMissing() || copyIdentity(old.descriptor(), file.descriptor());
    struct stat state = {};
    state.st_mode = RootWritableMode;
    if (!old.isMissing() && fstat(old.descriptor(), &state) != 0)
        return false;
    return give(file.descriptor(), 0, 0, (state.st_mode & RootWritableMode) | OwnerOnly);
}

/// Where a path leads to, whether or not there is something; empty for links that go round.
QString targetOf(const QString &path)
{
    QFileInfo info(path);
    if (info.exists())
        return info.canonicalFilePath();
    for (int i = 0; info.isSymLink(); ++i) {
        if (i == MaximumLinks)
            return {};
        info.setFile(info.symLinkTarget());
    }
    return info.absoluteFilePath();
}

FileReplacement notWritten(int error)
{
    return {FileReplacement::End::NotWritten, systemText(error)};
}

/// Puts the new file where the old one is, and looks at what it has got in exchange: a save of somebody else between
/// the last look and this moment is put back. He may save again meanwhile; then what is taken out is not what was put
/// in, and is put back in its turn. What cannot be put back is not lost.
FileReplacement takePlaceOf(const QString &target, NewFile &file, const QByteArray &content, const QByteArray &expected)
{
    using End = FileReplacement::End;
    if (!file.exchange(target)) {
        const bool isGone = file.error() == ENOENT;
        if (isGone && !expected.isEmpty())
            return {End::ChangedMeanwhile, {}};
        if ((isGone && file.become(target)) || (file.error() == EINVAL && file.replace(target)))
            return {};
        return file.error() == EEXIST ? FileReplacement{End::ChangedMeanwhile, {}} : notWritten(file.error());
    }
    QByteArray put = content;
    QByteArray wanted = expected;
    QByteArray taken = PresentFile(file.path()).read();
    if (taken == wanted)
        return {};
    do {
        wanted = put;
        put = taken;
        if (!file.exchange(target)) {
            const int error = file.error();
            if (error == ENOENT && file.become(target))
                return {End::ChangedMeanwhile, {}};
            //: %1: what the system said, %2: a path
            return {End::NotWritten, QCoreApplication::translate("FileReplacement",
                                                                 "%1; what somebody else saved meanwhile is kept as %2")
                                         .arg(systemText(error), file.keep())};
        }
        taken = PresentFile(file.path()).read();
    } while (taken != wanted);
    return {End::ChangedMeanwhile, {}};
}

FileReplacement replace(const QString &path, const QByteArray &content, FileRights rights,
                        const std::optional<QByteArray> &expected)
{
    const QFileInfo target(targetOf(path));
    const QByteArray targetPath = QFile::encodeName(target.filePath());
    if (target.filePath().isEmpty())
        return {FileReplacement::End::NotOpened, systemText(ELOOP)};
    const PresentFile before(targetPath);
    if (!before.whyUnfit().isEmpty())
        return {FileReplacement::End::NotOpened, before.whyUnfit()};
    const bool takesNoRights = before.isMissing() && rights == FileRights::OfOldFile;
    NewFile file(target.path(), target.fileName(), takesNoRights ? ForAll : OwnerOnly);
    if (file.error() != 0)
        return {FileReplacement::End::NotOpened, systemText(file.error())};
    // A disk may say only when it is asked to keep the file that it has no room for it.
    if (!file.write(content) || !file.sync())
        return notWritten(file.error());

    const PresentFile old(targetPath); // looked at again: what follows takes no time
    const QString whyUnfitNow = old.whyUnfit();
    if (!whyUnfitNow.isEmpty())
        return {FileReplacement::End::NotOpened, whyUnfitNow};
    if (expected && !old.holds(*expected))
        return {FileReplacement::End::ChangedMeanwhile, {}};
    if (!giveRights(old, file, rights))
        return notWritten(errno);
    if (!file.sync())
        return notWritten(file.error());
    FileReplacement result;
    if (expected)
        result = takePlaceOf(target.filePath(), file, content, *expected);
    else if (!file.replace(target.filePath()))
        result = notWritten(file.error());
    syncFolder(target.path());
    return result;
}

} // namespace

FileReplacement replaceFile(const QString &path, const QByteArray &content, FileRights rights)
{
    return replace(path, content, rights, std::nullopt);
}

FileReplacement replaceFile(const QString &path, const QByteArray &content, const QByteArray &expected,
                            FileRights rights)
{
    return replace(path, content, rights, expected);
}
