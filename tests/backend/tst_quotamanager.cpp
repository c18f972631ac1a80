// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <quotamanager.h>
#include <sandbox.h>

#include <QFile>
#include <QHash>
#include <QRandomGenerator>
#include <QtTest>

#include <cerrno>
#include <limits>
#include <memory>

namespace
{

QString text(const char *bytes)
{
    return QString::fromUtf8(bytes);
}

const QString Sda = QStringLiteral("/dev/sda1");
const QString Sdb = QStringLiteral("/dev/sdb1");

} // namespace

class TestQuotaManager : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void kindThatIsOnIsOn();
    void kindThatIsOffIsOffAndNoError();
    void deviceThatDoesNotExistIsAnError();
    void otherKernelErrorsAreReported_data();
    void otherKernelErrorsAreReported();

    void quotaFileIsThatOfTheKind();
    void quotaFileOfAMountPointThatEndsWithASlash();
    void quotaFileOfAnUnmountedDeviceDoesNotExist();

    void kindSettingsOfAKindThatIsOn();
    void kindSettingsOfAKindThatIsOffHaveNoGrace();
    void kindSettingsTellConfiguredFromInForce();
    void graceThatCannotBeReadIsReported();
    void graceThatDoesNotFitIsAsLongAsItCanBe();

    void readGeneralReadsEveryDevice();
    void readGeneralWithoutDevicesIsEmpty();
    void readGeneralSaysWhatWasPassedOver();
    void readGeneralAsksADeviceThatIsListedTwiceOnce();
    void readGeneralNamesTheQuotaFeature();
    void readGeneralReturnsWhatItCouldRead();
    void readGeneralReportsAFailureOnceForEachDevice();

    void accountIdsAreThoseOfTheFirstOfThatName();
    void accountIdsOfRandomFilesAreThoseOfASearch();
    void accountsThatAreNotThereHaveNoId();
    void largeIdsKeepTheirBits();
    void accountNamesAreInTheOrderOfTheFile();
    void linesOfNetworkServicesAreNotRoot();
    void missingAccountFilesGiveNoIdsAndNoNames();

    void errorsOfEverySourceArriveHere();
    void programsAreReportedAsDetails();
    void blkidRunsOnceAndOnceMoreAfterEachReset();
    void resetLooksAtEverythingAgain();

private:
    void setKernel(const QByteArray &device, QuotaKind kind, bool on, const dqinfo &info = {});
    void writeQuotaFile(const QString &folder, const char *name);

    Sandbox _sandbox;
    QString _folderA;
    QString _folderB;
    std::unique_ptr<QuotaManager> _manager;
    QStringList _errors;
    QStringList _details;
};

/// Two devices: sda1 has user quotas on, sdb1 is spelled by UUID and has them configured, but not in force.
void TestQuotaManager::init()
{
    _sandbox.reset();
    _folderA = _sandbox.folder(text("a"));
    _folderB = _sandbox.folder(text("b"));
    for (const QString &folder : {_folderA, _folderB}) {
        for (const char *name : {"aquota.user", "aquota.group"})
            QFile::remove(folder + QLatin1Char('/') + text(name));
    }
    _sandbox.writeEtc(text("fstab"), "/dev/sda1 " + _folderA.toUtf8() + " ext4 defaults,usrquota 0 2\n" + "UUID=b " +
                                         _folderB.toUtf8() + " ext3 defaults,usrquota,grpquota 0 2\n");
    _sandbox.writeEtc(text("mtab"), "/dev/sda1 " + _folderA.toUtf8() + " ext4 rw,usrquota 0 0\n" + "/dev/sdb1 " +
                                        _folderB.toUtf8() + " ext3 rw 0 0\n");
    _sandbox.standIn(text("blkid"))
        .prints("/dev/sda1: UUID=\"a\" TYPE=\"ext4\"\n/dev/sdb1: UUID=\"b\" TYPE=\"ext3\"\n");
    dqinfo info = {};
    info.dqi_bgrace = 694861;
    info.dqi_igrace = 3600;
    setKernel("/dev/sda1", UserQuota, true, info);
    setKernel("/dev/sda1", GroupQuota, false);
    setKernel("/dev/sdb1", UserQuota, false);
    setKernel("/dev/sdb1", GroupQuota, false);
    writeQuotaFile(_folderA, "aquota.user");

    _errors.clear();
    _details.clear();
    _manager = std::make_unique<QuotaManager>();
    connect(_manager.get(), &QuotaManager::error, this, [this](const QString &message) { _errors.append(message); });
    connect(_manager.get(), &QuotaManager::detail, this, [this](const QString &detail) { _details.append(detail); });
}

