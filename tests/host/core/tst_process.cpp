// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <appexception.h>
#include <process.h>

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <atomic>
#include <cerrno>
#include <thread>

#include <signal.h>
#include <sys/syscall.h>
#include <unistd.h>

Q_DECLARE_METATYPE(ProcessResult)

namespace
{
bool killsNothing = false;
} // namespace

/// Takes the place of the C library's for the libraries, too. While it kills nothing, every program is one that sits in
/// a call that the kernel does not interrupt.
// NOLINTNEXTLINE(readability-inconsistent-declaration-parameter-name): its parameters bear names that are reserved
extern "C" Q_DECL_EXPORT int kill(pid_t pid, int signal) noexcept
{
    return killsNothing && signal == SIGKILL ? 0 : static_cast<int>(syscall(SYS_kill, pid, signal));
}

namespace
{

constexpr int startWait = 10000;
constexpr int finishWait = 10000;
constexpr int shortWait = 300;
constexpr int longEnoughToPrint = 3000;

ProcessResult runShell(const QString &script, int wait = finishWait,
                       Process::Messages messages = Process::Messages::AsUser)
{
    return Process::run(QStringLiteral("sh"), {QStringLiteral("-c"), script}, startWait, wait, messages);
}

pid_t printedPid(const ProcessResult &result)
{
    return result.standardOutput.trimmed().toInt();
}

/// A zombie exists: only a process that was waited for, or never was, does not.
bool exists(pid_t pid)
{
    return kill(pid, 0) == 0 || errno != ESRCH;
}

/// Neither gone nor a zombie.
bool isRunning(pid_t pid)
{
    QFile state(QStringLiteral("/proc/%1/stat").arg(pid));
    return state.open(QIODevice::ReadOnly) && !state.readAll().contains(") Z ");
}

/// Sets a variable of this process's environment for one test.
class Variable
{
public:
    Variable(const char *name, const char *value)
        : _name(name)
        , _wasSet(qEnvironmentVariableIsSet(name))
        , _before(qgetenv(name))
    {
        qputenv(name, value);
    }
    Variable(const Variable &) = delete;
    Variable &operator=(const Variable &) = delete;
    ~Variable()
    {
        if (_wasSet)
            qputenv(_name, _before);
        else
            qunsetenv(_name);
    }

private:
    const char *_name;
    bool _wasSet;
    QByteArray _before;
};

} // namespace

class TestProcess : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void keepsBothChannelsAndTheExitCode();
    void usesNoShell();
    void givesAnEmptyStandardInput();
    void runsInASessionOfItsOwn();
    void missingProgramIsNotStarted();
    void fileWithoutTheRightToRunIsNotStarted();
    void killsAndReapsWhatHangs();
    void killsWhatTheProgramStarted();
    void programThatCannotBeKilledIsLeftBehindWhereItOnlyReads();
    void keepsABoundedOutput();
    void handsNoDescriptorDown();
    void handsNoIgnoredBrokenPipeDown();
    void saysWhichProgramRuns();
    void aCancelledTaskEndsWhatOnlyReads();
    void orphanThatHoldsThePipesBlocksNothing();
    void tellsACrash();
    void takesMegabytesOnBothChannels();
    void worksOnAThreadWithoutEventLoop();
    void messagesInCLeaveTheCharacterType();
    void messagesAsUserLeaveTheEnvironment();
    void describesARunInOneLine_data();
    void describesARunInOneLine();
    void simpleStartThrowsTheExitCodeAndStandardError();
    void simpleStartThrowsWhatCannotStart_data();
    void simpleStartThrowsWhatCannotStart();
    void simpleStartThrowsACrash();
    void simpleStartWithoutWaitLeavesTheProgramRunning();
    void recordersNest();
    void recorderHearsItsOwnThreadOnly();
};

