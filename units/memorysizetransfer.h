// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QMap>
#include <QObject>
#include <QString>

/// The table of size units. The base is 1024 throughout. Any thread.
class MemorySizeTransfer : public QObject
{
    Q_OBJECT

public:
    enum Unit
    {
        Bytes = 0,
        Kb = 1,
        Mb = 2,
        Gb = 3
    };

    explicit MemorySizeTransfer(QObject *parent = nullptr);

    /// Unit number to translated name, from the smallest unit to the largest.
    const QMap<int, QString> &units() const { return _units; }
    /// The translated name of one unit; empty for a number that is no unit. Saves building the whole table.
    static QString unitName(int unit);

private:
    QMap<int, QString> _units;
};
