// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "switchedmachine.h"

#include <generaldata.h>

#include <QDir>
#include <QFile>
#include <QtTest>

#include <cerrno>

namespace
{

QString text(const char *bytes)
{
    return QString::fromUtf8(bytes);
}

/// Nothing can be written beside "/etc/fstab" as long as this is there.
class FolderInPlaceOfTheNewTable
{
public:
    FolderInPlaceOfTheNewTable()
    {
        if (!QDir(text("/etc")).mkdir(text(".fstab.kra-new~")))
            qFatal("no folder");
    }
    FolderInPlaceOfTheNewTable(const FolderInPlaceOfTheNewTable &) = delete;
    FolderInPlaceOfTheNewTable &operator=(const FolderInPlaceOfTheNewTable &) = delete;
    ~FolderInPlaceOfTheNewTable() { QDir(text("/etc")).rmdir(text(".fstab.kra-new~")); }
};

} // namespace

/// The order of the steps in which a kind of quota is switched, and what happens when one of them fails.
class TestQuotaSwitch : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { _machine.reset(); }

    void onFromNothing_data() { kinds(); }
    void onFromNothing();
    void onWithAQuotaFile();
    void onWithTheQuotaFileThatAnOptionNames();
    void onWhileItIsOnSetsTheGracePeriods_data() { kinds(); }
    void onWhileItIsOnSetsTheGracePeriods();
    void onWhereTheRemountIsRefused();
    void onWhereTheTableIsSavedDuringARefusedRemount();
    void onWhereTheRemountFailsForAnotherReason();
    void onWhereNothingIsMountedTheOptionStays();
    void onWhereTheRemountFailsButAFileIsThere();
    void onWhereNoQuotaFileIsMade();
    void onWhereQuotacheckDoesNotStart();
    void aDeviceThatNoLineResolvesToIsLeftAlone_data();
    void aDeviceThatNoLineResolvesToIsLeftAlone();
    void journaledQuotasAreNotMixed();
    void onWhereTheTableCannotBeWritten();
    void onWhereQuotaonFails();
    void onWhereQuotaonSaysThatItWasOn();
    void onForADeviceThatIsNotMounted();
    void onKeepsTheOtherKind();

    void offWhileItIsOn_data() { kinds(); }
    void offWhileItIsOn();
    void offWhileItIsOff();
    void offWhereNothingIsConfigured();
    void offWhereQuotaoffFails();
    void offKeepsTheOtherKind();
    void offWhereTheTableCannotBeWritten();
    void offWhereTheKernelDoesNotAnswer();

    void gracePeriodsInSeconds();
    void gracePeriodsThatTheKernelRefuses();

    void onDemandFromNothing();
    void onDemandWithAQuotaFileDoesNotRemount();
    void onDemandWithAnOldQuotaFileRemountsWhereItHasTo();
    void onDemandWithAnOldQuotaFileTakesARefusedOptionOut();
    void onDemandWithAnOldQuotaFileTellsWhy();
    void onDemandStopsWhereTheOptionIsNotInForce();
    void onDemandStopsWhereQuotacheckDoesNotStart();
    void onDemandFailsWithQuotaon();
    void onDemandTellsWhatLedToTheFailure();

    void generalDataAppliesDeviceByDeviceUsersFirst();
    void generalDataReadsTheTablesAgainBetweenTheKinds();
    void generalDataAppliesOnlyWhatWasEdited();
    void generalDataLeavesGracePeriodsThatNobodyEdited();
    void aDeviceThatIsConfiguredButNotOnKeepsItsOptions();
    void theOptionOfAKindThatIsOffIsTakenOnWish();

private:
    static void kinds();
    KindSettings settings(bool on) const;
    void setAgeOfFile();

    SwitchedMachine _machine;
};

void TestQuotaSwitch::kinds()
{
    QTest::addColumn<int>("number");
    QTest::addColumn<QString>("letter");
    QTest::addColumn<QByteArray>("option");
    QTest::newRow("users") << 0 << text("u") << QByteArray("usrquota");
    QTest::newRow("groups") << 1 << text("g") << QByteArray("grpquota");
}

KindSettings TestQuotaSwitch::settings(bool on) const
{
    KindSettings settings;
    settings.device = _machine.sda;
    settings.quotaOn = on;
    settings.blockGrace = TimePeriod(604800 + 5);
    settings.inodeGrace = TimePeriod(3600);
    return settings;
}

/// As if the quota file of sda1 had last been written on the 9th of November 2021.
void TestQuotaSwitch::setAgeOfFile()
{
    QFile file(_machine.sandbox().folder(text("sda1")) + text("/aquota.user"));
    QVERIFY(file.open(QIODevice::Append) &&
            file.setFileTime({{2021, 11, 9}, {17, 5}}, QFileDevice::FileModificationTime));
}

void TestQuotaSwitch::onFromNothing()
{
    QFETCH(int, number);
    QFETCH(QString, letter);
    QFETCH(QByteArray, option);
    const auto kind = static_cast<QuotaKind>(number);
    // The tables are read before, and would say the same ever after.
    QVERIFY(!_machine.manager().hasQuotaOption(_machine.sda, kind, text("/etc/mtab")));

    QVERIFY(_machine.manager().applyQuotaSettings(settings(true), kind));
    QCOMPARE(_machine.programs(),
             QStringList({text("mount /dev/sda1 -o remount"), text("quotacheck -%1m /dev/sda1").arg(letter),
                          text("quotaon -%1 /dev/sda1").arg(letter)}));
    QCOMPARE(_machine.configured(_machine.sda), "rw," + option);
    QCOMPARE(_machine.configured(_machine.sdb), QByteArray("rw"));
    QVERIFY(_machine.isOn(_machine.sda, kind));
    QCOMPARE(_machine.errors(), QStringList());
    QCOMPARE(_machine.graceWrites(), 0);                         // it was off when they would have been set
    QCOMPARE(_machine.sandbox().calls(text("blkid")).size(), 2); // once more after the remount
}

