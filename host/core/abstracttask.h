// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "taskdescription.h"

#include <functional>

/// A piece of work away from the user interface. Handed to TaskObserver::performTask(), which owns it from then on.
class KRA_EXPORT AbstractTask : public TaskDescription
{
public:
    ~AbstractTask() override;

    /// Does the work, on the worker thread. Touches no element, no widget and nothing that another thread has; what it
    /// needs of an element is copied when the task is made. Overrides end by calling this one, which marks a task that
    /// set no status as succeeded. An exception that leaves run() makes the task fail with the exception's text.
    virtual void run();
    /// Brings the result to elements and editors, on the user-interface thread, after run(). Returns the status, which
    /// is the one that is reported. An exception that leaves it makes the task fail likewise.
    virtual TaskStatus afterRun();
    /// Whether run() changes the machine. A task that does is never given up when the console closes.
    virtual bool changesMachine() const;

    /// Says what is being done now, or how a program ended, for the task list. Any thread, once the task was handed
    /// over; nobody hears it before.
    void reportDetail(const QString &text) const;

private:
    friend class TaskWorker;
    std::function<void(const QString &)> _detailSink; // set before run()
};
