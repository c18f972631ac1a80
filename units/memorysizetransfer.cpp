// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "memorysizetransfer.h"

MemorySizeTransfer::MemorySizeTransfer(QObject *parent)
    : QObject(parent)
{
    for (const int unit : {Bytes, Kb, Mb, Gb})
        _units.insert(unit, unitName(unit));
}

QString MemorySizeTransfer::unitName(int unit)
{
    switch (unit) {
    case Bytes:
        return tr("Bytes");
    case Kb:
        return tr("Kb");
    case Mb:
        return tr("Mb");
    case Gb:
        return tr("Gb");
    default:
        return {};
    }
}