void TestProcess::keepsBothChannelsAndTheExitCode()
{
    const ProcessResult result = runShell(QStringLiteral("echo out; echo err >&2; exit 32"));
    QCOMPARE(result.end, ProcessResult::End::Exited);
    QCOMPARE(result.exitCode, 32);
    QCOMPARE(result.standardOutput, QByteArray("out\n"));
    QCOMPARE(result.standardError, QByteArray("err\n"));
    QVERIFY(!result.succeeded());
    QVERIFY(runShell(QStringLiteral("exit 0")).succeeded());
}

void TestProcess::usesNoShell()
{
    const QString hostile = QStringLiteral("$(id) `id` ; \"' *\\");
    const ProcessResult result =
        Process::run(QStringLiteral("printf"), {QStringLiteral("%s"), hostile}, startWait, finishWait);
    QCOMPARE(QString::fromUtf8(result.standardOutput), hostile);
}

void TestProcess::givesAnEmptyStandardInput()
{
    const ProcessResult result = Process::run(QStringLiteral("cat"), {}, startWait, finishWait);
    QVERIFY(result.succeeded());
    QCOMPARE(result.standardOutput, QByteArray());
}

void TestProcess::runsInASessionOfItsOwn()
{
    // The fifth and the sixth field: process group and session.
    const ProcessResult result = Process::run(
        QStringLiteral("cut"), {QStringLiteral("-d "), QStringLiteral("-f5,6"), QStringLiteral("/proc/self/stat")},
        startWait, finishWait);
    const QList<QByteArray> ids = result.standardOutput.trimmed().split(' ');
    QCOMPARE(ids.size(), 2);
    QVERIFY(ids.at(0).toInt() != getpgrp());
    QVERIFY(ids.at(1).toInt() != getsid(0));
}

void TestProcess::missingProgramIsNotStarted()
{
    const ProcessResult result = Process::run(QStringLiteral("kra-no-such-program"), {}, startWait, finishWait);
    QCOMPARE(result.end, ProcessResult::End::NotStarted);
    QCOMPARE(result.exitCode, -1);
    QVERIFY2(result.startError.contains(QLatin1String("No such file")), qPrintable(result.startError));
}

void TestProcess::fileWithoutTheRightToRunIsNotStarted()
{
    const ProcessResult result = Process::run(QStringLiteral("/etc/passwd"), {}, startWait, finishWait);
    QCOMPARE(result.end, ProcessResult::End::NotStarted);
    QVERIFY2(result.startError.contains(QLatin1String("ermission")), qPrintable(result.startError));
}

void TestProcess::killsAndReapsWhatHangs()
{
    const ProcessResult result = runShell(QStringLiteral("echo $$; exec sleep 600"), shortWait);
    QCOMPARE(result.end, ProcessResult::End::TimedOut);
    QCOMPARE(result.exitCode, -1);
    const pid_t pid = printedPid(result);
    QVERIFY2(pid > 0, "what was printed before the end is kept");
    QVERIFY(!exists(pid));
}

void TestProcess::killsWhatTheProgramStarted()
{
    const ProcessResult result = runShell(QStringLiteral("sleep 600 & echo $!; wait"), longEnoughToPrint);
    QCOMPARE(result.end, ProcessResult::End::TimedOut);
    const pid_t grandchild = printedPid(result);
    QVERIFY(grandchild > 0);
    QTRY_VERIFY(!isRunning(grandchild));
}

void TestProcess::programThatCannotBeKilledIsLeftBehindWhereItOnlyReads()
{
    const QStringList arguments{QStringLiteral("-c"), QStringLiteral("echo $$; exec sleep 600")};
    killsNothing = true;
    const ProcessResult result = Process::run(QStringLiteral("sh"), arguments, startWait, longEnoughToPrint,
                                              Process::Messages::AsUser, Process::Effect::ReadsOnly);
    killsNothing = false;
    QCOMPARE(result.end, ProcessResult::End::TimedOut);
    const pid_t pid = printedPid(result);
    QVERIFY(pid > 0);
    QVERIFY(isRunning(pid));
    kill(pid, SIGKILL);
    QTRY_VERIFY(!isRunning(pid));
}

