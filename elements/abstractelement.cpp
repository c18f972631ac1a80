// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "abstractelement.h"

#include "accountcolumn.h"

#include <abstractelementdata.h>
#include <accountrules.h>

namespace
{
bool isSystemAccount(qint32 id)
{
    return AccountRules::isSystemId(static_cast<quint32>(id));
}
} // namespace

QVariant AbstractElement::data(int column, int role) const
{
    const AbstractElementData *account = accountRecord();
    if (!account)
        return {};
    const AccountColumn *shown = AccountColumn::at(column);
    const bool isText = role == Qt::DisplayRole || role == Qt::ToolTipRole;
    if (!shown || (!isText && role != SortRole))
        return OrdinaryElement::data(column, role);
    if (!shown->cell)
        return account->name;
    const auto wanted = isText ? AccountColumn::Wanted::Text : AccountColumn::Wanted::Value;
    const auto quota = account->deviceQuotas.constFind(_deviceName);
    if (quota != account->deviceQuotas.constEnd())
        return shown->cell(*quota, wanted);
    if (account->failures.contains(_deviceName))
        return {};
    return shown->cell(DeviceQuota(), wanted);
}

int AbstractElement::treeNodeSpecialFlags() const
{
    const int flags = OrdinaryElement::treeNodeSpecialFlags();
    const auto *account = dynamic_cast<const AbstractElementData *>(record());
    const auto *container = dynamic_cast<const Element *>(parentNode());
    if (!account || !container)
        return flags;
    const int ownVariant = isSystemAccount(account->id) ? 1 : 2; // as AbstractContainerElement lists them
    return container->displayChildrenVariant() == ownVariant ? flags | NodeFlag::InChosenVariant : flags;
}
