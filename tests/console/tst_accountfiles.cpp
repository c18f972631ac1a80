// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <localaccounts.h>
#include <sandbox.h>

/// What the account files of an unusual machine say.
class AccountFilesTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { _sandbox.reset(); }
    void linesOfNetworkServicesAreNoAccounts();

private:
    Sandbox _sandbox;
};

void AccountFilesTest::linesOfNetworkServicesAreNoAccounts()
{
    _sandbox.writeEtc(QStringLiteral("passwd"), "root:x:0:0::/root:/bin/sh\n-eve\n+@staff::::::\n+\n");
    _sandbox.writeEtc(QStringLiteral("group"), "root:x:0:\n-guests:::\n+:::\n");
    const LocalAccounts accounts = LocalAccounts::read();
    QCOMPARE(accounts.failures, QStringList());
    QCOMPARE(accounts.users.size(), 1);
    QCOMPARE(accounts.users.constFirst().name, QStringLiteral("root"));
    QCOMPARE(accounts.groups.size(), 1);
    QCOMPARE(accounts.groups.constFirst().name, QStringLiteral("root"));
}

KRA_SANDBOX_MAIN(AccountFilesTest)
#include "tst_accountfiles.moc"
