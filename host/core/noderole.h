// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <Qt>

/// Roles of the cells of a tree node beside Qt's own.
enum NodeRole
{
    /// The value behind a cell, for sorting: a number, a QDateTime or a text. An invalid value is an empty cell.
    SortRole = Qt::UserRole + 1,
    /// The node's icon, whatever the column's decoration.
    IconRole = Qt::UserRole + 7,
};

/// Bits of TreeNode::treeNodeSpecialFlags().
enum NodeFlag
{
    /// The node belongs to the display variant that its container has chosen.
    InChosenVariant = 1,
};
