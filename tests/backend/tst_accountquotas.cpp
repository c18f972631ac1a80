// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <memorysizetransfer.h>
#include <quotamanager.h>
#include <sandbox.h>

#include <QtTest>

#include <cerrno>
#include <memory>

namespace
{

QString text(const char *bytes)
{
    return QString::fromUtf8(bytes);
}

const QString Sda = QStringLiteral("/dev/sda1");
const QString Sdb = QStringLiteral("/dev/sdb1");
const QString Sdc = QStringLiteral("/dev/sdc1");

/// What is reported of a call that the kernel refused.
QStringList noRights(const QString &device)
{
    return {text("The caller does not have the necessary rights (CAP_SYS_ADMIN) to perform the specified operation"),
            device + text(": ") + qt_error_string(EPERM)};
}

QStringList noDevice(const QString &device)
{
    return {text("Unknown error while executing quotactl"), device + text(": ") + qt_error_string(ENODEV)};
}

constexpr quint32 Anna = 1000;

} // namespace

/// Reading and writing the quotas of accounts, one or all, on three devices.
class TestAccountQuotas : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void aUsersRecord();
    void aGroupsRecordIsOfTheOtherKind();
    void aDeviceWhoseKindIsOffIsAskedNothingMore();
    void anUnmountedDeviceIsReported();
    void aDeviceWhoseQuestionFailedIsLeftOut();
    void aNameThatIsNotThereNamesNobody();
    void anIdThatTheKernelCannotKnowNamesNobody();
    void theLargestIdIsAnAccount();
    void ofTwoAccountsWithOneNameTheFirstCounts();
    void aDeviceThatIsListedTwiceIsAskedOnce();

    void theCallsOfOneAccountComeInTheirOrder();

    void allUsersInTheOrderOfTheFile();
    void allGroups();
    void allUsersWithoutADevice();
    void allUsersWithoutTheAccountFile();
    void aFailureIsReportedOnceForEachDevice();
    void aFullDeviceIsNamed();
    void aLongReadSaysHowFarItHasCome();
    void aLongReadStopsWhenItIsCancelled();
    void aHundredThousandUsersOnThreeDevices();

    void limitsAndTimesAreWritten();
    void timesThatAreNotSetAreNotWritten();
    void theOtherKindIsLeftAlone();
    void onlyTheTouchedDeviceIsWritten();
    void aRecordThatNamesNobodyReachesNobody_data();
    void aRecordThatNamesNobodyReachesNobody();
    void aDeviceThatIsOffIsLeftAloneWithoutALimit();
    void limitsSwitchADeviceOn();
    void limitsThatCannotSwitchADeviceOnAreNotWritten();
    void whatTheKernelCannotTellIsNotSwitchedOn();
    void aFailureLeavesTheOtherDevicesToBeWritten();
    void whatWasReadIsWrittenBackAsItWas();

private:
    FakeKernel::State &state(const QString &device, QuotaKind kind = UserQuota);
    void useStates();
    void useAccounts(int count);
    QList<QString> asked(int command) const;
    UserData limitedAnna() const;
    dqblk kernelRecord(const QString &device, quint32 id = Anna) const;

    Sandbox _sandbox;
    QMap<QString, FakeKernel::State> _users;
    QMap<QString, FakeKernel::State> _groups;
    std::unique_ptr<QuotaManager> _manager;
    QStringList _errors;
    QStringList _details;
};

