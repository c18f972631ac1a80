// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "abstractelement.h"

#include <QCoreApplication>

/// One user in the list of all users.
class UserElement : public AbstractElement
{
    Q_DECLARE_TR_FUNCTIONS(UserElement)

public:
    /// The title is the user's name.
    UserElement(const QString &title, Module *module, AccessCheck access);

    static QString typeName() { return QStringLiteral("QuotaUserElement"); }

    QString caption() const override;
    QIcon icon() const override;

protected:
    const AbstractElementData *accountRecord() const override;
};
