// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <generaldata.h>
#include <module.h>
#include <readgeneraldata.h>
#include <sandbox.h>
#include <taskobserver.h>

#include <QSignalSpy>
#include <QtTest>

namespace
{
const char *const blkid = "/dev/vda: UUID=\"0001\" BLOCK_SIZE=\"1024\" TYPE=\"ext4\"\n"
                          "/dev/vdb: UUID=\"0002\" BLOCK_SIZE=\"1024\" TYPE=\"ext4\"\n";
const QString vda = QStringLiteral("/dev/vda");
const QString vdb = QStringLiteral("/dev/vdb");

class SomeElement : public OrdinaryElement
{
public:
    explicit SomeElement(Module *module)
        : OrdinaryElement(QStringLiteral("QuotaGeneralElement"), QString(), QString(), module,
                          &Module::isAdministratorHierarchy, Place::Child)
    {}
};
} // namespace

/// The whole way from the system's files and the kernel to the element's record.
class TestReadGeneralData : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void description();
    void aReadThatSucceeds();
    void whatFailsOnTwoDevicesIsOneMessage();
    void aFailedReadHandsItsRecordOver();
    void detailsAndOutcomeReachTheTaskList();
    void anElementThatDiedMeanwhile();

private:
    GeneralData *record() const { return dynamic_cast<GeneralData *>(_element->record()); }
    void mountTwoDevices();

    Sandbox _sandbox;
    Module _module{QStringLiteral("SomeModule"), nullptr};
    std::unique_ptr<SomeElement> _element;
};

void TestReadGeneralData::init()
{
    _sandbox.reset();
    _sandbox.standIn(QStringLiteral("blkid")).prints(blkid);
    _element = std::make_unique<SomeElement>(&_module);
}

void TestReadGeneralData::mountTwoDevices()
{
    const QByteArray first = "/dev/vda " + _sandbox.folder(QStringLiteral("a")).toLocal8Bit();
    const QByteArray second = "/dev/vdb " + _sandbox.folder(QStringLiteral("b")).toLocal8Bit();
    const QByteArray quota = " ext4 rw,usrquota,grpquota 0 0\n";
    const QByteArray none = " ext4 rw 0 0\n";
    _sandbox.writeEtc(QStringLiteral("fstab"), first + quota + second + none);
    _sandbox.writeEtc(QStringLiteral("mtab"), first + quota + second + none);
}

void TestReadGeneralData::description()
{
    QCOMPARE(ReadGeneralData(_element.get()).description(), QStringLiteral("Read genaral quota settings"));
}

void TestReadGeneralData::aReadThatSucceeds()
{
    mountTwoDevices();
    FakeKernel::State on;
    on.info.dqi_bgrace = 604800;
    on.info.dqi_igrace = 3600;
    _sandbox.kernel().setState("/dev/vda", USRQUOTA, on);
    FakeKernel::State off;
    off.on = false;
    _sandbox.kernel().setState("/dev/vda", GRPQUOTA, off);
    _sandbox.kernel().setState("/dev/vdb", USRQUOTA, off);
    _sandbox.kernel().setState("/dev/vdb", GRPQUOTA, off);

    ReadGeneralData task(_element.get());
    task.run();
    QCOMPARE(task.status(), TaskDescription::Succeeded);
    QCOMPARE(task.message(), QString());
    QVERIFY(!record()); // run() touches no element
    QCOMPARE(task.afterRun(), TaskDescription::Succeeded);
    QVERIFY(record());
    QCOMPARE(record()->deviceSettings.keys(), QStringList({vda, vdb}));

    const DeviceSettings settings = record()->deviceSettings.value(vda);
    QCOMPARE(settings.filesystemType, QStringLiteral("ext4"));
    QVERIFY(settings.userSettings.optionConfigured);
    QVERIFY(settings.userSettings.optionInForce);
    QVERIFY(settings.userSettings.quotaOn);
    QCOMPARE(settings.userSettings.blockGrace.weeks, 1U);
    QCOMPARE(settings.userSettings.inodeGrace.hours, 1U);
    QVERIFY(!settings.groupSettings.quotaOn);
    QVERIFY(!record()->deviceSettings.value(vdb).userSettings.optionConfigured);
}

/// The two kinds of a device fail alike, which is said once.
void TestReadGeneralData::whatFailsOnTwoDevicesIsOneMessage()
{
    mountTwoDevices(); // and the kernel knows neither
    ReadGeneralData task(_element.get());
    task.run();
    QCOMPARE(task.status(), TaskDescription::Failed);
    const QString text = QStringLiteral("File specified in special or addr not exist");
    const QString why = qt_error_string(ENOENT);
    QCOMPARE(task.message().split(QLatin1Char('\n')),
             (QStringList{text, QStringLiteral("/dev/vda: ") + why, text, QStringLiteral("/dev/vdb: ") + why}));
}

void TestReadGeneralData::aFailedReadHandsItsRecordOver()
{
    mountTwoDevices();
    ReadGeneralData task(_element.get());
    task.run();
    QCOMPARE(task.afterRun(), TaskDescription::Failed);
    QVERIFY(record());
    QCOMPARE(record()->deviceSettings.size(), 2);
}

void TestReadGeneralData::detailsAndOutcomeReachTheTaskList()
{
    _sandbox.standIn(QStringLiteral("blkid")).complains("blkid: cannot look\n").exits(4);
    mountTwoDevices();
    TaskObserver *observer = TaskObserver::instance();
    QSignalSpy details(observer, &TaskObserver::taskDetail);
    QSignalSpy finished(observer, &TaskObserver::taskFinished);
    observer->performTask(new ReadGeneralData(_element.get()));
    QTRY_COMPARE(finished.size(), 1);
    QVERIFY(record());
    QVERIFY(!details.isEmpty());
    const QString detail = details.last().at(1).toString();
    QVERIFY2(detail.contains(QStringLiteral("blkid")) && detail.contains(QStringLiteral("4")), qPrintable(detail));
}

void TestReadGeneralData::anElementThatDiedMeanwhile()
{
    mountTwoDevices();
    ReadGeneralData task(_element.get());
    _element.reset();
    task.run();
    task.afterRun();
    QVERIFY(!task.element());
}

KRA_SANDBOX_MAIN(TestReadGeneralData)
#include "tst_readgeneraldata.moc"
