// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <elementtask.h>
#include <quotamanager.h>

#include <optional>

class AbstractElement;
class Module;

/// Reads all accounts of a kind into the children of their list's element. Its record carries the devices for the
/// list's editor.
class AbstractReadAllUsersGroupTask : public ReadContentTask
{
public:
    explicit AbstractReadAllUsersGroupTask(Element *element);

    /// Reads the accounts by readAccounts().
    void run() override = 0;
    /// Has the list's editor show the devices and the rows anew.
    TaskStatus afterRun() override;

protected:
    /// All of run(): reads the devices and, in the same run of the back end, the accounts with their quotas.
    void readAccounts(QuotaManager::Accounts (QuotaManager::*readAll)());
    /// For afterRun(): puts a new element for each account, with its title and its record, in the place of the
    /// children there are. Also after a read that failed: what could be read is shown.
    void replaceChildren(const QString &childType,
                         AbstractElement *(*makeElement)(const QString &name, Module *module));

private:
    std::optional<QuotaManager::Accounts> _accounts; // until they hang under the list
};
