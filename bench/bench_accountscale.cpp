// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

// The read of 50,000 users on one disk of a real kernel, in turns with a bare loop of Q_GETQUOTA by the device's path,
// with one by a descriptor of its mount point, below which no read can come, and with repquota, on one machine in one
// run. Prints medians and their ratios: those say something also where the processor is emulated. Runs in the
// disposable machine, see docs/results/measurements.md.

#include <idlemodule.h>
#include <manyaccounts.h>
#include <mounteddevice.h>
#include <quotamanager.h>
#include <readallusers.h>
#include <startup.h>
#include <userselement.h>

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QVector>

#include <algorithm>
#include <array>
#include <cstdio>

#include <sys/syscall.h>
#include <unistd.h>

namespace
{

constexpr int Rounds = 7;

enum Contestant
{
    Loop,
    LoopByDescriptor,
    Read,
    Repquota,
    RepquotaWithoutNames,
    ContestantCount
};
constexpr std::array<const char *, ContestantCount> Names = {
    "loop of Q_GETQUOTA", "by a descriptor", "read of all users", "repquota -u", "repquota -un",
};

bool runLoop(const QVector<quint32> &ids, const QByteArray &device)
{
    bool isAnswered = true;
    for (const quint32 id : ids) {
        dqblk record = {};
        isAnswered = quotactl(QCMD(Q_GETQUOTA, USRQUOTA), device.constData(), static_cast<int>(id),
                              reinterpret_cast<caddr_t>(&record)) == 0 &&
                     isAnswered;
    }
    return isAnswered;
}

bool runLoopByDescriptor(const QVector<quint32> &ids, const MountedDevice &device)
{
    bool isAnswered = true;
    for (const quint32 id : ids) {
        dqblk record = {};
        isAnswered =
            syscall(SYS_quotactl_fd, device.descriptor(), QCMD(Q_GETQUOTA, USRQUOTA), id, &record) == 0 && isAnswered;
    }
    return isAnswered;
}

/// From the start of the task to its records, as when the list is first opened.
bool runTask(Element &users)
{
    ReadAllUsers task(&users);
    task.run();
    return task.status() == TaskDescription::Succeeded;
}

bool runReport(const QString &options, const QString &device)
{
    QProcess program;
    program.setStandardOutputFile(QProcess::nullDevice());
    program.start(QStringLiteral("repquota"), {options, device});
    program.waitForFinished(-1);
    return program.exitStatus() == QProcess::NormalExit && program.exitCode() == 0;
}

double median(QVector<double> milliseconds)
{
    std::sort(milliseconds.begin(), milliseconds.end());
    return milliseconds.value(milliseconds.size() / 2);
}

} // namespace

int main(int argc, char **argv)
{
    Startup::prepareProcess();
    const QCoreApplication application(argc, argv);
    const QString problem = ManyAccounts::setUp();
    if (!problem.isEmpty()) {
        std::fprintf(stderr, "%s\n", qPrintable(problem));
        return 1;
    }
    const QVector<quint32> ids = ManyAccounts::ids();
    const QString device = ManyAccounts::device();
    IdleModule module;
    UsersElement users(&module, &Module::isAdministratorHierarchy);
    const auto run = [&](int contestant) {
        switch (contestant) {
        case Loop:
            return runLoop(ids, device.toUtf8());
        case LoopByDescriptor:
            return runLoopByDescriptor(ids,
                                       MountedDevice(device, QFile::encodeName(QuotaManager().mountPoint(device))));
        case Read:
            return runTask(users);
        case Repquota:
            return runReport(QStringLiteral("-u"), device);
        default:
            return runReport(QStringLiteral("-un"), device);
        }
    };

    std::array<QVector<double>, ContestantCount> milliseconds;
    for (int round = 0; round <= Rounds; ++round) {
        for (int contestant = Loop; contestant < ContestantCount; ++contestant) {
            QElapsedTimer timer;
            timer.start();
            if (!run(contestant)) {
                std::fprintf(stderr, "%s failed\n", Names.at(contestant));
                return 1;
            }
            if (round > 0) // the first one reads programs and records from the disk
                milliseconds.at(contestant).append(static_cast<double>(timer.nsecsElapsed()) / 1e6);
        }
    }
    const double read = median(milliseconds[Read]);
    for (int i = Loop; i < ContestantCount; ++i) {
        const QVector<double> &all = milliseconds.at(i);
        std::printf("%-20s %8.0f ms (%.0f to %.0f), %5.2f of the loop, %5.2f of the read\n", Names.at(i), median(all),
                    *std::min_element(all.begin(), all.end()), *std::max_element(all.begin(), all.end()),
                    median(all) / median(milliseconds[Loop]), median(all) / read);
    }
    return 0;
}
