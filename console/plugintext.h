// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <pluginloader.h>

#include <QStringList>

class ModuleTree;

/// The name that a plug-in gave itself, else its file's.
QString pluginTitle(const PluginRecord &record);
/// Whether it was loaded and all its modules have their place in the tree.
bool isWhollyAtWork(const PluginRecord &record, const ModuleTree &tree);
/// "At work", or in a few words why not.
QString pluginState(const PluginRecord &record, const ModuleTree &tree);
/// Everything that is known of it, as rich text. What the plug-in or a program said is shown as it stands.
QString pluginDetails(const PluginRecord &record, const ModuleTree &tree);
/// The modules of a plug-in that have no place in the tree, each with the name of the module it waits for.
QStringList unattachedModules(const PluginRecord &record, const ModuleTree &tree);
