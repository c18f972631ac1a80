// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "windowtest.h"

#include <QApplication>
#include <QSettings>

/// How the window is closed, by people and by signals, with changes and with writes under way.
class ClosingTest : public WindowTest
{
    Q_OBJECT

private Q_SLOTS:
    void closingAsksForChanges();
    void closingWhileAQuestionStandsFollowsItsAnswer_data();
    void closingWhileAQuestionStandsFollowsItsAnswer();
    void closingTwiceUnderTheQuestionIsClosingOnce();
    void closingWaitsForAWrite();
    void closingCanBeTakenBack();
    void stayingEndsTheClosingThoughAWriteRuns();
    void closedOnceMoreTheWindowGoesBeforeTheWriteHasEnded();
    void terminationIsNotHeldUp_data();
    void terminationIsNotHeldUp();
    void terminationCanBeTakenBack();
    void failedWriteKeepsTheWindow();
    void failureIsNotSaidOfWhatHasSucceededSince();
    void failedReadKeepsNoWindow();
};

void ClosingTest::closingAsksForChanges()
{
    clickAndWait(_fake->form());
    typeChange(QStringLiteral("precious"));
    int asked = 0;
    answer(QMessageBox::Cancel, &asked);
    _window->close();
    QCOMPARE(asked, 1);
    QVERIFY(_window->isVisible());
    QCOMPARE(_fake->line()->text(), QStringLiteral("precious"));
    answer(QMessageBox::Save, &asked);
    _window->close();
    QTRY_VERIFY(!_window->isVisible());
    QCOMPARE(_fake->stored, QStringLiteral("precious"));
}

void ClosingTest::closingWhileAQuestionStandsFollowsItsAnswer_data()
{
    QTest::addColumn<int>("button");
    QTest::addColumn<bool>("closes");
    QTest::addColumn<QString>("stored");
    QTest::newRow("apply") << int(QMessageBox::Save) << true << QStringLiteral("precious");
    QTest::newRow("discard") << int(QMessageBox::Discard) << true << QStringLiteral("as read");
    QTest::newRow("stay") << int(QMessageBox::Cancel) << false << QStringLiteral("as read");
}

void ClosingTest::closingWhileAQuestionStandsFollowsItsAnswer()
{
    QFETCH(int, button);
    QFETCH(bool, closes);
    QFETCH(QString, stored);
    clickAndWait(_fake->form());
    typeChange(QStringLiteral("precious"));
    int asked = 0;
    QTimer closing;
    connect(&closing, &QTimer::timeout, this, [&] {
        if (!_pages->isAsking())
            return;
        closing.stop();
        _window->close(); // as a signal does
        QVERIFY(_window->isVisible());
        answer(static_cast<QMessageBox::StandardButton>(button), &asked);
    });
    closing.start(1);
    click(computer()); // which asks
    QTRY_COMPARE(asked, 1);
    QTRY_COMPARE(_window->isVisible(), !closes);
    waitForTasks();
    QTimer askedAgain;
    connect(&askedAgain, &QTimer::timeout, this, [&] {
        if (auto *box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget())) {
            ++asked;
            box->reject();
        }
    });
    askedAgain.start(1);
    QCoreApplication::processEvents(); // what was put off until after the answer
    QCOMPARE(asked, 1);
    QCOMPARE(_fake->stored, stored);
    if (!closes)
        QCOMPARE(_fake->line()->text(), QStringLiteral("precious"));
}

/// A second time would end the waiting for the write.
void ClosingTest::closingTwiceUnderTheQuestionIsClosingOnce()
{
    clickAndWait(_fake->form());
    _fake->writesWait = true;
    typeChange(QStringLiteral("precious"));
    int asked = 0;
    QTimer closing;
    connect(&closing, &QTimer::timeout, this, [&] {
        if (!_pages->isAsking())
            return;
        closing.stop();
        _window->close();
        answer(QMessageBox::Save, &asked);
    });
    closing.start(1);
    _window->close();
    QCOMPARE(asked, 1);
    QCoreApplication::processEvents(); // the answer is told behind the events that wait
    QCoreApplication::processEvents();
    QVERIFY(_window->isVisible());
    QVERIFY(find<NoticeBar>("closingNotice")->isVisible());
    _fake->gate.release();
    QTRY_VERIFY(!_window->isVisible());
    QCOMPARE(_fake->stored, QStringLiteral("precious"));
}

