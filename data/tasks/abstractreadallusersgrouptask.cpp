// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "abstractreadallusersgrouptask.h"

#include "managerrun.h"

#include <abstractcontainerelement.h>
#include <abstractelement.h>
#include <elementeditor.h>

#include <QThreadPool>

namespace
{

using Records = std::vector<std::unique_ptr<ElementData>>;

} // namespace

AbstractReadAllUsersGroupTask::AbstractReadAllUsersGroupTask(Element *element)
    : ReadContentTask(element, std::make_unique<ElementData>())
{}

TaskDescription::TaskStatus AbstractReadAllUsersGroupTask::afterRun()
{
    Element *list = element();
    if (list && list->availableOperations().testFlag(OperationType::Read))
        list->performOperation(OperationType::Read, nullptr, 0);
    if (ElementEditor *editor = list ? list->elementWidget(ElementEditor::MainRole) : nullptr)
        editor->performOperation(OperationType::Read, elementData(), 0);
    return status();
}

void AbstractReadAllUsersGroupTask::readAccounts(QuotaManager::Accounts (QuotaManager::*readAll)())
{
    runWithManager(*this, [this, readAll](QuotaManager &manager) {
        elementData()->params.insert(AbstractContainerElement::devicesKey(), manager.quotaDevices());
        _accounts = (manager.*readAll)();
    });
    ReadContentTask::run();
}

void AbstractReadAllUsersGroupTask::replaceChildren(const QString &childType,
                                                    AbstractElement *(*makeElement)(const QString &, Module *))
{
    Element *list = element();
    if (!list || !_accounts)
        return;
    QStringList names;
    names.reserve(static_cast<int>(_accounts->size()));
    for (const std::unique_ptr<AbstractElementData> &account : *_accounts) {
        account->configureParams();
        names.append(account->name);
    }
    const auto replaced = std::make_shared<Records>();
    const auto exchange = [this, &replaced](AbstractElement &element, int place) {
        if (auto before = element.exchangeRecord(std::move((*_accounts)[static_cast<std::size_t>(place)])))
            replaced->push_back(std::move(before));
    };
    const auto make = [&](int place) {
        AbstractElement *added = makeElement(names.at(place), list->module());
        exchange(*added, place);
        return added;
    };
    const auto update = [&exchange](TreeNode &child, int place) {
        exchange(static_cast<AbstractElement &>(child), place);
        return true;
    };
    list->replaceChildren(childType, names, make, update);
    _accounts.reset();
    // To delete the records of a hundred thousand accounts takes longer than to show the new ones.
    QThreadPool::globalInstance()->start([replaced] { replaced->clear(); });
}
