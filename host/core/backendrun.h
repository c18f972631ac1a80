// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "abstracttask.h"

#include <QObject>
#include <QStringList>

/// Does a task's work with a back-end object that lives as long as the work, on the calling thread. What the object
/// says by its signal error(QString) is joined, one failure a line, into the message of the task, which then has
/// failed; without it the task has succeeded. What it says by detail(QString) is passed on as it comes.
template<typename BackEnd, typename Work>
void runWithBackEnd(AbstractTask &task, const Work &work)
{
    QStringList errors;
    BackEnd backEnd;
    QObject::connect(
        &backEnd, &BackEnd::error, &backEnd, [&errors](const QString &text) { errors.append(text); },
        Qt::DirectConnection);
    QObject::connect(
        &backEnd, &BackEnd::detail, &backEnd, [&task](const QString &text) { task.reportDetail(text); },
        Qt::DirectConnection);
    work(backEnd);
    task.setStatus(errors.isEmpty() ? TaskDescription::Succeeded : TaskDescription::Failed);
    task.setMessage(errors.join(QLatin1Char('\n')));
}
