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
    switch (column) {
    case AccountColumn::Name:
        return tr("Name");
    case AccountColumn::QuotaIsOn:
        return tr("Quota is on");
    case AccountColumn::UsedBlocks:
        return tr("Used blocks");
    case AccountColumn::SoftBlockLimit:
        return tr("Soft block limit");
    case AccountColumn::HardBlockLimit:
        return tr("Hard block limit");
    case AccountColumn::BlockGracePeriod:
        return tr("Grace block period");
    case AccountColumn::BlocksTimeToForce:
        return tr("Blocks time to force");
    case AccountColumn::UsedInodes:
        return tr("Used inodes");
    case AccountColumn::SoftInodeLimit:
        return tr("Soft inode limit");
    case AccountColumn::HardInodeLimit:
        return tr("Hard inode limit");
    case AccountColumn::InodeGracePeriod:
        return tr("Grace inode period");
    case AccountColumn::InodesTimeToForce:
        return tr("Inodes time to force");
    default:
        return {};
    }
}

int AbstractContainerElement::columnCount() const
{
    return AccountColumn::Count;
}

QVariant AbstractContainerElement::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation == Qt::Horizontal && role == Qt::TextAlignmentRole && AccountColumn::isNumber(section))
        return numberAlignment();
    const QString name = orientation == Qt::Horizontal && role == Qt::DisplayRole ? columnName(section) : QString();
    return name.isEmpty() ? ContainerElement::headerData(section, orientation, role) : name;
}

QStringList AbstractContainerElement::displayChildrenVariants() const
{
    return {tr("System", "plural"), tr("Ordinary")};
}

OperationTypes AbstractContainerElement::availableOperations() const
{
    return ContainerElement::availableOperations() | OperationType::ChangeDisplay;
}
