// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "mountentry.h"

#include <QHash>
#include <QString>
#include <QStringList>
#include <QVector>

class BlkidTable;

/// The lines of a mount table, and the devices that they are for. Made once for each reading of the table; all that
/// looks a device up in a table does so by one of these.
///
/// A line is for the device that "blkid" knows by the line's spelling, or else for what it spells. Of two lines the
/// first counts, and one that cannot name a device never does.
class MountTable
{
public:
    MountTable(const QVector<MountEntry> &entries, const BlkidTable &blkid);

    /// One for each line, whether or not it can name a device.
    const QStringList &devices() const { return _devices; }
    /// The line that is for the device; null when there is none.
    const MountEntry *lineFor(const QString &device) const { return at(_byDevice, device); }
    /// The line that is for the device, or spells it just like that.
    const MountEntry *lineNaming(const QString &device) const { return at(_byName, device); }

private:
    using LineByName = QHash<QString, int>;
    const MountEntry *at(const LineByName &lines, const QString &name) const;

    QVector<MountEntry> _entries;
    QStringList _devices;
    LineByName _byDevice;
    LineByName _byName;
};
