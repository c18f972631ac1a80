// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <process.h>
#include <quotakind.h>

#include <QObject>
#include <QString>
#include <QStringList>

/// How a step went that a program was run for.
struct ProgramStep
{
    bool isDone = false;
    QString complaint; ///< what the program said when it failed, or how it ended when it said nothing
};

/// Runs the programs that mount a device anew and switch its quotas. Each reports how it ended as a detail, whether or
/// not that counts as an error. Any one thread.
class QuotaPrograms : public QObject
{
    Q_OBJECT

public:
    explicit QuotaPrograms(QObject *parent = nullptr);

    /// See QuotaManager for these.
    ProgramStep remount(const QString &device);
    ProgramStep createQuotaFiles(const QString &device, int type);
    bool runQuotaOnOff(const QString &device, QuotaKind kind, bool on);
    /// The same; what would be an error is the step's complaint.
    ProgramStep tryQuotaOnOff(const QString &device, QuotaKind kind, bool on);

    /// How an administrator has a kind counted that is off.
    static QString countCommand(const QString &device, QuotaKind kind);

Q_SIGNALS:
    void error(const QString &message);
    /// Which program runs now, or how it ended.
    void detail(const QString &text);

private:
    ProcessResult run(const QString &program, const QStringList &arguments, int startWait, int finishWait,
                      Process::Messages messages);
};
