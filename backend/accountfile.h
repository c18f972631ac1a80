// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "accountid.h"
#include "groupentry.h"
#include "passwdentry.h"

#include <QByteArray>
#include <QVector>

/// What the bytes of "/etc/passwd" and "/etc/group" say, as the C library reads them. Texts come in the local 8-bit
/// encoding. Any thread, but one at a time: the library keeps what it read last in one place.
namespace AccountFile
{

QVector<PasswdEntry> users(const QByteArray &passwd);
QVector<GroupEntry> groups(const QByteArray &group);

/// The names and ids of the same entries and nothing else, in a fifth of the time.
QVector<AccountId> userIds(const QByteArray &passwd);
QVector<AccountId> groupIds(const QByteArray &group);

} // namespace AccountFile
