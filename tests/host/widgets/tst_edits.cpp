// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "stubmachine.h"

#include <QApplication>
#include <QMessageBox>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>
#include <QToolTip>

using namespace toys;

/// What becomes of what was typed into one editor while real tasks read and write.
class EditsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void failedUpdateKeepsWhatWasTyped_data();
    void failedUpdateKeepsWhatWasTyped();
    void failedUpdateWithoutAReadKeepsItToo();
    void successfulUpdateShowsWhatTheMachineHas();
    void readsThatWaitKeepThePageShut();
    void readThatSomebodyElseStartsShutsThePage();
    void recordThatComesToAChangedPageGoesToItsElement();
    void cancelledTasksLeaveThePageAsItWas();
    void revertIsNotUndoneByAFailedRead();
    void revertIsNotUndoneByACancelledRead();
    void cancelledReadAfterAnUpdateKeepsThePageShut();
    void cancelledUpdateLeavesTheRecordAsNewAsItWas();
    void refusalIsOverWithTheNextKey();
    void refusalOfAPageThatIsReadIsOverWhenThatEnds();
    void updateThatSomebodyElseStartsShutsThePage();
    void refusalSaysWhy();
    void refusalOfTheEditorItselfSaysWhy();
    void refusalWithoutAReasonSaysSomething();
    void warningComesBeforeTheExport();
    void warningDoesNotComeForInvalidContent();
    void pageThatWasReadUnderTheWarningIsNotApplied();
    void editedPageThatWasReadUnderTheWarningKeepsWhatWasTyped();
    void pageThatIsBeingReadUnderTheWarningIsNotApplied();
    void pageThatWasLeftUnderTheWarningIsNotApplied();
    void editorMayGoUnderTheWarning();

private:
    class CarefulEditor : public Editor
    {
    public:
        using Editor::Editor;
        QString whyInvalid() const override
        {
            return line->text() == QLatin1String("bad") ? QStringLiteral("<b>bad</b> is not good")
                                                        : Editor::whyInvalid();
        }
        ApplyWarning warningBeforeApply() const override { return {QStringLiteral("Careful"), warning}; }
        QWidget *invalidField() const override
        {
            return line->text() == QLatin1String("bad") ? line : Editor::invalidField();
        }
        QString warning;
    };

    void waitForTasks() { QTRY_VERIFY(!TaskObserver::instance()->isBusy()); }
    void read()
    {
        editor->read();
        waitForTasks();
    }
    void whileTheBoxStands(const std::function<void(QMessageBox *)> &act);
    /// Asks the task that was handed over last to stop, and lets it.
    void cancelLast()
    {
        QVERIFY(TaskObserver::instance()->cancel(queued->last().at(0).value<TaskReport>().id));
        machine->gate.release(100);
        waitForTasks();
        machine->gate.tryAcquire(machine->gate.available());
    }

    std::unique_ptr<QSignalSpy> queued;
    std::unique_ptr<QTimer> boxWatcher;
    std::unique_ptr<StubMachine> machine;
    std::unique_ptr<ToyModule> module;
    std::unique_ptr<Ordinary> element;
    QPointer<CarefulEditor> editor;
};

void EditsTest::init()
{
    machine = std::make_unique<StubMachine>();
    module = std::make_unique<ToyModule>();
    machine->serve(*module);
    element = std::make_unique<Ordinary>(module.get(), QStringLiteral("anna"));
    machine->setText(element.get(), QStringLiteral("stored"));
    editor = new CarefulEditor(module.get());
    module->insertElementWidget(editor);
    editor->setElement(element.get());
    editor->show();
    queued = std::make_unique<QSignalSpy>(TaskObserver::instance(), &TaskObserver::taskQueued);
    read();
    QVERIFY(editor->isEditable());
    QCOMPARE(editor->line->text(), QStringLiteral("stored"));
}

