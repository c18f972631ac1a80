// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <memorysizetransfer.h>
#include <quotamanager.h>
#include <sandbox.h>

#include <QtTest>

#include <algorithm>
#include <cerrno>
#include <functional>
#include <limits>
#include <memory>

namespace
{

const QString Sda = QStringLiteral("/dev/sda1");
const QString Sdb = QStringLiteral("/dev/sdb1");
constexpr quint32 Anna = 1000;

MemorySize blocks(quint64 count)
{
    return MemorySize(MemorySizeTransfer(), count << 10);
}

dqblk stored()
{
    dqblk record = {};
    record.dqb_bsoftlimit = 1024;
    record.dqb_bhardlimit = 2048;
    record.dqb_isoftlimit = 100;
    record.dqb_ihardlimit = 200;
    record.dqb_btime = 1893456001;
    return record;
}

} // namespace

/// An edited record against a machine that has changed since it was read. The user anna has the limits of stored() on
/// one device and none on the other.
class TestLimitsWriter : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void anEditedFieldIsPutIntoWhatIsThereNow_data();
    void anEditedFieldIsPutIntoWhatIsThereNow();
    void twoAdministratorsOfDifferentLimitsBothGetTheirs();
    void twoAdministratorsOfOneLimitAreTold();
    void theOtherFieldsOfARefusedOneAreWritten();
    void whatIsThereAlreadyIsNoConflict();
    void bothValuesAreNamed_data();
    void bothValuesAreNamed();
    void nothingEditedIsNothingAsked();
    void lessThanABlockIsNoEdit();
    void timesOfNowKeepTheirTimer();
    void anEditedTimeIsSet();
    void aTimeThatCannotBeToldStays();
    void onlyTheTouchedDeviceIsWritten();
    void withoutTheAnswerOfNowNothingIsWritten();
    void whatWasSwitchedOffMeanwhileIsSaid();
    void limitsOfAnOldQuotaFileGiveWayToTheEdited();

private:
    /// The record as it was read, with that device touched.
    UserData edited(const QString &device = Sda);
    void change(const std::function<void(dqblk &)> &work, const QString &device = Sda);
    dqblk now(const QString &device = Sda) const;
    int calls(int command) const;

    Sandbox _sandbox;
    std::unique_ptr<QuotaManager> _manager;
    QStringList _errors;
};

void TestLimitsWriter::init()
{
    _sandbox.reset();
    const QByteArray folder = _sandbox.folder(QStringLiteral("a")).toUtf8();
    _sandbox.writeEtc(QStringLiteral("fstab"), "/dev/sda1 " + folder + " ext4 rw,usrquota 0 2\n/dev/sdb1 " + folder +
                                                   "b ext4 rw,usrquota 0 2\n");
    _sandbox.writeEtc(QStringLiteral("mtab"), "/dev/sda1 " + folder + " ext4 rw,usrquota 0 0\n/dev/sdb1 " + folder +
                                                  "b ext4 rw,usrquota 0 0\n");
    _sandbox.writeEtc(QStringLiteral("passwd"), "anna:x:1000:1000::/home/anna:/bin/sh\n");
    _sandbox.standIn(QStringLiteral("blkid")).prints("/dev/sda1: TYPE=\"ext4\"\n/dev/sdb1: TYPE=\"ext4\"\n");
    FakeKernel::State state;
    _sandbox.kernel().setState("/dev/sdb1", UserQuota, state);
    state.records.insert(Anna, stored());
    _sandbox.kernel().setState("/dev/sda1", UserQuota, state);

    _errors.clear();
    _manager = std::make_unique<QuotaManager>();
    connect(_manager.get(), &QuotaManager::error, this, [this](const QString &message) { _errors.append(message); });
}

UserData TestLimitsWriter::edited(const QString &device)
{
    UserData user = _manager->readUser(QStringLiteral("anna"));
    user.touched = std::make_shared<TouchedQuota>(TouchedQuota{device, user.deviceQuotas.value(device)});
    return user;
}

void TestLimitsWriter::change(const std::function<void(dqblk &)> &work, const QString &device)
{
    FakeKernel::State state = _sandbox.kernel().state(device.toUtf8(), UserQuota);
    work(state.records[Anna]);
    _sandbox.kernel().setState(device.toUtf8(), UserQuota, state);
}

dqblk TestLimitsWriter::now(const QString &device) const
{
    return FakeKernel::instance().state(device.toUtf8(), UserQuota).records.value(Anna);
}

int TestLimitsWriter::calls(int command) const
{
    const QList<FakeKernel::Call> calls = FakeKernel::instance().calls();
    return static_cast<int>(std::count_if(calls.cbegin(), calls.cend(),
                                          [command](const FakeKernel::Call &call) { return call.command == command; }));
}

