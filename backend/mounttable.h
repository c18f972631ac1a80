// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "mountentry.h"

#include <QHash>
#include <QVector>

class BlkidTable;

/// The entries of a mount table, found by device however the file spells it.
class MountTable
{
public:
    /// Resolves every entry at once.
    MountTable(QVector<MountEntry> entries, BlkidTable &blkid);

    /// The first entry that is spelled like the device or resolves to it. Null when there is none, as with the next.
    const MountEntry *spelledOrResolved(const QString &device) const;
    /// The first entry that resolves to the device; the spelling counts only where nothing is resolved.
    const MountEntry *resolved(const QString &device) const;

private:
    const MountEntry *entry(const QHash<QString, int> &index, const QString &device) const;

    QVector<MountEntry> _entries;
    QHash<QString, int> _firstByAnyName;
    QHash<QString, int> _firstByDevice;
};
