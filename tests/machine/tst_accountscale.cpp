// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "idlemodule.h"
#include "manyaccounts.h"
#include "quotactlcount.h"
#include "shell.h"

#include <readallusers.h>
#include <startup.h>
#include <userdata.h>
#include <userelement.h>
#include <userselement.h>

#include <QTest>

/// The read of 50,000 users on one disk: what it asks the kernel, and that it has what the kernel and the program have
/// that lists the same. How long it takes is measured by bench_accountscale.
class TestAccountScale : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void asksTheKernelOnceForEachAccount();
    void readsWhatTheKernelHas();
    void listsWhatTheReportLists();

private:
    QString _device;
    IdleModule _module;
    UsersElement _users{&_module, &Module::isAdministratorHierarchy};
    QuotactlCount::Questions _before;
    QuotactlCount::Questions _after;
};

void TestAccountScale::initTestCase()
{
    const QString problem = ManyAccounts::setUp();
    QVERIFY2(problem.isEmpty(), qPrintable(problem));
    _device = ManyAccounts::device();
    QCOMPARE(ManyAccounts::ids().size(), ManyAccounts::Count);
    ReadAllUsers task(&_users);
    _before = QuotactlCount::questions();
    task.run();
    _after = QuotactlCount::questions();
    QCOMPARE(task.afterRun(), TaskDescription::Succeeded);
}

void TestAccountScale::asksTheKernelOnceForEachAccount()
{
    QCOMPARE(_after.byDescriptor - _before.byDescriptor, ManyAccounts::Count);
    QCOMPARE(_after.byPath - _before.byPath, 2); // whether the kind is on, and the grace periods
}

void TestAccountScale::readsWhatTheKernelHas()
{
    const QVector<quint32> ids = ManyAccounts::ids();
    QCOMPARE(_users.childNodes().size(), ManyAccounts::Count);
    for (int i = 0; i < ManyAccounts::Count; ++i) {
        const auto *record =
            static_cast<const UserData *>(static_cast<UserElement *>(_users.childNodes().at(i))->record());
        QCOMPARE(static_cast<quint32>(record->id), ids.at(i));
        const DeviceQuota quota = record->deviceQuotas.value(_device);
        const dqblk expected = ManyAccounts::usageAndLimits(ids.at(i));
        QCOMPARE(quota.softBlockLimit.bytes, expected.dqb_bsoftlimit * 1024);
        QCOMPARE(quota.hardBlockLimit.bytes, expected.dqb_bhardlimit * 1024);
        QCOMPARE(quota.usedBlocks.bytes, expected.dqb_curspace);
        QCOMPARE(quota.usedInodes, expected.dqb_curinodes);
        QCOMPARE(quota.blocksTimeToForce.isValid(), expected.dqb_btime != 0);
        if (expected.dqb_btime != 0)
            QCOMPARE(quota.blocksTimeToForce.toSecsSinceEpoch(), static_cast<qint64>(expected.dqb_btime));
    }
}

void TestAccountScale::listsWhatTheReportLists()
{
    const Shell::Result report =
        Shell::run(QStringLiteral("repquota -u %1 | sed '1,/^-----/d; s/ .*//; /^$/d'").arg(_device));
    QCOMPARE(report.exitCode, 0);
    QStringList reported = report.output.split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    QStringList read;
    read.reserve(ManyAccounts::Count);
    for (const TreeNode *node : _users.childNodes())
        read.append(static_cast<const UserElement *>(node)->title());
    read.sort();
    reported.sort();
    QCOMPARE(read, reported);
}

int main(int argc, char *argv[])
{
    Startup::prepareProcess();
    const QCoreApplication application(argc, argv);
    TestAccountScale test;
    return QTest::qExec(&test, argc, argv);
}
#include "tst_accountscale.moc"
