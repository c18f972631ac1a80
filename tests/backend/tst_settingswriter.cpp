// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "switchedmachine.h"

#include <QtTest>

#include <cerrno>

namespace
{

constexpr quint32 Day = 24 * 60 * 60;
constexpr quint64 Week = 7 * Day;

} // namespace

/// Edited general settings against a machine that has changed since they were read. A kind that is on has grace
/// periods of a week and some seconds.
class TestSettingsWriter : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void aGracePeriodOfAKindThatIsSwitchedOnIsSetAfterwards();
    void aGracePeriodAloneRunsNoProgram();
    void theOtherGracePeriodStaysToTheSecond_data();
    void theOtherGracePeriodStaysToTheSecond();
    void twoAdministratorsOfDifferentPeriodsBothGetTheirs();
    void twoAdministratorsOfOnePeriodAreTold();
    void aKindThatSomebodyElseSwitchedOnKeepsItsPeriods();
    void whatCouldNotBeReadIsNotWrittenAsNothing();
    void whatCameNotOnIsSaid();
    void groupsHaveTheirOwn();
    void theOptionOfADeviceThatIsNotMountedIsTaken();

private:
    void setOn(QuotaKind kind);
    void change(QuotaKind kind, const std::function<void(FakeKernel::State &)> &work);
    dqinfo now(QuotaKind kind = UserQuota);
    /// The general data as read, with the first device touched.
    GeneralData edited();

    SwitchedMachine _machine;
};

void TestSettingsWriter::init()
{
    _machine.reset();
    _machine.configure("rw,usrquota,grpquota");
    for (const QuotaKind kind : {UserQuota, GroupQuota}) {
        _machine.makeQuotaFile(_machine.sda, kind);
        change(kind, [](FakeKernel::State &state) {
            state.info.dqi_bgrace = Week + 45;
            state.info.dqi_igrace = Week + 46;
        });
    }
}

void TestSettingsWriter::setOn(QuotaKind kind)
{
    _machine.setOn(_machine.sda, kind, true);
}

void TestSettingsWriter::change(QuotaKind kind, const std::function<void(FakeKernel::State &)> &work)
{
    FakeKernel::State state = _machine.sandbox().kernel().state("/dev/sda1", kind);
    work(state);
    _machine.sandbox().kernel().setState("/dev/sda1", kind, state);
}

dqinfo TestSettingsWriter::now(QuotaKind kind)
{
    return _machine.sandbox().kernel().state("/dev/sda1", kind).info;
}

GeneralData TestSettingsWriter::edited()
{
    GeneralData data = _machine.manager().readGeneral();
    data.touched = TouchedSettings{_machine.sda, data.deviceSettings.value(_machine.sda)};
    return data;
}

void TestSettingsWriter::aGracePeriodOfAKindThatIsSwitchedOnIsSetAfterwards()
{
    GeneralData data = edited();
    data.deviceSettings[_machine.sda].userSettings.quotaOn = true;
    data.deviceSettings[_machine.sda].userSettings.blockGrace = TimePeriod(3 * Day);
    _machine.manager().applyGeneral(data);
    QCOMPARE(_machine.errors(), QStringList());
    QVERIFY(_machine.isOn(_machine.sda, UserQuota));
    QCOMPARE(now().dqi_bgrace, quint64(3 * Day));
    QCOMPARE(now().dqi_igrace, Week + 46); // not the zero of a form that could not show it
    QVERIFY(!_machine.isOn(_machine.sda, GroupQuota));
}

void TestSettingsWriter::aGracePeriodAloneRunsNoProgram()
{
    setOn(UserQuota);
    _machine.configure("rw"); // switched on by hand
    GeneralData data = edited();
    data.deviceSettings[_machine.sda].userSettings.inodeGrace = TimePeriod(2 * Day);
    _machine.manager().applyGeneral(data);
    QCOMPARE(_machine.errors(), QStringList());
    QCOMPARE(now().dqi_igrace, quint64(2 * Day));
    QCOMPARE(_machine.programs(), QStringList());
    QCOMPARE(_machine.configured(_machine.sda), QByteArray("rw"));
}

void TestSettingsWriter::theOtherGracePeriodStaysToTheSecond_data()
{
    QTest::addColumn<quint64>("seconds");
    QTest::newRow("seconds") << Week + 45;
    QTest::newRow("none") << quint64(0);
    QTest::newRow("more than a period can be long") << (quint64(1) << 40);
}

void TestSettingsWriter::theOtherGracePeriodStaysToTheSecond()
{
    QFETCH(quint64, seconds);
    setOn(UserQuota);
    change(UserQuota, [seconds](FakeKernel::State &state) { state.info.dqi_bgrace = seconds; });
    GeneralData data = edited();
    data.deviceSettings[_machine.sda].userSettings.inodeGrace = TimePeriod(2 * Day);
    _machine.manager().applyGeneral(data);
    QCOMPARE(_machine.errors(), QStringList());
    QCOMPARE(now().dqi_bgrace, seconds);
    QCOMPARE(now().dqi_igrace, quint64(2 * Day));

    // Also one that is longer than it could be shown can be edited.
    data = edited();
    data.deviceSettings[_machine.sda].userSettings.blockGrace = TimePeriod(5 * Day);
    _machine.manager().applyGeneral(data);
    QCOMPARE(_machine.errors(), QStringList());
    QCOMPARE(now().dqi_bgrace, quint64(5 * Day));
}

