// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <tasklistmodel.h>

#include <QAbstractItemModelTester>
#include <QSemaphore>
#include <QTextDocument>
#include <QtTest>

namespace
{
class Work : public AbstractTask
{
public:
    explicit Work(const QString &description, QSemaphore *gate = nullptr, bool changes = false)
        : _gate(gate)
        , _changes(changes)
    {
        setDescription(description);
    }

    void run() override
    {
        for (const QString &detail : details)
            reportDetail(detail);
        if (_gate)
            _gate->acquire();
        if (!failure.isEmpty()) {
            setStatus(Failed);
            setMessage(failure);
        }
        AbstractTask::run();
    }
    bool changesMachine() const override { return _changes; }

    QStringList details;
    QString failure;

private:
    QSemaphore *_gate;
    bool _changes;
};

/// What the tasks of a test wait for. When the test ends, also where it fails, they go on and have ended.
class Gate : public QSemaphore
{
public:
    Gate() = default;
    Gate(const Gate &) = delete;
    Gate &operator=(const Gate &) = delete;
    ~Gate()
    {
        constexpr int plenty = 1000;
        release(plenty);
        while (TaskObserver::instance()->isBusy())
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
};
} // namespace

class TaskListModelTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTRY_VERIFY(!TaskObserver::instance()->isBusy()); }
    void statesFollowTheTask();
    void headersAreAlignedAsTheirCells();
    void failureIsShownWithItsMessage();
    void noteIsNoFailure();
    void whatWasDoneIsTheMessage();
    void toolTipShowsMarkupAsItIsWritten();
    void detailsAreKeptAndBounded();
    void durationTicksWhileTheTaskRuns();
    void historyIsBounded();
    void finishedTasksAreForgotten();
    void writingTaskIsNamedFirst();
    void whatARunningTaskSaysIsItsMessage();
    void progressIsShownInNumbers();
    void whatCanBeCancelledIsCancelled();
    void aMinuteIsWrittenAsOne_data();
    void aMinuteIsWrittenAsOne();
    void noRowHasNoData();

private:
    static void perform(AbstractTask *task) { TaskObserver::instance()->performTask(task); }
    static QString text(const TaskListModel &model, TaskListModel::Column column, int row = 0)
    {
        return model.index(row, column).data().toString();
    }
};

void TaskListModelTest::statesFollowTheTask()
{
    TaskListModel model(*TaskObserver::instance());
    const QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::QtTest);
    Gate gate;
    perform(new Work(QStringLiteral("first"), &gate));
    perform(new Work(QStringLiteral("second"), &gate));
    QTRY_COMPARE(text(model, TaskListModel::StateColumn, 1), QStringLiteral("Running"));
    QCOMPARE(text(model, TaskListModel::TaskColumn, 1), QStringLiteral("first"));
    QCOMPARE(text(model, TaskListModel::StateColumn), QStringLiteral("Waiting"));
    QCOMPARE(text(model, TaskListModel::StartedColumn), QString());
    QCOMPARE(text(model, TaskListModel::DurationColumn), QString());
    QVERIFY(!text(model, TaskListModel::StartedColumn, 1).isEmpty());
    QCOMPARE(model.currentDescription(), QStringLiteral("first"));
    gate.release(2);
    QTRY_COMPARE(text(model, TaskListModel::StateColumn), QStringLiteral("Done"));
    QCOMPARE(text(model, TaskListModel::StateColumn, 1), QStringLiteral("Done"));
    QVERIFY(!text(model, TaskListModel::DurationColumn).isEmpty());
    QCOMPARE(model.currentDescription(), QString());
}

void TaskListModelTest::headersAreAlignedAsTheirCells()
{
    TaskListModel model(*TaskObserver::instance());
    perform(new AbstractTask);
    QTRY_COMPARE(model.rowCount(), 1);
    for (int column = 0; column < TaskListModel::ColumnCount; ++column)
        QCOMPARE(model.headerData(column, Qt::Horizontal, Qt::TextAlignmentRole),
                 model.index(0, column).data(Qt::TextAlignmentRole));
    QVERIFY(model.index(0, TaskListModel::DurationColumn).data(Qt::TextAlignmentRole).isValid());
}