void TestQuotaManager::setKernel(const QByteArray &device, QuotaKind kind, bool on, const dqinfo &info)
{
    FakeKernel::State state;
    state.on = on;
    state.info = info;
    _sandbox.kernel().setState(device, kind, state);
}

void TestQuotaManager::writeQuotaFile(const QString &folder, const char *name)
{
    QFile file(folder + QLatin1Char('/') + text(name));
    QVERIFY(file.open(QIODevice::WriteOnly));
}

void TestQuotaManager::kindThatIsOnIsOn()
{
    QVERIFY(_manager->isQuotaOn(Sda, UserQuota));
    QCOMPARE(_errors, QStringList());
}

void TestQuotaManager::kindThatIsOffIsOffAndNoError()
{
    QVERIFY(!_manager->isQuotaOn(Sda, GroupQuota));
    QCOMPARE(_errors, QStringList());
}

void TestQuotaManager::deviceThatDoesNotExistIsAnError()
{
    QVERIFY(!_manager->isQuotaOn(text("/dev/none"), UserQuota));
    QCOMPARE(_errors, (QStringList{text("File specified in special or addr not exist"),
                                   text("/dev/none: ") + qt_error_string(ENOENT)}));
}

void TestQuotaManager::otherKernelErrorsAreReported_data()
{
    QTest::addColumn<int>("number");
    QTest::addColumn<QString>("message");
    QTest::newRow("EPERM") << EPERM
                           << text("The caller does not have the necessary rights (CAP_SYS_ADMIN) to perform the "
                                   "specified operation");
    QTest::newRow("ENODEV") << ENODEV << text("Unknown error while executing quotactl");
    QTest::newRow("EINTR") << EINTR << text("Unknown error while executing quotactl");
}

void TestQuotaManager::otherKernelErrorsAreReported()
{
    QFETCH(int, number);
    QFETCH(QString, message);
    FakeKernel::State state;
    state.failures.insert(Q_GETFMT, number);
    _sandbox.kernel().setState("/dev/sda1", UserQuota, state);
    QVERIFY(!_manager->isQuotaOn(Sda, UserQuota));
    QCOMPARE(_errors, (QStringList{message, text("/dev/sda1: ") + qt_error_string(number)}));
}

void TestQuotaManager::quotaFileIsThatOfTheKind()
{
    QVERIFY(_manager->quotaFileExists(Sda, UserQuota));
    QVERIFY(!_manager->quotaFileExists(Sda, GroupQuota));
    writeQuotaFile(_folderA, "aquota.group");
    QVERIFY(_manager->quotaFileExists(Sda, GroupQuota));
    QCOMPARE(_errors, QStringList());
}

void TestQuotaManager::quotaFileOfAMountPointThatEndsWithASlash()
{
    _sandbox.writeEtc(text("mtab"), "/dev/sda1 " + _folderA.toUtf8() + "/ ext4 rw 0 0\n/dev/sdb1 / ext4 rw 0 0\n");
    QVERIFY(_manager->quotaFileExists(Sda, UserQuota));
    QCOMPARE(_manager->quotaFileExists(Sdb, UserQuota), QFile::exists(text("/aquota.user")));
    QCOMPARE(_errors, QStringList());
}

void TestQuotaManager::quotaFileOfAnUnmountedDeviceDoesNotExist()
{
    QVERIFY(!_manager->quotaFileExists(text("/dev/sdz1"), UserQuota));
    QCOMPARE(_errors, QStringList{text("Device /dev/sdz1 not mounted")});
}

void TestQuotaManager::kindSettingsOfAKindThatIsOn()
{
    const KindSettings settings = _manager->readKindSettings(Sda, UserQuota);
    QCOMPARE(settings.device, Sda);
    QVERIFY(settings.optionInForce);
    QVERIFY(settings.optionConfigured);
    QVERIFY(settings.quotaOn);
    QVERIFY(settings.fileExists);
    QCOMPARE(settings.blockGrace.text, text("1 weeks 1 days 1 hours 1 minutes 1 seconds"));
    QCOMPARE(settings.inodeGrace.toSeconds(), qint64(3600));
    QCOMPARE(_errors, QStringList());
}

void TestQuotaManager::kindSettingsOfAKindThatIsOffHaveNoGrace()
{
    const KindSettings settings = _manager->readKindSettings(Sda, GroupQuota);
    QCOMPARE(settings.device, Sda);
    QVERIFY(!settings.optionInForce && !settings.optionConfigured && !settings.quotaOn && !settings.fileExists);
    QCOMPARE(settings.blockGrace.toSeconds(), qint64(0));
    const QList<FakeKernel::Call> calls = _sandbox.kernel().calls();
    QCOMPARE(calls.size(), 1);
    QCOMPARE(calls.first().command, int(Q_GETFMT));
}

