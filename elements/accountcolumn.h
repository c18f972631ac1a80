// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

/// The columns of the lists of accounts. Column 0 is the tree's own: the title and the icon.
struct AccountColumn
{
    enum Column
    {
        Title,
        Name,
        QuotaIsOn,
        UsedBlocks,
        SoftBlockLimit,
        HardBlockLimit,
        BlockGracePeriod,
        BlocksTimeToForce,
        UsedInodes,
        SoftInodeLimit,
        HardInodeLimit,
        InodeGracePeriod,
        InodesTimeToForce,
        Count,
    };

    /// Whether the values behind the column's cells are numbers.
    static bool isNumber(int column)
    {
        switch (column) {
        case UsedBlocks:
        case SoftBlockLimit:
        case HardBlockLimit:
        case BlockGracePeriod:
        case UsedInodes:
        case SoftInodeLimit:
        case HardInodeLimit:
        case InodeGracePeriod:
            return true;
        default:
            return false;
        }
    }
};