void TestQuotaSwitch::onWithAQuotaFile()
{
    _machine.makeQuotaFile(_machine.sda, UserQuota);
    setAgeOfFile();
    QVERIFY(_machine.manager().applyQuotaSettings(settings(true), UserQuota));
    QCOMPARE(_machine.programs(), QStringList({text("mount /dev/sda1 -o remount"), text("quotaon -u /dev/sda1")}));
    QCOMPARE(_machine.errors(), QStringList());
    const QString oldCounts =
        text("/dev/sda1: quotas count on from the file aquota.user, dated 09.11.2021 17:05. What was stored or removed "
             "while they were off is not counted; to count anew, switch them off, run quotacheck -um /dev/sda1 and "
             "switch them on.");
    QCOMPARE(_machine.details().count(oldCounts), 1);

    // On demand alike; and nothing is to be said of a file that has just been made.
    _machine.setOn(_machine.sda, UserQuota, false);
    QVERIFY(_machine.manager().switchOnDemand(_machine.sda, UserQuota));
    QCOMPARE(_machine.details().count(oldCounts), 2);
    QVERIFY(_machine.manager().switchOnDemand(_machine.sda, GroupQuota));
    QVERIFY(_machine.manager().switchOnDemand(_machine.sdb, UserQuota));
    QCOMPARE(_machine.details().filter(text("count on from")).size(), 2);
}

/// It is the one that the kernel writes to; "quotacheck" makes it under that name.
void TestQuotaSwitch::onWithTheQuotaFileThatAnOptionNames()
{
    _machine.configure("rw,usrjquota=quota.user,jqfmt=vfsv1");
    _machine.makeUseless(text("quotacheck"));
    QFile file(_machine.sandbox().folder(text("sda1")) + text("/quota.user"));
    connect(&_machine.manager(), &QuotaManager::detail, &_machine.manager(), [&](const QString &detail) {
        if (detail.startsWith(text("quotacheck")))
            QVERIFY(file.open(QIODevice::WriteOnly));
    });
    QVERIFY(_machine.manager().applyQuotaSettings(settings(true), UserQuota));
    QCOMPARE(_machine.programs(), QStringList({text("mount /dev/sda1 -o remount"), text("quotacheck -um /dev/sda1"),
                                               text("quotaon -u /dev/sda1")}));
    QVERIFY(_machine.isOn(_machine.sda, UserQuota));
    const KindSettings read = _machine.manager().readKindSettings(_machine.sda, UserQuota);
    QVERIFY(read.fileExists);
    QCOMPARE(read.fileName, text("quota.user"));
    QCOMPARE(_machine.errors(), QStringList());
}

void TestQuotaSwitch::onWhileItIsOnSetsTheGracePeriods()
{
    QFETCH(int, number);
    const auto kind = static_cast<QuotaKind>(number);
    _machine.configure("rw,usrquota,grpquota");
    _machine.makeQuotaFile(_machine.sda, kind);
    _machine.setOn(_machine.sda, kind, true);
    QVERIFY(_machine.manager().applyQuotaSettings(settings(true), kind));
    QCOMPARE(_machine.programs(), QStringList{text("mount /dev/sda1 -o remount")});
    QCOMPARE(_machine.graceWrites(), 1);
    const FakeKernel::State state = _machine.sandbox().kernel().state("/dev/sda1", number);
    QCOMPARE(state.info.dqi_bgrace, 604805U);
    QCOMPARE(state.info.dqi_igrace, 3600U);
    QCOMPARE(_machine.errors(), QStringList());
}

/// What it refuses now it would refuse at the next start too, which would end there.
void TestQuotaSwitch::onWhereTheRemountIsRefused()
{
    const QByteArray table = "# disks\n" + _machine.sandbox().readEtc(text("fstab"));
    _machine.sandbox().writeEtc(text("fstab"), table);
    const QByteArray complaint = "mount: /srv: mount point not mounted or bad option.\n";
    _machine.sandbox().standIn(text("mount")).complains(complaint).exits(32);
    QVERIFY(_machine.manager().applyQuotaSettings(settings(true), UserQuota));
    QCOMPARE(_machine.programs(), QStringList{text("mount /dev/sda1 -o remount")});
    QCOMPARE(_machine.sandbox().readEtc(text("fstab")), table); // with its comment
    QCOMPARE(
        _machine.errors(),
        QStringList{text("/dev/sda1 could not be mounted again with the option usrquota, which was therefore taken "
                         "out of /etc/fstab again: mount: /srv: mount point not mounted or bad option.")});
    QVERIFY(_machine.details().contains(
        text("mount /dev/sda1 -o remount: exit code 32\nmount: /srv: mount point not mounted or bad option.")));

    // On demand alike, and when the program says nothing.
    _machine.reset();
    _machine.sandbox().standIn(text("mount")).exits(32);
    QVERIFY(!_machine.manager().switchOnDemand(_machine.sda, GroupQuota));
    QCOMPARE(_machine.configured(_machine.sda), QByteArray("rw"));
    QCOMPARE(
        _machine.errors(),
        QStringList{text("/dev/sda1 could not be mounted again with the option grpquota, which was therefore taken "
                         "out of /etc/fstab again: mount /dev/sda1 -o remount: exit code 32")});
}

