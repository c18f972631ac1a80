// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

// Hands tasks to the observer and ends in one of several ways while they run. What the tasks did is appended to a file,
// for tst_taskobserver to look at.
//
//     kra-taskchild close|return|exit|nested FILE

#include <elementtask.h>
#include <taskobserver.h>

#include <QCoreApplication>
#include <QEventLoop>
#include <QFile>
#include <QTimer>

#include <cstdlib>
#include <functional>
#include <future>

namespace
{

QString fileName;

void note(const QString &line)
{
    QFile file(fileName);
    if (file.open(QIODevice::Append))
        file.write(line.toUtf8() + '\n');
}

class NotingTask : public AbstractTask
{
public:
    NotingTask(const QString &name, bool changes)
        : _name(name)
        , _changes(changes)
    {}
    ~NotingTask() override
    {
        note(QStringLiteral("deleted ") + _name);
        if (inDestructor)
            inDestructor();
    }

    bool changesMachine() const override { return _changes; }
    void run() override
    {
        note(QStringLiteral("begin ") + _name);
        if (inRun)
            inRun();
        note(QStringLiteral("end ") + _name);
        AbstractTask::run();
    }
    TaskStatus afterRun() override
    {
        note(QStringLiteral("afterRun ") + _name);
        return status();
    }

    std::function<void()> inRun;
    std::function<void()> inDestructor;

private:
    QString _name;
    bool _changes;
};

/// Closes down from within its own afterRun(), as a window that is closed over a question does.
class ClosingTask : public AbstractTask
{
public:
    TaskStatus afterRun() override
    {
        QEventLoop loop;
        QTimer::singleShot(0, &loop, [&loop] {
            TaskObserver::instance()->closeDown();
            loop.quit();
        });
        loop.exec();
        note(QStringLiteral("closed"));
        QTimer::singleShot(0, qApp, &QCoreApplication::quit);
        return status();
    }
};

/// A read that runs until the read behind it is given up, and behind that a write that waits.
void startThree()
{
    static std::promise<void> started;
    static std::promise<void> givenUp;
    auto *running = new NotingTask(QStringLiteral("running"), false);
    running->inRun = [running] {
        started.set_value();
        givenUp.get_future().wait();
        note(running->isCancelled() ? QStringLiteral("asked to stop") : QStringLiteral("asked for nothing"));
    };
    auto *waiting = new NotingTask(QStringLiteral("read"), false);
    waiting->inDestructor = [] { givenUp.set_value(); };
    TaskObserver *observer = TaskObserver::instance();
    observer->performTask(running);
    observer->performTask(waiting);
    observer->performTask(new NotingTask(QStringLiteral("write"), true));
    started.get_future().wait();
}

} // namespace

int main(int argc, char *argv[])
{
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    const QString way = arguments.value(1);
    fileName = arguments.value(2);

    if (way == QLatin1String("nested")) {
        TaskObserver::instance()->performTask(new ClosingTask);
        TaskObserver::instance()->performTask(new NotingTask(QStringLiteral("write"), true));
        QCoreApplication::exec();
        return EXIT_SUCCESS;
    }
    startThree();
    if (way == QLatin1String("exit"))
        std::exit(EXIT_SUCCESS);
    if (way == QLatin1String("close")) {
        TaskObserver::instance()->closeDown();
        note(QStringLiteral("closed"));
        TaskObserver::instance()->performTask(new NotingTask(QStringLiteral("late"), true));
        QCoreApplication::processEvents();
    }
    return EXIT_SUCCESS;
}
