// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QByteArray>
#include <QByteArrayList>
#include <QMap>
#include <QString>

#include <csignal>

/// One call of a stand-in, as the stand-in itself saw it.
struct StandInCall
{
    QString program;
    QByteArrayList arguments; ///< without the program's own name
    QMap<QByteArray, QByteArray> environment;
};

/// What a stand-in does when it is called, each step after the one before. A step takes effect at once, for the next
/// call; after the last step the stand-in ends with code 0.
///
/// \code
/// sandbox.standIn("quotacheck").complains("quotacheck: Cannot find filesystem to check.\n").exits(1);
/// \endcode
class StandIn
{
public:
    /// Writes to standard output; any bytes, any number of them.
    StandIn &prints(const QByteArray &bytes);
    /// Writes to standard error.
    StandIn &complains(const QByteArray &bytes);
    StandIn &sleeps(int milliseconds);
    /// Does not end by itself within a test's time (it does after two minutes, so that none is left behind for good).
    StandIn &hangs();
    /// SIGTERM has no effect any more.
    StandIn &ignoresTermination();
    void exits(int code);
    void crashes(int signal = SIGSEGV);
    /// Instead of all steps: the file is there and may be run, but the system cannot start it.
    void cannotBeStarted();
    /// Instead of all steps: the file is there, but nobody may run it.
    void isNotExecutable();

private:
    friend class Sandbox;
    StandIn(const QString &programPath, const QString &scriptPath);
    StandIn &add(const QByteArray &step, const QByteArray &bytes = QByteArray());
    void replaceByFile(bool executable);

    QString _programPath;
    QString _scriptPath;
};