/// Users' quotas are on on all devices, those of groups on the first. The user anna has the id 1000.
void TestAccountQuotas::init()
{
    _sandbox.reset();
    QByteArray fstab;
    QByteArray mtab;
    for (const char *name : {"a", "b", "c"}) {
        const QByteArray line = QByteArray("/dev/sd") + name + "1 " + _sandbox.folder(text(name)).toUtf8() + " ext4 ";
        fstab += line + "defaults,usrquota 0 2\n";
        mtab += line + "rw,usrquota 0 0\n";
    }
    _sandbox.writeEtc(text("fstab"), fstab);
    _sandbox.writeEtc(text("mtab"), mtab);
    _sandbox.writeEtc(text("passwd"), "root:x:0:0::/root:/bin/sh\nanna:x:1000:1000::/home/anna:/bin/sh\n");
    _sandbox.writeEtc(text("group"), "root:x:0:\nstaff:x:50:anna\n");
    _sandbox.standIn(text("blkid"))
        .prints("/dev/sda1: TYPE=\"ext4\"\n/dev/sdb1: TYPE=\"ext4\"\n/dev/sdc1: TYPE=\"ext4\"\n");
    _users.clear();
    _groups.clear();
    for (const QString &device : {Sda, Sdb, Sdc}) {
        state(device).info.dqi_bgrace = 604800;
        state(device).info.dqi_igrace = 3600;
        state(device, GroupQuota).on = device == Sda;
    }
    dqblk record = {};
    record.dqb_curspace = 1536;
    record.dqb_bsoftlimit = 1024;
    record.dqb_bhardlimit = 2048;
    record.dqb_curinodes = 7;
    record.dqb_isoftlimit = 100;
    record.dqb_ihardlimit = Q_UINT64_C(5000000000);
    record.dqb_btime = 1893456001;
    state(Sda).records.insert(Anna, record);
    useStates();

    _errors.clear();
    _details.clear();
    _manager = std::make_unique<QuotaManager>();
    connect(_manager.get(), &QuotaManager::error, this, [this](const QString &message) { _errors.append(message); });
    connect(_manager.get(), &QuotaManager::detail, this, [this](const QString &detail) { _details.append(detail); });
}

/// To be changed by a test, which then calls useStates().
FakeKernel::State &TestAccountQuotas::state(const QString &device, QuotaKind kind)
{
    return kind == GroupQuota ? _groups[device] : _users[device];
}

void TestAccountQuotas::useStates()
{
    for (auto state = _users.cbegin(); state != _users.cend(); ++state)
        _sandbox.kernel().setState(state.key().toUtf8(), UserQuota, state.value());
    for (auto state = _groups.cbegin(); state != _groups.cend(); ++state)
        _sandbox.kernel().setState(state.key().toUtf8(), GroupQuota, state.value());
}

/// u0, u1 and so on with the ids 1000, 1001 and so on.
void TestAccountQuotas::useAccounts(int count)
{
    QByteArray passwd;
    for (int i = 0; i < count; ++i)
        passwd += "u" + QByteArray::number(i) + ":x:" + QByteArray::number(1000 + i) + ":100::/home:/bin/sh\n";
    _sandbox.writeEtc(text("passwd"), passwd);
}

/// The devices that one command went to.
QList<QString> TestAccountQuotas::asked(int command) const
{
    QList<QString> devices;
    const QList<FakeKernel::Call> calls = FakeKernel::instance().calls();
    for (const FakeKernel::Call &call : calls) {
        if (call.command == command)
            devices.append(QString::fromUtf8(call.device));
    }
    return devices;
}

void TestAccountQuotas::aUsersRecord()
{
    const UserData user = _manager->readUser(text("anna"));
    QCOMPARE(_errors, QStringList());
    QCOMPARE(user.name, text("anna"));
    QCOMPARE(user.id, 1000);
    QCOMPARE(user.deviceQuotas.keys(), (QList<QString>{Sda, Sdb, Sdc}));

    const DeviceQuota quota = user.deviceQuotas.value(Sda);
    QCOMPARE(quota.deviceName, Sda);
    QCOMPARE(quota.filesystemType, text("ext4"));
    QCOMPARE(quota.usedBlocks.bytes, quint64(1536));
    QCOMPARE(quota.softBlockLimit.text, text("1 Mb"));
    QCOMPARE(quota.hardBlockLimit.text, text("2 Mb"));
    QCOMPARE(quota.usedInodes, quint64(7));
    QCOMPARE(quota.softInodeLimit, quint64(100));
    QCOMPARE(quota.hardInodeLimit, Q_UINT64_C(5000000000));
    QCOMPARE(quota.blocksTimeToForce.toSecsSinceEpoch(), qint64(1893456001));
    QVERIFY(!quota.inodesTimeToForce.isValid());
    QCOMPARE(quota.blockGracePeriod.weeks, 1U);
    QCOMPARE(quota.inodeGracePeriod.hours, 1U);
    QVERIFY(quota.quotaIsOn && quota.kindIsOn && quota.optionIsMounted && quota.optionInForce);
    QVERIFY(!quota.fileExists);

    const DeviceQuota other = user.deviceQuotas.value(Sdb); // on, but anna has no limit there
    QVERIFY(other.kindIsOn && !other.quotaIsOn);
    QVERIFY(other.usedBlocks.text.isEmpty());
}

