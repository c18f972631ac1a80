// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "taskworker.h"

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
    task->_detailSink = [this, id](const QString &text) {
        post({Event::Kind::Detail, id, std::chrono::system_clock::now(), text, {}, nullptr});
    };
    const bool changesMachine = task->changesMachine();
    const std::lock_guard<std::mutex> lock(_mutex);
    _jobs.push_back({id, changesMachine, std::move(task)});
    _pushed.notify_one();
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
        }
        post({Event::Kind::Started, job.id, std::chrono::system_clock::now(), {}, {}, nullptr});
        const auto start = std::chrono::steady_clock::now();
        guard(*job.task, [&job] { job.task->run(); });
        const auto runTime =
            std::chrono::duration_cast<std::chrono::milliseconds>(std::chrono::steady_clock::now() - start);
        post({Event::Kind::Ended, job.id, std::chrono::system_clock::now(), {}, runTime, std::move(job.task)});
    }
}

void TaskWorker::post(Event event)
{
    const std::lock_guard<std::mutex> lock(_mutex);
    _events.push_back(std::move(event));
    eventfd_write(_descriptor, 1);
}
