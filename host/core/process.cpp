// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "process.h"

#include "appexception.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QProcess>
#include <QProcessEnvironment>

#include <algorithm>
#include <memory>
#include <mutex>
#include <utility>
#include <vector>

#include <csignal>
#include <linux/close_range.h>
#include <unistd.h>

namespace
{

constexpr int simpleWait = 30000;

constexpr int waitSlice = 100;
constexpr int killedWait = 5000;

thread_local ProcessRecorder *innermostRecorder = nullptr;
thread_local ProcessWatch *innermostWatch = nullptr;

struct Texts
{
    Q_DECLARE_TR_FUNCTIONS(Process)
};

/// A program in a session of its own. Ctrl+C in the terminal that the console was started from, and the end of that
/// terminal, are for the console to answer; they must not cut short what changes the machine. Nor can the program ask
/// there for a password that nobody would see asked for. It gets the three standard descriptors and no other.
class ChildProcess : public QProcess
{
public:
    /// Where the output goes, as it comes. The result outlives the wait.
    void keepOutput(ProcessResult &result)
    {
        _result = &result;
        connect(this, &QProcess::readyReadStandardOutput, this, &ChildProcess::takeOutput);
        connect(this, &QProcess::readyReadStandardError, this, &ChildProcess::takeOutput);
    }
    void takeOutput()
    {
        take(readAllStandardOutput(), _result->standardOutput);
        take(readAllStandardError(), _result->standardError);
    }

protected:
    void setupChildProcess() override
    {
        setsid();
        close_range(STDERR_FILENO + 1, ~0U, CLOSE_RANGE_CLOEXEC);
    }

private:
    void take(const QByteArray &printed, QByteArray &kept)
    {
        const int room = Process::MaximumOutput - kept.size();
        kept.append(printed.left(room));
        _result->isOutputCut = _result->isOutputCut || printed.size() > room;
    }

    ProcessResult *_result = nullptr;
};

/// The caller's environment with the language taken out of the texts, and out of nothing else: the character type, in
/// which the texts are decoded, stays the caller's even where it was only given by LC_ALL.
QProcessEnvironment environmentForCMessages()
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    const QString all = environment.value(QStringLiteral("LC_ALL"));
    environment.remove(QStringLiteral("LANGUAGE"));
    environment.remove(QStringLiteral("LC_ALL"));
    if (!all.isEmpty())
        environment.insert(QStringLiteral("LC_CTYPE"), all);
    environment.insert(QStringLiteral("LC_MESSAGES"), QStringLiteral("C"));
    return environment;
}

/// As one would type it, so that the line tells "a b" from "a" and "b"; never more than one line.
QString quoted(const QString &word)
{
    QString shown = word;
    shown.replace(QLatin1Char('\n'), QLatin1String("\\n"));
    const bool plain = !shown.isEmpty() && !shown.contains(QLatin1Char(' ')) && !shown.contains(QLatin1Char('\t'));
    return plain ? shown : QStringLiteral("\"%1\"").arg(shown);
}

QString callText(const QString &program, const QStringList &arguments)
{
    QStringList words{quoted(program)};
    for (const QString &argument : arguments)
        words.append(quoted(argument));
    return words.join(QLatin1Char(' '));
}

QString endText(const ProcessResult &result)
{
    switch (result.end) {
    case ProcessResult::End::NotStarted:
        return Texts::tr("could not be started: %1").arg(result.startError);
    case ProcessResult::End::TimedOut:
        return Texts::tr("did not end in time and was killed");
    case ProcessResult::End::Crashed:
        return Texts::tr("was ended by a signal");
    case ProcessResult::End::Exited:
        break;
    }
    return Texts::tr("exit code %1").arg(result.exitCode);
}

QString recordText(const QString &program, const QStringList &arguments, const ProcessResult &result)
{
    QStringList parts{Process::describe(program, arguments, result)};
    for (const QByteArray &channel : {result.standardOutput, result.standardError}) {
        const QString text = QString::fromLocal8Bit(channel).trimmed();
        if (!text.isEmpty())
            parts.append(text);
    }
    return parts.join(QLatin1Char('\n'));
}

/// The wait for one step of a program, in slices, so that a task that is cancelled meanwhile is noticed.
bool waitForEnd(QProcess &process, int wait, const std::function<bool()> &isCancelled)
{
    QElapsedTimer timer;
    timer.start();
    while (process.state() != QProcess::NotRunning) {
        const qint64 left = wait == Process::NoLimit ? waitSlice : wait - timer.elapsed();
        if (left <= 0 || isCancelled())
            return false;
        process.waitForFinished(static_cast<int>(std::min<qint64>(left, waitSlice)));
    }
    return true;
}

