// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <element.h>

#include <QCoreApplication>

/// A list of accounts. Its rows are AbstractElements.
class AbstractContainerElement : public ContainerElement
{
    Q_DECLARE_TR_FUNCTIONS(AbstractContainerElement)

public:
    using ContainerElement::ContainerElement;

    /// Key of the parameters of a record that its editor gets with the rows: the paths of the devices that can carry
    /// quotas, a QStringList.
    static QString devicesKey();
    /// The header of an AccountColumn other than the title's.
    static QString columnName(int column);

    int columnCount() const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    /// System accounts and ordinary accounts, in this order.
    QStringList displayChildrenVariants() const override;
    /// Read content, read, and change display.
    OperationTypes availableOperations() const override;
};
