// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "quotactlclock.h"
#include "shell.h"

#include <module.h>
#include <readallusers.h>
#include <startup.h>
#include <userdata.h>
#include <userelement.h>
#include <userselement.h>

#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>
#include <QVector>

#include <algorithm>
#include <array>

#include <pwd.h>

namespace
{

constexpr int Accounts = 50000;
constexpr int Rounds = 7;
/// Other work on the host can spoil a measurement, but none makes slow code keep the bounds: it is taken again, this
/// many times at the most.
constexpr int Measurements = 4;

/// The bounds, and who they are between.
constexpr double KernelPartPerLoop = 1.1;
constexpr double ReadPerLoop = 1.8;
constexpr double RepquotaPerRead = 5;

enum Contestant
{
    Loop,       ///< a bare loop of Q_GETQUOTA over the ids
    Read,       ///< the whole task
    KernelPart, ///< what of another such task was spent in quotactl()
    Repquota,
    RepquotaWithoutNames,
    ContestantCount
};
constexpr std::array<const char *, ContestantCount> Names = {
    "loop of Q_GETQUOTA", "read of all users", "- its part in the kernel", "repquota -u", "repquota -un",
};

/// Does nothing, where the tasks' own module would read the list's page.
class IdleModule : public Module
{
public:
    IdleModule()
        : Module(QStringLiteral("IdleModule"), nullptr)
    {}
    void performOperation(ContextOperation * /*operation*/, OperationType /*type*/, ElementData * /*data*/,
                          int /*extra*/) override
    {}
};

/// The local accounts, by the C library.
QVector<quint32> accountIds()
{
    QVector<quint32> ids;
    setpwent();
    while (const passwd *account = getpwent())
        ids.append(account->pw_uid);
    endpwent();
    return ids;
}

/// Somebody who uses the disk, with one of twenty limits; one in ten is over the soft one.
dqblk usageAndLimits(quint32 id)
{
    dqblk record = {};
    record.dqb_bsoftlimit = (1 + id % 20) * 10000;
    record.dqb_bhardlimit = record.dqb_bsoftlimit * 2;
    record.dqb_curspace = (id * quint64(7919) % record.dqb_bsoftlimit) * 1024;
    record.dqb_curinodes = id;
    if (id % 10 == 0) {
        record.dqb_curspace += record.dqb_bsoftlimit * 1024 + 1;
        record.dqb_btime = 2145916800 + id;
    }
    record.dqb_valid = QIF_ALL;
    return record;
}

/// The users that a report lists, in their order.
QStringList reportedNames(const QString &report)
{
    QFile file(report);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    QStringList names;
    bool isList = false;
    for (const QByteArray &line : file.readAll().split('\n')) {
        if (isList && !line.isEmpty())
            names.append(QString::fromUtf8(line.left(line.indexOf(' '))));
        isList = isList || line.startsWith("-----");
    }
    return names;
}

} // namespace

/// The read of 50,000 users on one disk, beside the least that the kernel could be asked and beside the program that
/// lists the same. All take their turns on the same machine: how they compare says something also where its processor
/// is emulated and other work disturbs it.
class TestAccountScale : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void asksTheKernelOnceForEachAccount();
    void readsWhatTheKernelHas();
    void listsWhatTheReportLists();
    void spendsNoMoreInTheKernelThanTheLoop();
    void takesLittleMoreThanTheLoop();
    void isMuchFasterThanTheReport();

private:
    qint64 run(Contestant contestant);
    qint64 runLoop() const;
    qint64 runTask(bool isClocked);
    qint64 runReport(const QString &options) const;
    double median(Contestant contestant) const;
    double ratio(Contestant contestant, Contestant to) const { return median(contestant) / median(to); }
    bool keepsBounds() const;
    void measure();
    void report() const;

    QString _device;
    QVector<quint32> _ids;
    QTemporaryDir _folder;
    std::array<QVector<qint64>, ContestantCount> _nanoseconds; // of the last measurement
    IdleModule _module;
    UsersElement _users{&_module, &Module::isAdministratorHierarchy};
    QuotactlClock::Reading _clock;
};

void TestAccountScale::initTestCase()
{
    const Shell::Result setUp = Shell::run(QStringLiteral("./scale-set-up"));
    QVERIFY2(setUp.exitCode == 0, qPrintable(setUp.errors));
    _device = QFileInfo(QStringLiteral("/dev/disk/by-id/virtio-many")).canonicalFilePath();
    _ids = accountIds();
    QCOMPARE(_ids.size(), Accounts);
    for (const quint32 id : qAsConst(_ids)) {
        dqblk record = usageAndLimits(id);
        QVERIFY(quotactl(QCMD(Q_SETQUOTA, USRQUOTA), qPrintable(_device), static_cast<int>(id),
                         reinterpret_cast<caddr_t>(&record)) == 0);
    }
    QCOMPARE(Shell::run(QStringLiteral("sync")).exitCode, 0);

    int measurements = 0;
    do {
        measure();
        if (QTest::currentTestFailed())
            return;
        report();
        ++measurements;
    } while (!keepsBounds() && measurements < Measurements);
}

void TestAccountScale::measure()
{
    _nanoseconds = {};
    // The first round reads programs and records from the disk and does not count.
    for (int round = 0; round <= Rounds; ++round) {
        for (int contestant = Loop; contestant < ContestantCount; ++contestant) {
            const qint64 nanoseconds = run(static_cast<Contestant>(contestant));
            QVERIFY2(nanoseconds > 0, Names.at(contestant));
            if (round > 0)
                _nanoseconds.at(contestant).append(nanoseconds);
        }
    }
}

