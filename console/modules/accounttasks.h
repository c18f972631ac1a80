// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "accountkind.h"

#include <elementtask.h>

#include <QPointer>

class AccountModule;

/// Reads all accounts of a kind and hangs an element for each under the list's element.
class ReadAccountsTask : public ReadContentTask
{
public:
    ReadAccountsTask(Element *element, AccountModule *module);

    void run() override;
    TaskStatus afterRun() override;

private:
    QPointer<AccountModule> _module; // user-interface thread only
    AccountKind::Records (*const _makeRecords)(const LocalAccounts &accounts);
    AccountKind::Records _records;
    QStringList _names;
};

/// Reads one account again, by its name.
class ReadAccountTask : public ReadPropertyHeavyTask
{
public:
    ReadAccountTask(Element *element, const AccountKind &kind);

    void run() override;

private:
    AccountKind::Records (*const _makeRecords)(const LocalAccounts &accounts);
    QString _goneMessage;
};