/// What somebody else saved while it was mounted stays; of ours nothing.
void TestQuotaSwitch::onWhereTheTableIsSavedDuringARefusedRemount()
{
    _machine.sandbox().standIn(text("mount")).exits(32);
    const QByteArray other = "/dev/sdz1  /z  ext4  rw  0  0\n";
    connect(&_machine.manager(), &QuotaManager::detail, &_machine.manager(), [&](const QString &detail) {
        if (detail.startsWith(text("mount /dev/sda1")))
            _machine.sandbox().writeEtc(text("fstab"), _machine.sandbox().readEtc(text("fstab")) + other);
    });
    QVERIFY(_machine.manager().applyQuotaSettings(settings(true), UserQuota));
    QCOMPARE(_machine.configured(_machine.sda), QByteArray("rw"));
    QVERIFY(_machine.sandbox().readEtc(text("fstab")).endsWith(other));
}

/// Nothing of what was there before the remount is at fault, and nothing has to be taken out.
void TestQuotaSwitch::onWhereTheRemountFailsForAnotherReason()
{
    _machine.sandbox().writeEtc(text("fstab"),
                                _machine.sandbox().readEtc(text("fstab")).replace(" rw ", " rw,usrquota "));
    _machine.sandbox().standIn(text("mount")).exits(32);
    QVERIFY(_machine.manager().applyQuotaSettings(settings(true), UserQuota));
    QCOMPARE(_machine.configured(_machine.sda), QByteArray("rw,usrquota"));
    QCOMPARE(_machine.errors(), QStringList());
    QVERIFY(_machine.details().contains(text("mount /dev/sda1 -o remount: exit code 32")));
}

/// Nothing has refused the option there: it stays for the next mount.
void TestQuotaSwitch::onWhereNothingIsMountedTheOptionStays()
{
    _machine.sandbox().writeEtc(text("mtab"), "/dev/sda1 /tmp/x fuse.ext4 rw 0 0\n");
    _machine.sandbox().standIn(text("mount")).complains("mount: not mounted\n").exits(32);
    QVERIFY(_machine.manager().applyQuotaSettings(settings(true), UserQuota));
    QCOMPARE(_machine.configured(_machine.sda), QByteArray("rw,usrquota"));
    QCOMPARE(_machine.errors(),
             QStringList{text("/dev/sda1 is not mounted. It has the option usrquota in /etc/fstab "
                              "now; mount it, then its quotas can be switched on: mount: not mounted")});
}

void TestQuotaSwitch::onWhereTheRemountFailsButAFileIsThere()
{
    _machine.makeQuotaFile(_machine.sda, UserQuota);
    _machine.makeUseless(text("mount"));
    QVERIFY(_machine.manager().applyQuotaSettings(settings(true), UserQuota));
    QCOMPARE(_machine.programs(), QStringList{text("mount /dev/sda1 -o remount")}); // quotaon waits for the option
}

void TestQuotaSwitch::onWhereNoQuotaFileIsMade()
{
    _machine.sandbox().standIn(text("quotacheck")).complains("quotacheck: No space left on device\n").exits(1);
    _machine.makeUseless(text("quotacheck"));
    QVERIFY(_machine.manager().applyQuotaSettings(settings(true), UserQuota));
    QCOMPARE(_machine.programs(), QStringList({text("mount /dev/sda1 -o remount"), text("quotacheck -um /dev/sda1")}));
    QCOMPARE(_machine.errors(), QStringList());
    QVERIFY(_machine.details().contains(
        text("quotacheck -um /dev/sda1: exit code 1\nquotacheck: No space left on device")));
}

void TestQuotaSwitch::onWhereQuotacheckDoesNotStart()
{
    _machine.sandbox().standIn(text("quotacheck")).isNotExecutable();
    _machine.makeUseless(text("quotacheck"));
    QVERIFY(_machine.manager().applyQuotaSettings(settings(true), GroupQuota));
    QCOMPARE(_machine.programs(), QStringList{text("mount /dev/sda1 -o remount")});
    QCOMPARE(_machine.errors(), QStringList{text("Process quotacheck -gm /dev/sda1 can not started")});
}

