// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "kraglobal.h"

#include <QString>
#include <QStringList>

#include <memory>
#include <vector>

class ModuleTree;
class Plugin;

/// What became of one plug-in file. The states stand in the order of the steps that a plug-in can fail at: one that
/// failed at a step has passed those before it.
struct KRA_EXPORT PluginRecord
{
    enum class State
    {
        Refused,  ///< not looked into: as root, from a place that another user could write
        Broken,   ///< no readable plug-in library, or one that does not load
        Foreign,  ///< a plug-in with another interface identifier; not loaded
        Threw,    ///< its constructor or isValid() threw an exception
        Invalid,  ///< constructed; isValid() said no, or a module's name is taken
        Attached, ///< its modules are in the tree
    };

    QString fileName; ///< with its path; the folder where a whole folder was refused or could not be read
    State state = State::Broken;
    QString title;             ///< once constructed
    QString description;       ///< once constructed
    QString explanation;       ///< which file is not attached, and why; empty for an attached plug-in
    QStringList moduleNames;   ///< once constructed
    QStringList programOutput; ///< one text for each program that it ran so far: call, exit code, both channels
};

/// Finds, checks and loads plug-ins, and keeps going when one of them is broken. User-interface thread only.
class KRA_EXPORT PluginLoader
{
public:
    explicit PluginLoader(ModuleTree &tree);
    /// Deletes the plug-ins. Their libraries stay loaded until the process ends.
    ~PluginLoader();

    /// Loads every library of a folder, in the order of their names. A missing folder is an empty one, and a library
    /// that was looked at before is passed over.
    /// Running as root, a folder or file that a user other than root could write is refused, unless the running program
    /// itself was started from the same build tree.
    void loadFolder(const QString &folder);
    void loadFile(const QString &fileName);

    const std::vector<PluginRecord> &records() const;

private:
    class Private;
    std::unique_ptr<Private> d;
};
