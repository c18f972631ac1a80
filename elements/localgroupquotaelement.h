// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <element.h>

#include <QCoreApplication>

/// The tab "Quota" on the page of one of the machine's groups.
class LocalGroupQuotaElement : public SupplementElement
{
    Q_DECLARE_TR_FUNCTIONS(LocalGroupQuotaElement)

public:
    /// Who appends it to the group's element sets the group's name as its title.
    LocalGroupQuotaElement(Module *module, AccessCheck access);

    static QString typeName() { return QStringLiteral("LocalGroupQuotaElement"); }
    /// The type name of the console's elements that are extended.
    static QString accountType() { return QStringLiteral("LocalGroup"); }

    QString caption() const override;
    QIcon icon() const override;
};