/// A device is not switched by half, neither on nor off: no program runs, and a text says what to do.
void TestQuotaSwitch::aDeviceThatNoLineResolvesToIsLeftAlone()
{
    QFETCH(QByteArray, spelling);
    const QByteArray table = spelling + " /srv ext4 rw,grpquota 0 2\n";
    _machine.sandbox().writeEtc(text("fstab"), table);
    _machine.sandbox()
        .standIn(text("blkid"))
        .prints("/dev/sda1: LABEL=\"l\" UUID=\"a\" TYPE=\"ext4\" "
                "PARTLABEL=\"p\" PARTUUID=\"u\"\n");
    const QString refusal = text("File /etc/fstab was not changed: its line 1 names the device /dev/sda1 as %1; write "
                                 "UUID=a there, then it can be switched")
                                .arg(QString::fromLatin1(spelling));
    QVERIFY(_machine.manager().applyQuotaSettings(settings(true), UserQuota));
    QCOMPARE(_machine.errors(), QStringList{refusal});
    QVERIFY(!_machine.manager().switchOnDemand(_machine.sda, UserQuota));
    QCOMPARE(_machine.errors(), QStringList({refusal, refusal}));

    // Off: the option is there, though the kind is not on; it is on; neither.
    QVERIFY(_machine.manager().applyQuotaSettings(settings(false), GroupQuota));
    _machine.setOn(_machine.sda, UserQuota, true);
    QVERIFY(_machine.manager().applyQuotaSettings(settings(false), UserQuota));
    QCOMPARE(_machine.errors(), QStringList({refusal, refusal, refusal, refusal}));
    QVERIFY(_machine.isOn(_machine.sda, UserQuota));
    _machine.setOn(_machine.sda, UserQuota, false);
    QVERIFY(_machine.manager().applyQuotaSettings(settings(false), UserQuota));
    QCOMPARE(_machine.errors().size(), 4);

    // What is on needs no table to have its grace periods set.
    _machine.setOn(_machine.sda, UserQuota, true);
    QVERIFY(_machine.manager().applyQuotaSettings(settings(true), UserQuota));
    QCOMPARE(_machine.graceWrites(), 1);
    QCOMPARE(_machine.errors().size(), 4);

    QCOMPARE(_machine.sandbox().readEtc(text("fstab")), table);
    QCOMPARE(_machine.programs(), QStringList());
}

void TestQuotaSwitch::aDeviceThatNoLineResolvesToIsLeftAlone_data()
{
    QTest::addColumn<QByteArray>("spelling");
    for (const char *spelling : {"LABEL=l", "PARTLABEL=p", "PARTUUID=u"})
        QTest::newRow(spelling) << QByteArray(spelling);
}

/// The other kind beside it could not be mounted; the journaled one is switched with the option that it has.
void TestQuotaSwitch::journaledQuotasAreNotMixed()
{
    const QByteArray options = "rw,usrjquota=aquota.user,jqfmt=vfsv1";
    _machine.configure(options);
    const QByteArray table = _machine.sandbox().readEtc(text("fstab"));
    for (const bool onDemand : {false, true}) {
        if (onDemand)
            QVERIFY(!_machine.manager().switchOnDemand(_machine.sda, GroupQuota));
        else
            QVERIFY(_machine.manager().applyQuotaSettings(settings(true), GroupQuota));
        QCOMPARE(_machine.programs(), QStringList());
        QCOMPARE(_machine.sandbox().readEtc(text("fstab")), table);
        QCOMPARE(_machine.errors().size(), onDemand ? 2 : 1);
        QVERIFY(
            _machine.errors().last().contains(text("its line 1 for /dev/sda1 has the option usrjquota=aquota.user")));
    }

    QVERIFY(_machine.manager().applyQuotaSettings(settings(true), UserQuota));
    QCOMPARE(_machine.programs(), QStringList({text("mount /dev/sda1 -o remount"), text("quotacheck -um /dev/sda1"),
                                               text("quotaon -u /dev/sda1")}));
    QVERIFY(_machine.isOn(_machine.sda, UserQuota));
    QCOMPARE(_machine.errors().size(), 2);
    QVERIFY(_machine.manager().readKindSettings(_machine.sda, UserQuota).optionInForce); // no start would do more

    // Switched off it would be back after the next start.
    QVERIFY(_machine.manager().applyQuotaSettings(settings(false), UserQuota));
    QCOMPARE(_machine.programs().size(), 3);
    QVERIFY(_machine.isOn(_machine.sda, UserQuota));
    QVERIFY(_machine.errors().last().contains(text("take it out there, then they can be switched off")));
    QCOMPARE(_machine.sandbox().readEtc(text("fstab")), table);
}

/// Neither is the device mounted anew for nothing, nor do quotas come on that are gone after the next start.
void TestQuotaSwitch::onWhereTheTableCannotBeWritten()
{
    for (const bool hasFile : {false, true}) {
        _machine.reset();
        const FolderInPlaceOfTheNewTable blocker;
        if (hasFile)
            _machine.makeQuotaFile(_machine.sda, UserQuota);
        QVERIFY(_machine.manager().applyQuotaSettings(settings(true), UserQuota));
        QCOMPARE(_machine.programs(), QStringList());
        QCOMPARE(_machine.errors(), QStringList{text("File /etc/fstab can not be open")});
        QVERIFY(!_machine.manager().switchOnDemand(_machine.sda, UserQuota));
        QCOMPARE(_machine.programs(), QStringList());
        QCOMPARE(_machine.errors().size(), 2);
    }
    // Grace periods of what is on do not need it.
    const FolderInPlaceOfTheNewTable blocker;
    _machine.setOn(_machine.sda, UserQuota, true);
    QVERIFY(_machine.manager().applyQuotaSettings(settings(true), UserQuota));
    QCOMPARE(_machine.programs(), QStringList());
    QCOMPARE(_machine.graceWrites(), 1);
}

void TestQuotaSwitch::onWhereQuotaonFails()
{
    const QByteArray complaint = "quotaon: cannot find /srv/aquota.user on /dev/sda1 [/srv]\n";
    _machine.sandbox().standIn(text("quotaon")).complains(complaint).exits(1);
    _machine.makeUseless(text("quotaon"));
    QVERIFY(_machine.manager().applyQuotaSettings(settings(true), UserQuota));
    QCOMPARE(_machine.errors(),
             QStringList{text("Process quotaon -u /dev/sda1 return error ") + QString::fromUtf8(complaint)});
}

