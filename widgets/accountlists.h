// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

class TreeNode;

/// Has the lists of users and of groups in the tree of a node read again when they are next shown: what they show of
/// every account may have changed.
void readAccountListsAgain(TreeNode *node);
