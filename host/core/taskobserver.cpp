// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "taskobserver.h"

#include "elementtask.h"
#include "taskworker.h"

#include <QCoreApplication>
#include <QLoggingCategory>
#include <QSocketNotifier>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <deque>
#include <map>
#include <utility>

#include <unistd.h>

namespace
{

Q_LOGGING_CATEGORY(taskLog, "kra.tasks")

TaskObserver *theObserver = nullptr;

void deleteObserver()
{
    delete std::exchange(theObserver, nullptr);
}

/// Finishes the writes when exit() is called while the application object lives, as a platform plug-in does that lost
/// its display.
///
/// exit() destroys the thread-local objects of its thread before it calls any handler and destroys any static object,
/// so whatever the worker uses is still there. Then the process ends on the spot: windows, editors and plug-ins were
/// not destroyed in their order, and their libraries' static objects must not be destroyed before them.
class ExitGuard
{
public:
    ExitGuard() = default;
    ExitGuard(const ExitGuard &) = delete;
    ExitGuard &operator=(const ExitGuard &) = delete;
    ~ExitGuard()
    {
        if (!theObserver)
            return; // the application object has ended in order
        theObserver->closeDown();
        on_exit( // the last handler registered is the first to be called, and is given the exit code
            [](int code, void * /*unused*/) {
                std::fflush(nullptr);
                _exit(code);
            },
            nullptr);
    }
};

QDateTime localTime(std::chrono::system_clock::time_point time)
{
    using std::chrono::milliseconds;
    return QDateTime::fromMSecsSinceEpoch(std::chrono::duration_cast<milliseconds>(time.time_since_epoch()).count());
}

ContainerElement *containerOf(AbstractTask *task)
{
    const auto *contentTask = dynamic_cast<ReadContentTask *>(task);
    return contentTask ? dynamic_cast<ContainerElement *>(contentTask->element()) : nullptr;
}

TaskReport newReport(quint64 id, AbstractTask *task)
{
    TaskReport report;
    report.id = id;
    report.description = task->description();
    report.readsRecord = dynamic_cast<ReadPropertyHeavyTask *>(task);
    report.changesMachine = task->changesMachine();
    report.isCancellable = task->isCancellable();
    report.queuedAt = QDateTime::currentDateTime();
    if (const auto *elementTask = dynamic_cast<ElementTask *>(task)) {
        report.element = elementTask->element();
        report.elementTitle = elementTask->elementTitle();
    }
    return report;
}

} // namespace

bool isStillUnread(const TaskReport &read)
{
    const Element *element = read.element.data();
    return element && (read.readsRecord ? !element->record() : element->childNodes().isEmpty());
}

/// The user-interface side of the work. Slots of the observer's signals may turn the event loop, and so may every
/// afterRun(): whatever is under way here may be entered again from below.
class TaskObserver::Private
{
public:
    explicit Private(TaskObserver *observer);

    void deliver();
    bool cancel(quint64 id);
    void closeDown();

    TaskObserver *q;
    TaskWorker worker;
    QSocketNotifier notifier;
    std::map<quint64, TaskReport> live; // queued, running, or with their afterRun() to come
    quint64 lastId = 0;
    bool closed = false;

private:
    void takeEvents();
    void tell(TaskWorker::Event event);
    void finish(TaskWorker::Event event);

    std::deque<TaskWorker::Event> events; // taken from the worker and not told yet
    std::deque<TaskWorker::Event> ended;  // told, and waiting for the afterRun() before them
    bool inAfterRun = false;
};

TaskObserver::Private::Private(TaskObserver *observer)
    : q(observer)
    , notifier(worker.descriptor(), QSocketNotifier::Read)
{
    connect(&notifier, &QSocketNotifier::activated, q, [this] { deliver(); });
}

void TaskObserver::Private::deliver()
{
    takeEvents();
    while (!ended.empty() && !inAfterRun) {
        TaskWorker::Event event = std::move(ended.front());
        ended.pop_front();
        finish(std::move(event));
    }
}

void TaskObserver::Private::takeEvents()
{
    for (TaskWorker::Event &event : worker.takeEvents())
        events.push_back(std::move(event));
    while (!events.empty()) {
        TaskWorker::Event event = std::move(events.front());
        events.pop_front();
        tell(std::move(event));
    }
}

void TaskObserver::Private::tell(TaskWorker::Event event)
{
    const auto found = live.find(event.id);
    if (found == live.end())
        return; // a detail that came after the end
    switch (event.kind) {
    case TaskWorker::Event::Kind::Started: {
        found->second.startedAt = localTime(event.at);
        const TaskReport report = found->second;
        Q_EMIT q->taskStarted(report);
        break;
    }
    case TaskWorker::Event::Kind::Detail:
        Q_EMIT q->taskDetail(event.id, event.text);
        break;
    case TaskWorker::Event::Kind::Progress:
        Q_EMIT q->taskProgress(event.id, event.progress);
        break;
    case TaskWorker::Event::Kind::Ended:
        ended.push_back(std::move(event));
        break;
    }
}

