// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tasktoys.h"

#include <QSignalSpy>

#include <stdexcept>
#include <thread>

namespace
{
constexpr quint64 manySteps = 1000;
}

class TestTaskCancel : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void progressComesInOrder();
    void ofProgressThatWaitsTheLastCounts();
    void aCancelledReadChangesNothing();
    void aCancelledReadThatFailedIsCancelled();
    void aWaitingReadIsCancelledAtOnce();
    void aListWhoseReadIsCancelledIsReadAgainWhenItIsNextShown();
    void cancelledReadsSayWhetherThereIsAnythingToShow_data();
    void cancelledReadsSayWhetherThereIsAnythingToShow();
    void aReadIsCancelledBeforeItsAfterRun();
    void aWriteIsNotCancelled();
    void aWriteThatSaysSoIsCancelled();
    void whatHasEndedIsNotCancelled();

private:
    OrdinaryElement *newElement(const QString &title);

    std::unique_ptr<AskedModule> _module;
    AskedEditor *_editor = nullptr; // owned by the module
    int _records = 0;
};

void TestTaskCancel::init()
{
    _module = std::make_unique<AskedModule>();
    _editor = new AskedEditor(_module.get(), QStringLiteral("Thing"));
    _module->insertElementWidget(_editor);
}

void TestTaskCancel::cleanup()
{
    QTRY_VERIFY(!TaskObserver::instance()->isBusy());
    _module.reset();
    QCOMPARE(_records, 0);
}

/// Deleted by its module unless the test does so before.
OrdinaryElement *TestTaskCancel::newElement(const QString &title)
{
    return new OrdinaryElement(QStringLiteral("Thing"), QString(), title, _module.get(), always, Element::Place::Top);
}

void TestTaskCancel::progressComesInOrder()
{
    TaskObserver *observer = TaskObserver::instance();
    QVector<quint64> shown;
    std::promise<void> firstSeen;
    QObject context;
    connect(observer, &TaskObserver::taskProgress, &context, [&](quint64 /*id*/, const TaskProgress &progress) {
        shown.append(progress.done);
        QCOMPARE(progress.total, quint64(3));
        QCOMPARE(progress.unit, QStringLiteral("things"));
        if (progress.done == 1)
            firstSeen.set_value();
    });
    auto *task = new FreeTask;
    task->reportProgress({7, 3, QStringLiteral("things")}); // dropped: it was not handed over yet
    task->inRun = [&] {
        task->reportProgress({1, 3, QStringLiteral("things")});
        firstSeen.get_future().wait();
        task->reportProgress({3, 3, QStringLiteral("things")});
    };
    performAndWait(task);
    QCOMPARE(shown, (QVector<quint64>{1, 3}));
}

void TestTaskCancel::ofProgressThatWaitsTheLastCounts()
{
    TaskObserver *observer = TaskObserver::instance();
    QSignalSpy progress(observer, &TaskObserver::taskProgress);
    QSignalSpy details(observer, &TaskObserver::taskDetail);
    std::promise<void> reported;
    auto *task = new FreeTask;
    task->inRun = [&] {
        for (quint64 i = 0; i <= manySteps; ++i)
            task->reportProgress({i, manySteps, {}});
        task->reportDetail(QStringLiteral("between"));
        task->reportProgress({5, 5, {}});
        reported.set_value();
    };
    observer->performTask(task);
    reported.get_future().wait(); // this thread takes no event meanwhile
    QTRY_VERIFY(!observer->isBusy());
    QCOMPARE(details.size(), 1);
    QCOMPARE(progress.size(), 2);
    QCOMPARE(progress.at(0).at(1).value<TaskProgress>(), (TaskProgress{manySteps, manySteps, {}}));
    QCOMPARE(progress.at(1).at(1).value<TaskProgress>(), (TaskProgress{5, 5, {}}));
}

void TestTaskCancel::aCancelledReadChangesNothing()
{
    TaskObserver *observer = TaskObserver::instance();
    OrdinaryElement *element = newElement(QStringLiteral("Thing"));
    auto before = std::make_unique<CountedData>(&_records);
    ElementData *record = before.get();
    element->setRecord(std::move(before));
    _editor->shown = element;

    QSignalSpy cancelling(observer, &TaskObserver::taskCancelling);
    QSignalSpy finished(observer, &TaskObserver::taskFinished);
    std::promise<void> started;
    auto *task = new ReadTask(element);
    bool afterRunCalled = false;
    task->inAfterRun = [&] { afterRunCalled = true; };
    task->inRun = [&] {
        started.set_value();
        while (!task->isCancelled())
            std::this_thread::yield();
        task->setElementData(std::make_unique<CountedData>(&_records));
    };
    quint64 id = 0;
    QObject context;
    connect(observer, &TaskObserver::taskQueued, &context, [&](const TaskReport &report) {
        QVERIFY(report.isCancellable);
        QVERIFY(!report.isCancelled);
        id = report.id;
    });
    observer->performTask(task);
    started.get_future().wait();
    QVERIFY(observer->cancel(id));
    QCOMPARE(cancelling.size(), 1);
    QVERIFY(cancelling.at(0).at(0).value<TaskReport>().isCancelled);
    QCOMPARE(cancelling.at(0).at(0).value<TaskReport>().status, TaskDescription::NotFinished);
    QTRY_COMPARE(finished.size(), 1);
    const auto report = finished.at(0).at(0).value<TaskReport>();
    QCOMPARE(report.status, TaskDescription::Cancelled);
    QVERIFY(report.isCancelled);
    QVERIFY(!report.message.isEmpty());
    QVERIFY(!afterRunCalled);
    QCOMPARE(element->record(), record);
    QVERIFY(_editor->calls.isEmpty());
}

