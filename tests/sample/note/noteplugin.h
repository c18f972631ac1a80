// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <plugin.h>

/// The one class that the library exports.
class NotePlugin : public Plugin
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID KRA_PLUGIN_IID)

public:
    explicit NotePlugin(QObject *parent = nullptr);
};
