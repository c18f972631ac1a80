// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QString>
#include <QVector>

#include <sys/quota.h>

/// A computer with 50,000 accounts, all of which use the one disk that has quotas and have limits there.
namespace ManyAccounts
{
constexpr int Count = 50000;

/// Makes the machine such a computer. Empty, or why it could not.
QString setUp();
/// The disk.
QString device();
/// The local accounts, by the C library.
QVector<quint32> ids();
/// What an account uses and may use: one of twenty limits; one in ten is over the soft one.
dqblk usageAndLimits(quint32 id);
} // namespace ManyAccounts
