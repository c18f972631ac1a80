// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "accountmodule.h"

#include "accountelements.h"
#include "accountlistwidget.h"
#include "accounttasks.h"
#include "localcomputermodule.h"
#include "summarywidget.h"

#include <taskobserver.h>

#include <memory>

namespace
{
QStringList labels(const AccountKind &kind)
{
    QStringList texts;
    for (const AccountProperty &property : kind.properties)
        texts.append(property.label);
    return texts;
}

QStringList values(const AccountKind &kind, const ElementData &data)
{
    QStringList texts;
    for (const AccountProperty &property : kind.properties)
        texts.append(property.value(static_cast<const AccountData &>(data)).toString());
    return texts;
}
} // namespace

AccountModule::AccountModule(AccountKind kind, QObject *parent)
    : Module(kind.moduleName, parent)
    , _kind(std::move(kind))
{
    setAttachName(LocalComputerModule::moduleName());
    setKind(BranchKind);
    setData(QStringLiteral("description"), _kind.moduleDescription);
    setData(QStringLiteral("administrator"), isAdministrator(*this));

    new AccountsElement(this); // registers with this module, which owns it
    insertElementWidget(new AccountListWidget(this));
    insertElementWidget(new SummaryWidget(this, _kind.accountType, labels(_kind),
                                          [this](const ElementData &data) { return values(_kind, data); }));
    connectElementWidgets();
}

void AccountModule::performOperation(ContextOperation *operation, OperationType type, ElementData *data, int extra)
{
    std::unique_ptr<AbstractTask> task;
    if (operation->contextType() == ContextOperation::ElementContext) {
        auto *element = static_cast<Element *>(operation);
        if (element->elementType() == _kind.containerType && type == OperationType::ReadContent)
            task = std::make_unique<ReadAccountsTask>(element, this);
        else if (element->elementType() == _kind.accountType && type == OperationType::Read)
            task = std::make_unique<ReadAccountTask>(element, _kind);
    }
    if (task)
        TaskObserver::instance()->performTask(task.release());
    else
        Module::performOperation(operation, type, data, extra);
}
