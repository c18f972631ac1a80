// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "process.h"

#include "appexception.h"

#include <QCoreApplication>
#include <QProcess>
#include <QProcessEnvironment>

#include <unistd.h>

namespace
{

constexpr int simpleWait = 30000;

thread_local ProcessRecorder *innermostRecorder = nullptr;

struct Texts
{
    Q_DECLARE_TR_FUNCTIONS(Process)
};

/// A program in a session of its own. Ctrl+C in the terminal that the console was started from, and the end of that
/// terminal, are for the console to answer; they must not cut short what changes the machine. Nor can the program ask
/// there for a password that nobody would see asked for.
class OwnSessionProcess : public QProcess
{
protected:
    void setupChildProcess() override { setsid(); }
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

/// A killed program is waited for without a limit. That takes no time, unless it sits in a call that the kernel does
/// not interrupt: then it still works on the machine, and nothing else may before it has ended.
void killAndReap(QProcess &process)
{
    process.kill();
    process.waitForFinished(Process::NoLimit);
}

ProcessResult runAndWait(QProcess &process, int startWait, int finishWait)
{
    ProcessResult result;
    process.start();
    if (!process.waitForStarted(startWait)) {
        // Asked before the kill, which leaves a reason of its own.
        const bool failed = process.error() == QProcess::FailedToStart;
        result.startError = failed ? process.errorString() : Texts::tr("it did not start in time");
        killAndReap(process);
        return result;
    }
    if (!process.waitForFinished(finishWait) && process.state() != QProcess::NotRunning) {
        result.end = ProcessResult::End::TimedOut;
        killAndReap(process);
    } else if (process.exitStatus() == QProcess::CrashExit) {
        result.end = ProcessResult::End::Crashed;
    } else {
        result.end = ProcessResult::End::Exited;
        result.exitCode = process.exitCode();
    }
    result.standardOutput = process.readAllStandardOutput();
    result.standardError = process.readAllStandardError();
    return result;
}

} // namespace

ProcessResult Process::run(const QString &program, const QStringList &arguments, int startWait, int finishWait,
                           Messages messages)
{
    OwnSessionProcess process;
    process.setProgram(program);
    process.setArguments(arguments);
    process.setStandardInputFile(QProcess::nullDevice());
    if (messages == Messages::InC)
        process.setProcessEnvironment(environmentForCMessages());

    ProcessResult result = runAndWait(process, startWait, finishWait);
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
    const ProcessResult result = run(program, arguments, simpleWait, simpleWait);
    if (result.end != ProcessResult::End::Exited)
        throw AppException(program, -1, endText(result));
    if (result.exitCode != 0)
        throw AppException(program, result.exitCode, QString::fromLocal8Bit(result.standardError).trimmed());
}

QString Process::describe(const QString &program, const QStringList &arguments, const ProcessResult &result)
{
    QStringList words{quoted(program)};
    for (const QString &argument : arguments)
        words.append(quoted(argument));
    return QStringLiteral("%1: %2").arg(words.join(QLatin1Char(' ')), endText(result));
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