void TestProcess::keepsABoundedOutput()
{
    const ProcessResult result =
        runShell(QStringLiteral("head -c 20000000 /dev/zero & head -c 8388608 /dev/zero >&2; wait"));
    QVERIFY(result.succeeded());
    QCOMPARE(result.standardOutput.size(), Process::MaximumOutput);
    QCOMPARE(result.standardError.size(), Process::MaximumOutput);
    QVERIFY(result.isOutputCut);
    QCOMPARE(Process::describe(QStringLiteral("head"), {}, result),
             QStringLiteral("head: exit code 0, of its output the first 8 MiB are kept"));
    QVERIFY(!runShell(QStringLiteral("head -c 8388608 /dev/zero")).isOutputCut);
}

void TestProcess::handsNoDescriptorDown()
{
    const int open = dup2(STDIN_FILENO, 77); // not closed when a program is run
    QCOMPARE(open, 77);
    const ProcessResult result = runShell(QStringLiteral("ls /proc/self/fd"));
    close(open);
    // Those of ls: the standard ones, and the folder that it lists.
    QCOMPARE(result.standardOutput.split('\n'), (QByteArrayList{"0", "1", "2", "3", ""}));
}

void TestProcess::handsNoIgnoredBrokenPipeDown()
{
    const auto before = signal(SIGPIPE, SIG_IGN);
    const ProcessResult result = runShell(QStringLiteral("kill -s PIPE $$; echo it was ignored"));
    signal(SIGPIPE, before);
    QCOMPARE(result.standardOutput, QByteArray());
}

void TestProcess::saysWhichProgramRuns()
{
    QStringList calls;
    {
        const ProcessWatch outer([&](const QString &call) { calls.append(call); }, [] { return false; });
        {
            const ProcessWatch inner([](const QString &) {}, [] { return false; });
            Process::simpleStart(QStringLiteral("true"), {}, true);
        }
        Process::simpleStart(QStringLiteral("true"), {QStringLiteral("a b"), QStringLiteral("c")}, true);
    }
    Process::simpleStart(QStringLiteral("true"), {}, true);
    QCOMPARE(calls, QStringList{QStringLiteral("true \"a b\" c")});
}

void TestProcess::aCancelledTaskEndsWhatOnlyReads()
{
    std::atomic_bool cancelled{false};
    const ProcessWatch watch([&](const QString &) { cancelled = true; }, [&] { return cancelled.load(); });
    const QStringList arguments{QStringLiteral("-c"), QStringLiteral("exec sleep 600")};
    QCOMPARE(Process::run(QStringLiteral("sh"), arguments, startWait, Process::NoLimit, Process::Messages::AsUser,
                          Process::Effect::ReadsOnly)
                 .end,
             ProcessResult::End::TimedOut);
    // What changes the machine is run to its end.
    QVERIFY(Process::run(QStringLiteral("sleep"), {QStringLiteral("0.5")}, startWait, Process::NoLimit).succeeded());
}

void TestProcess::orphanThatHoldsThePipesBlocksNothing()
{
    const ProcessResult result = runShell(QStringLiteral("sleep 600 & echo $!; exit 3"));
    QCOMPARE(result.end, ProcessResult::End::Exited);
    QCOMPARE(result.exitCode, 3);
    const pid_t orphan = printedPid(result);
    QVERIFY(orphan > 0);
    QVERIFY(exists(orphan));
    kill(orphan, SIGKILL);
}

void TestProcess::tellsACrash()
{
    const ProcessResult result = runShell(QStringLiteral("kill -SEGV $$"));
    QCOMPARE(result.end, ProcessResult::End::Crashed);
    QCOMPARE(result.exitCode, -1);
    QVERIFY(!result.succeeded());
}

