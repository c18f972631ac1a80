// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <generaldata.h>
#include <module.h>
#include <sandbox.h>
#include <taskobserver.h>
#include <updategeneraldata.h>
#include <userdata.h>

#include <QSignalSpy>
#include <QtTest>

#include <vector>

namespace
{

const QString vda = QStringLiteral("/dev/vda");
const QString vdb = QStringLiteral("/dev/vdb");

class AskedModule : public Module
{
public:
    AskedModule()
        : Module(QStringLiteral("AskedModule"), nullptr)
    {}
    void performOperation(ContextOperation * /*operation*/, OperationType type, ElementData * /*data*/,
                          int /*extra*/) override
    {
        asked.push_back(type);
    }

    std::vector<OperationType> asked;
};

class SomeElement : public OrdinaryElement
{
public:
    explicit SomeElement(Module *module)
        : OrdinaryElement(QStringLiteral("QuotaGeneralElement"), QString(), QString(), module,
                          &Module::isAdministratorHierarchy, Place::Child)
    {}
};

} // namespace

/// From a record to the machine, and what the task says of it.
class TestUpdateGeneralData : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void description();
    void withoutARecordItFails();
    void aForeignRecordFails();
    void aRecordIsApplied();
    void onlyTheTouchedPartIsApplied();
    void failuresAreLines();
    void itReadsAgainHoweverItEnded();
    void whatRunsIsToldWhileItRuns();

private:
    std::unique_ptr<GeneralData> record(bool on) const;
    QByteArray options(int line) const;

    Sandbox _sandbox;
    std::unique_ptr<AskedModule> _module;
    std::unique_ptr<SomeElement> _element;
};

/// Two devices with quotas configured for the users, but off. Quota files are there.
void TestUpdateGeneralData::init()
{
    _sandbox.reset();
    _sandbox.standIn(QStringLiteral("blkid")).prints("/dev/vda: TYPE=\"ext4\"\n/dev/vdb: TYPE=\"ext4\"\n");
    QByteArray table;
    for (const QString &device : {vda, vdb}) {
        const QString folder = _sandbox.folder(device.mid(5));
        for (const char *name : {"/aquota.user", "/aquota.group"}) {
            QFile file(folder + QString::fromLatin1(name));
            QVERIFY(file.open(QIODevice::WriteOnly));
        }
        table += device.toUtf8() + ' ' + folder.toUtf8() + " ext4 rw,usrquota 0 0\n";
        FakeKernel::State off;
        off.on = false;
        _sandbox.kernel().setState(device.toUtf8(), USRQUOTA, off);
        _sandbox.kernel().setState(device.toUtf8(), GRPQUOTA, off);
    }
    _sandbox.writeEtc(QStringLiteral("fstab"), table);
    _sandbox.writeEtc(QStringLiteral("mtab"), table);
    for (const char *program : {"mount", "quotaon", "quotaoff", "quotacheck"})
        _sandbox.standIn(QString::fromLatin1(program));
    _module = std::make_unique<AskedModule>();
    _element = std::make_unique<SomeElement>(_module.get());
}

std::unique_ptr<GeneralData> TestUpdateGeneralData::record(bool on) const
{
    auto data = std::make_unique<GeneralData>();
    for (const QString &device : {vda, vdb}) {
        DeviceSettings &settings = data->deviceSettings[device];
        settings.userSettings.device = device;
        settings.userSettings.quotaOn = on;
        settings.groupSettings.device = device;
    }
    return data;
}

QByteArray TestUpdateGeneralData::options(int line) const
{
    return _sandbox.readEtc(QStringLiteral("fstab")).split('\n').at(line).simplified().split(' ').at(3);
}

void TestUpdateGeneralData::description()
{
    const UpdateGeneralData task(_element.get(), nullptr);
    QCOMPARE(task.description(), QStringLiteral("Update general settings"));
    QVERIFY(task.changesMachine());
}

void TestUpdateGeneralData::withoutARecordItFails()
{
    UpdateGeneralData task(_element.get(), nullptr);
    task.run();
    QCOMPARE(task.status(), TaskDescription::Failed);
    QCOMPARE(task.message(), QString());
    QCOMPARE(_sandbox.calls().size(), 0);
}

