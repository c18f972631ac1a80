// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "accountkind.h"

#include <element.h>

class AccountModule;

/// All accounts of a kind.
class AccountsElement : public ContainerElement
{
public:
    explicit AccountsElement(AccountModule *module);

    QString caption() const override;
    QIcon icon() const override;
    int columnCount() const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    /// The system's own accounts, and the others.
    QStringList displayChildrenVariants() const override;
    OperationTypes availableOperations() const override;
};

/// One account. Its record is an AccountData.
class AccountElement : public OrdinaryElement
{
public:
    AccountElement(AccountModule *module, const QString &name);

    /// Takes a new record where that says something else, and leaves the one before in its place. False when it says
    /// the same, and stays where it is. Emits no change.
    bool update(std::unique_ptr<AccountData> &account);

    QString caption() const override;
    QIcon icon() const override;
    QVariant data(int column, int role) const override;
    int treeNodeSpecialFlags() const override;
    OperationTypes availableOperations() const override;
};
