// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <module.h>
#include <plugin.h>

/// Brings two modules of one name.
class SameNamesPlugin : public Plugin
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID KRA_PLUGIN_IID)

public:
    SameNamesPlugin()
    {
        appendModule(new Module(QStringLiteral("OnceModule"), this));
        appendModule(new Module(QStringLiteral("TwiceModule"), this));
        appendModule(new Module(QStringLiteral("TwiceModule"), this));
    }
};

#include "samenames.moc"
