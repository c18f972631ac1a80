// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "abstractelement.h"

#include <QCoreApplication>

/// One group in the list of all groups.
class GroupQElement : public AbstractElement
{
    Q_DECLARE_TR_FUNCTIONS(GroupQElement)

public:
    /// The title is the group's name.
    GroupQElement(const QString &title, Module *module, AccessCheck access);

    static QString typeName() { return QStringLiteral("QuotaGroupElement"); }

    QString caption() const override;
    QIcon icon() const override;

protected:
    const AbstractElementData *accountRecord() const override;
};