void ClosingTest::closingWaitsForAWrite()
{
    clickAndWait(_fake->form());
    _fake->writesWait = true;
    typeChange(QStringLiteral("slow"));
    QTest::keyClick(_window.get(), Qt::Key_S, Qt::ControlModifier);
    QTRY_VERIFY(TaskObserver::instance()->isChangingMachine());
    QTest::keyClick(_window.get(), Qt::Key_Q, Qt::ControlModifier);
    const auto *notice = find<NoticeBar>("closingNotice");
    QTRY_VERIFY(notice->isVisible());
    QVERIFY2(notice->text().startsWith(QLatin1String("Waiting for \"Write fake\" to finish. The console closes then")),
             qPrintable(notice->text()));
    Q_EMIT TaskObserver::instance()->taskDetail(_lastTask, QStringLiteral("Running a program"));
    QVERIFY2(notice->text().contains(QLatin1String("\"Write fake\" (Running a program)")), qPrintable(notice->text()));
    QVERIFY(_window->isVisible());
    _fake->gate.release();
    QTRY_VERIFY(!_window->isVisible());
    QCOMPARE(_fake->stored, QStringLiteral("slow"));
}

void ClosingTest::closingCanBeTakenBack()
{
    clickAndWait(_fake->form());
    _fake->writesWait = true;
    typeChange(QStringLiteral("slow"));
    QTest::keyClick(_window.get(), Qt::Key_S, Qt::ControlModifier);
    QTRY_VERIFY(TaskObserver::instance()->isChangingMachine());
    _window->close();
    const auto *notice = find<NoticeBar>("closingNotice");
    QTRY_VERIFY(notice->isVisible());
    pressKeyOfButton(notice);
    QTRY_VERIFY(!notice->isVisible());
    _fake->gate.release();
    waitForTasks();
    QVERIFY(_window->isVisible());
}

void ClosingTest::stayingEndsTheClosingThoughAWriteRuns()
{
    class WaitingWrite : public UpdateTask
    {
    public:
        explicit WaitingWrite(QSemaphore *gate)
            : UpdateTask(nullptr)
            , _gate(gate)
        {}
        void run() override
        {
            _gate->acquire();
            UpdateTask::run();
        }

    private:
        QSemaphore *_gate;
    };
    clickAndWait(_fake->form());
    typeChange(QStringLiteral("not done yet"));
    TaskObserver::instance()->performTask(new WaitingWrite(&_fake->gate));
    int asked = 0;
    answer(QMessageBox::Cancel, &asked);
    _window->close();
    QCOMPARE(asked, 1);
    QVERIFY(!find<NoticeBar>("closingNotice")->isVisible());
    _fake->gate.release();
    waitForTasks();
    QVERIFY(_window->isVisible());
    QCOMPARE(asked, 1);
    QVERIFY(_pages->canApply());
}

void ClosingTest::closedOnceMoreTheWindowGoesBeforeTheWriteHasEnded()
{
    clickAndWait(_fake->form());
    _fake->writesWait = true;
    typeChange(QStringLiteral("slow"));
    QTest::keyClick(_window.get(), Qt::Key_S, Qt::ControlModifier);
    QTRY_VERIFY(TaskObserver::instance()->isChangingMachine());
    _window->close();
    QVERIFY(_window->isVisible());
    _window->close();
    QVERIFY(!_window->isVisible());
    QVERIFY(TaskObserver::instance()->isChangingMachine());
    QCOMPARE(_fake->stored, QStringLiteral("as read"));
    _fake->gate.release();
    QTRY_COMPARE(_fake->stored, QStringLiteral("slow"));
}

void ClosingTest::terminationIsNotHeldUp_data()
{
    QTest::addColumn<bool>("writes");
    QTest::addColumn<bool>("asksAgain");
    QTest::newRow("question, second signal") << false << true;
    QTest::newRow("question, no answer in time") << false << false;
    QTest::newRow("write, second signal") << true << true;
    QTest::newRow("write that takes too long") << true << false;
}

