// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <plugin.h>

#include <stdexcept>

class ThrowsInConstructor : public Plugin
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID KRA_PLUGIN_IID)

public:
    ThrowsInConstructor() { throw std::runtime_error("no memory left for me"); }
};

#include "throwsinconstructor.moc"
