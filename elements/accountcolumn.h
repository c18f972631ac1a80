// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QString>
#include <QVariant>

class AbstractElementData;
struct DeviceQuota;

/// A column of the lists of accounts: its header, and its cells.
struct AccountColumn
{
    /// Column 0 is the tree's own: the title and the icon. All others have a row in the table of accountcolumn.cpp, in
    /// this order.
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

    /// What a cell is asked for. Only that is made: a list of many accounts asks for a value a million times.
    enum class Wanted
    {
        Text,
        Value, ///< what it is sorted by
    };

    const char *header; ///< of the context "AbstractContainerElement"
    bool isNumber;      ///< whether the values behind the cells are numbers
    /// A cell of nothing is empty: neither text nor value.
    QVariant (*cell)(const DeviceQuota &quota, Wanted wanted); ///< null for the account's name

    /// Null for the title's column, and for one that does not exist.
    static const AccountColumn *at(int column);
};