void TestLimitsWriter::anEditedFieldIsPutIntoWhatIsThereNow_data()
{
    QTest::addColumn<int>("field");
    QTest::newRow("soft limit on space") << 0;
    QTest::newRow("hard limit on space") << 1;
    QTest::newRow("soft limit on files") << 2;
    QTest::newRow("hard limit on files") << 3;
}

/// All other fields were changed on the machine since the read.
void TestLimitsWriter::anEditedFieldIsPutIntoWhatIsThereNow()
{
    QFETCH(int, field);
    UserData user = edited();
    DeviceQuota &quota = user.deviceQuotas[Sda];
    change([field](dqblk &record) {
        record.dqb_bsoftlimit += field == 0 ? 0 : 1;
        record.dqb_bhardlimit += field == 1 ? 0 : 2;
        record.dqb_isoftlimit += field == 2 ? 0 : 3;
        record.dqb_ihardlimit += field == 3 ? 0 : 4;
        record.dqb_itime = 1893456777;
    });
    const dqblk before = now();
    if (field == 0)
        quota.softBlockLimit = blocks(7);
    if (field == 1)
        quota.hardBlockLimit = blocks(7);
    if (field == 2)
        quota.softInodeLimit = 7;
    if (field == 3)
        quota.hardInodeLimit = 7;
    QVERIFY(_manager->writeQuotas(user, UserQuota));
    QCOMPARE(_errors, QStringList());
    QCOMPARE(now().dqb_bsoftlimit, field == 0 ? 7 : before.dqb_bsoftlimit);
    QCOMPARE(now().dqb_bhardlimit, field == 1 ? 7 : before.dqb_bhardlimit);
    QCOMPARE(now().dqb_isoftlimit, field == 2 ? 7 : before.dqb_isoftlimit);
    QCOMPARE(now().dqb_ihardlimit, field == 3 ? 7 : before.dqb_ihardlimit);
    QCOMPARE(now().dqb_btime, before.dqb_btime);
    QCOMPARE(now().dqb_itime, before.dqb_itime);
}

void TestLimitsWriter::twoAdministratorsOfDifferentLimitsBothGetTheirs()
{
    UserData ofOne = edited();
    UserData ofTheOther = edited();
    ofOne.deviceQuotas[Sda].hardBlockLimit = blocks(4096);
    ofTheOther.deviceQuotas[Sda].hardInodeLimit = 300;
    QVERIFY(_manager->writeQuotas(ofOne, UserQuota));
    QVERIFY(_manager->writeQuotas(ofTheOther, UserQuota));
    QCOMPARE(_errors, QStringList());
    QCOMPARE(now().dqb_bhardlimit, quint64(4096));
    QCOMPARE(now().dqb_ihardlimit, quint64(300));
    QCOMPARE(now().dqb_bsoftlimit, stored().dqb_bsoftlimit);
}

void TestLimitsWriter::twoAdministratorsOfOneLimitAreTold()
{
    UserData ofOne = edited();
    UserData ofTheOther = edited();
    ofOne.deviceQuotas[Sda].hardBlockLimit = blocks(4096);
    ofTheOther.deviceQuotas[Sda].hardBlockLimit = blocks(3072);
    QVERIFY(_manager->writeQuotas(ofOne, UserQuota));
    QVERIFY(!_manager->writeQuotas(ofTheOther, UserQuota));
    QCOMPARE(now().dqb_bhardlimit, quint64(4096));
    QCOMPARE(_errors,
             QStringList{QStringLiteral("/dev/sda1: the hard limit on space of anna is 4 Mb by now, not 2 Mb as "
                                        "it was shown: 3 Mb was not written")});
}

void TestLimitsWriter::theOtherFieldsOfARefusedOneAreWritten()
{
    UserData user = edited();
    user.deviceQuotas[Sda].hardBlockLimit = blocks(3072);
    user.deviceQuotas[Sda].softInodeLimit = 150;
    change([](dqblk &record) { record.dqb_bhardlimit = 4096; });
    QVERIFY(!_manager->writeQuotas(user, UserQuota));
    QCOMPARE(now().dqb_bhardlimit, quint64(4096));
    QCOMPARE(now().dqb_isoftlimit, quint64(150));
    QCOMPARE(_errors.size(), 1);
}

void TestLimitsWriter::whatIsThereAlreadyIsNoConflict()
{
    UserData user = edited();
    user.deviceQuotas[Sda].hardBlockLimit = blocks(4096);
    change([](dqblk &record) { record.dqb_bhardlimit = 4096; });
    QVERIFY(_manager->writeQuotas(user, UserQuota));
    QCOMPARE(_errors, QStringList());
    QCOMPARE(now().dqb_bhardlimit, quint64(4096));
}

