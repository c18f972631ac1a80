// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tasktoys.h"

#include <appexception.h>

#include <QCoreApplication>
#include <QEventLoop>
#include <QFile>
#include <QProcess>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

#include <functional>
#include <future>
#include <numeric>
#include <stdexcept>
#include <thread>

namespace
{

constexpr int manyTasks = 1000;

} // namespace

class TestTaskObserver : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void runsStrictlyInOrderOnOneOtherThread();
    void reportsEveryStep();
    void reportsTheElementAndItsTitleWhenTheTaskWasMade();
    void detailsComeBetweenStartAndEnd();
    void detailsOfAnotherThreadCome();
    void detailBeforeTheHandOverIsHeardByNobody();
    void exceptionInRunFailsTheTask_data();
    void exceptionInRunFailsTheTask();
    void exceptionKeepsTheMessageBeforeIt();
    void exceptionInAfterRunFailsTheTask();
    void afterRunGivesTheReportedStatus();
    void noAfterRunInsideAnother();
    void tasksMayStartTasks();
    void knowsWhatIsUnderWay();
    void elementDeletedBeforeRun();
    void elementDeletedBetweenRunAndAfterRun();
    void elementDeletedBeforeAnUpdateEnds();
    void readHandsItsRecordOver_data();
    void readHandsItsRecordOver();
    void readLeavesAnEditorOfAnotherElementAlone();
    void readWithoutRecordLeavesEverything();
    void updateReadsAgainAndTellsTheEditor_data();
    void updateReadsAgainAndTellsTheEditor();
    void updateLeavesAnEditorOfAnotherElementAlone();
    void containerCountsAsReadHoweverTheReadEnds_data();
    void containerCountsAsReadHoweverTheReadEnds();
    void containerMarkedStaleDuringTheReadStaysStale();
    void finishesWritesWhateverEndsTheProcess_data();
    void finishesWritesWhateverEndsTheProcess();
    void closesDownFromWithinAnAfterRun();

private:
    OrdinaryElement *newElement(const QString &title);

    std::unique_ptr<AskedModule> _module;
    AskedEditor *_editor = nullptr; // owned by the module
    int _records = 0;
};

void TestTaskObserver::init()
{
    _module = std::make_unique<AskedModule>();
    _editor = new AskedEditor(_module.get(), QStringLiteral("Thing"));
    _module->insertElementWidget(_editor);
}

void TestTaskObserver::cleanup()
{
    QTRY_VERIFY(!TaskObserver::instance()->isBusy());
    _module.reset();
    QCOMPARE(_records, 0);
}

/// Deleted by its module unless the test does so before.
OrdinaryElement *TestTaskObserver::newElement(const QString &title)
{
    return new OrdinaryElement(QStringLiteral("Thing"), QString(), title, _module.get(), always, Element::Place::Top);
}

void TestTaskObserver::runsStrictlyInOrderOnOneOtherThread()
{
    std::vector<int> run; // the worker's alone until all have ended
    std::vector<int> after;
    std::vector<std::thread::id> threads;
    const std::thread::id here = std::this_thread::get_id();
    bool afterRunHere = true;
    for (int i = 0; i < manyTasks; ++i) {
        auto *task = new FreeTask;
        task->inRun = [&, i] {
            run.push_back(i);
            threads.push_back(std::this_thread::get_id());
        };
        task->inAfterRun = [&, i] {
            after.push_back(i);
            afterRunHere = afterRunHere && std::this_thread::get_id() == here;
        };
        TaskObserver::instance()->performTask(task);
    }
    QTRY_COMPARE(after.size(), std::size_t(manyTasks));

    std::vector<int> wanted(manyTasks);
    std::iota(wanted.begin(), wanted.end(), 0);
    QCOMPARE(run, wanted);
    QCOMPARE(after, wanted);
    QVERIFY(afterRunHere);
    QVERIFY(threads.front() != here);
    QCOMPARE(threads, std::vector<std::thread::id>(manyTasks, threads.front()));
}