void TaskListModelTest::failureIsShownWithItsMessage()
{
    TaskListModel model(*TaskObserver::instance());
    auto *work = new Work(QStringLiteral("write"));
    work->failure = QStringLiteral("no room\non the disk");
    work->details = QStringList{QStringLiteral("mount ended with 32")};
    perform(work);
    QTRY_COMPARE(text(model, TaskListModel::StateColumn), QStringLiteral("Failed"));
    QCOMPARE(text(model, TaskListModel::MessageColumn), QStringLiteral("no room on the disk"));
    const QString all = model.fullText(model.index(0, 0));
    QVERIFY(all.contains(QLatin1String("write")));
    QVERIFY(all.contains(QLatin1String("no room\non the disk")));
    QVERIFY(all.contains(QLatin1String("mount ended with 32")));
}

void TaskListModelTest::noteIsNoFailure()
{
    TaskListModel model(*TaskObserver::instance());
    for (const bool isNote : {true, false}) {
        auto *work = new Work(QStringLiteral("read"));
        work->failure = QStringLiteral("no file yet");
        work->setMessageNote(isNote);
        perform(work);
        QTRY_COMPARE(text(model, TaskListModel::MessageColumn), QStringLiteral("no file yet"));
        QCOMPARE(text(model, TaskListModel::StateColumn), isNote ? QStringLiteral("Done") : QStringLiteral("Failed"));
    }
}

void TaskListModelTest::whatWasDoneIsTheMessage()
{
    TaskListModel model(*TaskObserver::instance());
    auto *work = new Work(QStringLiteral("write"), nullptr, true);
    work->setResult(QStringLiteral("soft limit: 2 Gb\nhard limit: 3 Gb"));
    perform(work);
    QTRY_COMPARE(text(model, TaskListModel::MessageColumn), QStringLiteral("soft limit: 2 Gb hard limit: 3 Gb"));
    QVERIFY(model.fullText(model.index(0, 0)).contains(QStringLiteral("\nsoft limit: 2 Gb\nhard limit: 3 Gb")));
    work = new Work(QStringLiteral("write"), nullptr, true);
    work->setResult(QStringLiteral("soft limit: 2 Gb"));
    work->failure = QStringLiteral("disk full");
    perform(work);
    QTRY_COMPARE(text(model, TaskListModel::MessageColumn), QStringLiteral("disk full"));
    QVERIFY(!model.fullText(model.index(0, 0)).contains(QStringLiteral("2 Gb")));
}

void TaskListModelTest::toolTipShowsMarkupAsItIsWritten()
{
    TaskListModel model(*TaskObserver::instance());
    auto *work = new Work(QStringLiteral("write"));
    const QString failure = QStringLiteral("<h1>no</h1>\n<i>room</i>");
    work->failure = failure;
    perform(work);
    QTRY_COMPARE(text(model, TaskListModel::StateColumn), QStringLiteral("Failed"));
    QTextDocument shown;
    shown.setHtml(model.index(0, TaskListModel::MessageColumn).data(Qt::ToolTipRole).toString());
    QCOMPARE(shown.toPlainText(), failure);
}

void TaskListModelTest::detailsAreKeptAndBounded()
{
    TaskListModel model(*TaskObserver::instance());
    auto *work = new Work(QStringLiteral("talk"));
    for (int i = 0; i < TaskListModel::maximumDetails + 10; ++i)
        work->details.append(QStringLiteral("line %1.").arg(i));
    const QString last = work->details.constLast();
    perform(work);
    QTRY_COMPARE(text(model, TaskListModel::StateColumn), QStringLiteral("Done"));
    QVERIFY(text(model, TaskListModel::MessageColumn).isEmpty()); // how a program ended is not what the task did
    const QString all = model.fullText(model.index(0, 0));
    QVERIFY(all.contains(last));
    QVERIFY(all.contains(QLatin1String("line 10.")));
    QVERIFY(!all.contains(QLatin1String("line 9.")));
}

