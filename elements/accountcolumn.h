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
};