void TestTaskObserver::reportsEveryStep()
{
    TaskObserver *observer = TaskObserver::instance();
    QStringList order;
    QObject context;
    connect(observer, &TaskObserver::taskQueued, &context, [&](const TaskReport &report) {
        order.append(QStringLiteral("queued"));
        QVERIFY(report.id > 0);
        QCOMPARE(report.description, QStringLiteral("Look around"));
        QVERIFY(report.elementTitle.isEmpty());
        QVERIFY(!report.element);
        QCOMPARE(report.status, TaskDescription::NotFinished);
        QVERIFY(report.queuedAt.isValid());
        QVERIFY(!report.startedAt.isValid());
        QCOMPARE(report.runMilliseconds, -1);
    });
    connect(observer, &TaskObserver::taskStarted, &context, [&](const TaskReport &report) {
        order.append(QStringLiteral("started"));
        QVERIFY(report.startedAt.isValid());
        QCOMPARE(report.startedAt.timeSpec(), Qt::LocalTime);
        QCOMPARE(report.runMilliseconds, -1);
    });
    connect(observer, &TaskObserver::taskFinished, &context, [&](const TaskReport &report) {
        order.append(QStringLiteral("finished"));
        QCOMPARE(report.description, QStringLiteral("Look around"));
        QCOMPARE(report.status, TaskDescription::Failed);
        QCOMPARE(report.message, QStringLiteral("Nothing there"));
        QVERIFY(report.runMilliseconds >= 0);
        QVERIFY(!observer->isBusy());
    });
    auto *task = new FreeTask;
    task->setDescription(QStringLiteral("Look around"));
    task->inRun = [task] {
        task->setStatus(TaskDescription::Failed);
        task->setMessage(QStringLiteral("Nothing there"));
    };
    task->inAfterRun = [&order] { order.append(QStringLiteral("afterRun")); };
    performAndWait(task);
    QCOMPARE(order, (QStringList{QStringLiteral("queued"), QStringLiteral("started"), QStringLiteral("afterRun"),
                                 QStringLiteral("finished")}));
}

void TestTaskObserver::reportsTheElementAndItsTitleWhenTheTaskWasMade()
{
    OrdinaryElement *element = newElement(QStringLiteral("before"));
    auto *task = new WriteTask(element);
    QString seenInRun;
    task->inRun = [task, &seenInRun] { seenInRun = task->elementTitle(); };
    element->setTitle(QStringLiteral("after"));
    const QSignalSpy queued(TaskObserver::instance(), &TaskObserver::taskQueued);
    performAndWait(task);
    QCOMPARE(queued.size(), 1);
    const auto report = queued.first().first().value<TaskReport>();
    QCOMPARE(report.element.data(), element);
    QCOMPARE(report.elementTitle, QStringLiteral("before"));
    QVERIFY(report.changesMachine);
    QCOMPARE(seenInRun, QStringLiteral("before"));
}

void TestTaskObserver::detailsComeBetweenStartAndEnd()
{
    QStringList seen;
    QObject context;
    TaskObserver *observer = TaskObserver::instance();
    connect(observer, &TaskObserver::taskStarted, &context, [&] { seen.append(QStringLiteral("started")); });
    connect(observer, &TaskObserver::taskDetail, &context, [&](quint64, const QString &text) { seen.append(text); });
    connect(observer, &TaskObserver::taskFinished, &context, [&] { seen.append(QStringLiteral("finished")); });
    auto *task = new FreeTask;
    task->inRun = [task] {
        task->reportDetail(QStringLiteral("one"));
        task->reportDetail(QStringLiteral("two"));
    };
    task->inAfterRun = [task] { task->reportDetail(QStringLiteral("three")); };
    performAndWait(task);
    QCOMPARE(seen, (QStringList{QStringLiteral("started"), QStringLiteral("one"), QStringLiteral("two"),
                                QStringLiteral("three"), QStringLiteral("finished")}));
}

void TestTaskObserver::detailsOfAnotherThreadCome()
{
    const QSignalSpy details(TaskObserver::instance(), &TaskObserver::taskDetail);
    auto *task = new FreeTask;
    task->inRun = [task] {
        std::thread other([task] { task->reportDetail(QStringLiteral("from elsewhere")); });
        other.join();
    };
    performAndWait(task);
    QCOMPARE(details.size(), 1);
    QCOMPARE(details.first().at(1).toString(), QStringLiteral("from elsewhere"));
}