/// Keeps what was given up until this process ends, and destroys it not even then: that would wait for the program.
void giveUp(std::unique_ptr<ChildProcess> process)
{
    static std::mutex mutex;
    static auto *const givenUp = new std::vector<ChildProcess *>;
    const std::lock_guard<std::mutex> lock(mutex);
    givenUp->push_back(process.release());
}

/// Ends the program and all of its process group. That takes no time, unless it sits in a call that the kernel does not
/// interrupt. One that changes the machine still does so then, and nothing else may before it has ended. One that only
/// reads is left behind: its object, which would wait for it when it is deleted, is given up.
void killAndReap(std::unique_ptr<ChildProcess> &process, Process::Effect effect)
{
    const auto group = static_cast<pid_t>(process->processId());
    if (group > 0)
        kill(-group, SIGKILL);
    process->kill(); // where it did not come so far as to have a group
    const bool mayStay = effect == Process::Effect::ReadsOnly;
    if (!process->waitForFinished(mayStay ? killedWait : Process::NoLimit) &&
        process->state() != QProcess::NotRunning) {
        process->disconnect();
        giveUp(std::move(process));
    }
}

ProcessResult runAndWait(std::unique_ptr<ChildProcess> process, int startWait, int finishWait, Process::Effect effect,
                         const std::function<bool()> &isCancelled)
{
    ProcessResult result;
    process->keepOutput(result);
    process->start();
    if (!process->waitForStarted(startWait)) {
        // Asked before the kill, which leaves a reason of its own.
        const bool failed = process->error() == QProcess::FailedToStart;
        result.startError = failed ? process->errorString() : Texts::tr("it did not start in time");
        killAndReap(process, effect);
    } else if (!waitForEnd(*process, finishWait, isCancelled)) {
        result.end = ProcessResult::End::TimedOut;
        killAndReap(process, effect);
    } else if (process->exitStatus() == QProcess::CrashExit) {
        result.end = ProcessResult::End::Crashed;
    } else {
        result.end = ProcessResult::End::Exited;
        result.exitCode = process->exitCode();
    }
    if (process)
        process->takeOutput();
    return result;
}

} // namespace

ProcessResult Process::run(const QString &program, const QStringList &arguments, int startWait, int finishWait,
                           Messages messages, Effect effect)
{
    auto process = std::make_unique<ChildProcess>();
    process->setProgram(program);
    process->setArguments(arguments);
    process->setStandardInputFile(QProcess::nullDevice());
    if (messages == Messages::InC)
        process->setProcessEnvironment(environmentForCMessages());

    if (innermostWatch)
        innermostWatch->_started(callText(program, arguments));
    const std::function<bool()> never = [] { return false; };
    const bool canBeCancelled = innermostWatch && effect == Effect::ReadsOnly;
    ProcessResult result = runAndWait(std::move(process), startWait, finishWait, effect,
                                      canBeCancelled ? innermostWatch->_isCancelled : never);
    if (innermostRecorder)
        innermostRecorder->_texts.append(recordText(program, arguments, result));
    return result;
}

void Process::simpleStart(const QString &program, const QStringList &arguments, bool wait)
{
    if (!wait) {
        QProcess process;
        process.setProgram(program);
        process.setArguments(arguments);
        process.setStandardInputFile(QProcess::nullDevice());
        if (!process.startDetached())
            throw AppException(program, -1, Texts::tr("could not be started: no such program, or no right to run it"));
        return;
    }
    const ProcessResult result = run(program, arguments, simpleWait, simpleWait, Messages::AsUser, Effect::ReadsOnly);
    if (result.end != ProcessResult::End::Exited)
        throw AppException(program, -1, endText(result));
    if (result.exitCode != 0)
        throw AppException(program, result.exitCode, QString::fromLocal8Bit(result.standardError).trimmed());
}

QString Process::describe(const QString &program, const QStringList &arguments, const ProcessResult &result)
{
    QString text = QStringLiteral("%1: %2").arg(callText(program, arguments), endText(result));
    if (result.isOutputCut)
        text += QStringLiteral(", ") + Texts::tr("of its output the first %1 MiB are kept").arg(MaximumOutput >> 20);
    return text;
}

ProcessRecorder::ProcessRecorder()
    : _outer(innermostRecorder)
{
    innermostRecorder = this;
}

ProcessRecorder::~ProcessRecorder()
{
    innermostRecorder = _outer;
}

ProcessWatch::ProcessWatch(std::function<void(const QString &)> started, std::function<bool()> isCancelled)
    : _started(std::move(started))
    , _isCancelled(std::move(isCancelled))
    , _outer(innermostWatch)
{
    innermostWatch = this;
}

ProcessWatch::~ProcessWatch()
{
    innermostWatch = _outer;
}
