// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QString>
#include <QtGlobal>

/// One user account of "/etc/passwd".
struct PasswdEntry
{
    QString name;
    QString password;
    quint32 uid = 0;
    quint32 gid = 0;
    QString gecos;
    QString home;
    QString shell;
};
Q_DECLARE_TYPEINFO(PasswdEntry, Q_MOVABLE_TYPE);
