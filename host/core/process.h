// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "kraglobal.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <functional>

/// How the run of a program ended.
struct KRA_EXPORT ProcessResult
{
    enum class End
    {
        NotStarted, ///< no such program, no right to run it, or not started within the wait
        TimedOut,   ///< still ran when the wait was over, or the task was cancelled; it was killed
        Crashed,    ///< ended by a signal
        Exited,
    };

    End end = End::NotStarted;
    int exitCode = -1;         ///< with End::Exited only
    QByteArray standardOutput; ///< at most Process::MaximumOutput bytes, like the other channel
    QByteArray standardError;
    bool isOutputCut = false; ///< one of them printed more
    QString startError;       ///< the system's reason, with End::NotStarted only

    bool succeeded() const { return end == End::Exited && exitCode == 0; }
};

/// Running other programs, synchronously and without a shell. Any thread.
class KRA_EXPORT Process
{
public:
    enum class Messages
    {
        AsUser, ///< the program's texts are shown to the administrator
        InC,    ///< the program's texts are looked at: no LANGUAGE, no LC_ALL, LC_MESSAGES=C
    };
    enum class Effect
    {
        ChangesMachine, ///< nothing else may go on before the program is gone, even when it was killed
        ReadsOnly,      ///< killed when the task is cancelled; one that cannot be killed is left behind
    };
    static constexpr int NoLimit = -1;
    static constexpr int MaximumOutput = 8 << 20; ///< bytes

    /// Runs a program and waits for its end. Waits are in milliseconds; NoLimit waits as long as it takes.
    /// The program gets an empty standard input, a session of its own, and no descriptor of this process. One whose
    /// wait is over is killed with all that it started and that did not leave its process group.
    static ProcessResult run(const QString &program, const QStringList &arguments, int startWait, int finishWait,
                             Messages messages = Messages::AsUser, Effect effect = Effect::ChangesMachine);

    /// Starts a program; with `wait`, waits for its end, 30 s at most, and leaves one that cannot be killed behind;
    /// without, it outlives this process. Throws
    /// AppException when it cannot start or, with `wait`, ends with a code other than 0 or does not end.
    static void simpleStart(const QString &program, const QStringList &arguments, bool wait);

    /// "mount /dev/vda -o remount" and how it ended, in one line for a log or a task's details.
    static QString describe(const QString &program, const QStringList &arguments, const ProcessResult &result);
};

/// While it lives, is told of the programs that Process runs on this thread, and can end those that only read. The
/// worker has one around each task.
class KRA_EXPORT ProcessWatch
{
public:
    ProcessWatch(std::function<void(const QString &call)> started, std::function<bool()> isCancelled);
    ProcessWatch(const ProcessWatch &) = delete;
    ProcessWatch &operator=(const ProcessWatch &) = delete;
    ~ProcessWatch();

private:
    friend class Process;
    std::function<void(const QString &)> _started;
    std::function<bool()> _isCancelled;
    ProcessWatch *_outer;
};

/// While it lives, collects a text for each program that Process waited for on this thread. They nest: the innermost
/// collects.
class KRA_EXPORT ProcessRecorder
{
public:
    ProcessRecorder();
    ProcessRecorder(const ProcessRecorder &) = delete;
    ProcessRecorder &operator=(const ProcessRecorder &) = delete;
    ~ProcessRecorder();

    /// One text for each run, in order: call, end, and what was printed on both channels.
    QStringList texts() const { return _texts; }

private:
    friend class Process;
    QStringList _texts;
    ProcessRecorder *_outer;
};