void EditsTest::cleanup()
{
    boxWatcher.reset();
    machine->gate.release(100);
    waitForTasks();
    element.reset();
    module.reset();
    machine.reset();
}

void EditsTest::whileTheBoxStands(const std::function<void(QMessageBox *)> &act)
{
    boxWatcher = std::make_unique<QTimer>();
    connect(boxWatcher.get(), &QTimer::timeout, this, [this, act] {
        auto *box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget());
        if (!box)
            return;
        boxWatcher->stop();
        act(box);
    });
    boxWatcher->start(0);
}

void EditsTest::failedUpdateKeepsWhatWasTyped_data()
{
    QTest::addColumn<bool>("isHalfDone");
    QTest::addColumn<bool>("readFails");
    QTest::addColumn<QString>("stored");
    QTest::newRow("nothing was written") << false << false << QStringLiteral("stored");
    QTest::newRow("half was written") << true << false << QStringLiteral("half");
    QTest::newRow("nor can it be read") << false << true << QStringLiteral("stored");
}

void EditsTest::failedUpdateKeepsWhatWasTyped()
{
    QFETCH(bool, isHalfDone);
    QFETCH(bool, readFails);
    QFETCH(QString, stored);
    machine->writesFail = !isHalfDone;
    machine->writesFailHalfway = isHalfDone;
    machine->readsFail = readFails;
    editor->type(QStringLiteral("mine"));
    editor->applyContentChanges();
    QVERIFY(!editor->isEditable());
    waitForTasks();
    QCOMPARE(machine->text(element.get()), stored);
    QCOMPARE(element->record()->text, stored);
    QCOMPARE(editor->line->text(), QStringLiteral("mine"));
    QVERIFY(editor->isContentChanged());
    QVERIFY(editor->isEditable());
    QVERIFY(editor->line->isEnabled());

    machine->readsFail = false;
    editor->reset();
    waitForTasks();
    QCOMPARE(editor->line->text(), stored);
    QVERIFY(!editor->isContentChanged());
    QVERIFY(editor->isEditable());

    editor->type(QStringLiteral("mine again"));
    editor->applyContentChanges();
    waitForTasks();
    machine->writesFail = false;
    machine->writesFailHalfway = false;
    editor->applyContentChanges();
    waitForTasks();
    QCOMPARE(machine->text(element.get()), QStringLiteral("mine again"));
    QCOMPARE(editor->line->text(), QStringLiteral("mine again"));
    QVERIFY(!editor->isContentChanged());
    QVERIFY(editor->isEditable());
}

void EditsTest::failedUpdateWithoutAReadKeepsItToo()
{
    class WriteOnly : public Ordinary
    {
    public:
        using Ordinary::Ordinary;
        OperationTypes availableOperations() const override { return OperationType::Write; }
    };
    WriteOnly other(module.get(), QStringLiteral("bob"));
    other.setText(QStringLiteral("stored"));
    editor->setElement(&other);
    machine->writesFail = true;
    editor->type(QStringLiteral("mine"));
    editor->applyContentChanges();
    waitForTasks();
    QCOMPARE(editor->line->text(), QStringLiteral("mine"));
    QVERIFY(editor->isContentChanged());
    QVERIFY(editor->isEditable());
    editor->setElement(nullptr);
}

void EditsTest::successfulUpdateShowsWhatTheMachineHas()
{
    editor->type(QStringLiteral("mine"));
    editor->applyContentChanges();
    machine->isSlow = true; // the read after it
    QTRY_VERIFY(TaskObserver::instance()->isReading(element.get()));
    QVERIFY(!editor->isContentChanged());
    QVERIFY(!editor->isEditable());
    machine->setText(element.get(), QStringLiteral("mine, and more"));
    machine->gate.release();
    waitForTasks();
    QCOMPARE(editor->line->text(), QStringLiteral("mine, and more"));
    QVERIFY(editor->isEditable());
}