void TaskObserver::Private::finish(TaskWorker::Event event)
{
    AbstractTask &task = *event.task;
    const bool isGivenUp = task.isCancelled() && !task.changesMachine();
    if (ContainerElement *container = containerOf(&task)) {
        // One that was marked stale while it was being read stays so: what was read may be the older state.
        if (container->content() == ContainerElement::Content::Reading)
            container->setContent(isGivenUp ? ContainerElement::Content::Stale : ContainerElement::Content::Read);
    }

    if (isGivenUp) {
        task.setStatus(TaskDescription::Cancelled);
        const auto cancelled = live.find(event.id);
        task.setMessage(cancelled != live.end() && isStillUnread(cancelled->second)
                            ? TaskObserver::tr("Cancelled: this has not been read yet.")
                            : TaskObserver::tr("Cancelled: what was read before is still shown."));
    } else {
        inAfterRun = true;
        TaskWorker::guard(task, [&task] { task.setStatus(task.afterRun()); });
        inAfterRun = false;
    }
    takeEvents(); // details of the afterRun() come before the end
    const auto found = live.find(event.id);
    if (found == live.end())
        return; // closed down from within

    TaskReport report = found->second;
    live.erase(found);
    report.status = task.status();
    report.message = task.message();
    report.isNote = task.isMessageNote();
    report.result = task.status() == TaskDescription::Succeeded ? task.result() : QString();
    report.runMilliseconds = event.runTime.count();
    event.task.reset();
    Q_EMIT q->taskFinished(report);
}

bool TaskObserver::Private::cancel(quint64 id)
{
    const auto found = live.find(id);
    if (found == live.end() || !found->second.isCancellable)
        return false;
    bool isOnTheWay = worker.cancel(id);
    for (const auto *queue : {&events, &ended}) {
        for (const TaskWorker::Event &event : *queue)
            isOnTheWay = TaskWorker::cancel(event, id) || isOnTheWay;
    }
    if (!isOnTheWay)
        return false; // its afterRun() is under way
    found->second.isCancelled = true;
    const TaskReport report = found->second;
    Q_EMIT q->taskCancelling(report);
    return true;
}

void TaskObserver::Private::closeDown()
{
    if (std::exchange(closed, true))
        return;
    notifier.setEnabled(false);
    worker.finish();
    for (TaskWorker::Event &event : worker.takeEvents())
        events.push_back(std::move(event));
    for (std::deque<TaskWorker::Event> *queue : {&ended, &events}) {
        for (const TaskWorker::Event &event : *queue) {
            if (event.task && event.task->status() == TaskDescription::Failed && !event.task->isMessageNote())
                qCWarning(taskLog).noquote() << event.task->description() << event.task->message();
        }
        queue->clear();
    }
    live.clear();
}

TaskObserver *TaskObserver::instance()
{
    if (theObserver)
        return theObserver;
    theObserver = new TaskObserver;
    qAddPostRoutine(deleteObserver);
    thread_local const ExitGuard guard;
    Q_UNUSED(guard)
    return theObserver;
}

TaskObserver::TaskObserver()
    : d(std::make_unique<Private>(this))
{
    qRegisterMetaType<TaskReport>();
    qRegisterMetaType<TaskProgress>();
}

TaskObserver::~TaskObserver()
{
    closeDown();
}

void TaskObserver::performTask(AbstractTask *task)
{
    std::unique_ptr<AbstractTask> owned(task);
    if (d->closed)
        return;
    if (ContainerElement *container = containerOf(task))
        container->setContent(ContainerElement::Content::Reading);
    const TaskReport report = newReport(++d->lastId, task);
    d->live.emplace(report.id, report);
    d->worker.push(report.id, std::move(owned));
    Q_EMIT taskQueued(report);
}

bool TaskObserver::cancel(quint64 id)
{
    return d->cancel(id);
}

bool TaskObserver::isBusy() const
{
    return !d->live.empty();
}

bool TaskObserver::isChangingMachine() const
{
    return std::any_of(d->live.begin(), d->live.end(), [](const auto &task) { return task.second.changesMachine; });
}

bool TaskObserver::isBusyWith(const Element *element) const
{
    return std::any_of(d->live.begin(), d->live.end(),
                       [element](const auto &task) { return element && task.second.element.data() == element; });
}

bool TaskObserver::isReading(const Element *element) const
{
    return std::any_of(d->live.begin(), d->live.end(), [element](const auto &task) {
        return element && task.second.readsRecord && task.second.element.data() == element;
    });
}

bool TaskObserver::isWriting(const Element *element) const
{
    return std::any_of(d->live.begin(), d->live.end(), [element](const auto &task) {
        return element && task.second.changesMachine && task.second.element.data() == element;
    });
}

void TaskObserver::closeDown()
{
    d->closeDown();
}