void TestTaskObserver::detailBeforeTheHandOverIsHeardByNobody()
{
    const QSignalSpy details(TaskObserver::instance(), &TaskObserver::taskDetail);
    auto *task = new FreeTask;
    task->reportDetail(QStringLiteral("too early"));
    performAndWait(task);
    QCOMPARE(details.size(), 0);
}

void TestTaskObserver::exceptionInRunFailsTheTask_data()
{
    QTest::addColumn<int>("kind");
    QTest::addColumn<QString>("message");
    QTest::newRow("std::exception") << 0 << QStringLiteral("Grüße");
    QTest::newRow("AppException") << 1 << QStringLiteral("mount ended with exit code 32: busy");
    QTest::newRow("no exception class") << 2 << QStringLiteral("The task was ended by an unknown error.");
}

void TestTaskObserver::exceptionInRunFailsTheTask()
{
    QFETCH(int, kind);
    QFETCH(QString, message);
    auto *task = new FreeTask;
    bool afterRunCame = false;
    task->inAfterRun = [&] { afterRunCame = true; };
    task->inRun = [kind] {
        if (kind == 0)
            throw std::runtime_error("Grüße");
        if (kind == 1)
            throw AppException(QStringLiteral("mount"), 32, QStringLiteral("busy"));
        throw int(kind);
    };
    const QSignalSpy finished(TaskObserver::instance(), &TaskObserver::taskFinished);
    performAndWait(task);
    const auto report = finished.first().first().value<TaskReport>();
    QCOMPARE(report.status, TaskDescription::Failed);
    QCOMPARE(report.message, message);
    QVERIFY(afterRunCame);
}

void TestTaskObserver::exceptionKeepsTheMessageBeforeIt()
{
    auto *task = new FreeTask;
    task->inRun = [task] {
        task->setMessage(QStringLiteral("first failure"));
        throw std::runtime_error("second failure");
    };
    const QSignalSpy finished(TaskObserver::instance(), &TaskObserver::taskFinished);
    performAndWait(task);
    QCOMPARE(finished.first().first().value<TaskReport>().message, QStringLiteral("first failure\nsecond failure"));
}

void TestTaskObserver::exceptionInAfterRunFailsTheTask()
{
    auto *task = new FreeTask;
    task->inAfterRun = [] { throw std::runtime_error("no page"); };
    const QSignalSpy finished(TaskObserver::instance(), &TaskObserver::taskFinished);
    performAndWait(task);
    const auto report = finished.first().first().value<TaskReport>();
    QCOMPARE(report.status, TaskDescription::Failed);
    QCOMPARE(report.message, QStringLiteral("no page"));
    bool next = false;
    auto *after = new FreeTask;
    after->inAfterRun = [&] { next = true; };
    performAndWait(after);
    QVERIFY(next);
}

void TestTaskObserver::afterRunGivesTheReportedStatus()
{
    class FailingLate : public AbstractTask
    {
    public:
        TaskStatus afterRun() override { return Failed; }
    };
    const QSignalSpy finished(TaskObserver::instance(), &TaskObserver::taskFinished);
    performAndWait(new FreeTask);
    performAndWait(new FailingLate);
    QCOMPARE(finished.at(0).first().value<TaskReport>().status, TaskDescription::Succeeded);
    QCOMPARE(finished.at(1).first().value<TaskReport>().status, TaskDescription::Failed);
}