void TestQuotaManager::kindSettingsTellConfiguredFromInForce()
{
    const KindSettings settings = _manager->readKindSettings(Sdb, GroupQuota);
    QVERIFY(settings.optionConfigured);
    QVERIFY(!settings.optionInForce);
    QVERIFY(!settings.quotaOn);
}

void TestQuotaManager::graceThatCannotBeReadIsReported()
{
    FakeKernel::State state;
    state.failures.insert(Q_GETINFO, EPERM);
    _sandbox.kernel().setState("/dev/sda1", UserQuota, state);
    const KindSettings settings = _manager->readKindSettings(Sda, UserQuota);
    QVERIFY(settings.quotaOn);
    QCOMPARE(settings.blockGrace.toSeconds(), qint64(0));
    QCOMPARE(_errors, (QStringList{text("The caller does not have the necessary rights (CAP_SYS_ADMIN) to perform the "
                                        "specified operation"),
                                   text("/dev/sda1: ") + qt_error_string(EPERM)}));
}

void TestQuotaManager::graceThatDoesNotFitIsAsLongAsItCanBe()
{
    dqinfo info = {};
    info.dqi_bgrace = std::numeric_limits<quint64>::max();
    info.dqi_igrace = quint64(std::numeric_limits<quint32>::max()) + 1;
    setKernel("/dev/sda1", UserQuota, true, info);
    const KindSettings settings = _manager->readKindSettings(Sda, UserQuota);
    QCOMPARE(settings.blockGrace.toSeconds(), qint64(std::numeric_limits<quint32>::max()));
    QCOMPARE(settings.inodeGrace.toSeconds(), qint64(std::numeric_limits<quint32>::max()));
}

void TestQuotaManager::readGeneralReadsEveryDevice()
{
    const GeneralData general = _manager->readGeneral();
    QCOMPARE(general.deviceSettings.keys(), (QList<QString>{Sda, Sdb}));
    const DeviceSettings first = general.deviceSettings.value(Sda);
    QCOMPARE(first.filesystemType, text("ext4"));
    QCOMPARE(first.mountPoint, _manager->mountPoint(Sda));
    QVERIFY(!first.mountPoint.isEmpty());
    QCOMPARE(first.size, quint64(0)); // the device is made up: what is mounted there is another one
    QVERIFY(first.userSettings.quotaOn && first.userSettings.fileExists);
    QCOMPARE(first.userSettings.inodeGrace.text, text("1 hours"));
    QVERIFY(!first.groupSettings.quotaOn);
    QCOMPARE(first.groupSettings.device, Sda);
    QVERIFY(first.features.isEmpty());
    QVERIFY(first.failures.isEmpty());
    const DeviceSettings second = general.deviceSettings.value(Sdb);
    QCOMPARE(second.filesystemType, text("ext3"));
    QVERIFY(second.userSettings.optionConfigured && !second.userSettings.optionInForce);
    QCOMPARE(_errors, QStringList());
}

void TestQuotaManager::readGeneralWithoutDevicesIsEmpty()
{
    _sandbox.writeEtc(text("fstab"), "");
    const GeneralData general = _manager->readGeneral();
    QVERIFY(general.deviceSettings.isEmpty());
    QVERIFY(general.params.value(GeneralData::passedOverKey()).toStringList().isEmpty());
    QCOMPARE(_errors, QStringList());
}

void TestQuotaManager::readGeneralSaysWhatWasPassedOver()
{
    _sandbox.writeEtc(text("fstab"), "tmpfs /tmp tmpfs defaults 0 0\n/dev/sda1 / ext4 defaults 0 0\n");
    const GeneralData general = _manager->readGeneral();
    QCOMPARE(general.params.value(text("passedOver")).toStringList(),
             QStringList{text("tmpfs on /tmp: tmpfs, not ext2, ext3 or ext4")});
}

void TestQuotaManager::readGeneralAsksADeviceThatIsListedTwiceOnce()
{
    _sandbox.writeEtc(text("fstab"), "/dev/sda1 /a ext4 defaults 0 0\nUUID=a /b ext4 defaults 0 0\n");
    QCOMPARE(_manager->quotaDevices(), (QStringList{Sda, Sda}));
    QCOMPARE(_manager->readGeneral().deviceSettings.keys(), QList<QString>{Sda});
    QList<int> commands;
    for (const FakeKernel::Call &call : _sandbox.kernel().calls())
        commands.append(call.command);
    QCOMPARE(commands, (QList<int>{Q_GETFMT, Q_GETINFO, Q_GETFMT}));
}