void ClosingTest::terminationIsNotHeldUp()
{
    QFETCH(const bool, writes);
    QFETCH(const bool, asksAgain);
    clickAndWait(_fake->form());
    _fake->writesWait = true;
    typeChange(QStringLiteral("precious"));
    if (writes) {
        QTest::keyClick(_window.get(), Qt::Key_S, Qt::ControlModifier);
        QTRY_VERIFY(TaskObserver::instance()->isChangingMachine());
    }
    auto *grace = find<QTimer>("terminationGrace");
    QTimer look;
    connect(&look, &QTimer::timeout, this, [&] {
        const bool waits =
            writes ? find<NoticeBar>("closingNotice")->isVisible() : QApplication::activeModalWidget() != nullptr;
        if (!waits)
            return;
        look.stop();
        QVERIFY(grace->isActive());
        if (asksAgain)
            _window->terminate();
        else
            grace->start(0);
    });
    look.start(1);
    QTimer::singleShot(0, _window.get(), &MainWindow::terminate);
    QApplication::exec();
    QVERIFY(!_window->isVisible());
    QVERIFY(QSettings().contains(QStringLiteral("window/geometry")));
    QVERIFY(!QApplication::activeModalWidget());
    QCOMPARE(_fake->stored, QStringLiteral("as read"));
    QCOMPARE(TaskObserver::instance()->isChangingMachine(), writes);
    _fake->gate.release(); // the write is done all the same
    QTRY_COMPARE(_fake->stored, writes ? QStringLiteral("precious") : QStringLiteral("as read"));
}

void ClosingTest::terminationCanBeTakenBack()
{
    clickAndWait(_fake->form());
    typeChange(QStringLiteral("precious"));
    int asked = 0;
    answer(QMessageBox::Cancel, &asked);
    _window->terminate();
    QCOMPARE(asked, 1);
    QTRY_VERIFY(!find<QTimer>("terminationGrace")->isActive());
    QVERIFY(_window->isVisible());
    QCOMPARE(_fake->line()->text(), QStringLiteral("precious"));
}

void ClosingTest::failedWriteKeepsTheWindow()
{
    clickAndWait(_fake->form());
    _fake->writesWait = true;
    _fake->writesFail = true;
    typeChange(QStringLiteral("lost?"));
    int asked = 0;
    answer(QMessageBox::Save, &asked);
    _window->close();
    QCOMPARE(asked, 1);
    const auto *notice = find<NoticeBar>("closingNotice");
    QTRY_VERIFY(notice->isVisible());
    _fake->gate.release();
    waitForTasks();
    QVERIFY(_window->isVisible());
    QTRY_COMPARE(notice->text(), QStringLiteral("The console stays open, since \"Write fake\" failed."));
    _window->activateWindow(); // which no window manager does here when the question is gone
    QVERIFY(QTest::qWaitForWindowActive(_window.get()));
    pressKeyOfButton(notice);
    QTRY_VERIFY(!notice->isVisible());
}

void ClosingTest::failureIsNotSaidOfWhatHasSucceededSince()
{
    clickAndWait(_fake->form());
    _fake->writesWait = true;
    _fake->writesFail = true;
    typeChange(QStringLiteral("precious"));
    QTest::keyClick(_window.get(), Qt::Key_S, Qt::ControlModifier);
    QTRY_VERIFY(TaskObserver::instance()->isChangingMachine());
    _window->close();
    _fake->gate.release();
    waitForTasks();
    const auto *notice = find<NoticeBar>("closingNotice");
    QTRY_VERIFY(notice->text().contains(QLatin1String("failed")));
    _fake->writesWait = false;
    _fake->writesFail = false;
    QTest::keyClick(_window.get(), Qt::Key_S, Qt::ControlModifier);
    QTRY_COMPARE(_fake->stored, QStringLiteral("precious"));
    QTRY_VERIFY(!notice->isVisible());
    QVERIFY(_window->isVisible());
}

/// A read changes nothing, and its failure takes nothing from what the window waits for.
void ClosingTest::failedReadKeepsNoWindow()
{
    class FailingRead : public AbstractTask
    {
    public:
        explicit FailingRead(QSemaphore *gate)
            : _gate(gate)
        {}
        void run() override
        {
            _gate->acquire();
            setStatus(Failed);
            AbstractTask::run();
        }

    private:
        QSemaphore *_gate;
    };
    clickAndWait(_fake->form());
    typeChange(QStringLiteral("slow"));
    QSemaphore gate;
    TaskObserver::instance()->performTask(new FailingRead(&gate));
    _fake->writesWait = true;
    QTest::keyClick(_window.get(), Qt::Key_S, Qt::ControlModifier);
    QTRY_VERIFY(TaskObserver::instance()->isChangingMachine());
    _window->close();
    QTRY_VERIFY(find<NoticeBar>("closingNotice")->isVisible());
    QSignalSpy finished(TaskObserver::instance(), &TaskObserver::taskFinished);
    gate.release();
    QTRY_COMPARE(finished.count(), 1);
    QCOMPARE(finished.at(0).at(0).value<TaskReport>().status, TaskDescription::Failed);
    _fake->gate.release();
    QTRY_VERIFY(!_window->isVisible());
}

QTEST_MAIN(ClosingTest)
#include "tst_closing.moc"