void TestAccountQuotas::aGroupsRecordIsOfTheOtherKind()
{
    dqblk record = {};
    record.dqb_ihardlimit = 9;
    state(Sda, GroupQuota).records.insert(50, record);
    useStates();
    const GroupData group = _manager->readGroup(text("staff"));
    QCOMPARE(_errors, QStringList());
    QCOMPARE(group.id, 50);
    QVERIFY(group.deviceQuotas.value(Sda).quotaIsOn);
    QCOMPARE(group.deviceQuotas.value(Sda).hardInodeLimit, quint64(9));
    QVERIFY(!group.deviceQuotas.value(Sda).optionInForce); // the other kind's is
    QVERIFY(!group.deviceQuotas.value(Sdb).kindIsOn);
}

void TestAccountQuotas::aDeviceWhoseKindIsOffIsAskedNothingMore()
{
    state(Sdb).on = false;
    useStates();
    const UserData user = _manager->readUser(text("anna"));
    QCOMPARE(_errors, QStringList());
    QVERIFY(!user.deviceQuotas.value(Sdb).kindIsOn);
    QCOMPARE(user.deviceQuotas.value(Sdb).filesystemType, text("ext4"));
    QVERIFY(user.deviceQuotas.value(Sdb).optionInForce);
    QVERIFY(user.deviceQuotas.value(Sdb).blockGracePeriod.text.isEmpty());
    QCOMPARE(asked(Q_GETQUOTA), (QList<QString>{Sda, Sdc}));
    QCOMPARE(asked(Q_GETINFO), (QList<QString>{Sda, Sdc}));
}

void TestAccountQuotas::anUnmountedDeviceIsReported()
{
    _sandbox.writeEtc(text("mtab"), "/dev/sda1 / ext4 rw,usrquota 0 0\n/dev/sdc1 /c ext4 rw,usrquota 0 0\n");
    state(Sdb).failures.insert(Q_GETFMT, ENODEV);
    useStates();
    const UserData user = _manager->readUser(text("anna"));
    QCOMPARE(_errors, QStringList{text("Device /dev/sdb1 not mounted")} + noDevice(Sdb));
    QCOMPARE(user.failures.keys(), QList<QString>{Sdb});
    QCOMPARE(user.failures.value(Sdb), _errors.join(QLatin1Char('\n')));
    QCOMPARE(user.deviceQuotas.keys(), (QList<QString>{Sda, Sdb, Sdc}));
    QVERIFY(!user.deviceQuotas.value(Sdb).kindIsOn);
    QVERIFY(user.deviceQuotas.value(Sda).quotaIsOn);
}

void TestAccountQuotas::aDeviceWhoseQuestionFailedIsLeftOut()
{
    state(Sda).failures.insert(Q_GETQUOTA, EPERM);
    useStates();
    const UserData user = _manager->readUser(text("anna"));
    QCOMPARE(_errors, noRights(Sda));
    QCOMPARE(user.deviceQuotas.keys(), (QList<QString>{Sdb, Sdc}));
    QCOMPARE(user.failures.keys(), QList<QString>{Sda});
    QCOMPARE(user.failures.value(Sda), noRights(Sda).join(QLatin1Char('\n')));
}

