// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <module.h>

/// The console's own accounts of one kind, "User" or "Group", for the plug-in to extend: one account, root.
class LocalAccounts : public Module
{
public:
    explicit LocalAccounts(const QString &kind)
        : Module(QStringLiteral("Local%1Module").arg(kind), nullptr)
    {
        setKind(BranchKind);
        setAttachName(QStringLiteral("LocalComputerModule"));
        new OrdinaryElement(QStringLiteral("Local%1").arg(kind), QStringLiteral("LocalComputer"),
                            QStringLiteral("root"), this, &Module::isAdministratorHierarchy, Element::Place::Top);
    }
};
