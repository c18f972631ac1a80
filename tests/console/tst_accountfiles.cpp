// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <accountelements.h>
#include <accountmodule.h>
#include <accounttasks.h>
#include <localaccounts.h>
#include <sandbox.h>

/// What the account files of an unusual machine say.
class AccountFilesTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { _sandbox.reset(); }
    void linesOfNetworkServicesAreNoAccounts();
    void longLinesAreReadToTheirEnd();
    void aCancelledReadEnds();
    void ofGroupsWithOneIdTheFirstCounts();
    void whereTheFileCannotBeReadNobodyIsGone();

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

void AccountFilesTest::longLinesAreReadToTheirEnd()
{
    constexpr int many = 1000000;
    constexpr int duplicates = 20000;
    QByteArray group = "before:x:1:\nbig:x:2:m0";
    for (int i = 1; i < many; ++i)
        group += ",m" + QByteArray::number(i);
    for (int i = 0; i < duplicates; ++i)
        group += ",m1";
    group += "\nafter:x:3:anna\n";
    _sandbox.writeEtc(QStringLiteral("group"), group);
    const LocalAccounts accounts = LocalAccounts::read();
    QCOMPARE(accounts.failures, QStringList());
    QCOMPARE(accounts.groups.size(), 3);
    const QStringList &members = accounts.groups.at(1).members;
    QCOMPARE(members.size(), many + duplicates);
    QCOMPARE(members.at(many - 1), QStringLiteral("m%1").arg(many - 1));
    QCOMPARE(accounts.groups.at(0).members, QStringList());
    QCOMPARE(accounts.groups.at(2).members, QStringList{QStringLiteral("anna")});
}

void AccountFilesTest::aCancelledReadEnds()
{
    _sandbox.writeEtc(QStringLiteral("passwd"), QByteArray("a:x:1:1::/:\n").repeated(100));
    int asked = 0;
    const LocalAccounts accounts = LocalAccounts::read([&asked] { return ++asked > 10; });
    QCOMPARE(accounts.users.size(), 10);
    QVERIFY(accounts.groups.isEmpty());
    QVERIFY(asked < 20);
}

void AccountFilesTest::ofGroupsWithOneIdTheFirstCounts()
{
    _sandbox.writeEtc(QStringLiteral("group"), "first:x:7:\nsecond:x:7:\nother:x:8:\n");
    const QHash<quint32, QString> names = LocalAccounts::read().groupNames();
    QCOMPARE(names.value(7), QStringLiteral("first"));
    QCOMPARE(names.value(8), QStringLiteral("other"));
}

void AccountFilesTest::whereTheFileCannotBeReadNobodyIsGone()
{
    const AccountKind kind = localUserKind();
    QObject owner;
    AccountElement account(new AccountModule(kind, &owner), QStringLiteral("anna"));
    _sandbox.removeEtc(QStringLiteral("passwd"));
    ReadAccountTask task(&account, kind);
    task.run();
    QCOMPARE(task.status(), TaskDescription::Failed);
    QCOMPARE(task.message(), QStringLiteral("Cannot read /etc/passwd: No such file or directory"));
}

KRA_SANDBOX_MAIN(AccountFilesTest)
#include "tst_accountfiles.moc"