void TestAccountQuotas::aNameThatIsNotThereNamesNobody()
{
    const UserData user = _manager->readUser(text("otto"));
    QCOMPARE(_errors, QStringList{text("There is no user otto")});
    QCOMPARE(user.name, text("otto"));
    QCOMPARE(user.id, AbstractElementData::NoId);
    QVERIFY(user.deviceQuotas.isEmpty());
    QCOMPARE(user.failures.value(Sda), _errors.first());
    _errors.clear();
    QVERIFY(_manager->readGroup(text("otto")).deviceQuotas.isEmpty());
    QCOMPARE(_errors, QStringList{text("There is no group otto")});
    QCOMPARE(asked(Q_GETQUOTA), QList<QString>());
}

void TestAccountQuotas::anIdThatTheKernelCannotKnowNamesNobody()
{
    _sandbox.writeEtc(text("passwd"), "nobody%1:x:4294967295:1::/:/bin/sh\nanna:x:1000:1000::/home/anna:/bin/sh\n");
    const QuotaManager::Accounts users = _manager->readAllUsers();
    QCOMPARE(users.size(), std::size_t(2));
    QVERIFY(users.front()->deviceQuotas.isEmpty());
    QCOMPARE(users.back()->deviceQuotas.size(), 3);
    const QString reason = text("nobody%1 has the id 4294967295, for which there are no quotas");
    QCOMPARE(_errors, QStringList()); // the read of all others did not fail
    QVERIFY(_details.contains(reason));
    QCOMPARE(users.front()->failures.keys(), (QList<QString>{Sda, Sdb, Sdc}));
    QCOMPARE(users.front()->failures.value(Sda), reason);

    const UserData user = _manager->readUser(text("nobody%1"));
    QCOMPARE(_errors, QStringList{reason});
    QVERIFY(!_manager->writeQuotas(user, UserQuota));
    QCOMPARE(_errors, (QStringList{reason, reason}));
    QCOMPARE(asked(Q_SETQUOTA), QList<QString>());
}

void TestAccountQuotas::theLargestIdIsAnAccount()
{
    _sandbox.writeEtc(text("passwd"), "large:x:4294967294:1::/:/bin/sh\n");
    dqblk record = {};
    record.dqb_ihardlimit = 9;
    state(Sda).records.insert(4294967294U, record);
    useStates();
    const UserData user = _manager->readUser(text("large"));
    QCOMPARE(user.id, -2);
    QCOMPARE(user.deviceQuotas.value(Sda).hardInodeLimit, quint64(9));
    UserData changed = user;
    changed.deviceQuotas[Sda].hardInodeLimit = 10;
    QVERIFY(_manager->writeQuotas(changed, UserQuota));
    QCOMPARE(kernelRecord(Sda, 4294967294U).dqb_ihardlimit, quint64(10));
    QCOMPARE(_errors, QStringList());
}

void TestAccountQuotas::ofTwoAccountsWithOneNameTheFirstCounts()
{
    _sandbox.writeEtc(text("passwd"), "anna:x:1000:1::/:/bin/sh\nanna:x:1001:1::/:/bin/sh\n");
    const QuotaManager::Accounts users = _manager->readAllUsers();
    QCOMPARE(users.size(), std::size_t(2));
    QCOMPARE(users.back()->id, 1000);
}

void TestAccountQuotas::aDeviceThatIsListedTwiceIsAskedOnce()
{
    _sandbox.writeEtc(text("fstab"), "/dev/sda1 /a ext4 defaults 0 0\n/dev/sda1 /again ext4 defaults 0 0\n");
    QCOMPARE(_manager->quotaDevices(), (QStringList{Sda, Sda}));
    QCOMPARE(_manager->readUser(text("anna")).deviceQuotas.keys(), QList<QString>{Sda});
    QCOMPARE(asked(Q_GETFMT), QList<QString>{Sda});
    QCOMPARE(asked(Q_GETQUOTA), QList<QString>{Sda});
}