void TestTaskObserver::noAfterRunInsideAnother()
{
    TaskObserver *observer = TaskObserver::instance();
    constexpr int tasks = 5;
    int inside = 0;
    int deepest = 0;
    QVector<int> ended;
    QStringList heardInside;
    std::promise<void> dialogIsUp;
    QObject context;
    connect(observer, &TaskObserver::taskStarted, &context, [&](const TaskReport &report) {
        if (inside > 0)
            heardInside.append(report.description);
    });
    for (int i = 0; i < tasks; ++i) {
        auto *task = new FreeTask;
        task->setDescription(QString::number(i));
        task->inAfterRun = [&, i] {
            deepest = qMax(deepest, ++inside);
            if (i == 0) {
                // What a dialog does. It stays up until the others have run, which the task list hears meanwhile.
                QEventLoop loop;
                dialogIsUp.set_value();
                const QMetaObject::Connection connection =
                    connect(observer, &TaskObserver::taskDetail, &context, [&loop] { loop.quit(); });
                loop.exec();
                disconnect(connection);
                QCoreApplication::processEvents();
            }
            --inside;
            ended.append(i);
        };
        if (i == 1)
            task->inRun = [&dialogIsUp] { dialogIsUp.get_future().wait(); };
        if (i == tasks - 1)
            task->inRun = [task] { task->reportDetail(QStringLiteral("the last one runs")); };
        observer->performTask(task);
    }
    QTRY_VERIFY(!observer->isBusy());
    QCOMPARE(deepest, 1);
    QCOMPARE(ended, (QVector<int>{0, 1, 2, 3, 4}));
    QVERIFY2(heardInside.contains(QStringLiteral("4")), "the other tasks went on under the dialog");
}

void TestTaskObserver::tasksMayStartTasks()
{
    QStringList order;
    auto *first = new FreeTask;
    first->inAfterRun = [&order] {
        auto *second = new FreeTask;
        second->inAfterRun = [&order] { order.append(QStringLiteral("second")); };
        TaskObserver::instance()->performTask(second);
        order.append(QStringLiteral("first"));
    };
    performAndWait(first);
    QCOMPARE(order, (QStringList{QStringLiteral("first"), QStringLiteral("second")}));
}

void TestTaskObserver::knowsWhatIsUnderWay()
{
    TaskObserver *observer = TaskObserver::instance();
    OrdinaryElement *element = newElement(QStringLiteral("busy"));
    const OrdinaryElement *other = newElement(QStringLiteral("idle"));
    QVERIFY(!observer->isBusy());
    QVERIFY(!observer->isChangingMachine());
    Gate gate;
    QVERIFY(observer->isBusy());
    QVERIFY(!observer->isChangingMachine());
    QVERIFY(!observer->isBusyWith(element));
    QVERIFY(!observer->isBusyWith(nullptr));

    bool busyInAfterRun = false;
    auto *task = new WriteTask(element);
    task->inAfterRun = [&] { busyInAfterRun = observer->isBusyWith(element); };
    observer->performTask(task);
    QVERIFY(observer->isChangingMachine());
    QVERIFY(observer->isBusyWith(element));
    QVERIFY(!observer->isBusyWith(other));
    gate.open();
    QTRY_VERIFY(!observer->isBusy());
    QVERIFY(busyInAfterRun);
    QVERIFY(!observer->isChangingMachine());
    QVERIFY(!observer->isBusyWith(element));
}

void TestTaskObserver::elementDeletedBeforeRun()
{
    OrdinaryElement *element = newElement(QStringLiteral("short-lived"));
    _editor->shown = element;
    Gate gate;
    auto *task = new ReadTask(element);
    QString title;
    task->inRun = [&, task] {
        title = task->elementTitle();
        task->setElementData(std::make_unique<CountedData>(&_records));
    };
    Element *seen = element;
    task->inAfterRun = [&, task] { seen = task->element(); };
    TaskObserver::instance()->performTask(task);
    delete element;
    const QSignalSpy finished(TaskObserver::instance(), &TaskObserver::taskFinished);
    gate.open();
    QTRY_VERIFY(!TaskObserver::instance()->isBusy());
    QVERIFY2(title == QLatin1String("short-lived"), "run() ran all the same");
    QCOMPARE(seen, nullptr);
    QCOMPARE(_editor->calls, QStringList());
    const auto report = finished.last().first().value<TaskReport>();
    QVERIFY(!report.element);
    QCOMPARE(report.elementTitle, QStringLiteral("short-lived"));
    QCOMPARE(report.status, TaskDescription::Succeeded);
}

