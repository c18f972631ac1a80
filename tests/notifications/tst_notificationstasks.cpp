// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "machinefiles.h"

#include <module.h>
#include <notificationsdata.h>
#include <readnotificationsdata.h>
#include <taskobserver.h>
#include <updatenotificationsdata.h>

#include <QSignalSpy>
#include <QtTest>

namespace
{
/// An element that can be written and, as far as this test goes, not read: nothing starts behind its back.
class WrittenElement : public OrdinaryElement
{
public:
    explicit WrittenElement(Module *module)
        : OrdinaryElement(QStringLiteral("QuotaNotificationsElement"), QString(), QString(), module,
                          &Module::isAdministratorHierarchy, Place::Child)
    {}
    OperationTypes availableOperations() const override { return OperationType::Write; }
};
} // namespace

/// The whole way between the system's files and the element's record.
class TestNotificationsTasks : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void bothHaveOneDescription();
    void aRead();
    void aReadOfAMachineThatNeverWarned();
    void firstUseIsANote();
    void everyFailureIsALine();
    void anUpdate();
    void anUpdateThatFailsInTwoPlaces();
    void anUpdateWithoutItsRecord_data();
    void anUpdateWithoutItsRecord();
    void theFirstTaskOfAMachineThatNeverWarned();
    void theAdministratorIsToldOfTheCopy();

private:
    const NotificationsData *record() const { return dynamic_cast<const NotificationsData *>(_element->record()); }

    Sandbox _sandbox;
    Module _module{QStringLiteral("SomeModule"), nullptr};
    std::unique_ptr<WrittenElement> _element;
};

void TestNotificationsTasks::init()
{
    MachineFiles::reset(_sandbox);
    _element = std::make_unique<WrittenElement>(&_module);
}

void TestNotificationsTasks::bothHaveOneDescription()
{
    const QString description = QStringLiteral("Update notifications settings");
    QCOMPARE(ReadNotificationsData(_element.get()).description(), description);
    const UpdateNotificationsData update(_element.get(), nullptr);
    QCOMPARE(update.description(), description);
    QVERIFY(update.changesMachine());
}

void TestNotificationsTasks::aRead()
{
    _sandbox.writeEtc(MachineFiles::cronTable, "0 0 * * * root warnquota\n");
    ReadNotificationsData task(_element.get());
    task.run();
    QCOMPARE(task.status(), TaskDescription::Succeeded);
    QCOMPARE(task.message(), QString());
    QVERIFY(!record()); // run() touches no element
    QCOMPARE(task.afterRun(), TaskDescription::Succeeded);
    QVERIFY(record());
    QCOMPARE(record()->jobs.size(), 1);
    QCOMPARE(record()->files.size(), 3);
}

void TestNotificationsTasks::aReadOfAMachineThatNeverWarned()
{
    _sandbox.removeEtc(QStringLiteral("cron.d"));
    ReadNotificationsData task(_element.get());
    task.run();
    QCOMPARE(task.afterRun(), TaskDescription::Failed);
    QCOMPARE(task.message(), QStringLiteral("Can'n open /etc/cron.d/warnquota file"));
    QVERIFY(record());
    QVERIFY(record()->jobs.isEmpty());
    QCOMPARE(record()->files.size(), 3);
    QVERIFY2(!task.isMessageNote(), "there is no cron");
}

void TestNotificationsTasks::firstUseIsANote()
{
    const auto isNote = [this] {
        ReadNotificationsData task(_element.get());
        task.run();
        return task.status() == TaskDescription::Failed && task.isMessageNote();
    };
    _sandbox.removeEtc(MachineFiles::cronTable);
    QVERIFY(isNote());
    _sandbox.removeEtc(QStringLiteral("quotatab"));
    QVERIFY(isNote());
    // What is there and cannot be read is a failure all the same.
    QVERIFY(QDir().mkdir(QStringLiteral("/etc/quotatab")));
    QVERIFY(!isNote());
    _sandbox.removeEtc(QStringLiteral("quotatab"));
    _sandbox.writeEtc(MachineFiles::cronTable, "0 0 * * * root warnquota -c /etc/none.conf\n");
    QVERIFY2(!isNote(), "a run names a file that does not exist");
}

void TestNotificationsTasks::everyFailureIsALine()
{
    _sandbox.removeEtc(MachineFiles::cronTable);
    _sandbox.removeEtc(QStringLiteral("quotatab"));
    ReadNotificationsData task(_element.get());
    task.run();
    QCOMPARE(task.message(), QStringLiteral("Can'n open /etc/cron.d/warnquota file\nCan'n open /etc/quotatab file"));
}