void TestLimitsWriter::bothValuesAreNamed_data()
{
    QTest::addColumn<int>("field");
    QTest::addColumn<QString>("message");
    const QString frame = QStringLiteral("/dev/sda1: the %1: %2 was not written");
    const auto row = [&frame](const char *name, int field, const QString &what, const QString &given) {
        QTest::newRow(name) << field << frame.arg(what, given);
    };
    const QString read = QDateTime::fromSecsSinceEpoch(1893456001).toString(QStringLiteral("dd.MM.yyyy hh:mm:ss"));
    row("soft limit on space", 0,
        QStringLiteral("soft limit on space of anna is none by now, not 1 Mb as it was shown"), QStringLiteral("7 Kb"));
    row("soft limit on files", 2, QStringLiteral("soft limit on files of anna is 9 by now, not 100 as it was shown"),
        QStringLiteral("none"));
    row("hard limit on files", 3, QStringLiteral("hard limit on files of anna is 9 by now, not 200 as it was shown"),
        QStringLiteral("8"));
    row("time of space", 4,
        QStringLiteral("time to force of space of anna is none by now, not %1 as it was shown").arg(read),
        QStringLiteral("01.02.2030 12:30:00"));
    row("time of files", 5,
        QStringLiteral("time to force of files of anna is %1 by now, not none as it was shown").arg(read),
        QStringLiteral("01.02.2030 12:30:00"));
}

void TestLimitsWriter::bothValuesAreNamed()
{
    QFETCH(int, field);
    UserData user = edited();
    DeviceQuota &quota = user.deviceQuotas[Sda];
    const QDateTime day(QDate(2030, 2, 1), QTime(12, 30));
    change([field](dqblk &record) {
        if (field == 0)
            record.dqb_bsoftlimit = 0;
        if (field == 2)
            record.dqb_isoftlimit = 9;
        if (field == 3)
            record.dqb_ihardlimit = 9;
        if (field == 4)
            record.dqb_btime = 0;
        if (field == 5)
            record.dqb_itime = 1893456001;
    });
    const dqblk before = now();
    if (field == 0)
        quota.softBlockLimit = blocks(7);
    if (field == 2)
        quota.softInodeLimit = 0;
    if (field == 3)
        quota.hardInodeLimit = 8;
    if (field == 4)
        quota.blocksTimeToForce = day;
    if (field == 5)
        quota.inodesTimeToForce = day;
    QVERIFY(!_manager->writeQuotas(user, UserQuota));
    QTEST(_errors.join(QLatin1Char('\n')), "message");
    QCOMPARE(now().dqb_bsoftlimit, before.dqb_bsoftlimit);
    QCOMPARE(now().dqb_isoftlimit, before.dqb_isoftlimit);
    QCOMPARE(now().dqb_ihardlimit, before.dqb_ihardlimit);
    QCOMPARE(now().dqb_btime, before.dqb_btime);
    QCOMPARE(now().dqb_itime, before.dqb_itime);
}

void TestLimitsWriter::nothingEditedIsNothingAsked()
{
    const UserData user = edited();
    const int before = FakeKernel::instance().calls().size();
    change([](dqblk &record) { record.dqb_bhardlimit = 4096; });
    QVERIFY(_manager->writeQuotas(user, UserQuota));
    QCOMPARE(FakeKernel::instance().calls().size(), before);
    QCOMPARE(now().dqb_bhardlimit, quint64(4096));
}

void TestLimitsWriter::lessThanABlockIsNoEdit()
{
    UserData user = edited();
    user.deviceQuotas[Sda].hardBlockLimit = MemorySize(MemorySizeTransfer(), (2048 << 10) + 1023);
    QVERIFY(_manager->writeQuotas(user, UserQuota));
    QCOMPARE(calls(Q_SETQUOTA), 0);
}

/// Without its time the kernel would start a timer that runs anew.
void TestLimitsWriter::timesOfNowKeepTheirTimer()
{
    UserData user = edited();
    user.deviceQuotas[Sda].hardInodeLimit = 300;
    change([](dqblk &record) {
        record.dqb_btime = 1893459999; // started anew since the read
        record.dqb_itime = 0;
    });
    QVERIFY(_manager->writeQuotas(user, UserQuota));
    QCOMPARE(_errors, QStringList());
    QCOMPARE(now().dqb_btime, quint64(1893459999));
    QCOMPARE(FakeKernel::instance().lastSet().dqb_valid, quint32(QIF_LIMITS | QIF_BTIME));
}

