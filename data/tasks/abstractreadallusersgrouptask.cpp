// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "abstractreadallusersgrouptask.h"

#include "managerrun.h"

#include <abstractcontainerelement.h>
#include <abstractelement.h>
#include <elementeditor.h>

#include <QRunnable>
#include <QThreadPool>

namespace
{

using Records = std::vector<std::unique_ptr<ElementData>>;

/// Deletes records apart from the window: to delete those of a hundred thousand accounts takes longer than to show the
/// new ones. The thread pool deletes this.
class RecordDisposal : public QRunnable
{
public:
    explicit RecordDisposal(Records records)
        : _records(std::move(records))
    {}
    void run() override { _records.clear(); }

private:
    Records _records;
};

Records takeRecordsOfChildren(const Element &list)
{
    Records records;
    records.reserve(static_cast<std::size_t>(list.childNodes().size()));
    for (TreeNode *node : list.childNodes()) {
        if (auto *element = dynamic_cast<AbstractElement *>(node))
            records.push_back(element->takeRecord());
    }
    return records;
}

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
}

void AbstractReadAllUsersGroupTask::replaceChildren(AbstractElement *(*makeElement)(const QString &, Module *))
{
    Element *list = element();
    if (!list)
        return;
    QVector<TreeNode *> elements;
    elements.reserve(static_cast<int>(_accounts.size()));
    for (std::unique_ptr<AbstractElementData> &account : _accounts) {
        AbstractElement *added = makeElement(account->name, list->module());
        account->configureParams();
        added->setRecord(std::move(account));
        elements.append(added);
    }
    _accounts.clear();
    Records replaced = takeRecordsOfChildren(*list);
    list->clearDelete();
    list->append(elements);
    QThreadPool::globalInstance()->start(new RecordDisposal(std::move(replaced)));
}
