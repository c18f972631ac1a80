// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <QtGlobal>

/// One line of a mount table file. Blanks and the like in a field are decoded; a column that is missing is empty or 0.
struct MountEntry
{
    QString fsName; ///< the device as the file spells it: a path, "UUID=…", "LABEL=…", or no device at all
    bool canNameDevice = true; ///< see MountColumns
    QString dir;               ///< the mount point, for people
    QByteArray dirBytes;       ///< the same for the system: its name need not be valid in the locale's encoding
    QString type;
    QString opts; ///< separated by commas
    qint32 freq = 0;
    qint32 passno = 0;

    QStringList options() const { return opts.split(QLatin1Char(',')); }
};
