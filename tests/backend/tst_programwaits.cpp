// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <quotaprograms.h>
#include <sandbox.h>

#include <QtTest>

#include <cerrno>
#include <functional>
#include <thread>
#include <vector>

#include <sys/wait.h>

namespace
{

QString text(const char *bytes)
{
    return QString::fromUtf8(bytes);
}

const QString Device = QStringLiteral("/dev/sda1");
constexpr int longerThanTheWait = 31000;

/// One call in a thread of its own, and what came of it.
struct Run
{
    std::function<bool(QuotaPrograms &)> call;
    bool result = false;
    QStringList errors = {};
    QStringList details = {};

    void operator()()
    {
        QuotaPrograms programs;
        QObject::connect(&programs, &QuotaPrograms::error, &programs,
                         [this](const QString &message) { errors.append(message); });
        QObject::connect(&programs, &QuotaPrograms::detail, &programs,
                         [this](const QString &detail) { details.append(detail); });
        result = call(programs);
    }
};

} // namespace

/// The real waits, of half a minute, all at once.
class TestProgramWaits : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void programsThatTakeTheirTime();

private:
    Sandbox _sandbox;
};

void TestProgramWaits::programsThatTakeTheirTime()
{
    _sandbox.standIn(text("quotaon")).complains("still at it").hangs();
    _sandbox.standIn(text("quotaoff")).ignoresTermination().hangs();
    _sandbox.standIn(text("quotacheck")).sleeps(longerThanTheWait);
    _sandbox.standIn(text("mount")).sleeps(longerThanTheWait);

    Run on{[](QuotaPrograms &programs) { return programs.runQuotaOnOff(Device, UserQuota, true); }};
    Run off{[](QuotaPrograms &programs) { return programs.runQuotaOnOff(Device, GroupQuota, false); }};
    Run check{[](QuotaPrograms &programs) { return programs.createQuotaFiles(Device, UserQuota).isDone; }};
    Run remount{[](QuotaPrograms &programs) { return programs.remount(Device).isDone; }};
    std::vector<std::thread> threads;
    for (Run *run : {&on, &off, &check, &remount})
        threads.emplace_back(std::ref(*run));
    for (std::thread &thread : threads)
        thread.join();

    QVERIFY(!on.result);
    QCOMPARE(on.errors, QStringList{text("Process quotaon can not finished")});
    QVERIFY(on.details.last().startsWith(text("quotaon -u /dev/sda1: did not end in time and was killed")));
    QVERIFY(!off.result);
    QCOMPARE(off.errors, QStringList{text("Process quotaoff can not finished")});
    QVERIFY(check.result);
    QCOMPARE(check.details.last(), text("quotacheck -um /dev/sda1: exit code 0"));
    QVERIFY(remount.result);
    QCOMPARE(check.errors + remount.errors, QStringList());

    // None of them is left, not even as a zombie.
    QCOMPARE(waitpid(-1, nullptr, WNOHANG), -1);
    QCOMPARE(errno, ECHILD);
}

KRA_SANDBOX_MAIN(TestProgramWaits)

#include "tst_programwaits.moc"
