// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "kraglobal.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

/// How the run of a program ended.
struct KRA_EXPORT ProcessResult
{
    enum class End
    {
        NotStarted, ///< no such program, no right to run it, or not started within the wait
        TimedOut,   ///< still ran when the wait was over; it was killed and reaped
        Crashed,    ///< ended by a signal
        Exited,
    };

    End end = End::NotStarted;
    int exitCode = -1; ///< with End::Exited only
    QByteArray standardOutput;
    QByteArray standardError;
    QString startError; ///< the system's reason, with End::NotStarted only

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
    static constexpr int NoLimit = -1;

    /// Runs a program and waits for its end. Waits are in milliseconds; NoLimit waits as long as it takes.
    /// The program gets an empty standard input. One whose wait is over is killed; the call returns when it is gone.
    static ProcessResult run(const QString &program, const QStringList &arguments, int startWait, int finishWait,
                             Messages messages = Messages::AsUser);

    /// Starts a program; with `wait`, waits for its end, 30 s at most; without, it outlives this process. Throws
    /// AppException when it cannot start or, with `wait`, ends with a code other than 0 or does not end.
    static void simpleStart(const QString &program, const QStringList &arguments, bool wait);

    /// "mount /dev/vda -o remount" and how it ended, in one line for a log or a task's details.
    static QString describe(const QString &program, const QStringList &arguments, const ProcessResult &result);
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
