// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "fakekernel.h"

#include <QtTest>

#include <cerrno>

#include <dlfcn.h>
#include <sys/quota.h>

/// What the kernel of the sandbox answers, asked as the shipped code asks. It needs no other part of the rig.
class tst_FakeKernel : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { FakeKernel::instance().reset(); }

    void knowsNoDevice();
    void answersForKindThatIsOn();
    void takesWhatIsSet();
    void switches();
    void failsAsTold();
    void isThatOfLoadedLibrariesToo();
};

namespace
{

const QByteArray device = "/dev/vda1";

int command(int name, int type)
{
    return static_cast<int>(QCMD(static_cast<unsigned>(name), static_cast<unsigned>(type)));
}

char *address(void *record)
{
    return static_cast<char *>(record);
}

FakeKernel::State stateThatIsOn()
{
    FakeKernel::State state;
    state.format = 4;
    state.info.dqi_bgrace = 3600;
    state.info.dqi_igrace = 7200;
    state.records[1000].dqb_curspace = 4096;
    return state;
}

} // namespace

void tst_FakeKernel::knowsNoDevice()
{
    int format = 0;
    QCOMPARE(quotactl(command(Q_GETFMT, USRQUOTA), "/dev/vda9", 0, address(&format)), -1);
    QCOMPARE(errno, ENOENT);
    const QList<FakeKernel::Call> calls = FakeKernel::instance().calls();
    QCOMPARE(calls.size(), 1);
    QCOMPARE(calls.at(0).command, static_cast<int>(Q_GETFMT));
    QCOMPARE(calls.at(0).type, static_cast<int>(USRQUOTA));
    QCOMPARE(calls.at(0).device, QByteArray("/dev/vda9"));
}

void tst_FakeKernel::answersForKindThatIsOn()
{
    FakeKernel::instance().setState(device, GRPQUOTA, stateThatIsOn());

    int format = 0;
    QCOMPARE(quotactl(command(Q_GETFMT, GRPQUOTA), device.constData(), 0, address(&format)), 0);
    QCOMPARE(format, 4);
    dqinfo info = {};
    QCOMPARE(quotactl(command(Q_GETINFO, GRPQUOTA), device.constData(), 0, address(&info)), 0);
    QCOMPARE(info.dqi_bgrace, 3600U);
    QCOMPARE(info.dqi_igrace, 7200U);
    dqblk record = {};
    QCOMPARE(quotactl(command(Q_GETQUOTA, GRPQUOTA), device.constData(), 1000, address(&record)), 0);
    QCOMPARE(record.dqb_curspace, 4096U);
    QCOMPARE(quotactl(command(Q_GETQUOTA, GRPQUOTA), device.constData(), 1001, address(&record)), 0);
    QCOMPARE(record.dqb_curspace, 0U);
    QCOMPARE(quotactl(command(Q_GETQUOTA, GRPQUOTA), device.constData(), -1, address(&record)), -1);
    QCOMPARE(errno, EINVAL);
    // The other kind of the same device was not switched on.
    QCOMPARE(quotactl(command(Q_GETFMT, USRQUOTA), device.constData(), 0, address(&format)), -1);
    QCOMPARE(errno, ESRCH);
    QCOMPARE(quotactl(command(Q_GETFMT, 7), device.constData(), 0, address(&format)), -1);
    QCOMPARE(errno, EINVAL);
}

void tst_FakeKernel::takesWhatIsSet()
{
    FakeKernel::instance().setState(device, USRQUOTA, stateThatIsOn());

    dqblk record = {};
    record.dqb_bhardlimit = 100;
    record.dqb_ihardlimit = 200;
    record.dqb_btime = 300;
    record.dqb_curspace = 1;
    record.dqb_valid = QIF_LIMITS;
    // The highest id is a negative number in the call.
    const int highestId = static_cast<int>(4294967294U);
    QCOMPARE(quotactl(command(Q_SETQUOTA, USRQUOTA), device.constData(), highestId, address(&record)), 0);
    const dqblk set = FakeKernel::instance().state(device, USRQUOTA).records.value(4294967294U);
    QCOMPARE(set.dqb_bhardlimit, 100U);
    QCOMPARE(set.dqb_ihardlimit, 200U);
    QCOMPARE(set.dqb_btime, 0U);
    QCOMPARE(set.dqb_curspace, 0U);

    dqinfo info = {};
    info.dqi_bgrace = 1;
    info.dqi_igrace = 2;
    info.dqi_valid = IIF_IGRACE;
    QCOMPARE(quotactl(command(Q_SETINFO, USRQUOTA), device.constData(), 0, address(&info)), 0);
    QCOMPARE(FakeKernel::instance().state(device, USRQUOTA).info.dqi_bgrace, 3600U);
    QCOMPARE(FakeKernel::instance().state(device, USRQUOTA).info.dqi_igrace, 2U);
}

void tst_FakeKernel::switches()
{
    FakeKernel::State state;
    state.on = false;
    FakeKernel::instance().setState(device, USRQUOTA, state);
    char file[] = "/aquota.user";
    QCOMPARE(quotactl(command(Q_QUOTAOFF, USRQUOTA), device.constData(), 0, nullptr), -1);
    QCOMPARE(errno, ESRCH);
    QCOMPARE(quotactl(command(Q_QUOTAON, USRQUOTA), device.constData(), 4, file), 0);
    QVERIFY(FakeKernel::instance().state(device, USRQUOTA).on);
    QCOMPARE(quotactl(command(Q_QUOTAON, USRQUOTA), device.constData(), 4, file), -1);
    QCOMPARE(errno, EBUSY);
    QCOMPARE(quotactl(command(Q_QUOTAOFF, USRQUOTA), device.constData(), 0, nullptr), 0);
    QVERIFY(!FakeKernel::instance().state(device, USRQUOTA).on);
}

void tst_FakeKernel::failsAsTold()
{
    FakeKernel::State state = stateThatIsOn();
    state.failures[Q_GETINFO] = EPERM;
    FakeKernel::instance().setState(device, USRQUOTA, state);
    dqinfo info = {};
    QCOMPARE(quotactl(command(Q_GETINFO, USRQUOTA), device.constData(), 0, address(&info)), -1);
    QCOMPARE(errno, EPERM);
    int format = 0;
    QCOMPARE(quotactl(command(Q_GETFMT, USRQUOTA), device.constData(), 0, address(&format)), 0);
}

void tst_FakeKernel::isThatOfLoadedLibrariesToo()
{
    // What the dynamic linker gives to a library that calls quotactl(), such as a plug-in.
    QCOMPARE(dlsym(RTLD_DEFAULT, "quotactl"), reinterpret_cast<void *>(&quotactl));
}

QTEST_GUILESS_MAIN(tst_FakeKernel)

#include "tst_fakekernel.moc"