void TestSettingsWriter::twoAdministratorsOfDifferentPeriodsBothGetTheirs()
{
    setOn(UserQuota);
    GeneralData ofOne = edited();
    GeneralData ofTheOther = edited();
    ofOne.deviceSettings[_machine.sda].userSettings.blockGrace = TimePeriod(Day);
    ofTheOther.deviceSettings[_machine.sda].userSettings.inodeGrace = TimePeriod(2 * Day);
    _machine.manager().applyGeneral(ofOne);
    _machine.manager().applyGeneral(ofTheOther);
    QCOMPARE(_machine.errors(), QStringList());
    QCOMPARE(now().dqi_bgrace, quint64(Day));
    QCOMPARE(now().dqi_igrace, quint64(2 * Day));
}

void TestSettingsWriter::twoAdministratorsOfOnePeriodAreTold()
{
    setOn(UserQuota);
    GeneralData ofOne = edited();
    GeneralData ofTheOther = edited();
    ofOne.deviceSettings[_machine.sda].userSettings.blockGrace = TimePeriod(Day);
    ofTheOther.deviceSettings[_machine.sda].userSettings.blockGrace = TimePeriod(2 * Day);
    _machine.manager().applyGeneral(ofOne);
    _machine.manager().applyGeneral(ofTheOther);
    QCOMPARE(now().dqi_bgrace, quint64(Day));
    QCOMPARE(_machine.errors(),
             QStringList{QStringLiteral("/dev/sda1: the grace period for space for users is 1 days by "
                                        "now, not what was shown: 2 days was not written")});
}

void TestSettingsWriter::aKindThatSomebodyElseSwitchedOnKeepsItsPeriods()
{
    GeneralData data = edited();
    data.deviceSettings[_machine.sda].userSettings.quotaOn = true;
    data.deviceSettings[_machine.sda].userSettings.blockGrace = TimePeriod(3 * Day);
    setOn(UserQuota);
    _machine.manager().applyGeneral(data);
    QCOMPARE(now().dqi_bgrace, Week + 45);
    QCOMPARE(_machine.errors().size(), 1);
}

void TestSettingsWriter::whatCouldNotBeReadIsNotWrittenAsNothing()
{
    setOn(UserQuota);
    change(UserQuota, [](FakeKernel::State &state) { state.failures.insert(Q_GETINFO, EIO); });
    GeneralData data = edited();
    const int told = _machine.errors().size();
    data.deviceSettings[_machine.sda].userSettings.blockGrace = TimePeriod(Day);
    _machine.manager().applyGeneral(data);
    QCOMPARE(_machine.graceWrites(), 0);
    QVERIFY(_machine.errors().size() > told);
    QCOMPARE(_machine.errors().last(), QStringLiteral("/dev/sda1: ") + qt_error_string(EIO));
    QCOMPARE(now().dqi_igrace, Week + 46);
}

void TestSettingsWriter::whatCameNotOnIsSaid()
{
    _machine.makeUseless(QStringLiteral("quotaon"));
    GeneralData data = edited();
    data.deviceSettings[_machine.sda].userSettings.quotaOn = true;
    data.deviceSettings[_machine.sda].userSettings.blockGrace = TimePeriod(Day);
    _machine.manager().applyGeneral(data);
    QCOMPARE(_machine.errors(), QStringList{QStringLiteral("/dev/sda1: the grace periods for users were not set, since "
                                                           "quotas are off")});
}

void TestSettingsWriter::groupsHaveTheirOwn()
{
    setOn(UserQuota);
    setOn(GroupQuota);
    GeneralData data = edited();
    data.deviceSettings[_machine.sda].groupSettings.blockGrace = TimePeriod(Day);
    _machine.manager().applyGeneral(data);
    QCOMPARE(_machine.errors(), QStringList());
    QCOMPARE(now(GroupQuota).dqi_bgrace, quint64(Day));
    QCOMPARE(now(GroupQuota).dqi_igrace, Week + 46);
    QCOMPARE(now(UserQuota).dqi_bgrace, Week + 45);
    QCOMPARE(_machine.graceWrites(), 1);
}

void TestSettingsWriter::theOptionOfADeviceThatIsNotMountedIsTaken()
{
    _machine.sandbox().writeEtc(QStringLiteral("mtab"), "/dev/sdb1 /srv ext4 rw 0 0\n");
    GeneralData data;
    data.deviceSettings[_machine.sda].userSettings.device = _machine.sda;
    data.touched = TouchedSettings{_machine.sda, data.deviceSettings.value(_machine.sda), {UserQuota}};
    change(UserQuota, [](FakeKernel::State &state) { state.failures[Q_GETFMT] = ENODEV; }); // no such file system
    _machine.manager().applyGeneral(data);
    QCOMPARE(_machine.errors(), QStringList());
    QCOMPARE(_machine.configured(_machine.sda), QByteArray("rw,grpquota"));

    // Another failure says nothing of the quotas.
    _machine.configure("rw,usrquota");
    change(UserQuota, [](FakeKernel::State &state) { state.failures[Q_GETFMT] = EACCES; });
    _machine.manager().applyGeneral(data);
    QVERIFY(!_machine.errors().isEmpty());
    QCOMPARE(_machine.configured(_machine.sda), QByteArray("rw,usrquota"));
}

KRA_SANDBOX_MAIN(TestSettingsWriter)
#include "tst_settingswriter.moc"
