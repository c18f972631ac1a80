// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <module.h>

/// This computer: the top of the tree, which other modules' elements hang under, with a page that sums it up.
class LocalComputerModule : public Module
{
    Q_OBJECT

public:
    explicit LocalComputerModule(QObject *parent);

    /// The name that other modules attach to.
    static QString moduleName() { return QStringLiteral("LocalComputerModule"); }

    void performOperation(ContextOperation *operation, OperationType type, ElementData *data, int extra) override;
};
