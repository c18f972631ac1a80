// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

// Lists of 1,000, 10,000 and 100,000 users on three devices: what reading them costs beside the bare questions to the
// kernel, what it takes to hang them into the tree, and how many bytes an account takes on each device. The kernel is a
// stand-in, which notes each call: it is slower than nothing and faster than the real one.

#include <abstractelement.h>
#include <accountcolumn.h>
#include <module.h>
#include <quotamanager.h>
#include <readallusers.h>
#include <sandbox.h>
#include <treenodemodel.h>
#include <userdata.h>
#include <userselement.h>

#include <QCoreApplication>
#include <QThreadPool>

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <limits>
#include <map>

#include <ctime>
#include <malloc.h>

namespace
{

constexpr std::array<const char *, 3> Devices = {"/dev/vda", "/dev/vdb", "/dev/vdc"};
constexpr std::array<int, 3> Counts = {1000, 10000, 100000};
constexpr quint32 FirstId = 1000;

enum Step
{
    BareQuestions,
    NamesAndIds,
    WholeRead,
    FirstFill,
    SortValues,
    SortDates,
    Refill,
    StepCount
};
constexpr std::array<const char *, StepCount> StepNames = {
    "bare loop of Q_GETQUOTA",   "all names and their ids",     "readAllUsers()",
    "afterRun(), an empty list", "values of a column of sizes", "values of a column of dates",
    "afterRun(), a full list",
};

struct Cost
{
    std::array<double, StepCount> milliseconds;
    double limitedBytes;
    double unusedBytes;
};

std::size_t allocatedBytes()
{
    const struct mallinfo2 info = mallinfo2();
    return info.uordblks + info.hblkhd;
}

void makeMachine(Sandbox &sandbox, int count)
{
    sandbox.reset();
    QByteArray table;
    QByteArray blkid;
    for (const char *device : Devices) {
        table += QByteArray(device) + " /mnt ext4 rw,usrquota 0 0\n";
        blkid += QByteArray(device) + ": TYPE=\"ext4\"\n";
    }
    QByteArray passwd;
    for (int i = 0; i < count; ++i)
        passwd += "user" + QByteArray::number(i) + ":x:" + QByteArray::number(FirstId + quint32(i)) +
                  ":100:Some Body:/home/somebody:/bin/bash\n";
    sandbox.writeEtc(QStringLiteral("fstab"), table);
    sandbox.writeEtc(QStringLiteral("mtab"), table);
    sandbox.writeEtc(QStringLiteral("passwd"), passwd);
    sandbox.standIn(QStringLiteral("blkid")).prints(blkid);
}

/// Every account has used some space; with limits, one of twenty limits and sometimes a grace time that runs.
void makeKernel(Sandbox &sandbox, int count, bool isLimited)
{
    sandbox.kernel().reset();
    FakeKernel::State state;
    state.info.dqi_bgrace = 604800;
    for (int i = 0; isLimited && i < count; ++i) {
        dqblk record = {};
        record.dqb_curspace = quint64(i) * 4096 + 1;
        record.dqb_curinodes = quint64(i);
        record.dqb_bsoftlimit = quint64(i % 20) * 100000;
        record.dqb_bhardlimit = quint64(i % 20) * 200000;
        record.dqb_btime = i % 10 == 0 ? 1893456000 + quint64(i) : 0;
        state.records.insert(FirstId + quint32(i), record);
    }
    for (const char *device : Devices)
        sandbox.kernel().setState(device, USRQUOTA, state);
}

void askKernel(int count)
{
    for (int i = 0; i < count; ++i) {
        for (const char *device : Devices) {
            dqblk record = {};
            if (quotactl(QCMD(Q_GETQUOTA, USRQUOTA), device, int(FirstId) + i, reinterpret_cast<caddr_t>(&record)) != 0)
                std::abort();
        }
    }
}

/// Of this process on the processor, which other programs do not disturb.
double processorMilliseconds()
{
    timespec time = {};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
    return double(time.tv_sec) * 1e3 + double(time.tv_nsec) / 1e6;
}

template<typename Work>
double milliseconds(const Work &work)
{
    const double before = processorMilliseconds();
    work();
    return processorMilliseconds() - before;
}

/// How many bytes the records take for each account and device.
double bytesOfRecords(Sandbox &sandbox, int count, bool isLimited)
{
    sandbox.kernel().reset();
    const std::size_t before = allocatedBytes();
    makeKernel(sandbox, count, isLimited);
    const QuotaManager::Accounts users = QuotaManager().readAllUsers();
    sandbox.kernel().reset(); // its state and its notes
    return double(allocatedBytes() - before) / count / Devices.size();
}

Cost measure(Sandbox &sandbox, int count)
{
    makeMachine(sandbox, count);
    Cost cost = {};
    cost.limitedBytes = bytesOfRecords(sandbox, count, true);
    cost.unusedBytes = bytesOfRecords(sandbox, count, false);

    cost.milliseconds.fill(std::numeric_limits<double>::max());
    const auto note = [&cost](Step step, double value) {
        cost.milliseconds[step] = std::min(cost.milliseconds[step], value);
    };
    for (int run = 0; run < std::max(3, 20000 / count); ++run) {
        makeKernel(sandbox, count, true);
        note(BareQuestions, milliseconds([count] { askKernel(count); }));
        note(NamesAndIds, milliseconds([] {
                 QuotaManager manager;
                 const QStringList names = manager.userNames();
                 for (const QString &name : names)
                     manager.userId(name);
             }));
        makeKernel(sandbox, count, true);
        QuotaManager::Accounts users;
        note(WholeRead, milliseconds([&users] { users = QuotaManager().readAllUsers(); }));
        users.clear();

        makeKernel(sandbox, count, true);
        Module module(QStringLiteral("Module"), nullptr);
        UsersElement list(&module, &Module::isAdministratorHierarchy);
        TreeNodeModel model;
        model.setRootNode(&list);
        ReadAllUsers first(&list);
        first.run();
        note(FirstFill, milliseconds([&] { first.afterRun(); }));
        const QString device = QString::fromLatin1(Devices.front());
        const auto valuesOf = [&](AccountColumn::Column column) {
            for (TreeNode *node : list.childNodes()) {
                static_cast<AbstractElement *>(node)->setDeviceForData(device);
                node->data(column, SortRole);
            }
        };
        note(SortValues, milliseconds([&] { valuesOf(AccountColumn::UsedBlocks); }));
        note(SortDates, milliseconds([&] { valuesOf(AccountColumn::BlocksTimeToForce); }));
        ReadAllUsers second(&list);
        second.run();
        note(Refill, milliseconds([&] { second.afterRun(); }));
        QThreadPool::globalInstance()->waitForDone(); // the replaced records are deleted apart
    }
    return cost;
}

void countCalls(Sandbox &sandbox, int count)
{
    makeMachine(sandbox, count);
    makeKernel(sandbox, count, true);
    QuotaManager().readAllUsers();
    std::map<int, int> calls;
    for (const FakeKernel::Call &call : sandbox.kernel().calls())
        ++calls[call.command];
    std::printf("%d users, %zu devices: %d runs of blkid, %d Q_GETFMT, %d Q_GETINFO, %d Q_GETQUOTA\n", count,
                Devices.size(), sandbox.calls(QStringLiteral("blkid")).size(), calls[Q_GETFMT], calls[Q_GETINFO],
                calls[Q_GETQUOTA]);
}

} // namespace

