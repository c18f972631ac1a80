// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "wholefile.h"

#include <QFile>
#include <QFileInfo>

std::optional<QByteArray> WholeFile::read(const QString &path)
{
    QFile file(path);
    if (!QFileInfo(path).isFile() || !file.open(QIODevice::ReadOnly))
        return std::nullopt;
    const QByteArray bytes = file.readAll();
    if (file.error() != QFileDevice::NoError)
        return std::nullopt;
    return bytes;
}

QString WholeFile::text(const QByteArray &bytes)
{
    return QString::fromLocal8Bit(bytes.constData(), bytes.size()); // also past a NUL
}
