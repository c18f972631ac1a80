// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <module.h>
#include <plugin.h>

/// Brings a module whose name another plug-in took.
class TwinPlugin : public Plugin
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID KRA_PLUGIN_IID)

public:
    TwinPlugin()
    {
        setTitle(QStringLiteral("Twin"));
        appendModule(new Module(QStringLiteral("SampleNoteModule"), this));
    }
};

#include "twin.moc"
