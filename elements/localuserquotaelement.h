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

    QString caption() const override;
    QIcon icon() const override;
};
