// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "abstracttask.h"

#include <QString>

#include <chrono>
#include <condition_variable>
#include <deque>
#include <functional>
#include <memory>
#include <mutex>
#include <thread>
#include <vector>

/// The thread that runs tasks, and the two queues between it and the user interface: tasks in, events out.
///
/// Everything crosses under one std::mutex, and a file descriptor tells the user-interface thread to look; so what one
/// thread wrote is known to have happened before the other reads it, to people and to ThreadSanitizer alike.
class TaskWorker
{
public:
    struct Event
    {
        enum class Kind
        {
            Started,
            Detail,
            Progress,
            Ended
        };
        Kind kind;
        quint64 id;
        std::chrono::system_clock::time_point at;
        QString text;                          ///< with Kind::Detail
        TaskProgress progress;                 ///< with Kind::Progress
        std::chrono::milliseconds runTime{-1}; ///< with Kind::Ended; -1 where run() was never called
        std::unique_ptr<AbstractTask> task;    ///< with Kind::Ended: the task comes back
    };

    /// Starts the thread. Throws std::system_error when the system has no descriptor or thread left.
    TaskWorker();
    TaskWorker(const TaskWorker &) = delete;
    TaskWorker &operator=(const TaskWorker &) = delete;
    /// After finish().
    ~TaskWorker();

    /// Readable while there are events to take.
    int descriptor() const { return _descriptor; }
    void push(quint64 id, std::unique_ptr<AbstractTask> task);
    std::vector<Event> takeEvents();
    /// Marks a task as cancelled: one that waits, and thereby ends without a run(), one that runs, or one whose end was
    /// not taken yet. False when there is none of that number.
    bool cancel(quint64 id);
    /// The same for an event that was taken.
    static bool cancel(const Event &event, quint64 id);
    /// Cancels the running task where that can be, deletes the waiting tasks that change nothing, runs the others, and
    /// ends the thread. Called once.
    void finish();

    /// A step of a task, on any thread. An exception that leaves it makes the task fail with the exception's text.
    static void guard(AbstractTask &task, const std::function<void()> &step);

private:
    struct Job
    {
        quint64 id;
        bool changesMachine;
        bool isCancellable;
        std::unique_ptr<AbstractTask> task;
    };

    void work();
    void post(Event event);
    void postLocked(Event event);

    std::mutex _mutex;
    std::condition_variable _pushed;
    // Under the mutex:
    std::deque<Job> _jobs;
    std::vector<Event> _events;
    quint64 _runningId = 0;
    AbstractTask *_cancellable = nullptr; // the running task, where it can be cancelled
    bool _finishing = false;

    int _descriptor;
    std::thread _thread; // last: it uses all of the above
};
