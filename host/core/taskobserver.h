// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "abstracttask.h"
#include "element.h"

#include <QDateTime>
#include <QObject>

#include <memory>

/// A copy of what is known of a task at one moment.
struct KRA_EXPORT TaskReport
{
    quint64 id = 0; ///< counts up from 1
    QString description;
    QString elementTitle;         ///< empty for a task that is for no element
    NodePointer<Element> element; ///< null for a task that is for no element, or whose element was deleted
    bool readsRecord = false;     ///< it hands a record to its element (ReadPropertyHeavyTask)
    bool changesMachine = false;
    bool isCancellable = false;
    bool isCancelled = false; ///< it was asked to stop; it may run on until it does
    TaskDescription::TaskStatus status = TaskDescription::NotFinished;
    QString message;             ///< set when the task has ended
    bool isNote = false;         ///< the message is one (TaskDescription::isMessageNote())
    QString result;              ///< of a task that succeeded
    QDateTime queuedAt;          ///< local time
    QDateTime startedAt;         ///< invalid before run() started
    qint64 runMilliseconds = -1; ///< how long run() took; -1 before it ended, and when it never started
};
Q_DECLARE_METATYPE(TaskReport)

/// Whether a read that ended, or was cancelled, left its element without anything that a read has brought.
KRA_EXPORT bool isStillUnread(const TaskReport &read);

/// Runs tasks: run() on one worker thread, strictly in the order handed over, and afterRun() on the user-interface
/// thread, never one inside another even while one shows a dialog.
class KRA_EXPORT TaskObserver : public QObject
{
    Q_OBJECT

public:
    /// The observer of this process. The first call makes it and must come from the user-interface thread; it goes with
    /// the application object, after closeDown().
    static TaskObserver *instance();
    ~TaskObserver() override;

    /// Takes ownership. User-interface thread only. After closeDown() the task is deleted unrun.
    void performTask(AbstractTask *task);

    /// Asks a task to stop, where it can be stopped. One that waits ends without having run, and a read that ends after
    /// it was asked leaves everything as it was: its afterRun() is not called. The end is reported as any other, with
    /// the status Cancelled. User-interface thread only. False when the task cannot be stopped or has ended.
    bool cancel(quint64 id);

    /// Whether a task waits, runs, or has its afterRun() to come.
    bool isBusy() const;
    /// Whether one of those changes the machine.
    bool isChangingMachine() const;
    /// Whether one of those is for that element.
    bool isBusyWith(const Element *element) const;
    /// Whether one of those reads that element's record.
    bool isReading(const Element *element) const;
    /// Whether one of those changes the machine for that element.
    bool isWriting(const Element *element) const;

    /// Ends the work: reads are given up, tasks that change the machine are run to their end, and no
    /// afterRun() is called any more. Blocks until the worker thread has ended.
    void closeDown();

Q_SIGNALS:
    // All on the user-interface thread.
    void taskQueued(const TaskReport &task);
    void taskStarted(const TaskReport &task);
    void taskDetail(quint64 id, const QString &text);
    /// Of many in a row the last.
    void taskProgress(quint64 id, const TaskProgress &progress);
    /// It was asked to stop and runs on until it does.
    void taskCancelling(const TaskReport &task);
    /// After afterRun(); the task itself is deleted.
    void taskFinished(const TaskReport &task);

private:
    TaskObserver();
    class Private;
    std::unique_ptr<Private> d;
};