void TestTaskCancel::aCancelledReadThatFailedIsCancelled()
{
    TaskObserver *observer = TaskObserver::instance();
    QSignalSpy finished(observer, &TaskObserver::taskFinished);
    quint64 id = 0;
    QObject context;
    connect(observer, &TaskObserver::taskQueued, &context, [&](const TaskReport &report) { id = report.id; });
    std::promise<void> started;
    auto *task = new FreeTask;
    task->inRun = [&] {
        started.set_value();
        while (!task->isCancelled())
            std::this_thread::yield();
        throw std::runtime_error("killed on the way");
    };
    observer->performTask(task);
    started.get_future().wait();
    QVERIFY(observer->cancel(id));
    QTRY_COMPARE(finished.size(), 1);
    const auto report = finished.at(0).at(0).value<TaskReport>();
    QCOMPARE(report.status, TaskDescription::Cancelled);
    QVERIFY(!report.message.contains(QLatin1String("killed")));
}

void TestTaskCancel::aWaitingReadIsCancelledAtOnce()
{
    TaskObserver *observer = TaskObserver::instance();
    QVector<quint64> ids;
    QObject context;
    connect(observer, &TaskObserver::taskQueued, &context, [&](const TaskReport &report) { ids.append(report.id); });
    QSignalSpy finished(observer, &TaskObserver::taskFinished);
    Gate gate;
    bool ran = false;
    auto *task = new FreeTask;
    task->inRun = [&] { ran = true; };
    observer->performTask(task);
    QVERIFY(observer->cancel(ids.at(1)));
    QTRY_COMPARE(finished.size(), 1); // while the one before it still runs
    const auto report = finished.at(0).at(0).value<TaskReport>();
    QCOMPARE(report.id, ids.at(1));
    QCOMPARE(report.status, TaskDescription::Cancelled);
    QVERIFY(!report.startedAt.isValid());
    QCOMPARE(report.runMilliseconds, -1);
    gate.open();
    QTRY_VERIFY(!observer->isBusy());
    QCOMPARE(finished.size(), 2);
    QVERIFY(!ran);
}

/// A dialog of the task before holds its afterRun() back, though its run() has ended.
void TestTaskCancel::aListWhoseReadIsCancelledIsReadAgainWhenItIsNextShown()
{
    TaskObserver *observer = TaskObserver::instance();
    ContainerElement list(QStringLiteral("Things"), QString(), QStringLiteral("Things"), _module.get(), always,
                          Element::Place::Child);
    QSignalSpy queued(observer, &TaskObserver::taskQueued);
    Gate gate;
    observer->performTask(new ContentTask(&list));
    QVERIFY(observer->cancel(queued.last().at(0).value<TaskReport>().id));
    gate.open();
    QTRY_VERIFY(!observer->isBusy());
    QCOMPARE(list.content(), ContainerElement::Content::Stale);
    QVERIFY(list.needsContentRead());
    QVERIFY2(!list.canFetchChildren(), "views that are shown would read it on and on");
}

void TestTaskCancel::cancelledReadsSayWhetherThereIsAnythingToShow_data()
{
    QTest::addColumn<bool>("isList");
    QTest::addColumn<bool>("wasRead");
    QTest::newRow("list, read before") << true << true;
    QTest::newRow("list, never read") << true << false;
    QTest::newRow("record, read before") << false << true;
    QTest::newRow("record, never read") << false << false;
}

void TestTaskCancel::cancelledReadsSayWhetherThereIsAnythingToShow()
{
    QFETCH(bool, isList);
    QFETCH(bool, wasRead);
    TaskObserver *observer = TaskObserver::instance();
    ContainerElement list(QStringLiteral("Things"), QString(), QStringLiteral("Things"), _module.get(), always,
                          Element::Place::Child);
    if (wasRead == isList)
        list.append(new OrdinaryElement(QStringLiteral("Thing"), QString(), QStringLiteral("Thing"), _module.get(),
                                        always, Element::Place::Child));
    else
        list.setRecord(std::make_unique<ElementData>()); // the other of the two says nothing of this one
    QSignalSpy queued(observer, &TaskObserver::taskQueued);
    QSignalSpy finished(observer, &TaskObserver::taskFinished);
    Gate gate;
    observer->performTask(isList ? static_cast<AbstractTask *>(new ContentTask(&list)) : new ReadTask(&list));
    QVERIFY(observer->cancel(queued.last().at(0).value<TaskReport>().id));
    gate.open();
    QTRY_VERIFY(!observer->isBusy());
    const auto report = finished.first().at(0).value<TaskReport>();
    QCOMPARE(report.status, TaskDescription::Cancelled);
    QCOMPARE(isStillUnread(report), !wasRead);
    QCOMPARE(report.message.contains(QStringLiteral("what was read before is still shown")), wasRead);
    list.clearDelete();
}

