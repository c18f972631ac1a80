// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <taskindicator.h>
#include <tasklistmodel.h>
#include <taskpane.h>

#include <QApplication>
#include <QClipboard>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QSemaphore>
#include <QSignalSpy>
#include <QTest>
#include <QToolButton>
#include <QTreeView>

namespace
{

class Work : public AbstractTask
{
public:
    Work(QSemaphore *gate, bool changes)
        : _gate(gate)
        , _changes(changes)
    {
        setDescription(changes ? QStringLiteral("write") : QStringLiteral("read"));
    }
    void run() override
    {
        reportProgress({3, 12, QStringLiteral("100 % accounts")});
        while (!isCancelled() && !_gate->tryAcquire(1, 10)) {
        }
        AbstractTask::run();
    }
    bool changesMachine() const override { return _changes; }

private:
    QSemaphore *_gate;
    bool _changes;
};

} // namespace

class TaskPaneTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup();
    void cancelIsOfferedWhereItWorks_data();
    void cancelIsOfferedWhereItWorks();
    void theChosenTaskIsCopied();
    void whatIsSelectedInTheDetailsStays();
    void theIndicatorCounts();

private:
    void perform(bool changes) { TaskObserver::instance()->performTask(new Work(&_gate, changes)); }
    QSemaphore _gate;
};

void TaskPaneTest::cleanup()
{
    _gate.release(10);
    QTRY_VERIFY(!TaskObserver::instance()->isBusy());
    _gate.acquire(_gate.available());
}

void TaskPaneTest::cancelIsOfferedWhereItWorks_data()
{
    QTest::addColumn<bool>("byKey");
    QTest::newRow("button") << false;
    QTest::newRow("key") << true;
}

void TaskPaneTest::cancelIsOfferedWhereItWorks()
{
    QFETCH(const bool, byKey);
    TaskListModel model(*TaskObserver::instance());
    TaskPane pane(&model);
    pane.show();
    QVERIFY(QTest::qWaitForWindowActive(&pane));
    auto *view = pane.findChild<QTreeView *>();
    auto *button = pane.findChild<QToolButton *>(QStringLiteral("cancelButton"));
    view->setFocus();
    QVERIFY(!button->isEnabled());
    perform(false);
    perform(true);
    QTRY_COMPARE(model.index(1, 0).data().toString(), QStringLiteral("Running"));
    view->setCurrentIndex(model.index(0, 0));
    QVERIFY(!button->isEnabled());
    QTest::keyClick(view, Qt::Key_Delete);
    QVERIFY(!model.canCancel(model.index(0, 0)));
    view->setCurrentIndex(model.index(1, 0));
    QVERIFY(button->isEnabled());
    if (byKey)
        QTest::keyClick(view, Qt::Key_Delete);
    else
        button->click();
    QTRY_COMPARE(model.index(1, 0).data().toString(), QStringLiteral("Cancelled"));
    QVERIFY(!button->isEnabled());
    _gate.release();
    QTRY_COMPARE(model.index(0, 0).data().toString(), QStringLiteral("Done"));
}

void TaskPaneTest::theChosenTaskIsCopied()
{
    TaskListModel model(*TaskObserver::instance());
    TaskPane pane(&model);
    pane.show();
    QVERIFY(QTest::qWaitForWindowActive(&pane));
    auto *view = pane.findChild<QTreeView *>();
    view->setFocus();
    QApplication::clipboard()->setText(QStringLiteral("before"));
    static int warnings;
    warnings = 0;
    const QtMessageHandler handler =
        qInstallMessageHandler([](QtMsgType, const QMessageLogContext &, const QString &) { ++warnings; });
    QTest::keyClick(view, Qt::Key_C, Qt::ControlModifier); // there is no task
    qInstallMessageHandler(handler);
    QCOMPARE(warnings, 0);
    perform(false);
    view->setCurrentIndex(model.index(0, 0));
    QTest::keyClick(view, Qt::Key_C, Qt::ControlModifier);
    QVERIFY2(QApplication::clipboard()->text().startsWith(QLatin1String("read\n")),
             qPrintable(QApplication::clipboard()->text()));
}

void TaskPaneTest::whatIsSelectedInTheDetailsStays()
{
    TaskListModel model(*TaskObserver::instance());
    TaskPane pane(&model);
    pane.show();
    QSignalSpy queued(TaskObserver::instance(), &TaskObserver::taskQueued);
    perform(false);
    perform(true);
    const auto say = [&queued](int task, const QString &text) {
        Q_EMIT TaskObserver::instance()->taskDetail(queued.at(task).at(0).value<TaskReport>().id, text);
    };
    auto *view = pane.findChild<QTreeView *>();
    auto *details = pane.findChild<QPlainTextEdit *>(QStringLiteral("details"));
    const QModelIndex row = model.index(1, 0); // the last one comes first
    view->setCurrentIndex(row);
    say(0, QStringLiteral("a first line"));
    QVERIFY(details->find(QStringLiteral("first"), QTextDocument::FindBackward) ||
            details->find(QStringLiteral("first")));
    say(0, QStringLiteral("a second one"));
    QCOMPARE(details->textCursor().selectedText(), QStringLiteral("first"));
    QVERIFY(details->toPlainText().endsWith(QLatin1String("\na first line\na second one")));
    _gate.release(); // and another state than "Running"
    QTRY_COMPARE(row.data().toString(), QStringLiteral("Done"));
    QCOMPARE(details->textCursor().selectedText(), QStringLiteral("first"));
    QCOMPARE(details->toPlainText(), model.fullText(row));
    say(1, QStringLiteral("one\r\ntwo")); // no document keeps the first of these
    view->setCurrentIndex(model.index(0, 0));
    QVERIFY(!details->textCursor().hasSelection()); // it was of another task
    say(1, QStringLiteral("three"));
    QVERIFY(details->toPlainText().endsWith(QLatin1String("three")));
    QCOMPARE(details->toPlainText().count(QLatin1String("two")), 1);
}

void TaskPaneTest::theIndicatorCounts()
{
    TaskListModel model(*TaskObserver::instance());
    TaskIndicator indicator(&model);
    const auto *bar = indicator.findChild<QProgressBar *>();
    QVERIFY(indicator.isHidden());
    perform(false);
    QTRY_COMPARE(bar->text(), QStringLiteral("3 of 12 100 % accounts"));
    QVERIFY(!indicator.isHidden());
    QVERIFY(bar->isTextVisible());
    QCOMPARE(bar->value() * 12, 3 * bar->maximum());
    _gate.release();
    QTRY_VERIFY(indicator.isHidden());
    perform(true);
    QCOMPARE(bar->maximum(), 0); // not known yet
}

QTEST_MAIN(TaskPaneTest)
#include "tst_taskpane.moc"
