// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QFile>
#include <QFileInfo>
#include <QString>

#include <cerrno>
#include <cstdio>
#include <memory>

struct CloseFile
{
    void operator()(FILE *file) const { std::fclose(file); }
};

/// A stream of the C library, for its readers of system tables.
using CFile = std::unique_ptr<FILE, CloseFile>;

/// Opens a file with one of the library's functions. None, with the reason in errno, when it is no regular file: a pipe
/// would be waited for until somebody writes to it.
template<typename Open>
CFile openRegular(const QString &path, Open open)
{
    const QFileInfo file(path);
    if (file.exists() && !file.isFile()) {
        errno = file.isDir() ? EISDIR : EINVAL;
        return nullptr;
    }
    return CFile(open(QFile::encodeName(path).constData()));
}
