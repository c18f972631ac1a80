// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QObject>
#include <QVector>

/// Connections that are made one by one and cut together.
class ConnectionList
{
public:
    void operator+=(const QMetaObject::Connection &connection) { _connections += connection; }
    void cut()
    {
        for (const QMetaObject::Connection &connection : qAsConst(_connections))
            QObject::disconnect(connection);
        _connections.clear();
    }

private:
    QVector<QMetaObject::Connection> _connections;
};