void EditsTest::readsThatWaitKeepThePageShut()
{
    machine->isSlow = true;
    editor->read();
    editor->read();
    editor->read();
    for (int ended = 1; ended < 3; ++ended) {
        const int before = editor->reads;
        machine->gate.release();
        QTRY_COMPARE(editor->reads, before + 1);
        QCoreApplication::processEvents();
        QVERIFY(!editor->isEditable());
        QVERIFY(!editor->line->isEnabled());
        editor->type(QStringLiteral("typed too early"));
        QVERIFY(!editor->isContentChanged());
    }
    machine->gate.release();
    waitForTasks();
    QVERIFY(editor->isEditable());
    QVERIFY(editor->line->isEnabled());
    QCOMPARE(editor->line->text(), QStringLiteral("stored"));
}

void EditsTest::readThatSomebodyElseStartsShutsThePage()
{
    machine->isSlow = true;
    QSignalSpy editable(editor, &ViewEditElementWidget::editableChanged);
    element->performOperation(OperationType::Read, nullptr, 0);
    QVERIFY(!editor->isEditable());
    QVERIFY(!editor->line->isEnabled());
    QVERIFY(!editable.isEmpty());
    Ordinary other(module.get(), QStringLiteral("bob"));
    other.setText(QStringLiteral("bob's"));
    editor->setElement(&other);
    QVERIFY(editor->isEditable()); // a read of one element shuts the pages of no other
    editor->setElement(element.get());
    QVERIFY(!editor->isEditable());
    machine->gate.release();
    waitForTasks();
    QVERIFY(editor->isEditable());
}

void EditsTest::recordThatComesToAChangedPageGoesToItsElement()
{
    editor->type(QStringLiteral("mine"));
    machine->setText(element.get(), QStringLiteral("newer"));
    element->performOperation(OperationType::Read, nullptr, 0);
    QVERIFY(!editor->isEditable());
    QVERIFY(editor->isContentChanged());
    waitForTasks();
    QCOMPARE(element->record()->text, QStringLiteral("newer"));
    QCOMPARE(editor->line->text(), QStringLiteral("mine"));
    QVERIFY(editor->isContentChanged());
    QVERIFY(editor->isEditable());
    editor->reset();
    waitForTasks();
    QCOMPARE(editor->line->text(), QStringLiteral("newer"));
}

void EditsTest::cancelledTasksLeaveThePageAsItWas()
{
    machine->isSlow = true;
    editor->read();
    cancelLast();
    QVERIFY(editor->isEditable());
    QCOMPARE(editor->line->text(), QStringLiteral("stored"));

    Ordinary neverRead(module.get(), QStringLiteral("bob"));
    editor->setElement(&neverRead);
    editor->read();
    cancelLast();
    QVERIFY2(!editor->isEditable(), "nothing of it was ever shown");
    editor->setElement(nullptr);
}

void EditsTest::revertIsNotUndoneByAFailedRead()
{
    editor->type(QStringLiteral("mine"));
    machine->readsFail = true;
    editor->reset();
    QVERIFY(!editor->isContentChanged());
    waitForTasks();
    QVERIFY(!editor->isContentChanged());
    QVERIFY2(!editor->isEditable(), "no usable record came");
    machine->readsFail = false;
    machine->readsFailPartly = true;
    read();
    QVERIFY(editor->isEditable());
    QCOMPARE(editor->line->text(), QStringLiteral("stored"));
}

