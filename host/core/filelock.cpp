// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "filelock.h"

#include <cerrno>
#include <chrono>
#include <thread>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace
{

constexpr auto LockWait = std::chrono::seconds(10);
constexpr auto LockPause = std::chrono::milliseconds(20);
constexpr mode_t OwnerOnly = 0600; // whoever can open it could keep it

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

FileLock::FileLock(const QByteArray &path)
    : _path(path)
{
    while (!take() && _error == 0) {
    }
}

FileLock::~FileLock()
{
    if (_descriptor < 0)
        return;
    if (isInPlace())               // somebody may have cleaned up, and another have made one
        unlink(_path.constData()); // while it is locked: nobody else takes it for his own
    close(_descriptor);
}

/// One attempt. What was waited for is gone with its owner, and then the next attempt follows.
bool FileLock::take()
{
    _descriptor = open(_path.constData(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK, OwnerOnly);
    if (_descriptor < 0) {
        _error = errno;
        return false;
    }
    if (!lock(_descriptor)) {
        _error = errno;
        if (_error != EBUSY)
            unlink(_path.constData()); // where no lock can be had it is nobody's
    } else if (isInPlace()) {
        return true;
    }
    close(_descriptor);
    _descriptor = -1;
    return false;
}

bool FileLock::isInPlace() const
{
    struct stat named = {};
    struct stat opened = {};
    return lstat(_path.constData(), &named) == 0 && fstat(_descriptor, &opened) == 0 && named.st_dev == opened.st_dev &&
           named.st_ino == opened.st_ino;
}
