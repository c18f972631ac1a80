// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "kraglobal.h"

#include <QByteArray>
#include <QString>

/// Keeps a file as it was before something in it is lost.
namespace BackupCopy
{

/// How many copies of one file are kept: the newest ones, and the oldest.
constexpr int Kept = 20;

/// Writes what a file holds to a new one under "/var/backups" that only its owner, root, reads, as a setting in it may
/// be a password; never beside the file: some crons would run the copy of a table. No copy takes the place of another,
/// also where several programs make one in the same second. Its name tells it from what others keep there, and from
/// copies of a file of that name in another folder: "fstab.kra-b14a7b80.20260131-235959". No second copy is made where
/// the newest holds just this. Returns the path of the copy once it is on the disk; empty when it could not be made.
/// Any thread.
KRA_EXPORT QString make(const QString &path, const QByteArray &bytes);

} // namespace BackupCopy
