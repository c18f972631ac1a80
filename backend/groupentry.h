// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QString>
#include <QStringList>
#include <QtGlobal>

/// One group of "/etc/group".
struct GroupEntry
{
    QString name;
    QString password;
    quint32 gid = 0;
    QStringList members;
};
Q_DECLARE_TYPEINFO(GroupEntry, Q_MOVABLE_TYPE);
