// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "switchedmachine.h"

#include <generaldata.h>
#include <touchedpart.h>

#include <QtTest>

namespace
{

QString text(const char *bytes)
{
    return QString::fromUtf8(bytes);
}

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
    void onWhileItIsOnSetsTheGracePeriods_data() { kinds(); }
    void onWhileItIsOnSetsTheGracePeriods();
    void onWhereTheRemountFails();
    void onWhereTheRemountFailsButAFileIsThere();
    void onWhereNoQuotaFileIsMade();
    void onWhereQuotacheckDoesNotStart();
    void onWhereTheTableCannotBeChanged();
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

    void gracePeriodsInSeconds();
    void gracePeriodsThatTheKernelRefuses();

    void onDemandFromNothing();
    void onDemandWithAQuotaFileDoesNotRemount();
    void onDemandStopsWhereTheOptionIsNotInForce();
    void onDemandStopsWhereQuotacheckDoesNotStart();
    void onDemandFailsWithQuotaon();
    void onDemandTellsWhatLedToTheFailure();

    void generalDataAppliesDeviceByDeviceUsersFirst();
    void generalDataReadsTheTablesAgainBetweenTheKinds();
    void generalDataAppliesOnlyWhatWasTouched();
    void generalDataLeavesGracePeriodsThatNobodyEdited();
    void aDeviceThatIsConfiguredButNotOnKeepsItsOptions();

private:
    static void kinds();
    KindSettings settings(bool on) const;

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
    QVERIFY(_machine.manager().applyQuotaSettings(settings(true), UserQuota));
    QCOMPARE(_machine.programs(), QStringList({text("mount /dev/sda1 -o remount"), text("quotaon -u /dev/sda1")}));
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

/// That is no error of its own: what could not be reached is seen afterwards. How it ended is told.
void TestQuotaSwitch::onWhereTheRemountFails()
{
    const QByteArray complaint = "mount: /srv: mount point not mounted or bad option.\n";
    _machine.sandbox().standIn(text("mount")).complains(complaint).exits(32);
    _machine.makeUseless(text("mount"));
    QVERIFY(_machine.manager().applyQuotaSettings(settings(true), UserQuota));
    QCOMPARE(_machine.programs(), QStringList{text("mount /dev/sda1 -o remount")});
    QCOMPARE(_machine.configured(_machine.sda), QByteArray("rw,usrquota"));
    QCOMPARE(_machine.errors(), QStringList());
    QVERIFY(_machine.details().contains(
        text("mount /dev/sda1 -o remount: exit code 32\nmount: /srv: mount point not mounted or bad option.")));
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

void TestQuotaSwitch::onWhereTheTableCannotBeChanged()
{
    const QByteArray table = "LABEL=x /srv ext4 rw 0 2\n";
    _machine.sandbox().writeEtc(text("fstab"), table);
    QVERIFY(_machine.manager().applyQuotaSettings(settings(true), UserQuota));
    QCOMPARE(_machine.sandbox().readEtc(text("fstab")), table);
    QCOMPARE(_machine.programs(), QStringList{text("mount /dev/sda1 -o remount")});
    QCOMPARE(_machine.errors().size(), 1);
    QVERIFY(_machine.errors().first().startsWith(text("File /etc/fstab was not changed: ")));
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
    _machine.sandbox().standIn(text("mount")).complains("mount: a warning\n").exits(32);
    _machine.sandbox().standIn(text("quotacheck")).complains("quotacheck: no space\n").exits(2);
    QVERIFY(_machine.manager().switchOnDemand(_machine.sda, UserQuota));
    QCOMPARE(_machine.errors(), QStringList());

    _machine.makeUseless(text("quotacheck"));
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

void TestQuotaSwitch::generalDataAppliesOnlyWhatWasTouched()
{
    _machine.configure("rw,usrquota,grpquota");
    GeneralData data;
    for (const QString &device : {_machine.sda, _machine.sdb}) {
        data.deviceSettings[device].userSettings.device = device; // as if everything was to be switched off
        data.deviceSettings[device].groupSettings.device = device;
    }
    TouchedPart{_machine.sdb, {GroupQuota}}.noteIn(data);
    _machine.manager().applyGeneral(data);
    QCOMPARE(_machine.configured(_machine.sda), QByteArray("rw,usrquota,grpquota"));
    QCOMPARE(_machine.configured(_machine.sdb), QByteArray("rw,usrquota"));
    QCOMPARE(_machine.programs(), QStringList());

    // A device alone means both of its kinds.
    data.params.remove(text("touchedKinds"));
    _machine.manager().applyGeneral(data);
    QCOMPARE(_machine.configured(_machine.sda), QByteArray("rw,usrquota,grpquota"));
    QCOMPARE(_machine.configured(_machine.sdb), QByteArray("rw"));
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
    data.deviceSettings[_machine.sda].userSettings.quotaOn = true;
    TouchedPart{_machine.sda, {UserQuota}, {}}.noteIn(data);
    _machine.manager().applyGeneral(data);
    QCOMPARE(_machine.graceWrites(), 0);

    TouchedPart{_machine.sda, {UserQuota}, {UserQuota}}.noteIn(data);
    _machine.manager().applyGeneral(data);
    QCOMPARE(_machine.graceWrites(), 1);

    // Without a word on them they count, as all of a record does that says nothing of itself.
    data.params.remove(text("touchedGraces"));
    _machine.manager().applyGeneral(data);
    QCOMPARE(_machine.graceWrites(), 2);
    QCOMPARE(_machine.errors(), QStringList());
}

/// Its settings say "off" since nothing is mounted there; the administrator meant the other device.
void TestQuotaSwitch::aDeviceThatIsConfiguredButNotOnKeepsItsOptions()
{
    _machine.configure("rw,usrquota");
    _machine.sandbox().writeEtc(text("mtab"), "/dev/sdb1 /srv ext4 rw 0 0\n");
    GeneralData data = _machine.manager().readGeneral();
    QVERIFY(!data.deviceSettings.value(_machine.sda).userSettings.quotaOn);
    TouchedPart{_machine.sdb, {UserQuota}}.noteIn(data);
    _machine.manager().applyGeneral(data);
    QCOMPARE(_machine.configured(_machine.sda), QByteArray("rw,usrquota"));
    QCOMPARE(_machine.configured(_machine.sdb), QByteArray("rw"));
}

KRA_SANDBOX_MAIN(TestQuotaSwitch)

#include "tst_quotaswitch.moc"
