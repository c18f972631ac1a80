// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <element.h>

#include <QCoreApplication>

/// The tab "Quota" on the page of one of the machine's users.
class LocalUserQuotaElement : public SupplementElement
{
    Q_DECLARE_TR_FUNCTIONS(LocalUserQuotaElement)

public:
    /// Who appends it to the user's element sets the user's name as its title.
    LocalUserQuotaElement(Module *module, AccessCheck access);

    static QString typeName() { return QStringLiteral("LocalUserQuotaElement"); }
    /// The type name of the console's elements that are extended.
    static QString accountType() { return QStringLiteral("LocalUser"); }

    QString caption() const override;
    QIcon icon() const override;
};
