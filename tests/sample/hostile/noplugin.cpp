// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <plugin.h>

/// Has the right identifier and the wrong base class.
class NoPlugin : public QObject
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID KRA_PLUGIN_IID)
};

#include "noplugin.moc"
