// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <module.h>

/// What the console brings for the plug-in to attach to.
class LocalComputer : public Module
{
public:
    LocalComputer()
        : Module(QStringLiteral("LocalComputerModule"), nullptr)
    {
        setKind(RootKind);
        new OrdinaryElement(QStringLiteral("LocalComputer"), QString(), QStringLiteral("Local computer"), this,
                            &Module::isAdministratorHierarchy, Element::Place::Top);
    }
};
