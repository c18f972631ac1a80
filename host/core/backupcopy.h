// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "kraglobal.h"

#include <QByteArray>
#include <QString>

/// Keeps a file as it was before something in it is lost.
namespace BackupCopy
{

/// Writes what a file holds to a new one under "/var/backups" that only root reads, as a setting in it may be a
/// password; never beside the file: some crons would run the copy of a table. Returns the path of the copy once it is
/// on the disk; empty when it could not be made. Any thread.
KRA_EXPORT QString make(const QString &path, const QByteArray &bytes);

} // namespace BackupCopy
