// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "abstractcontainerelement.h"

#include "accountcolumn.h"

QString AbstractContainerElement::devicesKey()
{
    return QStringLiteral("devices");
}

QString AbstractContainerElement::columnName(int column)
{
    const AccountColumn *named = AccountColumn::at(column);
    return named ? tr(named->header) : QString();
}

int AbstractContainerElement::columnCount() const
{
    return AccountColumn::Count;
}

QVariant AbstractContainerElement::headerData(int section, Qt::Orientation orientation, int role) const
{
    const AccountColumn *column = orientation == Qt::Horizontal ? AccountColumn::at(section) : nullptr;
    if (column && role == Qt::DisplayRole)
        return columnName(section);
    if (column && role == Qt::TextAlignmentRole && column->isNumber)
        return numberAlignment();
    return ContainerElement::headerData(section, orientation, role);
}

QStringList AbstractContainerElement::displayChildrenVariants() const
{
    return {tr("System", "plural"), tr("Ordinary")};
}

OperationTypes AbstractContainerElement::availableOperations() const
{
    return ContainerElement::availableOperations() | OperationType::ChangeDisplay;
}
