// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "accountelements.h"

#include "accountmodule.h"

#include <QCoreApplication>
#include <accountrules.h>

#include <algorithm>

namespace
{
enum Variant
{
    SystemAccounts = 1,
    OrdinaryAccounts = 2
};

const AccountKind &kindOf(const Element &element)
{
    return static_cast<const AccountModule *>(element.module())->accountKind();
}

bool isValueRole(int role)
{
    return role == Qt::DisplayRole || role == Qt::ToolTipRole || role == SortRole;
}
} // namespace

AccountsElement::AccountsElement(AccountModule *module)
    : ContainerElement(module->accountKind().containerType, QStringLiteral("LocalComputer"),
                       module->accountKind().containerTitle, module, &Element::everybody, Place::Top)
{}

QString AccountsElement::caption() const
{
    return kindOf(*this).containerCaption;
}

QIcon AccountsElement::icon() const
{
    return kindOf(*this).containerIcon;
}

int AccountsElement::columnCount() const
{
    const std::vector<AccountProperty> &properties = kindOf(*this).properties;
    return static_cast<int>(std::count_if(properties.begin(), properties.end(), [](const AccountProperty &property) {
        return property.place == AccountProperty::ListAndPage;
    }));
}

QVariant AccountsElement::headerData(int section, Qt::Orientation orientation, int role) const
{
    const bool isColumn = orientation == Qt::Horizontal && section >= 0 && section < columnCount();
    if (isColumn && (role == Qt::DisplayRole || role == Qt::TextAlignmentRole)) {
        const AccountProperty &property = kindOf(*this).properties.at(static_cast<size_t>(section));
        if (role == Qt::DisplayRole)
            return property.label;
        return property.kind == AccountProperty::Number ? QVariant(numberAlignment()) : QVariant();
    }
    return ContainerElement::headerData(section, orientation, role);
}

QStringList AccountsElement::displayChildrenVariants() const
{
    return {QCoreApplication::translate("AccountsElement", "System"),
            QCoreApplication::translate("AccountsElement", "Ordinary")};
}

OperationTypes AccountsElement::availableOperations() const
{
    return OperationType::ReadContent | OperationType::ChangeDisplay;
}

AccountElement::AccountElement(AccountModule *module, const QString &name)
    : OrdinaryElement(module->accountKind().accountType, module->accountKind().containerType, name, module,
                      &Element::everybody, Place::Child)
{}

bool AccountElement::update(std::unique_ptr<AccountData> &account)
{
    const auto *present = static_cast<const AccountData *>(record());
    if (present && present->equals(*account))
        return false;
    account.reset(static_cast<AccountData *>(exchangeRecord(std::move(account)).release()));
    return true;
}

QString AccountElement::caption() const
{
    return kindOf(*this).accountCaption.arg(title());
}

QIcon AccountElement::icon() const
{
    return kindOf(*this).accountIcon;
}

QVariant AccountElement::data(int column, int role) const
{
    const std::vector<AccountProperty> &properties = kindOf(*this).properties;
    if (column <= 0 || column >= static_cast<int>(properties.size()) || !isValueRole(role))
        return OrdinaryElement::data(column, role);
    const auto *account = static_cast<const AccountData *>(record());
    return account ? properties.at(static_cast<size_t>(column)).value(*account) : QVariant();
}

int AccountElement::treeNodeSpecialFlags() const
{
    const int flags = OrdinaryElement::treeNodeSpecialFlags();
    const auto *container = dynamic_cast<const Element *>(parentNode());
    const auto *account = static_cast<const AccountData *>(record());
    if (!container || !account)
        return flags;
    const int variant = AccountRules::isSystemId(account->id) ? SystemAccounts : OrdinaryAccounts;
    return container->displayChildrenVariant() == variant ? flags | InChosenVariant : flags;
}

OperationTypes AccountElement::availableOperations() const
{
    return OperationType::Read;
}
