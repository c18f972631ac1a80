// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <plugin.h>
#include <process.h>

/// Lets the exception of a program that failed pass on.
class ThrowsInIsValid : public Plugin
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID KRA_PLUGIN_IID)

public:
    ThrowsInIsValid() { setTitle(QStringLiteral("Throwing")); }
    bool isValid() override
    {
        Process::simpleStart(QStringLiteral("kra-no-such-program"), {}, true);
        return true;
    }
};

#include "throwsinisvalid.moc"
