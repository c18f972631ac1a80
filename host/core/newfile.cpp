// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "newfile.h"

#include <QFile>

#include <cerrno>
#include <cstdio>
#include <system_error>

#include <fcntl.h>
#include <unistd.h>

namespace
{

QByteArray besides(const QString &folder, const QString &name, const char *ending)
{
    return QFile::encodeName(QStringLiteral("%1/.%2.%3").arg(folder, name, QLatin1String(ending)));
}

} // namespace

NewFile::NewFile(const QString &folder, const QString &name, mode_t mode)
    : _target(QStringLiteral("%1/%2").arg(folder, name))
    , _path(besides(folder, name, "kra-new~"))
    , _lock(besides(folder, name, "kra-lock~"))
    , _error(_lock.error())
{
    if (_error != 0)
        return;
    // Whoever made one that is there has ended: he would have the lock.
    if (!check(unlink(_path.constData()) == 0) && _error != ENOENT)
        return;
    _error = 0;
    _descriptor = open(_path.constData(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, mode);
    check(_descriptor >= 0);
}

NewFile::~NewFile()
{
    if (_descriptor < 0)
        return;
    if (!_isMoved)
        unlink(_path.constData());
    close(_descriptor);
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
    return check(
        renameat2(AT_FDCWD, _path.constData(), AT_FDCWD, QFile::encodeName(target).constData(), RENAME_EXCHANGE) == 0);
}

bool NewFile::become(const QString &target)
{
    return check(link(_path.constData(), QFile::encodeName(target).constData()) == 0);
}

QString NewFile::keep()
{
    for (int number = 1; !_isMoved; ++number) {
        const QString kept = QStringLiteral("%1.kra-saved%2~").arg(_target, QString::number(number));
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
