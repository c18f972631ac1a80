// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "mounttable.h"

#include "blkidtable.h"

MountTable::MountTable(const QVector<MountEntry> &entries, const BlkidTable &blkid)
    : _entries(entries)
{
    for (int number = entries.size() - 1; number >= 0; --number) {
        const QString &spelling = entries.at(number).fsName;
        const QString path = blkid.resolve(spelling);
        const QString device = path.isEmpty() ? spelling : path;
        _devices.prepend(device);
        if (!entries.at(number).canNameDevice)
            continue;
        _byDevice.insert(device, number);
        _byName.insert(spelling, number);
        _byName.insert(path, number);
    }
}

const MountEntry *MountTable::at(const LineByName &lines, const QString &name) const
{
    const auto number = lines.constFind(name);
    return number == lines.cend() ? nullptr : &_entries.at(*number);
}
