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
    bool changesMachine = false;
    TaskDescription::TaskStatus status = TaskDescription::NotFinished;
    QString message;             ///< set when the task has ended
    QDateTime queuedAt;          ///< local time
    QDateTime startedAt;         ///< invalid before run() started
    qint64 runMilliseconds = -1; ///< how long run() took; -1 before it ended
};
Q_DECLARE_METATYPE(TaskReport)

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

    /// Whether a task waits, runs, or has its afterRun() to come.
    bool isBusy() const;
    /// Whether one of those changes the machine.
    bool isChangingMachine() const;
    /// Whether one of those is for that element.
    bool isBusyWith(const Element *element) const;

    /// Ends the work: reads that wait are given up, tasks that change the machine are run to their end, and no
    /// afterRun() is called any more. Blocks until the worker thread has ended.
    void closeDown();

Q_SIGNALS:
    // All on the user-interface thread.
    void taskQueued(const TaskReport &task);
    void taskStarted(const TaskReport &task);
    void taskDetail(quint64 id, const QString &text);
    /// After afterRun(); the task itself is deleted.
    void taskFinished(const TaskReport &task);

private:
    TaskObserver();
    class Private;
    std::unique_ptr<Private> d;
};