void TestProcess::takesMegabytesOnBothChannels()
{
    const ProcessResult result =
        runShell(QStringLiteral("head -c 4000000 /dev/zero & head -c 4000000 /dev/zero >&2; wait"));
    QVERIFY(result.succeeded());
    QCOMPARE(result.standardOutput.size(), 4000000);
    QCOMPARE(result.standardError.size(), 4000000);
}

void TestProcess::worksOnAThreadWithoutEventLoop()
{
    ProcessResult ended;
    ProcessResult hung;
    std::thread thread([&] {
        ended = runShell(QStringLiteral("echo here; exit 4"));
        hung = runShell(QStringLiteral("echo $$; exec sleep 600"), shortWait);
    });
    thread.join();
    QCOMPARE(ended.end, ProcessResult::End::Exited);
    QCOMPARE(ended.exitCode, 4);
    QCOMPARE(ended.standardOutput, QByteArray("here\n"));
    QCOMPARE(hung.end, ProcessResult::End::TimedOut);
    QVERIFY(!exists(printedPid(hung)));
}

void TestProcess::messagesInCLeaveTheCharacterType()
{
    const Variable all("LC_ALL", "de_DE.UTF-8");
    const Variable language("LANGUAGE", "de:fr");
    const Variable type("LC_CTYPE", "en_GB.ISO-8859-1");
    const ProcessResult result =
        runShell(QStringLiteral("echo \"${LC_ALL-unset} ${LANGUAGE-unset} $LC_CTYPE $LC_MESSAGES\""), finishWait,
                 Process::Messages::InC);
    QCOMPARE(result.standardOutput, QByteArray("unset unset de_DE.UTF-8 C\n"));
    QVERIFY2(qgetenv("LC_ALL") == "de_DE.UTF-8", "this process keeps its own");

    qunsetenv("LC_ALL");
    const ProcessResult without =
        runShell(QStringLiteral("echo \"${LC_ALL-unset} $LC_CTYPE\""), finishWait, Process::Messages::InC);
    QCOMPARE(without.standardOutput, QByteArray("unset en_GB.ISO-8859-1\n"));
}

void TestProcess::messagesAsUserLeaveTheEnvironment()
{
    const Variable all("LC_ALL", "de_DE.UTF-8");
    QCOMPARE(runShell(QStringLiteral("echo $LC_ALL")).standardOutput, QByteArray("de_DE.UTF-8\n"));
}

void TestProcess::describesARunInOneLine_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<ProcessResult>("result");
    QTest::addColumn<QString>("line");

    ProcessResult exited;
    exited.end = ProcessResult::End::Exited;
    exited.exitCode = 32;
    const QStringList remount{QStringLiteral("/dev/vda"), QStringLiteral("-o"), QStringLiteral("remount")};
    QTest::newRow("exited") << remount << exited << QStringLiteral("mount /dev/vda -o remount: exit code 32");
    QTest::newRow("no arguments") << QStringList() << exited << QStringLiteral("mount: exit code 32");
    QTest::newRow("blanks and line feeds") << QStringList{QStringLiteral("a b"), QString(), QStringLiteral("c\nd")}
                                           << exited << QStringLiteral("mount \"a b\" \"\" c\\nd: exit code 32");

    ProcessResult missing;
    missing.startError = QStringLiteral("gone");
    QTest::newRow("not started") << QStringList() << missing << QStringLiteral("mount: could not be started: gone");
    ProcessResult hung;
    hung.end = ProcessResult::End::TimedOut;
    QTest::newRow("timed out") << QStringList() << hung << QStringLiteral("mount: did not end in time and was killed");
    ProcessResult crashed;
    crashed.end = ProcessResult::End::Crashed;
    QTest::newRow("crashed") << QStringList() << crashed << QStringLiteral("mount: was ended by a signal");
}

void TestProcess::describesARunInOneLine()
{
    QFETCH(QStringList, arguments);
    QFETCH(ProcessResult, result);
    QFETCH(QString, line);
    QCOMPARE(Process::describe(QStringLiteral("mount"), arguments, result), line);
}

