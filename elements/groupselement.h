// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "abstractcontainerelement.h"

/// The list of all groups with their quotas.
class GroupsElement : public AbstractContainerElement
{
    Q_DECLARE_TR_FUNCTIONS(GroupsElement)

public:
    GroupsElement(Module *module, AccessCheck access);

    static QString typeName() { return QStringLiteral("QuotaGroupsElement"); }

    QString caption() const override;
    QIcon icon() const override;
};