void TestUpdateGeneralData::aForeignRecordFails()
{
    UpdateGeneralData task(_element.get(), std::make_unique<UserData>());
    task.run();
    QCOMPARE(task.status(), TaskDescription::Failed);
    QCOMPARE(task.message(), QString());
    QCOMPARE(_sandbox.calls().size(), 0);
}

void TestUpdateGeneralData::aRecordIsApplied()
{
    UpdateGeneralData task(_element.get(), record(false));
    task.run();
    QCOMPARE(task.message(), QString());
    QCOMPARE(task.status(), TaskDescription::Succeeded);
    QCOMPARE(options(0), QByteArray("rw"));
    QCOMPARE(options(1), QByteArray("rw"));
}

void TestUpdateGeneralData::onlyTheTouchedPartIsApplied()
{
    std::unique_ptr<GeneralData> data = record(false);
    data->touched = TouchedSettings{vda, data->deviceSettings.value(vda)};
    data->touched->asRead.userSettings.quotaOn = true;
    UpdateGeneralData task(_element.get(), std::move(data));
    task.run();
    QCOMPARE(task.status(), TaskDescription::Succeeded);
    QCOMPARE(task.result(), QStringLiteral("/dev/vda: quotas for users: off, before: on"));
    QCOMPARE(options(0), QByteArray("rw"));
    QCOMPARE(options(1), QByteArray("rw,usrquota"));
}

void TestUpdateGeneralData::failuresAreLines()
{
    _sandbox.standIn(QStringLiteral("quotaon")).complains("quotaon: no").exits(1);
    UpdateGeneralData task(_element.get(), record(true));
    task.run();
    QCOMPARE(task.status(), TaskDescription::Failed);
    QCOMPARE(task.message(), QStringLiteral("Process quotaon -u /dev/vda return error quotaon: no\n"
                                            "Process quotaon -u /dev/vdb return error quotaon: no"));
}

void TestUpdateGeneralData::itReadsAgainHoweverItEnded()
{
    UpdateGeneralData succeeded(_element.get(), record(true));
    succeeded.run();
    QCOMPARE(succeeded.afterRun(), TaskDescription::Succeeded);
    UpdateGeneralData failed(_element.get(), nullptr);
    failed.run();
    QCOMPARE(failed.afterRun(), TaskDescription::Failed);
    QCOMPARE(_module->asked.size(), std::size_t(2));
    QCOMPARE(_module->asked.front(), OperationType::Read);

    UpdateGeneralData orphan(_element.get(), record(true));
    _element.reset();
    orphan.run();
    QCOMPARE(orphan.afterRun(), TaskDescription::Succeeded);
    QCOMPARE(_module->asked.size(), std::size_t(2));
}

void TestUpdateGeneralData::whatRunsIsToldWhileItRuns()
{
    TaskObserver *observer = TaskObserver::instance();
    QSignalSpy details(observer, &TaskObserver::taskDetail);
    QSignalSpy finished(observer, &TaskObserver::taskFinished);
    _sandbox.standIn(QStringLiteral("quotaon")).complains("quotaon: using x\n").exits(1);
    observer->performTask(new UpdateGeneralData(_element.get(), record(true)));
    QTRY_COMPARE(finished.size(), 1);
    QCOMPARE(finished.first().first().value<TaskReport>().status, TaskDescription::Succeeded);
    QStringList texts;
    for (const QList<QVariant> &detail : qAsConst(details))
        texts.append(detail.at(1).toString());
    const int started = texts.indexOf(QStringLiteral("Running quotaon -u /dev/vda"));
    const int ended = texts.indexOf(QStringLiteral("quotaon -u /dev/vda: exit code 1\nquotaon: using x"));
    QVERIFY2(started >= 0 && ended > started, qPrintable(texts.join(QLatin1Char('\n'))));
}

KRA_SANDBOX_MAIN(TestUpdateGeneralData)
#include "tst_updategeneraldata.moc"