int main(int argc, char **argv)
{
    Sandbox::enter();
    const QCoreApplication application(argc, argv);
    Sandbox sandbox;
    std::array<Cost, Counts.size()> costs = {};
    for (std::size_t i = 0; i < Counts.size(); ++i) {
        countCalls(sandbox, Counts[i]);
        costs[i] = measure(sandbox, Counts[i]);
    }

    std::printf("\nThe best of several runs, in milliseconds on the processor (growth to the list before, which is ten "
                "times shorter)\n%-30s",
                "users");
    for (const int count : Counts)
        std::printf("%20d", count);
    for (std::size_t step = 0; step < StepCount; ++step) {
        std::printf("\n%-30s", StepNames[step]);
        for (std::size_t i = 0; i < costs.size(); ++i) {
            const double cost = costs[i].milliseconds[step];
            std::printf("%11.2f (%5.1fx)", cost, i == 0 ? 1.0 : cost / costs[i - 1].milliseconds[step]);
        }
    }
    std::printf("\n\nBytes for each account and device\n%-30s", "with usage and limits");
    for (const Cost &cost : costs)
        std::printf("%20.0f", cost.limitedBytes);
    std::printf("\n%-30s", "with neither");
    for (const Cost &cost : costs)
        std::printf("%20.0f", cost.unusedBytes);
    std::printf("\nsizeof(DeviceQuota) %zu, sizeof(MemorySize) %zu, sizeof(UserData) %zu\n", sizeof(DeviceQuota),
                sizeof(MemorySize), sizeof(UserData));
    return 0;
}