void TaskListModelTest::durationTicksWhileTheTaskRuns()
{
    TaskListModel model(*TaskObserver::instance());
    Gate gate;
    perform(new Work(QStringLiteral("long"), &gate));
    QTRY_COMPARE(text(model, TaskListModel::DurationColumn), QStringLiteral("0 s"));
    QTRY_COMPARE(text(model, TaskListModel::DurationColumn), QStringLiteral("1 s"));
    QSignalSpy spy(&model, &QAbstractItemModel::dataChanged);
    QTRY_VERIFY(!spy.isEmpty());
    gate.release();
    QTRY_COMPARE(text(model, TaskListModel::StateColumn), QStringLiteral("Done"));
}

void TaskListModelTest::historyIsBounded()
{
    TaskListModel model(*TaskObserver::instance());
    for (int i = 0; i < TaskListModel::maximumTasks + 5; ++i)
        perform(new Work(QString::number(i)));
    // None is forgotten before it has ended.
    QCOMPARE(model.rowCount(), TaskListModel::maximumTasks + 5);
    QTRY_VERIFY(!TaskObserver::instance()->isBusy());
    perform(new Work(QStringLiteral("last")));
    QCOMPARE(model.rowCount(), int(TaskListModel::maximumTasks));
    QCOMPARE(text(model, TaskListModel::TaskColumn), QStringLiteral("last"));
    QTRY_COMPARE(text(model, TaskListModel::StateColumn), QStringLiteral("Done"));
}

void TaskListModelTest::finishedTasksAreForgotten()
{
    TaskListModel model(*TaskObserver::instance());
    const QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::QtTest);
    Gate gate;
    perform(new Work(QStringLiteral("over")));
    perform(new Work(QStringLiteral("under way"), &gate));
    QTRY_COMPARE(text(model, TaskListModel::StateColumn), QStringLiteral("Running"));
    model.clearFinished();
    QCOMPARE(model.rowCount(), 1);
    QCOMPARE(text(model, TaskListModel::TaskColumn), QStringLiteral("under way"));
    gate.release();
    QTRY_COMPARE(text(model, TaskListModel::StateColumn), QStringLiteral("Done"));
    model.clearFinished();
    QCOMPARE(model.rowCount(), 0);
}

void TaskListModelTest::writingTaskIsNamedFirst()
{
    TaskListModel model(*TaskObserver::instance());
    Gate gate;
    perform(new Work(QStringLiteral("read"), &gate));
    perform(new Work(QStringLiteral("write"), &gate, true));
    QCOMPARE(model.currentDescription(), QStringLiteral("write"));
    gate.release(2);
    QTRY_COMPARE(model.currentDescription(), QString());
}

void TaskListModelTest::whatARunningTaskSaysIsItsMessage()
{
    TaskListModel model(*TaskObserver::instance());
    Gate gate;
    auto *work = new Work(QStringLiteral("read"), &gate);
    work->details = QStringList{QStringLiteral("one"), QStringLiteral("Running\nblkid")};
    perform(work);
    QTRY_COMPARE(text(model, TaskListModel::MessageColumn), QStringLiteral("Running blkid"));
    QCOMPARE(model.currentActivity(), QStringLiteral("Running blkid"));
}