void TestLimitsWriter::anEditedTimeIsSet()
{
    UserData user = edited();
    user.deviceQuotas[Sda].blocksTimeToForce = QDateTime::fromSecsSinceEpoch(1893456002);
    QVERIFY(_manager->writeQuotas(user, UserQuota));
    QCOMPARE(now().dqb_btime, quint64(1893456002));
    QCOMPARE(FakeKernel::instance().lastSet().dqb_valid, quint32(QIF_LIMITS | QIF_BTIME));
}

/// What no date can hold is shown as the last one, and travels back as it is.
void TestLimitsWriter::aTimeThatCannotBeToldStays()
{
    const quint64 beyond = std::numeric_limits<quint64>::max() - 5;
    const quint64 large = quint64(1) << 55;
    change([=](dqblk &record) {
        record.dqb_btime = beyond;
        record.dqb_bhardlimit = large;
    });
    UserData user = edited();
    QVERIFY(user.deviceQuotas.value(Sda).blocksTimeToForce.date().year() > 9999);
    QVERIFY(user.deviceQuotas.value(Sda).hardBlockLimit.bytes > (quint64(1) << 63));
    user.deviceQuotas[Sda].hardInodeLimit = 300;
    QVERIFY(_manager->writeQuotas(user, UserQuota));
    QCOMPARE(_errors, QStringList());
    QCOMPARE(now().dqb_ihardlimit, quint64(300));
    QCOMPARE(now().dqb_btime, beyond);
    QCOMPARE(now().dqb_bhardlimit, large);
}

void TestLimitsWriter::onlyTheTouchedDeviceIsWritten()
{
    UserData user = edited(Sdb);
    user.deviceQuotas[Sda].hardInodeLimit = 1; // as old as its read
    user.deviceQuotas[Sdb].hardInodeLimit = 2;
    QVERIFY(_manager->writeQuotas(user, UserQuota));
    QCOMPARE(now(Sda).dqb_ihardlimit, stored().dqb_ihardlimit);
    QCOMPARE(now(Sdb).dqb_ihardlimit, quint64(2));
}

void TestLimitsWriter::withoutTheAnswerOfNowNothingIsWritten()
{
    UserData user = edited();
    user.deviceQuotas[Sda].hardInodeLimit = 300;
    FakeKernel::State state = _sandbox.kernel().state("/dev/sda1", UserQuota);
    state.failures.insert(Q_GETQUOTA, EIO);
    _sandbox.kernel().setState("/dev/sda1", UserQuota, state);
    QVERIFY(!_manager->writeQuotas(user, UserQuota));
    QCOMPARE(calls(Q_SETQUOTA), 0);
    QCOMPARE(_errors.last(), QStringLiteral("/dev/sda1: ") + qt_error_string(EIO));
}

void TestLimitsWriter::whatWasSwitchedOffMeanwhileIsSaid()
{
    UserData user = edited();
    DeviceQuota &quota = user.deviceQuotas[Sda];
    quota.softBlockLimit = quota.hardBlockLimit = MemorySize();
    quota.softInodeLimit = quota.hardInodeLimit = 0;
    FakeKernel::State state = _sandbox.kernel().state("/dev/sda1", UserQuota);
    state.on = false;
    _sandbox.kernel().setState("/dev/sda1", UserQuota, state);
    QVERIFY(!_manager->writeQuotas(user, UserQuota));
    QCOMPARE(_errors, QStringList{QStringLiteral("/dev/sda1: quotas are off, so nothing was written for anna")});
    QVERIFY(_sandbox.calls(QStringLiteral("quotaon")).isEmpty());
}

/// While the kind was off nobody could know what its quota file holds.
void TestLimitsWriter::limitsOfAnOldQuotaFileGiveWayToTheEdited()
{
    QFile file(_sandbox.folder(QStringLiteral("a")) + QStringLiteral("/aquota.user"));
    QVERIFY(file.open(QIODevice::WriteOnly));
    FakeKernel::State state = _sandbox.kernel().state("/dev/sda1", UserQuota);
    state.failures.insert(Q_GETFMT, ESRCH);
    _sandbox.kernel().setState("/dev/sda1", UserQuota, state);
    _sandbox.standIn(QStringLiteral("quotaon"));
    UserData user = edited();
    QCOMPARE(user.deviceQuotas.value(Sda).hardBlockLimit.bytes, quint64(0));
    user.deviceQuotas[Sda].hardBlockLimit = blocks(5);
    QVERIFY(_manager->writeQuotas(user, UserQuota));
    QVERIFY(file.remove());
    QCOMPARE(_errors, QStringList());
    QCOMPARE(now().dqb_bhardlimit, quint64(5));
    QCOMPARE(now().dqb_ihardlimit, stored().dqb_ihardlimit); // nobody edited that
}

KRA_SANDBOX_MAIN(TestLimitsWriter)
#include "tst_limitswriter.moc"
