// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

/// Text files that are read whole. Regular files only: what lies behind a device or a pipe has no whole.
namespace WholeFile
{

/// The bytes of a file; none when it cannot be read to its end.
std::optional<QByteArray> read(const QString &path);

/// The text of such bytes in the locale's encoding.
QString text(const QByteArray &bytes);

} // namespace WholeFile
