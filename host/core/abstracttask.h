// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "taskdescription.h"

#include <QMetaType>

#include <atomic>
#include <functional>

/// How far a task is: "12 of 340 accounts".
struct KRA_EXPORT TaskProgress
{
    quint64 done = 0;
    quint64 total = 0; ///< 0 while it is not known
    QString unit;      ///< what is counted, in the plural and in the administrator's language

    bool operator==(const TaskProgress &other) const
    {
        return done == other.done && total == other.total && unit == other.unit;
    }
};
Q_DECLARE_METATYPE(TaskProgress)

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
    /// Whether run() can be stopped on the way, leaving nothing half done. Reads can: their result is dropped. A task
    /// that changes the machine and overrides this asks isCancelled() between two whole steps, sets the status
    /// Cancelled when it stopped for it, and says in its message what was done already. Asked at the hand-over.
    virtual bool isCancellable() const;
    /// Whether the task is to stop. Any thread; a long run() asks it every few milliseconds and returns when it is
    /// true.
    bool isCancelled() const { return _isCancelled; }

    /// Says what is being done now, or how a program ended, for the task list. Any thread, once the task was handed
    /// over; dropped before.
    void reportDetail(const QString &text) const;
    /// Says how far the task is. Cheap: of many in a row the last one is shown. Any thread, like reportDetail().
    void reportProgress(const TaskProgress &progress) const;

private:
    friend class TaskWorker;
    // Set before run().
    std::function<void(const QString &)> _detailSink;
    std::function<void(const TaskProgress &)> _progressSink;
    std::atomic_bool _isCancelled{false};
};