void TestQuotaSwitch::onWhereQuotaonSaysThatItWasOn()
{
    _machine.sandbox()
        .standIn(text("quotaon"))
        .complains("quotaon: using /srv/aquota.user on /dev/sda1 [/srv]: Device or resource busy\n")
        .exits(1);
    QVERIFY(_machine.manager().applyQuotaSettings(settings(true), UserQuota));
    QCOMPARE(_machine.errors(), QStringList());
}

void TestQuotaSwitch::onForADeviceThatIsNotMounted()
{
    _machine.sandbox().writeEtc(text("mtab"), "/dev/other / ext4 rw 0 0\n");
    _machine.makeUseless(text("mount"));
    QVERIFY(_machine.manager().applyQuotaSettings(settings(true), UserQuota));
    QCOMPARE(_machine.programs(), QStringList{text("mount /dev/sda1 -o remount")});
    QCOMPARE(_machine.configured(_machine.sda), QByteArray("rw,usrquota"));
    QCOMPARE(_machine.errors(), QStringList{text("Device /dev/sda1 not mounted")}); // once
}

void TestQuotaSwitch::onKeepsTheOtherKind()
{
    _machine.configure("rw,grpquota");
    _machine.makeQuotaFile(_machine.sda, GroupQuota);
    _machine.setOn(_machine.sda, GroupQuota, true);
    QVERIFY(_machine.manager().applyQuotaSettings(settings(true), UserQuota));
    QCOMPARE(_machine.configured(_machine.sda), QByteArray("rw,grpquota,usrquota"));
    QVERIFY(_machine.isOn(_machine.sda, UserQuota));
    QVERIFY(_machine.isOn(_machine.sda, GroupQuota));
    QCOMPARE(_machine.graceWrites(), 0);
}

/// It is stopped before the option goes, and not mounted again.
void TestQuotaSwitch::offWhileItIsOn()
{
    QFETCH(int, number);
    QFETCH(QString, letter);
    QFETCH(QByteArray, option);
    const auto kind = static_cast<QuotaKind>(number);
    _machine.configure(option + ",rw," + option);
    _machine.setOn(_machine.sda, kind, true);
    QByteArray optionsWhenItEnded;
    connect(&_machine.manager(), &QuotaManager::detail, &_machine.manager(), [&](const QString &detail) {
        if (detail.startsWith(text("quotaoff ")))
            optionsWhenItEnded = _machine.configured(_machine.sda);
    });
    QVERIFY(_machine.manager().applyQuotaSettings(settings(false), kind));
    QCOMPARE(_machine.programs(), QStringList{text("quotaoff -%1 /dev/sda1").arg(letter)});
    QCOMPARE(optionsWhenItEnded, option + ",rw," + option);
    QCOMPARE(_machine.configured(_machine.sda), QByteArray("rw"));
    QVERIFY(!_machine.isOn(_machine.sda, kind));
    QCOMPARE(_machine.errors(), QStringList());
}

void TestQuotaSwitch::offWhileItIsOff()
{
    _machine.configure("rw,usrquota");
    QVERIFY(_machine.manager().applyQuotaSettings(settings(false), UserQuota));
    QCOMPARE(_machine.programs(), QStringList());
    QCOMPARE(_machine.configured(_machine.sda), QByteArray("rw"));
    QCOMPARE(_machine.errors(), QStringList());
}

void TestQuotaSwitch::offWhereNothingIsConfigured()
{
    const QByteArray table = "# mine\n" + _machine.sandbox().readEtc(text("fstab"));
    _machine.sandbox().writeEtc(text("fstab"), table);
    QVERIFY(_machine.manager().applyQuotaSettings(settings(false), UserQuota));
    QCOMPARE(_machine.programs(), QStringList());
    QCOMPARE(_machine.sandbox().readEtc(text("fstab")), table);
    QCOMPARE(_machine.errors(), QStringList());
}

void TestQuotaSwitch::offWhereQuotaoffFails()
{
    _machine.configure("rw,usrquota");
    _machine.setOn(_machine.sda, UserQuota, true);
    _machine.sandbox().standIn(text("quotaoff")).complains("quotaoff: no\n").exits(1);
    _machine.makeUseless(text("quotaoff"));
    QVERIFY(_machine.manager().applyQuotaSettings(settings(false), UserQuota));
    QCOMPARE(_machine.configured(_machine.sda), QByteArray("rw"));
    QCOMPARE(_machine.errors(), QStringList{text("Process quotaoff -u /dev/sda1 return error quotaoff: no\n")});
}

void TestQuotaSwitch::offKeepsTheOtherKind()
{
    _machine.configure("usrquota,rw,grpquota");
    _machine.setOn(_machine.sda, UserQuota, true);
    _machine.setOn(_machine.sda, GroupQuota, true);
    QVERIFY(_machine.manager().applyQuotaSettings(settings(false), UserQuota));
    QCOMPARE(_machine.configured(_machine.sda), QByteArray("rw,grpquota"));
    QVERIFY(_machine.isOn(_machine.sda, GroupQuota));
}