void TestTaskObserver::elementDeletedBetweenRunAndAfterRun()
{
    OrdinaryElement *element = newElement(QStringLiteral("short-lived"));
    _editor->shown = element;
    auto *task = new ReadTask(element);
    std::promise<void> ran;
    task->inRun = [&, task] {
        task->setElementData(std::make_unique<CountedData>(&_records));
        ran.set_value();
    };
    TaskObserver::instance()->performTask(task);
    ran.get_future().wait(); // no event loop turns here, so afterRun() is still to come
    delete element;
    QTRY_VERIFY(!TaskObserver::instance()->isBusy());
    QCOMPARE(_editor->calls, QStringList());
}

void TestTaskObserver::elementDeletedBeforeAnUpdateEnds()
{
    OrdinaryElement *element = newElement(QStringLiteral("short-lived"));
    _editor->shown = element;
    Gate gate;
    bool ran = false;
    auto *task = new WriteTask(element, std::make_unique<CountedData>(&_records));
    task->inRun = [&] { ran = true; };
    TaskObserver::instance()->performTask(task);
    delete element;
    gate.open();
    QTRY_VERIFY(!TaskObserver::instance()->isBusy());
    QVERIFY(ran);
    QCOMPARE(_module->asked, QVector<OperationType>());
    QCOMPARE(_editor->calls, QStringList());
}

void TestTaskObserver::readHandsItsRecordOver_data()
{
    QTest::addColumn<bool>("fails");
    QTest::newRow("succeeded") << false;
    QTest::newRow("failed with a partial record") << true;
}

void TestTaskObserver::readHandsItsRecordOver()
{
    QFETCH(bool, fails);
    OrdinaryElement *element = newElement(QStringLiteral("read"));
    _editor->shown = element;
    auto *task = new ReadTask(element);
    const ElementData *made = nullptr;
    task->inRun = [&, task] {
        task->setElementData(std::make_unique<CountedData>(&_records));
        made = task->elementData();
        task->setStatus(fails ? TaskDescription::Failed : TaskDescription::Succeeded);
    };
    const QSignalSpy finished(TaskObserver::instance(), &TaskObserver::taskFinished);
    performAndWait(task);
    QCOMPARE(element->record(), made);
    QCOMPARE(_editor->calls, QStringList{QStringLiteral("read read configured")});
    QCOMPARE(finished.first().first().value<TaskReport>().status,
             fails ? TaskDescription::Failed : TaskDescription::Succeeded);
    QCOMPARE(_records, 1);
}

void TestTaskObserver::readLeavesAnEditorOfAnotherElementAlone()
{
    OrdinaryElement *read = newElement(QStringLiteral("read"));
    _editor->shown = newElement(QStringLiteral("shown"));
    auto *task = new ReadTask(read, std::make_unique<CountedData>(&_records));
    performAndWait(task);
    QVERIFY(read->record());
    QVERIFY(!_editor->shown->record());
    QCOMPARE(_editor->calls, QStringList());
}

void TestTaskObserver::readWithoutRecordLeavesEverything()
{
    OrdinaryElement *element = newElement(QStringLiteral("read"));
    element->setRecord(std::make_unique<CountedData>(&_records));
    const ElementData *before = element->record();
    _editor->shown = element;
    performAndWait(new ReadTask(element));
    QCOMPARE(element->record(), before);
    QCOMPARE(_editor->calls, QStringList());
}

void TestTaskObserver::updateReadsAgainAndTellsTheEditor_data()
{
    QTest::addColumn<bool>("fails");
    QTest::addColumn<QStringList>("calls");
    QTest::newRow("succeeded") << false << QStringList{QStringLiteral("updated"), QStringLiteral("unchanged")};
    QTest::newRow("failed") << true << QStringList();
}

void TestTaskObserver::updateReadsAgainAndTellsTheEditor()
{
    QFETCH(bool, fails);
    QFETCH(QStringList, calls);
    OrdinaryElement *element = newElement(QStringLiteral("updated"));
    _editor->shown = element;
    auto *task = new WriteTask(element, std::make_unique<CountedData>(&_records));
    task->inRun = [task, fails] {
        if (fails)
            task->setStatus(TaskDescription::Failed);
    };
    performAndWait(task);
    QCOMPARE(_module->asked, QVector<OperationType>{OperationType::Read});
    QCOMPARE(_editor->calls, calls);
}

