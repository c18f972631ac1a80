// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <element.h>

#include <QCoreApplication>

/// "Quota management": the settings that hold for whole devices. The head of the quota branch.
class GeneralElement : public OrdinaryElement
{
    Q_DECLARE_TR_FUNCTIONS(GeneralElement)

public:
    GeneralElement(Module *module, AccessCheck access);

    static QString typeName() { return QStringLiteral("QuotaGeneralElement"); }

    QString caption() const override;
    QIcon icon() const override;
};
