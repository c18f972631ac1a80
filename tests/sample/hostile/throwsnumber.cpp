// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <plugin.h>

/// Throws what is no exception class, in its constructor.
class ThrowsNumber : public Plugin
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID KRA_PLUGIN_IID)

public:
    ThrowsNumber() { throw 42; }
};

#include "throwsnumber.moc"
