// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "abstracttask.h"

AbstractTask::~AbstractTask() = default;

void AbstractTask::run()
{
    if (status() == NotFinished)
        setStatus(Succeeded);
}

TaskDescription::TaskStatus AbstractTask::afterRun()
{
    return status();
}

bool AbstractTask::changesMachine() const
{
    return false;
}

bool AbstractTask::isCancellable() const
{
    return !changesMachine();
}

void AbstractTask::reportDetail(const QString &text) const
{
    if (_detailSink)
        _detailSink(text);
}

void AbstractTask::reportProgress(const TaskProgress &progress) const
{
    if (_progressSink)
        _progressSink(progress);
}
