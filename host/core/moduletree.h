// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "kraglobal.h"
#include "treenode.h"

#include <QString>

#include <memory>
#include <vector>

class Module;

/// The tree of all modules' elements: it places every module under the one it attaches to.
/// User-interface thread only. It owns the nodes that hang in it, not the modules; modules may die before it or after.
/// With a module its elements leave the tree, and whatever hangs below them; the modules that attach to it wait again.
class KRA_EXPORT ModuleTree
{
public:
    ModuleTree();
    ~ModuleTree();

    TreeNode *rootNode();

    /// Places a module: its attach name is looked up, and its top elements are hung under the element of their stated
    /// parent type, or under the first element of the module. A module that attaches to none hangs its elements under
    /// the root. One whose target is not there yet waits for it. An element whose stated parent type is nowhere below
    /// the target hangs as if it had stated none, with a warning in the log.
    void addModule(Module *module);
    /// All placed modules, in the order they were placed. Not owned.
    std::vector<Module *> modules() const;
    Module *module(const QString &name) const;
    /// The modules whose target has not come, for a text that says so. Not owned.
    std::vector<Module *> waitingModules() const;

private:
    class Private;
    std::unique_ptr<Private> d;
};