void TestAccountQuotas::theCallsOfOneAccountComeInTheirOrder()
{
    _sandbox.writeEtc(text("fstab"), "/dev/sda1 /a ext4 defaults 0 0\n");
    _manager->readUser(text("anna"));
    QList<int> commands;
    for (const FakeKernel::Call &call : _sandbox.kernel().calls())
        commands.append(call.command);
    QCOMPARE(commands, (QList<int>{Q_GETFMT, Q_GETQUOTA, Q_GETINFO}));
}

void TestAccountQuotas::allUsersInTheOrderOfTheFile()
{
    _sandbox.writeEtc(text("passwd"), "zoe:x:1003:1::/:/bin/sh\nanna:x:1000:1::/:/bin/sh\nroot:x:0:0::/:/bin/sh\n");
    const QuotaManager::Accounts users = _manager->readAllUsers();
    QCOMPARE(_errors, QStringList());
    QStringList names;
    for (const auto &user : users) {
        QVERIFY(dynamic_cast<const UserData *>(user.get()));
        QCOMPARE(user->deviceQuotas.keys(), (QList<QString>{Sda, Sdb, Sdc}));
        names.append(user->name);
    }
    QCOMPARE(names, (QStringList{text("zoe"), text("anna"), text("root")}));
    QVERIFY(users[1]->deviceQuotas.value(Sda).quotaIsOn);
    QVERIFY(!users[0]->deviceQuotas.value(Sda).quotaIsOn);
    QCOMPARE(users[1]->deviceQuotas.value(Sda).usedInodes, quint64(7));
}

void TestAccountQuotas::allGroups()
{
    const QuotaManager::Accounts groups = _manager->readAllGroups();
    QCOMPARE(_errors, QStringList());
    QCOMPARE(groups.size(), std::size_t(2));
    QVERIFY(dynamic_cast<const GroupData *>(groups.back().get()));
    QCOMPARE(groups.back()->name, text("staff"));
    QVERIFY(groups.back()->deviceQuotas.value(Sda).kindIsOn);
    for (const FakeKernel::Call &call : _sandbox.kernel().calls())
        QCOMPARE(call.type, int(GroupQuota));
}

void TestAccountQuotas::allUsersWithoutADevice()
{
    _sandbox.writeEtc(text("fstab"), "");
    const QuotaManager::Accounts users = _manager->readAllUsers();
    QCOMPARE(users.size(), std::size_t(2));
    QVERIFY(users.back()->deviceQuotas.isEmpty());
    QCOMPARE(_errors, QStringList());
}

void TestAccountQuotas::allUsersWithoutTheAccountFile()
{
    _sandbox.removeEtc(text("passwd"));
    QVERIFY(_manager->readAllUsers().empty());
    QCOMPARE(_errors, QStringList{text("File /etc/passwd can not be open")});
}

void TestAccountQuotas::aFailureIsReportedOnceForEachDevice()
{
    useAccounts(50);
    state(Sda).failures.insert(Q_GETQUOTA, EPERM);
    state(Sdc).failures.insert(Q_GETQUOTA, EPERM);
    state(Sdc).failures.insert(Q_GETINFO, EPERM); // the same text before the first account
    useStates();
    const QuotaManager::Accounts users = _manager->readAllUsers();
    QCOMPARE(_errors, noRights(Sda) + noRights(Sdc));
    QCOMPARE(users.size(), std::size_t(50));
    for (const auto &user : users)
        QCOMPARE(user->deviceQuotas.keys(), QList<QString>{Sdb});
}