void TestTaskCancel::aReadIsCancelledBeforeItsAfterRun()
{
    TaskObserver *observer = TaskObserver::instance();
    QVector<quint64> ids;
    QObject context;
    connect(observer, &TaskObserver::taskQueued, &context, [&](const TaskReport &report) { ids.append(report.id); });
    QSignalSpy finished(observer, &TaskObserver::taskFinished);
    std::promise<void> secondRan;
    bool afterRunCalled = false;
    bool cancelledItself = true;
    bool cancelledSecond = false;
    auto *first = new FreeTask;
    first->inAfterRun = [&] {
        secondRan.get_future().wait();
        cancelledItself = observer->cancel(ids.at(0));
        cancelledSecond = observer->cancel(ids.at(1));
    };
    auto *second = new FreeTask;
    second->inRun = [&] { secondRan.set_value(); };
    second->inAfterRun = [&] { afterRunCalled = true; };
    observer->performTask(first);
    observer->performTask(second);
    QTRY_COMPARE(finished.size(), 2);
    QVERIFY(!cancelledItself);
    QCOMPARE(finished.at(0).at(0).value<TaskReport>().status, TaskDescription::Succeeded);
    QVERIFY(cancelledSecond);
    QCOMPARE(finished.at(1).at(0).value<TaskReport>().status, TaskDescription::Cancelled);
    QVERIFY(!afterRunCalled);
}

void TestTaskCancel::aWriteIsNotCancelled()
{
    TaskObserver *observer = TaskObserver::instance();
    QVector<TaskReport> queued;
    QObject context;
    connect(observer, &TaskObserver::taskQueued, &context, [&](const TaskReport &report) { queued.append(report); });
    QSignalSpy cancelling(observer, &TaskObserver::taskCancelling);
    QSignalSpy finished(observer, &TaskObserver::taskFinished);
    Gate gate;
    bool ran = false;
    auto *task = new WriteTask(nullptr);
    task->inRun = [&] { ran = true; };
    observer->performTask(task);
    QVERIFY(!queued.at(1).isCancellable);
    QVERIFY(!observer->cancel(queued.at(1).id));
    QVERIFY(cancelling.isEmpty());
    gate.open();
    QTRY_COMPARE(finished.size(), 2);
    QCOMPARE(finished.at(1).at(0).value<TaskReport>().status, TaskDescription::Succeeded);
    QVERIFY(ran);
}

/// What it did already is read again, as after any other end.
void TestTaskCancel::aWriteThatSaysSoIsCancelled()
{
    class StoppableWrite : public WriteTask
    {
    public:
        using WriteTask::WriteTask;
        bool isCancellable() const override { return true; }
    };
    TaskObserver *observer = TaskObserver::instance();
    OrdinaryElement *element = newElement(QStringLiteral("Thing"));
    _editor->shown = element;
    quint64 id = 0;
    QObject context;
    connect(observer, &TaskObserver::taskQueued, &context, [&](const TaskReport &report) { id = report.id; });
    QSignalSpy finished(observer, &TaskObserver::taskFinished);
    std::promise<void> started;
    auto *task = new StoppableWrite(element);
    task->inRun = [&] {
        started.set_value();
        while (!task->isCancelled())
            std::this_thread::yield();
        task->setMessage(QStringLiteral("one of three"));
        task->setStatus(TaskDescription::Cancelled);
    };
    observer->performTask(task);
    started.get_future().wait();
    QVERIFY(observer->cancel(id));
    QTRY_COMPARE(finished.size(), 1);
    const auto report = finished.at(0).at(0).value<TaskReport>();
    QCOMPARE(report.status, TaskDescription::Cancelled);
    QCOMPARE(report.message, QStringLiteral("one of three"));
    QCOMPARE(_module->asked, QVector<OperationType>{OperationType::Read});
    QVERIFY(_editor->calls.isEmpty());
}

void TestTaskCancel::whatHasEndedIsNotCancelled()
{
    TaskObserver *observer = TaskObserver::instance();
    quint64 id = 0;
    QObject context;
    connect(observer, &TaskObserver::taskQueued, &context, [&](const TaskReport &report) { id = report.id; });
    performAndWait(new FreeTask);
    QVERIFY(!observer->cancel(id));
    QVERIFY(!observer->cancel(id + 1));
}

QTEST_GUILESS_MAIN(TestTaskCancel)

#include "tst_taskcancel.moc"
