// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <quotakind.h>

#include <QObject>
#include <QString>
#include <QStringList>

struct ProcessResult;

/// Runs the programs that mount a device anew and switch its quotas. Each reports how it ended as a detail, whether or
/// not that counts as an error. Any one thread.
class QuotaPrograms : public QObject
{
    Q_OBJECT

public:
    explicit QuotaPrograms(QObject *parent = nullptr);

    /// See QuotaManager for these.
    bool remount(const QString &device);
    bool createQuotaFiles(const QString &device, int type);
    bool runQuotaOnOff(const QString &device, QuotaKind kind, bool on);

    /// What programs whose failure is no error said when they failed, since the last call.
    QStringList takeComplaints();

Q_SIGNALS:
    void error(const QString &message);
    /// Which program runs now, or how it ended.
    void detail(const QString &text);

private:
    enum class Output
    {
        IsShown,
        IsLookedAt
    };
    ProcessResult run(const QString &program, const QStringList &arguments, int startWait, int finishWait,
                      Output output);

    QStringList _complaints;
};
