// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "abstractcontainerelement.h"

/// The list of all users with their quotas.
class UsersElement : public AbstractContainerElement
{
    Q_DECLARE_TR_FUNCTIONS(UsersElement)

public:
    UsersElement(Module *module, AccessCheck access);

    static QString typeName() { return QStringLiteral("QuotaUsersElement"); }

    QString caption() const override;
    QIcon icon() const override;
};
