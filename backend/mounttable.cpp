// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "mounttable.h"

#include "blkidtable.h"

namespace
{

void insertFirst(QHash<QString, int> &index, const QString &name, int entry)
{
    if (!index.contains(name))
        index.insert(name, entry);
}

} // namespace

MountTable::MountTable(QVector<MountEntry> entries, BlkidTable &blkid)
    : _entries(std::move(entries))
{
    for (int i = 0; i < _entries.size(); ++i) {
        const QString &name = _entries.at(i).fsName;
        const QString path = blkid.resolve(name);
        insertFirst(_firstByAnyName, name, i);
        insertFirst(_firstByAnyName, path, i);
        insertFirst(_firstByDevice, path.isEmpty() ? name : path, i);
    }
}

const MountEntry *MountTable::spelledOrResolved(const QString &device) const
{
    return entry(_firstByAnyName, device);
}

const MountEntry *MountTable::resolved(const QString &device) const
{
    return entry(_firstByDevice, device);
}

const MountEntry *MountTable::entry(const QHash<QString, int> &index, const QString &device) const
{
    const auto found = index.constFind(device);
    return found == index.constEnd() ? nullptr : &_entries.at(*found);
}
