// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <module.h>

/// Does nothing, where the tasks' own module would read the list's page.
class IdleModule : public Module
{
public:
    IdleModule()
        : Module(QStringLiteral("IdleModule"), nullptr)
    {}
    void performOperation(ContextOperation * /*operation*/, OperationType /*type*/, ElementData * /*data*/,
                          int /*extra*/) override
    {}
};