void TestQuotaSwitch::offWhereTheTableCannotBeWritten()
{
    const QString comesBack = text("/dev/sda1: these quotas are off now, and come back at the next start unless the "
                                   "option usrquota is taken out of /etc/fstab");
    for (const bool isOn : {true, false}) {
        _machine.reset();
        _machine.configure("rw,usrquota");
        _machine.setOn(_machine.sda, UserQuota, isOn);
        const FolderInPlaceOfTheNewTable blocker;
        QVERIFY(_machine.manager().applyQuotaSettings(settings(false), UserQuota));
        QVERIFY(!_machine.isOn(_machine.sda, UserQuota));
        QCOMPARE(_machine.configured(_machine.sda), QByteArray("rw,usrquota"));
        QStringList errors{text("File /etc/fstab can not be open")};
        if (isOn)
            errors.append(comesBack);
        QCOMPARE(_machine.errors(), errors);
    }
}

/// Not known is another thing than off: the quotas would stay on without their option.
void TestQuotaSwitch::offWhereTheKernelDoesNotAnswer()
{
    _machine.configure("rw,usrquota");
    _machine.setOn(_machine.sda, UserQuota, true);
    _machine.sandbox().kernel().change("/dev/sda1", UserQuota,
                                       [](FakeKernel::State &state) { state.failures[Q_GETFMT] = EACCES; });
    QVERIFY(_machine.manager().applyQuotaSettings(settings(false), UserQuota));
    QCOMPARE(_machine.programs(), QStringList());
    QCOMPARE(_machine.configured(_machine.sda), QByteArray("rw,usrquota"));
    QVERIFY(!_machine.errors().isEmpty());

    // What is not mounted has none that are on.
    _machine.sandbox().writeEtc(text("mtab"), "/dev/sdb1 /srv ext4 rw 0 0\n");
    _machine.manager().resetCache();
    QVERIFY(_machine.manager().applyQuotaSettings(settings(false), UserQuota));
    QCOMPARE(_machine.programs(), QStringList());
    QCOMPARE(_machine.configured(_machine.sda), QByteArray("rw"));
}

void TestQuotaSwitch::gracePeriodsInSeconds()
{
    FakeKernel::State state;
    state.info.dqi_flags = DQF_ROOT_SQUASH;
    _machine.sandbox().kernel().setState("/dev/sda1", GRPQUOTA, state);
    KindSettings wanted;
    wanted.device = _machine.sda;
    wanted.blockGrace.weeks = 7100;
    wanted.blockGrace.days = 6;
    wanted.inodeGrace.hours = 23;
    wanted.inodeGrace.minutes = 59;
    wanted.inodeGrace.seconds = 58;
    QVERIFY(_machine.manager().setGrace(wanted, GroupQuota));
    const dqinfo info = _machine.sandbox().kernel().state("/dev/sda1", GRPQUOTA).info;
    QCOMPARE(info.dqi_bgrace, 7100ULL * 604800 + 6 * 86400);
    QCOMPARE(info.dqi_igrace, 86398U);
    QCOMPARE(info.dqi_flags, 0U); // always handed back as none
}

void TestQuotaSwitch::gracePeriodsThatTheKernelRefuses()
{
    QVERIFY(!_machine.manager().setGrace(settings(true), UserQuota));
    QCOMPARE(_machine.errors(), QStringList{text("No disk map was found for the specified user. Quota turned off in "
                                                 "file system")});
}

void TestQuotaSwitch::onDemandFromNothing()
{
    QVERIFY(!_machine.manager().hasQuotaOption(_machine.sda, GroupQuota, text("/etc/mtab")));
    QVERIFY(_machine.manager().switchOnDemand(_machine.sda, GroupQuota));
    QCOMPARE(_machine.programs(), QStringList({text("mount /dev/sda1 -o remount"), text("quotacheck -gm /dev/sda1"),
                                               text("quotaon -g /dev/sda1")}));
    QCOMPARE(_machine.configured(_machine.sda), QByteArray("rw,grpquota"));
    QCOMPARE(_machine.errors(), QStringList());
}

void TestQuotaSwitch::onDemandWithAQuotaFileDoesNotRemount()
{
    _machine.makeQuotaFile(_machine.sda, UserQuota);
    QVERIFY(_machine.manager().switchOnDemand(_machine.sda, UserQuota));
    QCOMPARE(_machine.programs(), QStringList{text("quotaon -u /dev/sda1")});
    QCOMPARE(_machine.configured(_machine.sda), QByteArray("rw,usrquota"));
}

/// The file of earlier quotas is of no use to "quotaon" before the option is in force.
void TestQuotaSwitch::onDemandWithAnOldQuotaFileRemountsWhereItHasTo()
{
    _machine.makeQuotaFile(_machine.sda, UserQuota);
    _machine.sandbox().standIn(text("quotaon")).complains("quotaon: not enabled\n").exits(2);
    connect(&_machine.manager(), &QuotaManager::detail, &_machine.manager(), [&](const QString &detail) {
        if (detail.startsWith(text("mount ")))
            _machine.sandbox().standIn(text("quotaon"));
    });
    QVERIFY(_machine.manager().switchOnDemand(_machine.sda, UserQuota));
    QCOMPARE(_machine.programs(), QStringList({text("quotaon -u /dev/sda1"), text("mount /dev/sda1 -o remount"),
                                               text("quotaon -u /dev/sda1")}));
    QCOMPARE(_machine.errors(), QStringList());
    QCOMPARE(_machine.configured(_machine.sda), QByteArray("rw,usrquota"));
    QVERIFY(_machine.isOn(_machine.sda, UserQuota));
}

