// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QString>
#include <QStringList>

struct ProcessResult;

/// What a program wrote to standard error. A disk with many faults can be worth megabytes of it, which no window should
/// have to show: of a very long text, how it begins and how it ends.
QString programComplaint(const ProcessResult &result);

/// What a task's details say of a program that ran: the call, how it ended, and below it what it complained of.
QString programDetail(const QString &program, const QStringList &arguments, const ProcessResult &result);
