// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <appexception.h>
#include <module.h>
#include <plugin.h>
#include <process.h>

/// A plug-in that finds the machine lacking.
class InvalidPlugin : public Plugin
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID KRA_PLUGIN_IID)

public:
    InvalidPlugin()
    {
        setTitle(QStringLiteral("Invalid"));
        setDescription(QStringLiteral("Needs what is not here"));
        appendModule(new Module(QStringLiteral("InvalidModule"), this));
    }
    bool isValid() override
    {
        try {
            Process::simpleStart(QStringLiteral("sh"),
                                 {QStringLiteral("-c"), QStringLiteral("echo looking; echo not found >&2; exit 1")},
                                 true);
        } catch (const AppException &exception) {
            setWhyInvalid(exception.errorText());
            return false;
        }
        return true;
    }
};

#include "invalid.moc"
