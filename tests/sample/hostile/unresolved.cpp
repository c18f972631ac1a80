// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <plugin.h>

/// Stands in no library.
void kraSampleMissingFunction();

class UnresolvedPlugin : public Plugin
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID KRA_PLUGIN_IID)

public:
    bool isValid() override
    {
        kraSampleMissingFunction();
        return true;
    }
};

#include "unresolved.moc"