void TestQuotaSwitch::onDemandWithAnOldQuotaFileTakesARefusedOptionOut()
{
    _machine.makeQuotaFile(_machine.sda, UserQuota);
    _machine.sandbox().standIn(text("quotaon")).complains("quotaon: not enabled\n").exits(2);
    _machine.sandbox().standIn(text("mount")).complains("mount: bad option.\n").exits(32);
    QVERIFY(!_machine.manager().switchOnDemand(_machine.sda, UserQuota));
    QCOMPARE(_machine.programs(), QStringList({text("quotaon -u /dev/sda1"), text("mount /dev/sda1 -o remount")}));
    QCOMPARE(_machine.errors(),
             QStringList{text("/dev/sda1 could not be mounted again with the option usrquota, which was therefore "
                              "taken out of /etc/fstab again: mount: bad option.")});
    QCOMPARE(_machine.configured(_machine.sda), QByteArray("rw"));
}

void TestQuotaSwitch::onDemandWithAnOldQuotaFileTellsWhy()
{
    const QString refusal = text("Process quotaon -u /dev/sda1 return error quotaon: not enabled\n");
    const QStringList programs{text("quotaon -u /dev/sda1"), text("mount /dev/sda1 -o remount")};
    for (const bool isRefused : {false, true}) {
        _machine.reset();
        _machine.configure("rw,usrquota");
        _machine.writeMtab("rw");
        _machine.makeQuotaFile(_machine.sda, UserQuota);
        _machine.makeUseless(text("mount"));
        _machine.sandbox().standIn(text("quotaon")).complains("quotaon: not enabled\n").exits(2);
        if (isRefused)
            _machine.sandbox().standIn(text("mount")).complains("mount: busy\n").exits(32);
        QVERIFY(!_machine.manager().switchOnDemand(_machine.sda, UserQuota));
        QCOMPARE(_machine.programs(), programs);
        QCOMPARE(_machine.configured(_machine.sda), QByteArray("rw,usrquota")); // it was there before
        QStringList errors{refusal};
        if (isRefused)
            errors.append(text("mount: busy"));
        QCOMPARE(_machine.errors(), errors);
    }
}

void TestQuotaSwitch::onDemandStopsWhereTheOptionIsNotInForce()
{
    _machine.makeUseless(text("mount"));
    QVERIFY(!_machine.manager().switchOnDemand(_machine.sda, UserQuota));
    QCOMPARE(_machine.programs(), QStringList{text("mount /dev/sda1 -o remount")});
}

void TestQuotaSwitch::onDemandStopsWhereQuotacheckDoesNotStart()
{
    _machine.sandbox().standIn(text("quotacheck")).cannotBeStarted();
    _machine.makeUseless(text("quotacheck"));
    QVERIFY(!_machine.manager().switchOnDemand(_machine.sda, UserQuota));
    QCOMPARE(_machine.programs(), QStringList{text("mount /dev/sda1 -o remount")});
    QCOMPARE(_machine.errors(), QStringList{text("Process quotacheck -um /dev/sda1 can not started")});
}

void TestQuotaSwitch::onDemandFailsWithQuotaon()
{
    _machine.sandbox().standIn(text("quotaon")).complains("quotaon: no\n").exits(1);
    QVERIFY(!_machine.manager().switchOnDemand(_machine.sda, UserQuota));
    QCOMPARE(_machine.errors(), QStringList{text("Process quotaon -u /dev/sda1 return error quotaon: no\n")});
}

/// What they say is no error as long as the quotas come on.
void TestQuotaSwitch::onDemandTellsWhatLedToTheFailure()
{
    _machine.configure("rw,usrquota,grpquota");
    _machine.sandbox().standIn(text("mount")).complains("mount: a warning\n").exits(32);
    _machine.sandbox().standIn(text("quotacheck")).complains("quotacheck: a warning\n");
    QVERIFY(_machine.manager().switchOnDemand(_machine.sda, UserQuota));
    QCOMPARE(_machine.errors(), QStringList());

    _machine.sandbox().standIn(text("quotacheck")).complains("quotacheck: no space\n").exits(2);
    _machine.sandbox().standIn(text("quotaon")).complains("quotaon: no file\n").exits(1);
    QVERIFY(!_machine.manager().switchOnDemand(_machine.sda, GroupQuota));
    QCOMPARE(_machine.errors(), QStringList({text("Process quotaon -g /dev/sda1 return error quotaon: no file\n"),
                                             text("mount: a warning"), text("quotacheck: no space")}));
}

void TestQuotaSwitch::generalDataAppliesDeviceByDeviceUsersFirst()
{
    GeneralData data;
    for (const QString &device : {_machine.sdb, _machine.sda}) {
        DeviceSettings &wanted = data.deviceSettings[device];
        wanted.userSettings = settings(true);
        wanted.groupSettings = settings(true);
        wanted.userSettings.device = device;
        wanted.groupSettings.device = device;
        _machine.makeQuotaFile(device, UserQuota);
        _machine.makeQuotaFile(device, GroupQuota);
    }
    _machine.writeMtab("rw,usrquota,grpquota");
    _machine.makeUseless(text("mount"));
    _machine.manager().applyGeneral(data);
    QCOMPARE(_machine.programs(), QStringList({text("mount /dev/sda1 -o remount"), text("quotaon -u /dev/sda1"),
                                               text("mount /dev/sda1 -o remount"), text("quotaon -g /dev/sda1"),
                                               text("mount /dev/sdb1 -o remount"), text("quotaon -u /dev/sdb1"),
                                               text("mount /dev/sdb1 -o remount"), text("quotaon -g /dev/sdb1")}));
    QCOMPARE(_machine.configured(_machine.sda), QByteArray("rw,usrquota,grpquota"));
    QCOMPARE(_machine.configured(_machine.sdb), QByteArray("rw,usrquota,grpquota"));
    QCOMPARE(_machine.errors(), QStringList());
}