void EditsTest::revertIsNotUndoneByACancelledRead()
{
    editor->type(QStringLiteral("mine"));
    machine->isSlow = true;
    editor->reset();
    QCOMPARE(editor->line->text(), QStringLiteral("mine"));
    cancelLast();
    QVERIFY(editor->isEditable());
    QVERIFY(!editor->isContentChanged());
    QCOMPARE(editor->line->text(), QStringLiteral("stored"));

    // What is typed while a newer record goes to the element is not that record.
    machine->isSlow = false;
    editor->type(QStringLiteral("mine"));
    machine->setText(element.get(), QStringLiteral("newer"));
    element->performOperation(OperationType::Read, nullptr, 0);
    waitForTasks();
    QCOMPARE(editor->line->text(), QStringLiteral("mine"));
    machine->isSlow = true;
    editor->reset();
    cancelLast();
    QCOMPARE(editor->line->text(), QStringLiteral("newer"));

    const int before = editor->reads;
    editor->read();
    cancelLast();
    QVERIFY(editor->isEditable());
    QCOMPARE(editor->reads, before); // it was shown all the time
}

void EditsTest::cancelledReadAfterAnUpdateKeepsThePageShut()
{
    QSignalSpy refused(editor, &ViewEditElementWidget::refused);
    editor->type(QStringLiteral("mine"));
    editor->applyContentChanges();
    machine->isSlow = true;
    QTRY_VERIFY(TaskObserver::instance()->isReading(element.get()));
    cancelLast();
    QCOMPARE(machine->text(element.get()), QStringLiteral("mine"));
    QCOMPARE(editor->line->text(), QStringLiteral("mine"));
    QVERIFY(!editor->isEditable());
    QVERIFY(!refused.last().at(0).toString().isEmpty());

    editor->read();
    cancelLast();
    QVERIFY2(!editor->isEditable(), "it is still not known what the machine has");

    machine->isSlow = false;
    Ordinary other(module.get(), QStringLiteral("bob"));
    editor->setElement(&other);
    machine->isSlow = true;
    editor->setElement(element.get());
    editor->read();
    cancelLast();
    QVERIFY2(!editor->isEditable(), "nor is it when the page is come back to");

    machine->isSlow = false;
    read();
    QVERIFY(editor->isEditable());
    QCOMPARE(refused.last().at(0).toString(), QString());
    // A new record may have the address of that of long ago.
    constexpr int rounds = 20;
    for (int round = 0; round < rounds; ++round) {
        machine->isSlow = true;
        editor->read();
        cancelLast();
        QVERIFY(editor->isEditable());
        machine->isSlow = false;
        read();
    }
}

void EditsTest::cancelledUpdateLeavesTheRecordAsNewAsItWas()
{
    class Stopped : public ToyTask
    {
    public:
        using ToyTask::ToyTask;
        bool isCancellable() const override { return true; }
    };
    auto *task = new Stopped(element.get(), TaskDescription::Cancelled, QString(), true);
    TaskObserver::instance()->performTask(task);
    waitForTasks();
    machine->isSlow = true;
    editor->read();
    cancelLast();
    QVERIFY(editor->isEditable());
}

void EditsTest::refusalIsOverWithTheNextKey()
{
    QSignalSpy refused(editor, &ViewEditElementWidget::refused);
    editor->type(QStringLiteral("bad"));
    editor->applyContentChanges();
    QVERIFY(!refused.last().at(0).toString().isEmpty());
    editor->line->insert(QStringLiteral(" no more"));
    QCOMPARE(refused.last().at(0).toString(), QString());
    const int said = refused.count();
    editor->line->insert(QStringLiteral(" at all"));
    QCOMPARE(refused.count(), said);
}

void EditsTest::refusalOfAPageThatIsReadIsOverWhenThatEnds()
{
    QSignalSpy refused(editor, &ViewEditElementWidget::refused);
    editor->type(QStringLiteral("mine"));
    machine->isSlow = true;
    element->performOperation(OperationType::Read, nullptr, 0);
    editor->applyContentChanges();
    QVERIFY(!refused.last().at(0).toString().isEmpty());
    machine->gate.release();
    waitForTasks();
    QCOMPARE(editor->line->text(), QStringLiteral("mine"));
    QCOMPARE(refused.last().at(0).toString(), QString());
}