void TestNotificationsTasks::anUpdate()
{
    auto data = std::make_unique<NotificationsData>();
    WarnquotaJob job;
    job.job = {
        {QStringLiteral("0"), QStringLiteral("8"), QStringLiteral("*"), QStringLiteral("*"), QStringLiteral("1")},
        QStringLiteral("root"),
        QString(),
        QString()};
    job.groups = true;
    data->jobs.append(job);
    data->files.insert(QStringLiteral("/etc/quotatab"), QStringLiteral("edited"));
    UpdateNotificationsData task(_element.get(), std::move(data));
    task.run();
    QCOMPARE(task.status(), TaskDescription::Succeeded);
    QCOMPARE(task.message(), QString());
    QCOMPARE(_sandbox.readEtc(MachineFiles::cronTable), MachineFiles::tableHead + "0 8 * * 1 root warnquota -g\n");
    QCOMPARE(_sandbox.readEtc(QStringLiteral("quotatab")), QByteArray("edited"));
    QCOMPARE(task.result(), QStringLiteral("Applied: /etc/cron.d/warnquota\nApplied: /etc/quotatab"));
}

void TestNotificationsTasks::anUpdateThatFailsInTwoPlaces()
{
    _sandbox.removeEtc(QStringLiteral("cron.d"));
    auto data = std::make_unique<NotificationsData>();
    data->files = {{QStringLiteral("/etc/no/folder"), QString()},
                   {QStringLiteral("/etc/quotatab"), QStringLiteral("edited")}};
    UpdateNotificationsData task(_element.get(), std::move(data));
    task.run();
    QCOMPARE(task.status(), TaskDescription::Failed);
    QCOMPARE(task.message(),
             QStringLiteral("Can'n create /etc/cron.d/warnquota file\nCan'n create /etc/no/folder file"));
    QCOMPARE(_sandbox.readEtc(QStringLiteral("quotatab")), QByteArray("edited"));
}

void TestNotificationsTasks::anUpdateWithoutItsRecord_data()
{
    QTest::addColumn<bool>("isAnother");
    QTest::newRow("none") << false;
    QTest::newRow("another record") << true;
}

void TestNotificationsTasks::anUpdateWithoutItsRecord()
{
    QFETCH(bool, isAnother);
    _sandbox.writeEtc(MachineFiles::cronTable, "0 0 * * * root warnquota\n");
    UpdateNotificationsData task(_element.get(), isAnother ? std::make_unique<ElementData>() : nullptr);
    task.run();
    QCOMPARE(task.status(), TaskDescription::Failed);
    QCOMPARE(task.message(), QString());
    QCOMPARE(_sandbox.readEtc(MachineFiles::cronTable), QByteArray("0 0 * * * root warnquota\n"));
}

void TestNotificationsTasks::theFirstTaskOfAMachineThatNeverWarned()
{
    _sandbox.removeEtc(MachineFiles::cronTable);
    ReadNotificationsData read(_element.get());
    read.run();
    read.afterRun();
    auto data = std::make_unique<NotificationsData>(*record());
    WarnquotaJob job;
    job.users = true;
    job.job.user = QStringLiteral("root");
    job.job.schedule = {QStringLiteral("0"), QStringLiteral("*"), QStringLiteral("*"), QStringLiteral("*"),
                        QStringLiteral("*")};
    data->jobs.append(job);
    UpdateNotificationsData update(_element.get(), std::move(data));
    update.run();
    QCOMPARE(update.status(), TaskDescription::Succeeded);
    ReadNotificationsData again(_element.get());
    again.run();
    again.afterRun();
    QCOMPARE(again.status(), TaskDescription::Succeeded);
    QCOMPARE(record()->jobs.size(), 1);
}

void TestNotificationsTasks::theAdministratorIsToldOfTheCopy()
{
    _sandbox.writeEtc(MachineFiles::cronTable, "# somebody's note\n");
    TaskObserver *observer = TaskObserver::instance();
    QSignalSpy details(observer, &TaskObserver::taskDetail);
    QSignalSpy finished(observer, &TaskObserver::taskFinished);
    observer->performTask(new UpdateNotificationsData(_element.get(), std::make_unique<NotificationsData>()));
    QTRY_COMPARE(finished.size(), 1);
    QCOMPARE(details.size(), 1);
    QVERIFY(details.first().at(1).toString().contains(QStringLiteral("/var/backups/warnquota.")));
    QCOMPARE(Sandbox::backupContents(), QByteArrayList({"# somebody's note\n"}));
}

KRA_SANDBOX_MAIN(TestNotificationsTasks)
#include "tst_notificationstasks.moc"
