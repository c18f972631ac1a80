// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <moduletree.h>
#include <pluginloader.h>

#include <QObject>
#include <QStringList>

/// What is administered: the tree with the console's own modules, and the plug-ins that attach to them.
/// It outlives every window that shows it, and needs the application object.
class Session
{
public:
    Session();

    ModuleTree &tree() { return _tree; }
    const std::vector<PluginRecord> &pluginRecords() const { return _loader.records(); }

    void loadPlugins(const QStringList &folders);
    /// Where this program's plug-ins are: in the same place beside it in the build tree and where it is installed.
    static QString pluginFolder();

    bool isAdministrator() const;

    /// Whether lists are read again whenever they are shown. Remembered in the settings.
    bool readsListsAlways() const;
    void setReadsListsAlways(bool always);

private:
    void tellModules();

    QObject _ownModules; // outlives the nodes in the tree
    ModuleTree _tree;
    PluginLoader _loader{_tree};
};
