// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "newfile.h"

#include <QFile>

#include <cerrno>
#include <chrono>
#include <cstdio>
#include <system_error>
#include <thread>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace
{

constexpr auto LockWait = std::chrono::seconds(10);
constexpr auto LockPause = std::chrono::milliseconds(20);

bool lock(int descriptor)
{
    const auto end = std::chrono::steady_clock::now() + LockWait;
    while (flock(descriptor, LOCK_EX | LOCK_NB) != 0) {
        if (errno != EWOULDBLOCK && errno != EINTR)
            return false;
        if (std::chrono::steady_clock::now() >= end) {
            errno = EBUSY;
            return false;
        }
        std::this_thread::sleep_for(LockPause);
    }
    return true;
}

} // namespace

NewFile::NewFile(const QString &folder, const QString &name, mode_t mode)
    : _target(QStringLiteral("%1/%2").arg(folder, name))
    , _path(QFile::encodeName(QStringLiteral("%1/.%2.kra-new~").arg(folder, name)))
{
    while (!take(mode) && _error == 0) {
    }
}

NewFile::~NewFile()
{
    if (_descriptor < 0)
        return;
    if (!_isMoved)
        unlink(_path.constData());
    close(_descriptor);
    for (const int descriptor : _held)
        close(descriptor);
}

/// One attempt: true with a new file that is ours alone. Between making it and locking it another program can lock it,
/// take it for a leftover and remove it; then the name leads elsewhere, and the next attempt follows.
bool NewFile::take(mode_t mode)
{
    constexpr int flags = O_RDWR | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK;
    _descriptor = open(_path.constData(), flags | O_CREAT | O_EXCL, mode);
    const bool isNew = _descriptor >= 0;
    if (!isNew && errno == EEXIST) {
        _descriptor = open(_path.constData(), flags);
        if (_descriptor < 0 && errno == ENOENT)
            return false; // it has just become what it was made for
    }
    if (!check(_descriptor >= 0))
        return false;
    if (!lock(_descriptor)) {
        _error = errno;
        if (isNew && _error != EBUSY)
            unlink(_path.constData());
    } else if (isInPlace()) {
        if (isNew)
            return true;
        check(unlink(_path.constData()) == 0); // whoever made it has ended: it would hold the lock
    }
    close(_descriptor);
    _descriptor = -1;
    return false;
}

bool NewFile::isInPlace() const
{
    struct stat named = {};
    struct stat opened = {};
    return lstat(_path.constData(), &named) == 0 && fstat(_descriptor, &opened) == 0 && named.st_dev == opened.st_dev &&
           named.st_ino == opened.st_ino;
}

bool NewFile::write(const QByteArray &content)
{
    for (qint64 written = 0; written < content.size();) {
        const ssize_t count =
            ::write(_descriptor, content.constData() + written, static_cast<size_t>(content.size() - written));
        if (count < 0 && errno != EINTR)
            return check(false);
        if (count > 0)
            written += count;
    }
    return true;
}

bool NewFile::sync()
{
    return check(fsync(_descriptor) == 0);
}

bool NewFile::replace(const QString &target)
{
    _isMoved = check(rename(_path.constData(), QFile::encodeName(target).constData()) == 0);
    return _isMoved;
}

bool NewFile::exchange(const QString &target)
{
    const QByteArray targetPath = QFile::encodeName(target);
    hold(targetPath);
    const bool isDone = renameat2(AT_FDCWD, _path.constData(), AT_FDCWD, targetPath.constData(), RENAME_EXCHANGE) == 0;
    check(isDone);
    hold(_path); // another than before where somebody saved it in between
    return isDone;
}

/// Nobody else is waited for: a lock that a stranger has on the file is none against our programs.
void NewFile::hold(const QByteArray &path)
{
    const int descriptor = open(path.constData(), O_RDONLY | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK);
    if (descriptor < 0)
        return;
    flock(descriptor, LOCK_EX | LOCK_NB);
    _held.push_back(descriptor);
}

bool NewFile::become(const QString &target)
{
    return check(link(_path.constData(), QFile::encodeName(target).constData()) == 0);
}

QString NewFile::keep()
{
    for (int number = 1; !_isMoved; ++number) {
        const QString kept = QStringLiteral("%1.kra-saved%2~").arg(_target).arg(number);
        if (become(kept))
            return kept;
        _isMoved = _error != EEXIST; // stays
    }
    return QFile::decodeName(_path);
}

bool NewFile::check(bool succeeded)
{
    if (!succeeded)
        _error = errno;
    return succeeded;
}

void syncFolder(const QString &folder)
{
    const int descriptor = open(QFile::encodeName(folder).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (descriptor < 0)
        return;
    fsync(descriptor);
    close(descriptor);
}

QString systemText(int error)
{
    return QString::fromLocal8Bit(std::generic_category().message(error).c_str());
}