void TestAccountScale::report() const
{
    for (int i = Loop; i < ContestantCount; ++i) {
        const auto contestant = static_cast<Contestant>(i);
        const QVector<qint64> &all = _nanoseconds.at(i);
        qInfo("%-25s %8.0f ms (%.0f to %.0f), %5.2f of the loop", Names.at(i), median(contestant) / 1e6,
              static_cast<double>(*std::min_element(all.begin(), all.end())) / 1e6,
              static_cast<double>(*std::max_element(all.begin(), all.end())) / 1e6, ratio(contestant, Loop));
    }
}

/// How long it took in nanoseconds; 0 when it failed.
qint64 TestAccountScale::run(Contestant contestant)
{
    switch (contestant) {
    case Loop:
        return runLoop();
    case Read:
        return runTask(false);
    case KernelPart:
        return runTask(true);
    case Repquota:
        return runReport(QStringLiteral("-u"));
    default:
        return runReport(QStringLiteral("-un"));
    }
}

qint64 TestAccountScale::runLoop() const
{
    const QByteArray device = _device.toUtf8();
    bool isAnswered = true;
    QElapsedTimer timer;
    timer.start();
    for (const quint32 id : _ids) {
        dqblk record = {};
        isAnswered = QuotactlClock::bareQuotactl(QCMD(Q_GETQUOTA, USRQUOTA), device.constData(), static_cast<int>(id),
                                                 reinterpret_cast<caddr_t>(&record)) == 0 &&
                     isAnswered;
    }
    return isAnswered ? timer.nsecsElapsed() : 0;
}

/// From the start of the task to its records, as when the list is first opened; clocked, what of it was spent in
/// quotactl().
qint64 TestAccountScale::runTask(bool isClocked)
{
    _users.clearDelete();
    ReadAllUsers task(&_users);
    QElapsedTimer timer;
    timer.start();
    if (isClocked)
        QuotactlClock::start();
    task.run();
    if (isClocked)
        _clock = QuotactlClock::stop();
    const qint64 nanoseconds = timer.nsecsElapsed();
    if (task.afterRun() != TaskDescription::Succeeded)
        return 0;
    return isClocked ? qRound64(_clock.share * static_cast<double>(nanoseconds)) : nanoseconds;
}

/// From the start of the program to its end; the report goes to a file in memory.
qint64 TestAccountScale::runReport(const QString &options) const
{
    QProcess program;
    program.setStandardOutputFile(_folder.filePath(options));
    QElapsedTimer timer;
    timer.start();
    program.start(QStringLiteral("repquota"), {options, _device});
    program.waitForFinished(-1);
    return program.exitStatus() == QProcess::NormalExit && program.exitCode() == 0 ? timer.nsecsElapsed() : 0;
}

double TestAccountScale::median(Contestant contestant) const
{
    QVector<qint64> sorted = _nanoseconds.at(contestant);
    std::sort(sorted.begin(), sorted.end());
    return static_cast<double>(sorted.value(sorted.size() / 2));
}

bool TestAccountScale::keepsBounds() const
{
    return ratio(KernelPart, Loop) <= KernelPartPerLoop && ratio(Read, Loop) <= ReadPerLoop &&
           ratio(Repquota, Read) >= RepquotaPerRead;
}

void TestAccountScale::asksTheKernelOnceForEachAccount()
{
    QCOMPARE(_clock.questions, Accounts + 2); // whether the kind is on, and the grace periods
}

void TestAccountScale::readsWhatTheKernelHas()
{
    QCOMPARE(_users.childNodes().size(), Accounts);
    for (int i = 0; i < Accounts; ++i) {
        const auto *record =
            static_cast<const UserData *>(static_cast<UserElement *>(_users.childNodes().at(i))->record());
        QCOMPARE(static_cast<quint32>(record->id), _ids.at(i));
        const DeviceQuota quota = record->deviceQuotas.value(_device);
        const dqblk expected = usageAndLimits(_ids.at(i));
        QCOMPARE(quota.softBlockLimit.bytes, expected.dqb_bsoftlimit * 1024);
        QCOMPARE(quota.hardBlockLimit.bytes, expected.dqb_bhardlimit * 1024);
        QCOMPARE(quota.usedBlocks.bytes, expected.dqb_curspace);
        QCOMPARE(quota.usedInodes, expected.dqb_curinodes);
        QCOMPARE(quota.blocksTimeToForce.isValid(), expected.dqb_btime != 0);
        if (expected.dqb_btime != 0)
            QCOMPARE(quota.blocksTimeToForce.toSecsSinceEpoch(), static_cast<qint64>(expected.dqb_btime));
    }
}

void TestAccountScale::listsWhatTheReportLists()
{
    QStringList read;
    read.reserve(Accounts);
    for (const TreeNode *node : _users.childNodes())
        read.append(static_cast<const UserElement *>(node)->title());
    QStringList reported = reportedNames(_folder.filePath(QStringLiteral("-u")));
    read.sort();
    reported.sort();
    QCOMPARE(read, reported);
}

void TestAccountScale::spendsNoMoreInTheKernelThanTheLoop()
{
    const double found = ratio(KernelPart, Loop);
    QVERIFY2(found <= KernelPartPerLoop, qPrintable(QString::number(found)));
}

void TestAccountScale::takesLittleMoreThanTheLoop()
{
    const double found = ratio(Read, Loop);
    QVERIFY2(found <= ReadPerLoop, qPrintable(QString::number(found)));
}

void TestAccountScale::isMuchFasterThanTheReport()
{
    const double found = ratio(Repquota, Read);
    QVERIFY2(found >= RepquotaPerRead, qPrintable(QString::number(found)));
}

int main(int argc, char *argv[])
{
    Startup::prepareProcess();
    const QCoreApplication application(argc, argv);
    TestAccountScale test;
    return QTest::qExec(&test, argc, argv);
}
#include "tst_accountscale.moc"