/// The kernel makes the record of an account that it is asked for, in a quota file that may have no room for it.
void TestAccountQuotas::aFullDeviceIsNamed()
{
    const QStringList noRoom{text("Unknown error while executing quotactl"),
                             text("/dev/sda1: ") + qt_error_string(ENOSPC)};
    state(Sda).failures.insert(Q_GETQUOTA, ENOSPC);
    useStates();
    _manager->readAllUsers();
    QCOMPARE(_errors, noRoom);

    _errors.clear();
    state(Sda).failures.insert(Q_SETQUOTA, ENOSPC);
    useStates();
    QVERIFY(!_manager->writeQuotas(limitedAnna(), UserQuota));
    QCOMPARE(_errors, noRoom);
    QCOMPARE(kernelRecord(Sdc).dqb_bhardlimit, quint64(20));
}

void TestAccountQuotas::aLongReadSaysHowFarItHasCome()
{
    useAccounts(1100);
    QSignalSpy progress(_manager.get(), &QuotaManager::progress);
    _manager->readAllUsers();
    QCOMPARE(progress.size(), 4);
    QCOMPARE(progress.last(), (QVariantList{quint64(1000), quint64(1100), text("accounts")}));
}

void TestAccountQuotas::aLongReadStopsWhenItIsCancelled()
{
    useAccounts(1100);
    bool isCancelled = false;
    _manager->setCancelCheck([&isCancelled] { return isCancelled; });
    connect(_manager.get(), &QuotaManager::progress, this, [&isCancelled](quint64 done) { isCancelled = done == 500; });
    QCOMPARE(_manager->readAllUsers().size(), std::size_t(500));
    QCOMPARE(asked(Q_GETQUOTA).size(), 3 * 500);
}

void TestAccountQuotas::aHundredThousandUsersOnThreeDevices()
{
    constexpr int Count = 100000;
    useAccounts(Count);
    dqblk record = {};
    record.dqb_bhardlimit = 4;
    state(Sdc).records.insert(1000 + Count - 1, record);
    useStates();
    const QuotaManager::Accounts users = _manager->readAllUsers();
    QCOMPARE(_errors, QStringList());
    QCOMPARE(users.size(), std::size_t(Count));
    QCOMPARE(users.back()->deviceQuotas.value(Sdc).hardBlockLimit.bytes, quint64(4096));

    QCOMPARE(_sandbox.calls(text("blkid")).size(), 1);
    QMap<int, int> counts;
    for (const FakeKernel::Call &call : _sandbox.kernel().calls())
        ++counts[call.command];
    QCOMPARE(counts, (QMap<int, int>{{Q_GETFMT, 3}, {Q_GETINFO, 3}, {Q_GETQUOTA, 3 * Count}}));
}

/// With a limit on each device, none of which the kernel has.
UserData TestAccountQuotas::limitedAnna() const
{
    UserData user;
    user.name = text("anna");
    user.id = Anna;
    const MemorySizeTransfer units;
    for (const QString &device : {Sda, Sdb, Sdc}) {
        DeviceQuota &quota = user.deviceQuotas[device];
        quota.deviceName = device;
        quota.softBlockLimit = MemorySize(units, 10 * 1024);
        quota.hardBlockLimit = MemorySize(units, 20 * 1024);
        quota.softInodeLimit = 30;
        quota.hardInodeLimit = 40;
        quota.inodesTimeToForce = QDateTime::fromSecsSinceEpoch(1893456059);
    }
    return user;
}

dqblk TestAccountQuotas::kernelRecord(const QString &device, quint32 id) const
{
    return FakeKernel::instance().state(device.toUtf8(), UserQuota).records.value(id);
}

void TestAccountQuotas::limitsAndTimesAreWritten()
{
    QVERIFY(_manager->writeQuotas(limitedAnna(), UserQuota));
    QCOMPARE(_errors, QStringList());
    for (const QString &device : {Sda, Sdb, Sdc}) {
        const dqblk record = kernelRecord(device);
        QCOMPARE(record.dqb_bsoftlimit, quint64(10));
        QCOMPARE(record.dqb_bhardlimit, quint64(20));
        QCOMPARE(record.dqb_isoftlimit, quint64(30));
        QCOMPARE(record.dqb_ihardlimit, quint64(40));
        QCOMPARE(record.dqb_itime, quint64(1893456059));
    }
    QCOMPARE(kernelRecord(Sda).dqb_curspace, quint64(1536)); // usage is the kernel's
    QCOMPARE(asked(Q_SETQUOTA), (QList<QString>{Sda, Sdb, Sdc}));
    QVERIFY(_sandbox.calls().isEmpty()); // nothing had to be switched on or looked up
}