void TaskListModelTest::progressIsShownInNumbers()
{
    QLocale::setDefault(QLocale(QLocale::English));
    QCOMPARE(TaskListModel::progressText({1200, 100000, QStringLiteral("accounts")}),
             QStringLiteral("1,200 of 100,000 accounts"));
    QCOMPARE(TaskListModel::progressText({3, 4, {}}), QStringLiteral("3 of 4"));
    QCOMPARE(TaskListModel::progressText({3, 0, QStringLiteral("lines")}), QStringLiteral("3 lines"));
    QCOMPARE(TaskListModel::progressText({}), QString());

    TaskListModel model(*TaskObserver::instance());
    Gate gate;
    auto *work = new Work(QStringLiteral("read"), &gate);
    work->details = QStringList{QStringLiteral("Running blkid")};
    perform(work);
    QTRY_COMPARE(text(model, TaskListModel::StateColumn), QStringLiteral("Running"));
    work->reportProgress({7, 8, QStringLiteral("accounts")});
    QTRY_COMPARE(text(model, TaskListModel::MessageColumn), QStringLiteral("7 of 8 accounts"));
    QCOMPARE(model.currentProgress().done, quint64(7));
    gate.release();
    QTRY_COMPARE(text(model, TaskListModel::StateColumn), QStringLiteral("Done"));
    QCOMPARE(text(model, TaskListModel::MessageColumn), QString());
    QCOMPARE(model.currentProgress().total, quint64(0));
}

void TaskListModelTest::whatCanBeCancelledIsCancelled()
{
    TaskListModel model(*TaskObserver::instance());
    Gate gate;
    perform(new Work(QStringLiteral("write"), &gate, true));
    perform(new Work(QStringLiteral("read"), &gate));
    QTRY_COMPARE(text(model, TaskListModel::StateColumn, 1), QStringLiteral("Running"));
    QVERIFY(!model.canCancel(model.index(1, 0))); // it writes
    QVERIFY(!model.canCancel({}));
    model.cancel({});
    model.cancel(model.index(1, 0));
    QVERIFY(model.canCancel(model.index(0, 3)));
    model.cancel(model.index(0, 3));
    QCOMPARE(text(model, TaskListModel::StateColumn), QStringLiteral("Cancelling"));
    QVERIFY(!model.canCancel(model.index(0, 0)));
    QTRY_COMPARE(text(model, TaskListModel::StateColumn), QStringLiteral("Cancelled"));
    QVERIFY(!text(model, TaskListModel::MessageColumn).isEmpty());
    QCOMPARE(text(model, TaskListModel::StateColumn, 1), QStringLiteral("Running"));
    QVERIFY(!model.canCancel(model.index(0, 0)));
}

void TaskListModelTest::aMinuteIsWrittenAsOne_data()
{
    QTest::addColumn<int>("milliseconds");
    QTest::addColumn<QString>("shown");
    QTest::newRow("a moment") << 1230 << QStringLiteral("1.23 s");
    QTest::newRow("seconds") << 59999 << QStringLiteral("59 s");
    QTest::newRow("a minute") << 60000 << QStringLiteral("1 min 0 s");
    QTest::newRow("more") << 61000 << QStringLiteral("1 min 1 s");
}

void TaskListModelTest::aMinuteIsWrittenAsOne()
{
    QFETCH(const int, milliseconds);
    QFETCH(const QString, shown);
    QLocale::setDefault(QLocale(QLocale::English));
    TaskListModel model(*TaskObserver::instance());
    TaskReport report;
    report.id = 1;
    Q_EMIT TaskObserver::instance()->taskQueued(report);
    report.startedAt = QDateTime::currentDateTime();
    report.runMilliseconds = milliseconds;
    report.status = TaskDescription::Succeeded;
    Q_EMIT TaskObserver::instance()->taskFinished(report);
    QCOMPARE(text(model, TaskListModel::DurationColumn), shown);
}

void TaskListModelTest::noRowHasNoData()
{
    const TaskListModel model(*TaskObserver::instance());
    static int warnings;
    warnings = 0;
    const QtMessageHandler before =
        qInstallMessageHandler([](QtMsgType, const QMessageLogContext &, const QString &) { ++warnings; });
    const bool hasData = model.data({}, Qt::DisplayRole).isValid();
    const QString all = model.fullText({});
    qInstallMessageHandler(before);
    QVERIFY(!hasData);
    QVERIFY(all.isEmpty());
    QCOMPARE(warnings, 0);
}

QTEST_GUILESS_MAIN(TaskListModelTest)
#include "tst_tasklistmodel.moc"
