// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QString>
#include <QtGlobal>

/// An account of "/etc/passwd" or "/etc/group" as far as quotas need it.
struct AccountId
{
    QString name;
    quint32 id = 0;
};
Q_DECLARE_TYPEINFO(AccountId, Q_MOVABLE_TYPE);
