// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "fakekernel.h"
#include "standin.h"

#include <QByteArray>
#include <QDir>
#include <QList>
#include <QString>
#include <QtTest>

#ifdef QT_WIDGETS_LIB
#include <QApplication>
#endif

/// Another machine around the shipped code: its own /etc and /var/backups, a PATH that holds stand-ins only, and a
/// kernel that answers quotactl() as the test says. The code under test runs unmodified and uses the real paths and
/// names.
///
/// A test program has one sandbox for its whole life (see KRA_SANDBOX_MAIN) and calls reset() before each test.
class Sandbox
{
public:
    /// Moves this process into the sandbox. First thing in main(), before there is a second thread. Where the system
    /// does not allow it, or /etc is not the sandbox's own afterwards, ends the process with a text and code 3.
    static void enter();

    /// Starts from a blank machine, see reset(). Only after enter().
    Sandbox();

    /// A blank machine: /etc holds an empty fstab and mtab, the accounts root, daemon, nobody and anna, and what
    /// programs need to start at all; /var/backups is empty; no program exists; nothing was called; the kernel knows no
    /// device.
    void reset();

    /// Writes a file below /etc, as "fstab" or "cron.d/warnquota"; makes its folder. A link in its place is replaced.
    void writeEtc(const QString &name, const QByteArray &content);
    /// The bytes of a file below /etc; none when there is no such file.
    QByteArray readEtc(const QString &name) const;
    /// Removes a file or a folder with all it holds below /etc.
    void removeEtc(const QString &name);

    /// The files below "/var/backups", by name; and what they hold, in that order.
    static QDir backups();
    static QByteArrayList backupContents();
    static void clearBackups();

    /// An empty folder of the sandbox, as a mount point or for other files of a test; made when it is not there.
    /// Its path holds no blanks.
    QString folder(const QString &name);

    /// Puts a new stand-in for a program into PATH, in place of an earlier one. It answers at once with code 0 and
    /// prints nothing until it is told otherwise.
    StandIn standIn(const QString &program);
    /// All calls of stand-ins since the last reset, in their order.
    QList<StandInCall> calls() const;
    /// Those of one program.
    QList<StandInCall> calls(const QString &program) const;

    /// What quotactl() answers and was asked.
    FakeKernel &kernel() { return FakeKernel::instance(); }
};

/// The main() of a test program that runs in a sandbox, in place of QTEST_GUILESS_MAIN. A program that links Qt Widgets
/// gets a QApplication.
#ifdef QT_WIDGETS_LIB
#define KRA_SANDBOX_APPLICATION QApplication
#else
#define KRA_SANDBOX_APPLICATION QCoreApplication
#endif
#define KRA_SANDBOX_MAIN(TestClass)                                                                                    \
    int main(int argc, char *argv[])                                                                                   \
    {                                                                                                                  \
        Sandbox::enter();                                                                                              \
        KRA_SANDBOX_APPLICATION application(argc, argv);                                                               \
        TestClass test;                                                                                                \
        return QTest::qExec(&test, argc, argv);                                                                        \
    }
