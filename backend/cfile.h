// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QByteArray>
#include <QFile>
#include <QFileInfo>
#include <QString>

#include <cerrno>
#include <cstdio>
#include <memory>
#include <vector>

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

/// Appends what is left of the stream, in few pieces. False, with the reason in errno, when it cannot be read to its
/// end: then what came before is there.
inline bool readToEnd(FILE *stream, QByteArray &bytes)
{
    constexpr std::size_t PieceSize = 64 * 1024;
    std::vector<char> piece(PieceSize);
    while (const std::size_t length = std::fread(piece.data(), 1, piece.size(), stream))
        bytes.append(piece.data(), static_cast<int>(length));
    return std::ferror(stream) == 0;
}