void TestTaskObserver::updateLeavesAnEditorOfAnotherElementAlone()
{
    _editor->shown = newElement(QStringLiteral("shown"));
    performAndWait(new WriteTask(newElement(QStringLiteral("updated"))));
    QCOMPARE(_module->asked, QVector<OperationType>{OperationType::Read});
    QCOMPARE(_editor->calls, QStringList());
}

void TestTaskObserver::containerCountsAsReadHoweverTheReadEnds_data()
{
    QTest::addColumn<bool>("fails");
    QTest::newRow("succeeded") << false;
    QTest::newRow("failed") << true;
}

void TestTaskObserver::containerCountsAsReadHoweverTheReadEnds()
{
    QFETCH(bool, fails);
    using Content = ContainerElement::Content;
    auto *container = new ContainerElement(QStringLiteral("Things"), QString(), QStringLiteral("Things"), _module.get(),
                                           always, Element::Place::Top);
    QCOMPARE(container->content(), Content::NeverRead);
    auto *task = new ContentTask(container);
    task->inRun = [fails] {
        if (fails)
            throw std::runtime_error("no list");
    };
    TaskObserver::instance()->performTask(task);
    QCOMPARE(container->content(), Content::Reading);
    QTRY_VERIFY(!TaskObserver::instance()->isBusy());
    QCOMPARE(container->content(), Content::Read);
}

void TestTaskObserver::containerMarkedStaleDuringTheReadStaysStale()
{
    using Content = ContainerElement::Content;
    auto *container = new ContainerElement(QStringLiteral("Things"), QString(), QStringLiteral("Things"), _module.get(),
                                           always, Element::Place::Top);
    TaskObserver::instance()->performTask(new ContentTask(container));
    container->setContent(Content::Stale);
    QTRY_VERIFY(!TaskObserver::instance()->isBusy());
    QCOMPARE(container->content(), Content::Stale);
}

namespace
{

QStringList linesOfChild(const QString &way)
{
    const QTemporaryDir folder;
    const QString fileName = folder.filePath(QStringLiteral("lines"));
    QProcess child;
    child.setProcessChannelMode(QProcess::ForwardedChannels);
    child.start(QCoreApplication::applicationDirPath() + QStringLiteral("/kra-taskchild"), {way, fileName});
    if (!child.waitForFinished() || child.exitStatus() != QProcess::NormalExit || child.exitCode() != 0)
        return {QStringLiteral("the child ended badly")};
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly))
        return {QStringLiteral("the child wrote nothing")};
    return QString::fromUtf8(file.readAll()).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
}

} // namespace

void TestTaskObserver::finishesWritesWhateverEndsTheProcess_data()
{
    QTest::addColumn<QString>("way");
    QTest::newRow("closeDown()") << QStringLiteral("close");
    QTest::newRow("the end of main()") << QStringLiteral("return");
    QTest::newRow("exit()") << QStringLiteral("exit");
}

void TestTaskObserver::finishesWritesWhateverEndsTheProcess()
{
    QFETCH(QString, way);
    QStringList wanted{QStringLiteral("begin running"),   QStringLiteral("deleted read"),
                       QStringLiteral("asked to stop"),   QStringLiteral("end running"),
                       QStringLiteral("begin write"),     QStringLiteral("end write"),
                       QStringLiteral("deleted running"), QStringLiteral("deleted write")};
    if (way == QLatin1String("close"))
        wanted += {QStringLiteral("closed"), QStringLiteral("deleted late")};
    QCOMPARE(linesOfChild(way), wanted);
}

void TestTaskObserver::closesDownFromWithinAnAfterRun()
{
    QCOMPARE(linesOfChild(QStringLiteral("nested")),
             (QStringList{QStringLiteral("begin write"), QStringLiteral("end write"), QStringLiteral("deleted write"),
                          QStringLiteral("closed")}));
}

QTEST_GUILESS_MAIN(TestTaskObserver)
#include "tst_taskobserver.moc"