void EditsTest::updateThatSomebodyElseStartsShutsThePage()
{
    machine->isSlow = true;
    auto record = std::make_unique<ElementData>();
    record->text = QStringLiteral("theirs");
    element->performOperation(OperationType::Write, record.release(), 0);
    QVERIFY(!editor->isEditable());
    machine->gate.release(2);
    waitForTasks();
    QVERIFY(editor->isEditable());
    QCOMPARE(editor->line->text(), QStringLiteral("theirs"));
}

void EditsTest::refusalSaysWhy()
{
    QSignalSpy refused(editor, &ViewEditElementWidget::refused);
    auto *line = editor->box->findChild<QLineEdit *>();
    line->selectAll();
    QTest::keyClicks(line, QStringLiteral("1")); // the box takes 10 to 99
    QVERIFY(!editor->isContentValid());
    editor->applyContentChanges();
    QCOMPARE(refused.count(), 1);
    const QString why = refused.at(0).at(0).toString();
    QVERIFY2(why.contains(QStringLiteral("10")) && why.contains(QStringLiteral("99")), qPrintable(why));
    QVERIFY(QToolTip::text().contains(QStringLiteral("99")));
    QTest::keyClicks(line, QStringLiteral("2"));
    editor->applyContentChanges();
    QCOMPARE(refused.count(), 2);
    QCOMPARE(refused.at(1).at(0).toString(), QString());
}

void EditsTest::refusalOfTheEditorItselfSaysWhy()
{
    QSignalSpy refused(editor, &ViewEditElementWidget::refused);
    QVERIFY(QTest::qWaitForWindowActive(editor));
    editor->box->setFocus();
    editor->type(QStringLiteral("bad"));
    QVERIFY(!editor->isContentValid());
    editor->applyContentChanges();
    QCOMPARE(refused.count(), 1);
    QCOMPARE(refused.at(0).at(0).toString(), QStringLiteral("<b>bad</b> is not good"));
    QVERIFY(QToolTip::text().contains(QStringLiteral("&lt;b&gt;bad&lt;/b&gt;")));
    QCOMPARE(editor->focusWidget(), static_cast<QWidget *>(editor->line));
    QVERIFY(editor->isContentChanged());
    QVERIFY(editor->isEditable());
    QCOMPARE(machine->text(element.get()), QStringLiteral("stored"));
}

void EditsTest::refusalWithoutAReasonSaysSomething()
{
    class Silent : public Editor
    {
    public:
        using Editor::Editor;
        bool isContentValid() const override { return false; }
    };
    Silent silent(module.get());
    silent.setElement(element.get());
    QSignalSpy refused(&silent, &ViewEditElementWidget::refused);
    silent.type(QStringLiteral("mine"));
    silent.applyContentChanges();
    QCOMPARE(refused.count(), 1);
    QVERIFY(!refused.at(0).at(0).toString().isEmpty());
}

void EditsTest::warningComesBeforeTheExport()
{
    editor->warning = QStringLiteral("This <b>takes</b> long.");
    editor->type(QStringLiteral("mine"));
    bool wasWriting = true;
    whileTheBoxStands([&](QMessageBox *box) {
        QCOMPARE(box->windowTitle(), QStringLiteral("Careful"));
        QCOMPARE(box->text(), QStringLiteral("This <b>takes</b> long."));
        QCOMPARE(box->textFormat(), Qt::PlainText);
        QCOMPARE(box->icon(), QMessageBox::Information);
        QCOMPARE(box->standardButtons(), QMessageBox::Ok);
        wasWriting = module->count(OperationType::Write) > 0;
        box->button(QMessageBox::Ok)->click();
    });
    editor->applyContentChanges();
    QVERIFY(!wasWriting);
    waitForTasks();
    QCOMPARE(machine->text(element.get()), QStringLiteral("mine"));
}