void TestAccountQuotas::timesThatAreNotSetAreNotWritten()
{
    QVERIFY(_manager->writeQuotas(limitedAnna(), UserQuota));
    QCOMPARE(kernelRecord(Sda).dqb_btime, quint64(1893456001)); // as it was
}

void TestAccountQuotas::theOtherKindIsLeftAlone()
{
    GroupData group;
    group.name = text("staff");
    group.id = 50;
    group.deviceQuotas[Sda].hardInodeLimit = 5;
    QVERIFY(_manager->writeQuotas(group, GroupQuota));
    QCOMPARE(_sandbox.kernel().state("/dev/sda1", GroupQuota).records.value(50).dqb_ihardlimit, quint64(5));
    QVERIFY(!_sandbox.kernel().state("/dev/sda1", UserQuota).records.contains(50));
}

void TestAccountQuotas::onlyTheTouchedDeviceIsWritten()
{
    UserData user = limitedAnna();
    user.touched = std::make_shared<TouchedQuota>(TouchedQuota{Sdb, {}});
    QVERIFY(_manager->writeQuotas(user, UserQuota));
    QCOMPARE(asked(Q_SETQUOTA), QList<QString>{Sdb});
    QCOMPARE(asked(Q_GETFMT), QList<QString>{Sdb});
    QCOMPARE(kernelRecord(Sda).dqb_bhardlimit, quint64(2048));
}

void TestAccountQuotas::aRecordThatNamesNobodyReachesNobody_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<int>("id");
    QTest::addColumn<QString>("message");
    QTest::newRow("a new record") << QString() << -1 << text("There is no user ");
    QTest::newRow("no id") << text("anna") << -1 << text("anna is another account by now: nothing was written");
    QTest::newRow("deleted") << text("otto") << 1001 << text("There is no user otto");
    QTest::newRow("made anew") << text("anna") << 1001 << text("anna is another account by now: nothing was written");
    QTest::newRow("root's id") << text("anna") << 0 << text("anna is another account by now: nothing was written");
}

void TestAccountQuotas::aRecordThatNamesNobodyReachesNobody()
{
    QFETCH(QString, name);
    QFETCH(int, id);
    QFETCH(QString, message);
    UserData user = limitedAnna();
    user.name = name;
    user.id = id;
    QVERIFY(!_manager->writeQuotas(user, UserQuota));
    QCOMPARE(_errors, QStringList{message});
    QVERIFY(_sandbox.kernel().calls().isEmpty());
}

void TestAccountQuotas::aDeviceThatIsOffIsLeftAloneWithoutALimit()
{
    state(Sda).on = false;
    useStates();
    UserData user = limitedAnna();
    DeviceQuota &quota = user.deviceQuotas[Sda];
    quota.softBlockLimit = MemorySize();
    quota.hardBlockLimit = MemorySize(MemorySizeTransfer(), 1023); // less than a block: none
    quota.softInodeLimit = 0;
    quota.hardInodeLimit = 0;
    QVERIFY(_manager->writeQuotas(user, UserQuota));
    QCOMPARE(_errors, QStringList());
    QCOMPARE(asked(Q_SETQUOTA), (QList<QString>{Sdb, Sdc}));
    QVERIFY(_sandbox.calls().isEmpty());
}

