// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "accounttasks.h"

#include "accountelements.h"
#include "accountmodule.h"

#include <QThreadPool>

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
    const LocalAccounts accounts = LocalAccounts::read([this] { return isCancelled(); });
    noteFailures(*this, accounts.failures);
    _records = _makeRecords(accounts);
    _names.reserve(static_cast<int>(_records.size()));
    for (const std::unique_ptr<AccountData> &record : _records)
        _names.append(record->name);
    ReadContentTask::run();
}

TaskDescription::TaskStatus ReadAccountsTask::afterRun()
{
    Element *container = element();
    if (container && _module) {
        const auto recordAt = [this](int place) -> auto &
        {
            return _records[static_cast<std::size_t>(place)];
        };
        const auto make = [this, &recordAt](int place) {
            auto *account = new AccountElement(_module, _names.at(place));
            account->exchangeRecord(std::move(recordAt(place)));
            return account;
        };
        const auto update = [&recordAt](TreeNode &child, int place) {
            return static_cast<AccountElement &>(child).update(recordAt(place));
        };
        container->replaceChildren(_module->accountKind().accountType, _names, make, update);
    }
    // To delete the records that nobody needs any more takes as long as to look at the others.
    const auto left = std::make_shared<AccountKind::Records>(std::move(_records));
    QThreadPool::globalInstance()->start([left, names = std::move(_names)]() mutable {
        left->clear();
        names.clear();
    });
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
    const LocalAccounts accounts = LocalAccounts::read([this] { return isCancelled(); });
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