void EditsTest::warningDoesNotComeForInvalidContent()
{
    editor->warning = QStringLiteral("This takes long.");
    editor->type(QStringLiteral("bad"));
    whileTheBoxStands([](QMessageBox *box) {
        box->reject();
        QFAIL("A warning about what is not going to happen.");
    });
    editor->applyContentChanges();
    QCoreApplication::processEvents();
    QCOMPARE(module->count(OperationType::Write), 0);
}

void EditsTest::pageThatWasReadUnderTheWarningIsNotApplied()
{
    editor->warning = QStringLiteral("This takes long.");
    machine->setText(element.get(), QStringLiteral("newer"));
    QSignalSpy refused(editor, &ViewEditElementWidget::refused);
    whileTheBoxStands([this](QMessageBox *box) {
        element->performOperation(OperationType::Read, nullptr, 0);
        waitForTasks();
        box->reject();
    });
    editor->applyContentChanges(); // of a page that nobody edited
    QCOMPARE(editor->line->text(), QStringLiteral("newer"));
    QCOMPARE(module->count(OperationType::Write), 0);
    QVERIFY(!refused.last().at(0).toString().isEmpty());
}

void EditsTest::editedPageThatWasReadUnderTheWarningKeepsWhatWasTyped()
{
    editor->warning = QStringLiteral("This takes long.");
    editor->type(QStringLiteral("mine"));
    QSignalSpy refused(editor, &ViewEditElementWidget::refused);
    whileTheBoxStands([this](QMessageBox *box) {
        element->performOperation(OperationType::Read, nullptr, 0);
        waitForTasks();
        box->button(QMessageBox::Ok)->click();
    });
    editor->applyContentChanges();
    waitForTasks();
    QCOMPARE(module->count(OperationType::Write), 0);
    QCOMPARE(editor->line->text(), QStringLiteral("mine"));
    QVERIFY(editor->isContentChanged());
    QVERIFY(editor->isEditable());
    QVERIFY(!refused.last().at(0).toString().isEmpty());
    editor->warning.clear();
    editor->applyContentChanges();
    waitForTasks();
    QCOMPARE(machine->text(element.get()), QStringLiteral("mine"));
}

void EditsTest::pageThatIsBeingReadUnderTheWarningIsNotApplied()
{
    editor->warning = QStringLiteral("This takes long.");
    editor->type(QStringLiteral("mine"));
    machine->isSlow = true;
    whileTheBoxStands([this](QMessageBox *box) {
        element->performOperation(OperationType::Read, nullptr, 0);
        box->button(QMessageBox::Ok)->click();
    });
    editor->applyContentChanges();
    QCOMPARE(module->count(OperationType::Write), 0);
    machine->gate.release();
    waitForTasks();
    QCOMPARE(editor->line->text(), QStringLiteral("mine"));
    QVERIFY(editor->isEditable());
}

void EditsTest::pageThatWasLeftUnderTheWarningIsNotApplied()
{
    editor->warning = QStringLiteral("This takes long.");
    Ordinary other(module.get(), QStringLiteral("bob"));
    other.setText(QStringLiteral("bob's"));
    editor->type(QStringLiteral("mine"));
    whileTheBoxStands([this, &other](QMessageBox *box) {
        editor->setElement(&other);
        box->button(QMessageBox::Ok)->click();
    });
    editor->applyContentChanges();
    QCOMPARE(module->count(OperationType::Write), 0);
    QCOMPARE(editor->line->text(), QStringLiteral("bob's"));
    editor->setElement(nullptr);
}

void EditsTest::editorMayGoUnderTheWarning()
{
    editor->warning = QStringLiteral("This takes long.");
    editor->type(QStringLiteral("mine"));
    whileTheBoxStands([this](QMessageBox * /*box*/) { delete editor; });
    editor->applyContentChanges();
    QVERIFY(!editor);
    QCOMPARE(module->count(OperationType::Write), 0);
}

QTEST_MAIN(EditsTest)
#include "tst_edits.moc"