void TestQuotaSwitch::generalDataReadsTheTablesAgainBetweenTheKinds()
{
    _machine.configure("rw,usrquota,grpquota");
    GeneralData data;
    data.deviceSettings[_machine.sda].userSettings = settings(false);
    data.deviceSettings[_machine.sda].groupSettings = settings(false);
    _machine.manager().applyGeneral(data);
    QCOMPARE(_machine.configured(_machine.sda), QByteArray("rw"));
    QCOMPARE(_machine.programs(), QStringList());
    QCOMPARE(_machine.sandbox().calls(text("blkid")).size(), 2); // without the reset it would be 1
}

void TestQuotaSwitch::generalDataAppliesOnlyWhatWasEdited()
{
    _machine.configure("rw,usrquota,grpquota");
    GeneralData data;
    for (const QString &device : {_machine.sda, _machine.sdb}) {
        data.deviceSettings[device].userSettings.device = device; // as if everything was to be switched off
        data.deviceSettings[device].groupSettings.device = device;
    }
    data.touched = TouchedSettings{_machine.sdb, data.deviceSettings.value(_machine.sdb)};
    _machine.manager().applyGeneral(data); // nothing differs from what was read
    QCOMPARE(_machine.configured(_machine.sdb), QByteArray("rw,usrquota,grpquota"));
    QCOMPARE(_machine.sandbox().kernel().calls().size(), 0);

    data.touched->asRead.groupSettings.quotaOn = true;
    _machine.manager().applyGeneral(data);
    QCOMPARE(_machine.configured(_machine.sda), QByteArray("rw,usrquota,grpquota"));
    QCOMPARE(_machine.configured(_machine.sdb), QByteArray("rw,usrquota"));
    QCOMPARE(_machine.programs(), QStringList());
    QCOMPARE(_machine.errors(), QStringList());
}

/// The kind was off when the page was read, so the record has no grace periods; by now it is on, and the kernel has
/// some.
void TestQuotaSwitch::generalDataLeavesGracePeriodsThatNobodyEdited()
{
    _machine.configure("rw,usrquota,grpquota");
    _machine.makeQuotaFile(_machine.sda, UserQuota);
    _machine.setOn(_machine.sda, UserQuota, true);
    GeneralData data;
    data.deviceSettings[_machine.sda].userSettings.device = _machine.sda;
    data.deviceSettings[_machine.sda].groupSettings.device = _machine.sda;
    data.touched = TouchedSettings{_machine.sda, data.deviceSettings.value(_machine.sda)};
    data.deviceSettings[_machine.sda].userSettings.quotaOn = true;
    _machine.manager().applyGeneral(data);
    QCOMPARE(_machine.graceWrites(), 0);

    data.touched.reset();
    _machine.manager().applyGeneral(data);
    QCOMPARE(_machine.graceWrites(), 1);
    QCOMPARE(_machine.errors(), QStringList());
}

/// Its settings say "off" since nothing is mounted there; the administrator meant the other device.
void TestQuotaSwitch::aDeviceThatIsConfiguredButNotOnKeepsItsOptions()
{
    _machine.configure("rw,usrquota");
    _machine.sandbox().writeEtc(text("mtab"), "/dev/sdb1 /srv ext4 rw 0 0\n");
    GeneralData data = _machine.manager().readGeneral();
    QVERIFY(!data.deviceSettings.value(_machine.sda).userSettings.quotaOn);
    data.touched = TouchedSettings{_machine.sdb, data.deviceSettings.value(_machine.sdb)};
    data.touched->asRead.userSettings.quotaOn = true;
    _machine.manager().applyGeneral(data);
    QCOMPARE(_machine.configured(_machine.sda), QByteArray("rw,usrquota"));
    QCOMPARE(_machine.configured(_machine.sdb), QByteArray("rw"));
}

void TestQuotaSwitch::theOptionOfAKindThatIsOffIsTakenOnWish()
{
    _machine.configure("rw,usrquota,grpquota");
    GeneralData data = _machine.manager().readGeneral();
    data.touched = TouchedSettings{_machine.sdb, data.deviceSettings.value(_machine.sdb), {GroupQuota}};
    _machine.manager().applyGeneral(data);
    QCOMPARE(_machine.configured(_machine.sda), QByteArray("rw,usrquota,grpquota"));
    QCOMPARE(_machine.configured(_machine.sdb), QByteArray("rw,usrquota"));
    QCOMPARE(_machine.programs(), QStringList());
    QCOMPARE(_machine.errors(), QStringList());

    // Somebody switched the other kind on meanwhile: it is not switched off in passing.
    _machine.setOn(_machine.sdb, UserQuota, true);
    data.touched->optionsToTake = {UserQuota};
    _machine.manager().applyGeneral(data);
    QCOMPARE(_machine.configured(_machine.sdb), QByteArray("rw,usrquota"));
    QVERIFY(_machine.isOn(_machine.sdb, UserQuota));
    QCOMPARE(_machine.errors(),
             QStringList{text("/dev/sdb1: quotas of this kind are on by now, so their option stays in /etc/fstab")});
}

KRA_SANDBOX_MAIN(TestQuotaSwitch)

#include "tst_quotaswitch.moc"