void TestAccountQuotas::limitsSwitchADeviceOn()
{
    QFile file(_sandbox.folder(text("a")) + text("/aquota.user"));
    QVERIFY(file.open(QIODevice::WriteOnly));
    state(Sda).failures.insert(Q_GETFMT, ESRCH); // off, until the program has switched it on
    useStates();
    _sandbox.standIn(text("quotaon"));
    bool wasSwitchedOnFirst = false;
    connect(_manager.get(), &QuotaManager::detail, this, [&](const QString &detail) {
        if (detail.startsWith(text("quotaon")))
            wasSwitchedOnFirst = asked(Q_SETQUOTA).isEmpty();
    });
    UserData user = limitedAnna();
    user.deviceQuotas[Sda].quotaIsOn = true; // what the record says of it does not count
    user.deviceQuotas[Sda].kindIsOn = true;
    QVERIFY(_manager->writeQuotas(user, UserQuota));
    QVERIFY(file.remove());
    QCOMPARE(_errors, QStringList());
    const QList<StandInCall> calls = _sandbox.calls(text("quotaon"));
    QCOMPARE(calls.size(), 1); // the other two are on
    QCOMPARE(calls.first().arguments, (QByteArrayList{"-u", "/dev/sda1"}));
    QVERIFY(wasSwitchedOnFirst);
    QVERIFY(_sandbox.readEtc(text("fstab")).contains("usrquota"));
    QCOMPARE(kernelRecord(Sda).dqb_bhardlimit, quint64(20));
}

void TestAccountQuotas::limitsThatCannotSwitchADeviceOnAreNotWritten()
{
    state(Sda).failures.insert(Q_GETFMT, ESRCH);
    useStates();
    _sandbox.writeEtc(text("mtab"), "/dev/sda1 /a ext4 rw 0 0\n"); // also after the remount
    _sandbox.standIn(text("mount"));
    QVERIFY(!_manager->writeQuotas(limitedAnna(), UserQuota));
    QCOMPARE(_errors, QStringList{text("Quotas could not be switched on on /dev/sda1: the limits were not written")});
    QCOMPARE(kernelRecord(Sda).dqb_bhardlimit, quint64(2048));
    QCOMPARE(kernelRecord(Sdb).dqb_bhardlimit, quint64(20));
}

void TestAccountQuotas::whatTheKernelCannotTellIsNotSwitchedOn()
{
    const QByteArray fstab = _sandbox.readEtc(text("fstab"));
    _sandbox.writeEtc(text("mtab"), "");
    state(Sda).failures.insert(Q_GETFMT, ENODEV);
    useStates();
    QVERIFY(!_manager->writeQuotas(limitedAnna(), UserQuota));
    QCOMPARE(_errors, noDevice(Sda));
    QVERIFY(_sandbox.calls().isEmpty());
    QCOMPARE(_sandbox.readEtc(text("fstab")), fstab);
    QCOMPARE(asked(Q_SETQUOTA), (QList<QString>{Sdb, Sdc}));
}

void TestAccountQuotas::aFailureLeavesTheOtherDevicesToBeWritten()
{
    state(Sda).failures.insert(Q_SETQUOTA, EPERM);
    useStates();
    QVERIFY(!_manager->writeQuotas(limitedAnna(), UserQuota));
    QCOMPARE(_errors, noRights(Sda));
    QCOMPARE(kernelRecord(Sdc).dqb_bhardlimit, quint64(20));
}

void TestAccountQuotas::whatWasReadIsWrittenBackAsItWas()
{
    const dqblk before = kernelRecord(Sda);
    QVERIFY(_manager->writeQuotas(_manager->readUser(text("anna")), UserQuota));
    const dqblk after = kernelRecord(Sda);
    QCOMPARE(after.dqb_bsoftlimit, before.dqb_bsoftlimit);
    QCOMPARE(after.dqb_bhardlimit, before.dqb_bhardlimit);
    QCOMPARE(after.dqb_isoftlimit, before.dqb_isoftlimit);
    QCOMPARE(after.dqb_ihardlimit, before.dqb_ihardlimit);
    QCOMPARE(after.dqb_btime, before.dqb_btime);
    QCOMPARE(after.dqb_itime, before.dqb_itime);
}

KRA_SANDBOX_MAIN(TestAccountQuotas)
#include "tst_accountquotas.moc"