void TestQuotaManager::readGeneralNamesTheQuotaFeature()
{
    dqinfo info = {};
    info.dqi_flags = 0x10000;
    setKernel("/dev/sdb1", GroupQuota, true, info);
    const GeneralData general = _manager->readGeneral();
    QCOMPARE(general.deviceSettings.value(Sdb).features, QStringList{text("quota-feature")});
    QVERIFY(general.deviceSettings.value(Sda).features.isEmpty());
}

void TestQuotaManager::readGeneralReturnsWhatItCouldRead()
{
    _sandbox.writeEtc(text("mtab"), "/dev/sda1 " + _folderA.toUtf8() + " ext4 rw,usrquota 0 0\n");
    const GeneralData general = _manager->readGeneral();
    QVERIFY(general.deviceSettings.value(Sda).userSettings.quotaOn);
    QVERIFY(general.deviceSettings.contains(Sdb));
    QVERIFY(general.deviceSettings.value(Sdb).userSettings.optionConfigured);
    QCOMPARE(general.deviceSettings.value(Sdb).filesystemType, QString());
    QCOMPARE(_errors, QStringList{text("Device /dev/sdb1 not mounted")});
}

void TestQuotaManager::readGeneralReportsAFailureOnceForEachDevice()
{
    _sandbox.writeEtc(text("mtab"), "");
    for (const char *device : {"/dev/sda1", "/dev/sdb1"}) {
        FakeKernel::State state;
        state.failures.insert(Q_GETFMT, ENODEV);
        _sandbox.kernel().setState(device, UserQuota, state);
        _sandbox.kernel().setState(device, GroupQuota, state);
    }
    const QString unknown = text("Unknown error while executing quotactl");
    const GeneralData general = _manager->readGeneral();
    const QString why = text(": ") + qt_error_string(ENODEV);
    const QStringList ofSda{unknown, Sda + why, text("Device /dev/sda1 not mounted")};
    const QStringList ofSdb{unknown, Sdb + why, text("Device /dev/sdb1 not mounted")};
    QCOMPARE(_errors, ofSda + ofSdb);
    QCOMPARE(general.deviceSettings.value(Sda).failures, ofSda);
    QCOMPARE(general.deviceSettings.value(Sdb).failures, ofSdb);

    // Outside a whole read every question is answered for itself.
    _errors.clear();
    _manager->mountPoint(Sda);
    _manager->mountPoint(Sda);
    QCOMPARE(_errors.size(), 2);
}

void TestQuotaManager::accountIdsAreThoseOfTheFirstOfThatName()
{
    _sandbox.writeEtc(text("passwd"), "anna:x:1000:1::/:/bin/sh\nanna:x:2000:1::/:/bin/sh\n");
    _sandbox.writeEtc(text("group"), "staff:x:50:\nstaff:x:60:\n");
    QCOMPARE(_manager->userId(text("anna")), 1000);
    QCOMPARE(_manager->groupId(text("staff")), 50);
}

/// Files of all lengths, with few names and with many.
void TestQuotaManager::accountIdsOfRandomFilesAreThoseOfASearch()
{
    bool isGiven = false;
    const int given = qEnvironmentVariableIntValue("KRA_SEED", &isGiven);
    const quint32 seed = isGiven ? static_cast<quint32>(given) : QRandomGenerator::system()->generate() >> 1;
    qInfo("KRA_SEED=%u", seed);
    QRandomGenerator random(seed);
    for (int round = 0; round < 200; ++round) {
        const int names = 1 + random.bounded(300);
        QHash<QString, int> firstIds;
        QByteArray table;
        for (int i = random.bounded(300); i > 0; --i) {
            const QByteArray name = "user" + QByteArray::number(random.bounded(names));
            const int id = random.bounded(60000);
            table += name + ":x:" + QByteArray::number(id) + ":\n";
            firstIds.insert(text(name), firstIds.value(text(name), id));
        }
        _sandbox.writeEtc(text("group"), table);
        _manager->resetCache();
        for (int i = 0; i < names; ++i) {
            const QString name = text("user%1").arg(i);
            QCOMPARE(_manager->groupId(name), firstIds.value(name, -1));
        }
    }
}

void TestQuotaManager::accountsThatAreNotThereHaveNoId()
{
    QCOMPARE(_manager->userId(text("nobody at all")), -1);
    QCOMPARE(_manager->userId(QString()), -1);
    QCOMPARE(_manager->groupId(text("no group")), -1);
    QCOMPARE(_errors, QStringList());
}

