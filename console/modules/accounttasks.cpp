// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "accounttasks.h"

#include "accountelements.h"
#include "accountmodule.h"

#include <algorithm>

namespace
{
void noteFailures(TaskDescription &task, const QStringList &failures)
{
    if (failures.isEmpty())
        return;
    task.setStatus(TaskDescription::Failed);
    task.setMessage(failures.join(QLatin1Char('\n')));
}
} // namespace

ReadAccountsTask::ReadAccountsTask(Element *element, AccountModule *module)
    : ReadContentTask(element)
    , _module(module)
    , _makeRecords(module->accountKind().records)
{
    setDescription(module->accountKind().readAllDescription);
}

void ReadAccountsTask::run()
{
    const LocalAccounts accounts = LocalAccounts::read();
    noteFailures(*this, accounts.failures);
    _records = _makeRecords(accounts);
    ReadContentTask::run();
}

TaskDescription::TaskStatus ReadAccountsTask::afterRun()
{
    Element *container = element();
    if (container && _module) {
        QVector<TreeNode *> accounts;
        accounts.reserve(static_cast<int>(_records.size()));
        for (std::unique_ptr<AccountData> &record : _records) {
            auto *account = new AccountElement(_module, record->name);
            account->setRecord(std::move(record));
            accounts.append(account);
        }
        container->clearDelete();
        container->append(accounts);
    }
    return ReadContentTask::afterRun();
}

ReadAccountTask::ReadAccountTask(Element *element, const AccountKind &kind)
    : ReadPropertyHeavyTask(element)
    , _makeRecords(kind.records)
    , _goneMessage(kind.goneMessage)
{
    setDescription(kind.readDescription.arg(element->title()));
}

void ReadAccountTask::run()
{
    const LocalAccounts accounts = LocalAccounts::read();
    noteFailures(*this, accounts.failures);
    AccountKind::Records records = _makeRecords(accounts);
    const auto found = std::find_if(records.begin(), records.end(),
                                    [this](const auto &record) { return record->name == elementTitle(); });
    if (found != records.end())
        setElementData(std::move(*found));
    else if (status() != Failed)
        noteFailures(*this, {_goneMessage.arg(elementTitle())});
    ReadPropertyHeavyTask::run();
}
