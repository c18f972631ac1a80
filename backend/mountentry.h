// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QString>
#include <QtGlobal>

/// One line of a mount table file. Blanks and the like in a field are decoded; a column that is missing is empty or 0.
struct MountEntry
{
    QString fsName; ///< the device as the file spells it: a path, "UUID=…", "LABEL=…", or no device at all
    bool canNameDevice = true; ///< see MountColumns
    QString dir;               ///< the mount point
    QString type;
    QString opts; ///< separated by commas
    qint32 freq = 0;
    qint32 passno = 0;
};