void TestQuotaManager::largeIdsKeepTheirBits()
{
    _sandbox.writeEtc(text("passwd"), "big:x:4294967294:1::/:/bin/sh\n");
    QCOMPARE(static_cast<quint32>(_manager->userId(text("big"))), quint32(4294967294));
}

void TestQuotaManager::accountNamesAreInTheOrderOfTheFile()
{
    _sandbox.writeEtc(text("passwd"), "zoe:x:3:1::/:/bin/sh\nanna:x:1:1::/:/bin/sh\nzoe:x:2:1::/:/bin/sh\n");
    _sandbox.writeEtc(text("group"), "z:x:3:\na:x:1:\n");
    QCOMPARE(_manager->userNames(), (QStringList{text("zoe"), text("anna"), text("zoe")}));
    QCOMPARE(_manager->groupNames(), (QStringList{text("z"), text("a")}));
}

void TestQuotaManager::linesOfNetworkServicesAreNotRoot()
{
    _sandbox.writeEtc(text("passwd"), "root:x:0:0::/root:/bin/sh\n-eve\n+ben::::::\n+@staff::::::\n+\n");
    _sandbox.writeEtc(text("group"), "root:x:0:\n-guests:::\n+:::\n");
    QCOMPARE(_manager->userNames(), QStringList(text("root")));
    QCOMPARE(_manager->groupNames(), QStringList(text("root")));
    for (const char *name : {"-eve", "+ben", "+@staff", "+", "-guests"}) {
        QCOMPARE(_manager->userId(text(name)), -1);
        QCOMPARE(_manager->groupId(text(name)), -1);
    }
}

void TestQuotaManager::missingAccountFilesGiveNoIdsAndNoNames()
{
    _sandbox.removeEtc(text("passwd"));
    _sandbox.removeEtc(text("group"));
    QCOMPARE(_manager->userNames(), QStringList());
    QCOMPARE(_manager->userId(text("root")), -1);
    QCOMPARE(_manager->groupId(text("root")), -1);
    QCOMPARE(_manager->groupNames(), QStringList());
    QCOMPARE(_errors, (QStringList{text("File /etc/passwd can not be open"), text("File /etc/group can not be open")}));
}

void TestQuotaManager::errorsOfEverySourceArriveHere()
{
    _sandbox.reset();
    _sandbox.removeEtc(text("fstab"));
    _manager->quotaDevices();
    _manager->deviceOptions(Sda, text("/etc/passwd"));
    _manager->mountPoint(Sda);
    QCOMPARE(_errors, (QStringList{text("File /etc/fstab can not be open"), text("Process blkid can not started"),
                                   text("Unknow file name /etc/passwd"), text("Device /dev/sda1 not mounted")}));
}

void TestQuotaManager::programsAreReportedAsDetails()
{
    _manager->readGeneral();
    QCOMPARE(_details.size(), 1);
    QVERIFY(_details.first().startsWith(text("blkid")));
}

void TestQuotaManager::blkidRunsOnceAndOnceMoreAfterEachReset()
{
    for (int runs = 1; runs <= 3; ++runs) {
        _manager->readGeneral();
        _manager->fstabDevices();
        _manager->mountedType(Sda);
        QCOMPARE(_sandbox.calls(text("blkid")).size(), runs);
        _manager->resetCache();
    }
}

void TestQuotaManager::resetLooksAtEverythingAgain()
{
    const auto looks = [this] {
        return QStringList{_manager->hasQuotaOption(Sdb, UserQuota, text("/etc/mtab")) ? text("in force") : QString(),
                           _manager->fstabDevices().join(QLatin1Char(' ')),
                           QString::number(_manager->userId(text("new"))),
                           QString::number(_manager->groupId(text("new")))};
    };
    const QStringList before = looks();
    QCOMPARE(before.mid(2), QStringList({text("-1"), text("-1")}));
    _sandbox.writeEtc(text("mtab"), "/dev/sdb1 /b ext3 rw,usrquota 0 0\n");
    _sandbox.writeEtc(text("fstab"), "/dev/sdc1 /c ext4 rw 0 0\n");
    _sandbox.writeEtc(text("passwd"), "new:x:7:7::/:/bin/sh\n");
    _sandbox.writeEtc(text("group"), "new:x:8:\n");
    QCOMPARE(looks(), before);
    _manager->resetCache();
    QCOMPARE(looks(), QStringList({text("in force"), text("/dev/sdc1"), text("7"), text("8")}));
}

KRA_SANDBOX_MAIN(TestQuotaManager)
#include "tst_quotamanager.moc"