void TestProcess::simpleStartThrowsTheExitCodeAndStandardError()
{
    Process::simpleStart(QStringLiteral("true"), {}, true);
    try {
        Process::simpleStart(QStringLiteral("sh"), {QStringLiteral("-c"), QStringLiteral("echo bäd >&2; exit 7")},
                             true);
        QFAIL("nothing was thrown");
    } catch (const AppException &exception) {
        QCOMPARE(exception.program(), QStringLiteral("sh"));
        QCOMPARE(exception.exitCode(), 7);
        QCOMPARE(exception.errorText(), QString::fromLocal8Bit("bäd"));
        QCOMPARE(QString::fromUtf8(exception.what()),
                 QStringLiteral("sh ended with exit code 7: %1").arg(exception.errorText()));
    }
}

void TestProcess::simpleStartThrowsWhatCannotStart_data()
{
    QTest::addColumn<bool>("wait");
    QTest::newRow("with wait") << true;
    QTest::newRow("without wait") << false;
}

void TestProcess::simpleStartThrowsWhatCannotStart()
{
    QFETCH(bool, wait);
    try {
        Process::simpleStart(QStringLiteral("kra-no-such-program"), {}, wait);
        QFAIL("nothing was thrown");
    } catch (const AppException &exception) {
        QCOMPARE(exception.program(), QStringLiteral("kra-no-such-program"));
        QCOMPARE(exception.exitCode(), -1);
        const QString text = QString::fromUtf8(exception.what());
        QVERIFY2(text.startsWith(QLatin1String("kra-no-such-program: could not be started: ")), qPrintable(text));
    }
}

void TestProcess::simpleStartThrowsACrash()
{
    try {
        Process::simpleStart(QStringLiteral("sh"), {QStringLiteral("-c"), QStringLiteral("kill -SEGV $$")}, true);
        QFAIL("nothing was thrown");
    } catch (const std::exception &exception) {
        QCOMPARE(QByteArray(exception.what()), QByteArray("sh: was ended by a signal"));
    }
}

void TestProcess::simpleStartWithoutWaitLeavesTheProgramRunning()
{
    const QTemporaryDir folder;
    const QString go = folder.filePath(QStringLiteral("go"));
    const QString done = folder.filePath(QStringLiteral("done"));
    const QString script = QStringLiteral("until test -e '%1'; do sleep 0.05; done; touch '%2'").arg(go, done);
    Process::simpleStart(QStringLiteral("sh"), {QStringLiteral("-c"), script}, false);
    QFile file(go);
    QVERIFY(file.open(QIODevice::WriteOnly));
    QTRY_VERIFY(QFile::exists(done));
}

void TestProcess::recordersNest()
{
    const ProcessRecorder outer;
    runShell(QStringLiteral("echo first; echo bad >&2; exit 2"));
    {
        const ProcessRecorder inner;
        runShell(QStringLiteral("exit 0"));
        QCOMPARE(inner.texts(), QStringList{QStringLiteral("sh -c \"exit 0\": exit code 0")});
    }
    Process::run(QStringLiteral("kra-no-such-program"), {}, startWait, finishWait);
    QCOMPARE(outer.texts().size(), 2);
    QCOMPARE(outer.texts().constFirst(),
             QStringLiteral("sh -c \"echo first; echo bad >&2; exit 2\": exit code 2\nfirst\nbad"));
    QVERIFY(outer.texts().constLast().startsWith(QLatin1String("kra-no-such-program: could not be started")));
}

void TestProcess::recorderHearsItsOwnThreadOnly()
{
    const ProcessRecorder recorder;
    std::thread thread([] { runShell(QStringLiteral("exit 0")); });
    thread.join();
    QCOMPARE(recorder.texts(), QStringList());
}

QTEST_GUILESS_MAIN(TestProcess)
#include "tst_process.moc"
