// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "taskworker.h"

#include "process.h"

#include <QCoreApplication>

#include <algorithm>
#include <cerrno>
#include <iterator>
#include <system_error>
#include <utility>

#include <sys/eventfd.h>
#include <unistd.h>

namespace
{

struct Texts
{
    Q_DECLARE_TR_FUNCTIONS(TaskWorker)
};

int newDescriptor()
{
    const int descriptor = eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK);
    if (descriptor < 0)
        throw std::system_error(errno, std::generic_category(), "eventfd");
    return descriptor;
}

/// What the task had to say before stays: the exception is one more failure, not the only one.
void fail(AbstractTask &task, const QString &text)
{
    task.setMessage(task.message().isEmpty() ? text : task.message() + QLatin1Char('\n') + text);
    task.setStatus(TaskDescription::Failed);
}

TaskWorker::Event eventOf(TaskWorker::Event::Kind kind, quint64 id, const QString &text = {})
{
    TaskWorker::Event event;
    event.kind = kind;
    event.id = id;
    event.at = std::chrono::system_clock::now();
    event.text = text;
    return event;
}

} // namespace

TaskWorker::TaskWorker()
    : _descriptor(newDescriptor())
    , _thread(&TaskWorker::work, this)
{}

TaskWorker::~TaskWorker()
{
    close(_descriptor);
}

void TaskWorker::push(quint64 id, std::unique_ptr<AbstractTask> task)
{
    task->_detailSink = [this, id](const QString &text) { post(eventOf(Event::Kind::Detail, id, text)); };
    task->_progressSink = [this, id](const TaskProgress &progress) {
        Event event = eventOf(Event::Kind::Progress, id);
        event.progress = progress;
        post(std::move(event));
    };
    const bool changesMachine = task->changesMachine();
    const bool isCancellable = task->isCancellable();
    const std::lock_guard<std::mutex> lock(_mutex);
    _jobs.push_back({id, changesMachine, isCancellable, std::move(task)});
    _pushed.notify_one();
}

bool TaskWorker::cancel(quint64 id)
{
    const std::lock_guard<std::mutex> lock(_mutex);
    if (_cancellable && _runningId == id) {
        _cancellable->_isCancelled = true;
        return true;
    }
    const auto waiting = std::find_if(_jobs.begin(), _jobs.end(), [id](const Job &job) { return job.id == id; });
    if (waiting == _jobs.end())
        return std::any_of(_events.begin(), _events.end(), [id](const Event &event) { return cancel(event, id); });
    waiting->task->_isCancelled = true;
    Event ended = eventOf(Event::Kind::Ended, id);
    ended.task = std::move(waiting->task);
    _jobs.erase(waiting);
    postLocked(std::move(ended));
    return true;
}

bool TaskWorker::cancel(const Event &event, quint64 id)
{
    if (event.id != id || !event.task)
        return false;
    event.task->_isCancelled = true;
    return true;
}

std::vector<TaskWorker::Event> TaskWorker::takeEvents()
{
    const std::lock_guard<std::mutex> lock(_mutex);
    eventfd_t count = 0;
    eventfd_read(_descriptor, &count); // fails when there was nothing to tell, and that is well
    return std::exchange(_events, {});
}

void TaskWorker::finish()
{
    std::deque<Job> dropped; // deleted outside the lock and on the caller's thread
    {
        const std::lock_guard<std::mutex> lock(_mutex);
        const auto firstDropped =
            std::stable_partition(_jobs.begin(), _jobs.end(), [](const Job &job) { return job.changesMachine; });
        std::move(firstDropped, _jobs.end(), std::back_inserter(dropped));
        _jobs.erase(firstDropped, _jobs.end());
        _finishing = true;
        if (_cancellable)
            _cancellable->_isCancelled = true;
        _pushed.notify_one();
    }
    dropped.clear();
    _thread.join();
}

void TaskWorker::guard(AbstractTask &task, const std::function<void()> &step)
{
    try {
        step();
    } catch (const std::exception &exception) {
        fail(task, QString::fromUtf8(exception.what()));
    } catch (...) {
        fail(task, Texts::tr("The task was ended by an unknown error."));
    }
}

void TaskWorker::work()
{
    for (;;) {
        Job job;
        {
            std::unique_lock<std::mutex> lock(_mutex);
            _pushed.wait(lock, [this] { return _finishing || !_jobs.empty(); });
            if (_jobs.empty())
                return;
            job = std::move(_jobs.front());
            _jobs.pop_front();
            _runningId = job.id;
            _cancellable = job.isCancellable ? job.task.get() : nullptr;
        }
        post(eventOf(Event::Kind::Started, job.id));
        const auto start = std::chrono::steady_clock::now();
        {
            AbstractTask &task = *job.task;
            const ProcessWatch watch(
                [&task](const QString &call) { task.reportDetail(Texts::tr("Running %1").arg(call)); },
                [&task] { return task.isCancelled(); });
            guard(task, [&task] { task.run(); });
        }
        Event ended = eventOf(Event::Kind::Ended, job.id);
        ended.runTime = std::chrono::duration_cast<std::chrono::milliseconds>(std::chrono::steady_clock::now() - start);
        ended.task = std::move(job.task);
        post(std::move(ended));
    }
}

void TaskWorker::post(Event event)
{
    const std::lock_guard<std::mutex> lock(_mutex);
    postLocked(std::move(event));
}

void TaskWorker::postLocked(Event event)
{
    if (event.kind == Event::Kind::Ended && event.id == _runningId)
        _cancellable = nullptr;
    const bool isNewer = event.kind == Event::Kind::Progress && !_events.empty() &&
                         _events.back().kind == Event::Kind::Progress && _events.back().id == event.id;
    if (isNewer)
        _events.pop_back();
    _events.push_back(std::move(event));
    eventfd_write(_descriptor, 1);
}
