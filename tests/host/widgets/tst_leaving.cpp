// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "stubmachine.h"

#include <elementpages.h>

#include <QApplication>
#include <QLabel>
#include <QMessageBox>
#include <QSignalSpy>
#include <QTabWidget>
#include <QTest>
#include <QTimer>

using namespace toys;

/// What becomes of a changed page that is left, read or replaced while real tasks read and write.
class LeavingTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void applyLeavesWhenTheUpdateHasSucceeded();
    void applyThatFailsStays();
    void failureSaysWhatTheComputerMayHave();
    void pageWhoseApplyIsOnItsWayWaitsForIt();
    void theLastRowChosenIsShown();
    void presentRowTakesTheLeavingBack();
    void chosenRowThatGoesMeanwhileIsNotShown();
    void chosenRowThatGoesUnderTheQuestionIsNotShown();
    void escapeStays();
    void underTheQuestionNothingIsLeft();
    void refusedApplyStaysAndSaysWhy();
    void refusalGoesWithTheNextApply();
    void tabsAreAllApplied();
    void oneTabThatFailsKeepsThePage();
    void closingWaitsForWhatIsOnItsWay();
    void pageThatIsBeingReadIsAskedAboutToo();
    void readsOfAPageThatIsComeBackToKeepItShut();
    void refreshTwiceKeepsThePageShut();
    void refreshDuringAnApplyLosesNothing();
    void cancelledFirstReadIsSaid();
    void refreshThatDiscardsReadsTheOtherTabsToo();
    void refreshThatAppliesAnotherTabReadsTheOneInFront();
    void editsSurviveThatTheElementIsReplaced();
    void editsOfATabSurviveToo();
    void editsSurviveThatTheElementIsReplacedDuringTheUpdate();
    void elementThatIsReplacedUnderTheQuestionStays();
    void discardUnderTheQuestionGoesThoughTheElementWasReplaced();
    void editsOfWhatIsGoneAreSaidToBeLost();

private:
    void answer(QMessageBox::StandardButton button, const std::function<void()> &before = {});
    void waitForTasks() { QTRY_VERIFY(!TaskObserver::instance()->isBusy()); }
    Ordinary *add(const QString &title)
    {
        auto *element = new Ordinary(module.get(), title);
        list->append(element);
        return element;
    }
    /// Reads the list again, as it was done before there was a better way.
    void replaceAll()
    {
        list->clearDelete();
        anna = add(QStringLiteral("anna"));
        bob = add(QStringLiteral("bob"));
    }
    void change(const QString &text = QStringLiteral("mine"))
    {
        QVERIFY(pages->setCurrentElement(anna));
        waitForTasks();
        QVERIFY(editor->isEditable());
        editor->type(text);
        QVERIFY(pages->canApply());
        module->asked.clear();
    }
    QString message() const
    {
        const auto *label = pages->findChild<QLabel *>(QStringLiteral("pageMessage"));
        return label->isVisibleTo(pages.get()) ? label->text() : QString();
    }
    QString current() const { return pages->currentElement() ? pages->currentElement()->title() : QString(); }

    std::unique_ptr<StubMachine> machine;
    std::unique_ptr<ToyModule> module;
    std::unique_ptr<Container> list;
    Ordinary *anna = nullptr;
    Ordinary *bob = nullptr;
    Editor *editor = nullptr;
    Editor *extraEditor = nullptr;
    std::unique_ptr<ElementPages> pages;
    std::unique_ptr<QTimer> answerer;
    int questions = 0;
};

void LeavingTest::init()
{
    machine = std::make_unique<StubMachine>();
    module = std::make_unique<ToyModule>();
    machine->serve(*module);
    list = std::make_unique<Container>(module.get(), QStringLiteral("list"));
    list->setContent(ContainerElement::Content::Read);
    anna = add(QStringLiteral("anna"));
    bob = add(QStringLiteral("bob"));
    machine->setText(anna, QStringLiteral("anna's"));
    machine->setText(bob, QStringLiteral("bob's"));
    editor = new Editor(module.get());
    module->insertElementWidget(editor);
    extraEditor = new Editor(module.get(), mayAll, QStringLiteral("ToySupplement"));
    extraEditor->setOwnerType(QStringLiteral("Toy"));
    module->insertElementWidget(extraEditor);
    module->connectElementWidgets();
    pages = std::make_unique<ElementPages>();
    pages->resize(600, 400);
    pages->show();
    QVERIFY(QTest::qWaitForWindowExposed(pages.get()));
    questions = 0;
}

void LeavingTest::cleanup()
{
    answerer.reset();
    machine->gate.release(100);
    waitForTasks();
    pages.reset();
    list.reset();
    module.reset();
    machine.reset();
}

void LeavingTest::answer(QMessageBox::StandardButton button, const std::function<void()> &before)
{
    answerer = std::make_unique<QTimer>();
    connect(answerer.get(), &QTimer::timeout, this, [this, button, before] {
        auto *box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget());
        if (!box)
            return;
        answerer->stop();
        ++questions;
        if (before)
            before();
        box->button(button)->click();
    });
    answerer->start(0);
}

void LeavingTest::applyLeavesWhenTheUpdateHasSucceeded()
{
    change();
    machine->isSlow = true;
    answer(QMessageBox::Save);
    QVERIFY(!pages->setCurrentElement(bob));
    QCOMPARE(questions, 1);
    QCOMPARE(current(), QStringLiteral("anna"));
    QCoreApplication::processEvents();
    QCOMPARE(current(), QStringLiteral("anna"));
    QVERIFY2(message().contains(QStringLiteral("bob")), qPrintable(message()));
    machine->gate.release();
    QTRY_COMPARE(current(), QStringLiteral("bob"));
    QCOMPARE(machine->text(anna), QStringLiteral("mine"));
    machine->gate.release(10);
    waitForTasks();
    QCOMPARE(editor->line->text(), QStringLiteral("bob's"));
    QVERIFY(editor->isEditable());
    QCOMPARE(message(), QString());
    QCOMPARE(questions, 1);
}

void LeavingTest::applyThatFailsStays()
{
    change();
    machine->writesFail = true;
    answer(QMessageBox::Save);
    QVERIFY(!pages->setCurrentElement(bob));
    waitForTasks();
    QCoreApplication::processEvents();
    QCOMPARE(current(), QStringLiteral("anna"));
    QCOMPARE(editor->line->text(), QStringLiteral("mine"));
    QVERIFY(pages->canApply());
    QVERIFY2(message().contains(QStringLiteral("the disk is full")), qPrintable(message()));
    QVERIFY2(!message().contains(QStringLiteral("bob")), qPrintable(message()));
    machine->writesFail = false;
    pages->apply();
    waitForTasks();
    QCoreApplication::processEvents();
    QCOMPARE(current(), QStringLiteral("anna")); // that leaving is over
    QCOMPARE(machine->text(anna), QStringLiteral("mine"));
    QCOMPARE(message(), QString());
}

void LeavingTest::failureSaysWhatTheComputerMayHave()
{
    change();
    machine->writesFailHalfway = true;
    pages->apply();
    waitForTasks();
    QVERIFY2(message().contains(QStringLiteral("the disk is full")), qPrintable(message()));
    QVERIFY2(message().contains(QStringLiteral("Revert")), qPrintable(message()));
    QCOMPARE(editor->line->text(), QStringLiteral("mine"));
    pages->revert();
    QVERIFY(!pages->canApply());
    waitForTasks();
    QCOMPARE(editor->line->text(), QStringLiteral("half"));
    QCOMPARE(message(), QString());
}

void LeavingTest::pageWhoseApplyIsOnItsWayWaitsForIt()
{
    change();
    machine->isSlow = true;
    machine->writesFail = true;
    pages->apply();
    QVERIFY(!pages->setCurrentElement(bob));
    QCOMPARE(current(), QStringLiteral("anna"));
    machine->gate.release(2);
    waitForTasks();
    QCOMPARE(current(), QStringLiteral("anna"));
    QCOMPARE(editor->line->text(), QStringLiteral("mine"));
    QVERIFY(pages->canApply());
    machine->writesFail = false;
    pages->apply();
    QVERIFY(!pages->setCurrentElement(bob));
    machine->gate.release();
    QTRY_COMPARE(current(), QStringLiteral("bob"));
    QCOMPARE(questions, 0);
}

void LeavingTest::theLastRowChosenIsShown()
{
    Ordinary *eve = add(QStringLiteral("eve"));
    change();
    machine->isSlow = true;
    answer(QMessageBox::Save);
    QVERIFY(!pages->setCurrentElement(bob));
    QVERIFY(!pages->setCurrentElement(eve));
    QVERIFY(!pages->setCurrentElement(bob));
    QVERIFY(!pages->setCurrentElement(eve));
    QCOMPARE(questions, 1);
    machine->gate.release();
    QTRY_COMPARE(current(), QStringLiteral("eve"));
    QCOMPARE(module->count(OperationType::Write), 1);
}

void LeavingTest::presentRowTakesTheLeavingBack()
{
    change();
    machine->isSlow = true;
    answer(QMessageBox::Save);
    QVERIFY(!pages->setCurrentElement(bob));
    QVERIFY(pages->setCurrentElement(anna));
    QCOMPARE(message(), QString());
    machine->gate.release(2);
    waitForTasks();
    QCoreApplication::processEvents();
    QCOMPARE(current(), QStringLiteral("anna"));
    QCOMPARE(machine->text(anna), QStringLiteral("mine"));
}

void LeavingTest::chosenRowThatGoesMeanwhileIsNotShown()
{
    change();
    machine->isSlow = true;
    answer(QMessageBox::Save);
    QVERIFY(!pages->setCurrentElement(bob));
    delete bob;
    machine->gate.release(2);
    waitForTasks();
    QCoreApplication::processEvents();
    QCOMPARE(current(), QStringLiteral("anna"));
    QCOMPARE(editor->line->text(), QStringLiteral("mine"));
    QCOMPARE(message(), QString());
}

void LeavingTest::chosenRowThatGoesUnderTheQuestionIsNotShown()
{
    for (const QMessageBox::StandardButton button : {QMessageBox::Save, QMessageBox::Discard}) {
        Ordinary *eve = add(QStringLiteral("eve"));
        change();
        answer(button, [eve] { delete eve; });
        QVERIFY(!pages->setCurrentElement(eve));
        QTRY_COMPARE(current(), QStringLiteral("anna"));
        waitForTasks();
        QCoreApplication::processEvents();
        QCOMPARE(current(), QStringLiteral("anna"));
        QVERIFY(editor->isEditable());
    }
}

void LeavingTest::escapeStays()
{
    change();
    answerer = std::make_unique<QTimer>();
    connect(answerer.get(), &QTimer::timeout, this, [this] {
        if (QWidget *box = QApplication::activeModalWidget()) {
            answerer->stop();
            QTest::keyClick(box, Qt::Key_Escape);
        }
    });
    answerer->start(0);
    QVERIFY(!pages->setCurrentElement(bob));
    QCOMPARE(current(), QStringLiteral("anna"));
    QCOMPARE(editor->line->text(), QStringLiteral("mine"));
    QVERIFY(pages->canApply());
    QCOMPARE(module->count(OperationType::Write), 0);
}

void LeavingTest::underTheQuestionNothingIsLeft()
{
    change();
    QSignalSpy answered(pages.get(), &ElementPages::answered);
    answer(QMessageBox::Discard, [this] {
        QVERIFY(pages->isAsking());
        QVERIFY(!pages->setCurrentElement(list.get()));
        QVERIFY(!pages->mayLeave());
        pages->refresh();
        pages->apply();
        QCOMPARE(module->count(OperationType::Write), 0);
    });
    QVERIFY(pages->setCurrentElement(bob));
    QCOMPARE(current(), QStringLiteral("bob"));
    QCOMPARE(answered.count(), 1);
    QCOMPARE(questions, 1);
}

void LeavingTest::refusedApplyStaysAndSaysWhy()
{
    change();
    editor->line->setValidator(new QIntValidator(editor->line));
    answer(QMessageBox::Save);
    QVERIFY(!pages->setCurrentElement(bob));
    QCOMPARE(current(), QStringLiteral("anna"));
    QCOMPARE(module->count(OperationType::Write), 0);
    QVERIFY2(message().contains(QStringLiteral("cannot be applied")), qPrintable(message()));
}

void LeavingTest::refusalGoesWithTheNextApply()
{
    change();
    editor->line->setValidator(new QIntValidator(editor->line));
    pages->apply();
    QVERIFY(!message().isEmpty());
    editor->type(QStringLiteral("7"));
    pages->apply();
    QCOMPARE(message(), QString());
    waitForTasks();
    QCOMPARE(machine->text(anna), QStringLiteral("7"));
    editor->type(QStringLiteral("no number"));
    pages->apply();
    QVERIFY(!message().isEmpty());
    pages->revert();
    QCOMPARE(message(), QString());
}

void LeavingTest::tabsAreAllApplied()
{
    auto *extra = new Supplement(module.get(), QStringLiteral("anna's extra"));
    anna->append(extra);
    change();
    pages->findChild<QTabWidget *>(QStringLiteral("pageTabs"))->setCurrentIndex(1);
    waitForTasks();
    extraEditor->type(QStringLiteral("extra"));
    machine->isSlow = true;
    answer(QMessageBox::Save);
    QVERIFY(!pages->setCurrentElement(bob));
    machine->gate.release(); // the first of the two updates
    QTRY_VERIFY(!TaskObserver::instance()->isWriting(anna));
    QCoreApplication::processEvents();
    QCOMPARE(current(), QStringLiteral("anna"));
    machine->gate.release();
    QTRY_COMPARE(current(), QStringLiteral("bob"));
    QCOMPARE(machine->text(anna), QStringLiteral("mine"));
    QCOMPARE(machine->text(extra), QStringLiteral("extra"));
}

void LeavingTest::oneTabThatFailsKeepsThePage()
{
    auto *extra = new Supplement(module.get(), QStringLiteral("anna's extra"));
    anna->append(extra);
    change();
    pages->findChild<QTabWidget *>(QStringLiteral("pageTabs"))->setCurrentIndex(1);
    waitForTasks();
    extraEditor->type(QStringLiteral("extra"));
    extraEditor->line->setValidator(new QIntValidator(extraEditor->line));
    pages->findChild<QTabWidget *>(QStringLiteral("pageTabs"))->setCurrentIndex(0);
    answer(QMessageBox::Save);
    QVERIFY(!pages->setCurrentElement(bob));
    QCOMPARE(pages->currentEditor(), static_cast<ElementWidget *>(extraEditor));
    waitForTasks();
    QCoreApplication::processEvents();
    QCOMPARE(current(), QStringLiteral("anna"));
    QCOMPARE(machine->text(anna), QStringLiteral("mine"));
    QCOMPARE(extraEditor->line->text(), QStringLiteral("extra"));
    QVERIFY(extraEditor->isContentChanged());
}

void LeavingTest::closingWaitsForWhatIsOnItsWay()
{
    change();
    machine->isSlow = true;
    answer(QMessageBox::Save);
    QVERIFY(pages->mayLeave()); // and the window waits for what changes the machine
    QVERIFY(TaskObserver::instance()->isChangingMachine());
    QVERIFY(pages->mayLeave());
    QCOMPARE(questions, 1);
}

void LeavingTest::pageThatIsBeingReadIsAskedAboutToo()
{
    change();
    machine->isSlow = true;
    anna->performOperation(OperationType::Read, nullptr, 0);
    QVERIFY(!pages->canApply());
    answer(QMessageBox::Save);
    QVERIFY(!pages->setCurrentElement(bob));
    QCOMPARE(questions, 1);
    QVERIFY2(message().contains(QStringLiteral("being read")), qPrintable(message()));
    QCOMPARE(current(), QStringLiteral("anna"));
    machine->gate.release();
    waitForTasks();
    QCOMPARE(editor->line->text(), QStringLiteral("mine"));
    QVERIFY(pages->canApply());
}

void LeavingTest::readsOfAPageThatIsComeBackToKeepItShut()
{
    Ordinary *eve = add(QStringLiteral("eve"));
    for (Ordinary *each : {anna, bob, eve})
        each->setText(QStringLiteral("known"));
    machine->isSlow = true;
    for (Ordinary *each : {anna, bob, eve, anna})
        QVERIFY(pages->setCurrentElement(each));
    const int reads = module->count(OperationType::Read);
    for (int ended = 1; ended < reads; ++ended) {
        machine->gate.release();
        QTRY_VERIFY(machine->gate.available() == 0);
        QCoreApplication::processEvents();
        QVERIFY(!editor->isEditable());
        editor->type(QStringLiteral("typed too early"));
        QVERIFY(!pages->canApply());
    }
    machine->gate.release();
    waitForTasks();
    QVERIFY(editor->isEditable());
    QCOMPARE(editor->line->text(), QStringLiteral("anna's"));
}

void LeavingTest::refreshTwiceKeepsThePageShut()
{
    QVERIFY(pages->setCurrentElement(anna));
    waitForTasks();
    machine->isSlow = true;
    pages->refresh();
    pages->refresh();
    const int before = editor->reads;
    machine->gate.release();
    QTRY_COMPARE(editor->reads, before + 1);
    QCoreApplication::processEvents();
    QVERIFY(!editor->isEditable());
    machine->gate.release();
    waitForTasks();
    QVERIFY(editor->isEditable());
}

void LeavingTest::cancelledFirstReadIsSaid()
{
    QSignalSpy queued(TaskObserver::instance(), &TaskObserver::taskQueued);
    const auto cancelLast = [&] {
        QVERIFY(TaskObserver::instance()->cancel(queued.last().at(0).value<TaskReport>().id));
        machine->gate.release();
        waitForTasks();
    };
    machine->isSlow = true;
    QVERIFY(pages->setCurrentElement(anna));
    cancelLast();
    QVERIFY(!editor->isEditable());
    QVERIFY2(message().contains(QStringLiteral("not been read")), qPrintable(message()));
    machine->isSlow = false;
    pages->refresh();
    waitForTasks();
    QVERIFY(editor->isEditable());
    QCOMPARE(message(), QString());
    machine->isSlow = true;
    pages->refresh();
    cancelLast();
    QVERIFY(editor->isEditable());
    QCOMPARE(message(), QString());
}

void LeavingTest::refreshThatDiscardsReadsTheOtherTabsToo()
{
    auto *extra = new Supplement(module.get(), QStringLiteral("anna's extra"));
    anna->append(extra);
    machine->setText(extra, QStringLiteral("stored"));
    change();
    pages->findChild<QTabWidget *>(QStringLiteral("pageTabs"))->setCurrentIndex(1);
    waitForTasks();
    machine->setText(extra, QStringLiteral("newer"));
    machine->setText(anna, QStringLiteral("anna's newer"));
    module->asked.clear();
    answer(QMessageBox::Discard);
    pages->refresh();
    waitForTasks();
    QCOMPARE(editor->line->text(), QStringLiteral("anna's newer"));
    QVERIFY(editor->isEditable());
    QCOMPARE(extraEditor->line->text(), QStringLiteral("newer"));
    QCOMPARE(module->count(OperationType::Read), 2);

    extraEditor->type(QStringLiteral("mine"));
    module->asked.clear();
    answer(QMessageBox::Discard);
    pages->refresh();
    waitForTasks();
    QCOMPARE(extraEditor->line->text(), QStringLiteral("newer"));
    QCOMPARE(module->count(OperationType::Read), 1);
}

void LeavingTest::refreshThatAppliesAnotherTabReadsTheOneInFront()
{
    auto *extra = new Supplement(module.get(), QStringLiteral("anna's extra"));
    anna->append(extra);
    change();
    pages->findChild<QTabWidget *>(QStringLiteral("pageTabs"))->setCurrentIndex(1);
    waitForTasks();
    machine->setText(extra, QStringLiteral("newer"));
    answer(QMessageBox::Save);
    pages->refresh();
    waitForTasks();
    QCOMPARE(machine->text(anna), QStringLiteral("mine"));
    QCOMPARE(extraEditor->line->text(), QStringLiteral("newer"));

    extraEditor->type(QStringLiteral("mine"));
    module->asked.clear();
    answer(QMessageBox::Save);
    pages->refresh();
    waitForTasks();
    QCOMPARE(machine->text(extra), QStringLiteral("mine"));
    QCOMPARE(module->count(OperationType::Read), 1); // after the update
}

void LeavingTest::refreshDuringAnApplyLosesNothing()
{
    change();
    machine->isSlow = true;
    machine->writesFail = true;
    pages->apply();
    pages->refresh();
    QCOMPARE(questions, 0);
    machine->gate.release(3);
    waitForTasks();
    QCOMPARE(editor->line->text(), QStringLiteral("mine"));
    QVERIFY(pages->canApply());
    machine->writesFail = false;
    pages->apply();
    pages->refresh();
    machine->gate.release(3);
    waitForTasks();
    QCOMPARE(editor->line->text(), QStringLiteral("mine"));
    QVERIFY(!pages->canApply());
    QVERIFY(editor->isEditable());
}

void LeavingTest::editsSurviveThatTheElementIsReplaced()
{
    change();
    replaceAll();
    QTRY_COMPARE(pages->currentElement(), static_cast<Element *>(anna));
    QCOMPARE(editor->element(), static_cast<Element *>(anna));
    QCOMPARE(editor->line->text(), QStringLiteral("mine"));
    QVERIFY(editor->isEditable());
    QVERIFY(pages->canApply());
    QCOMPARE(message(), QString());
    pages->apply();
    waitForTasks();
    QCOMPARE(machine->text(anna), QStringLiteral("mine"));
    QVERIFY(!pages->canApply());
}

void LeavingTest::editsOfATabSurviveToo()
{
    anna->append(new Supplement(module.get(), QStringLiteral("anna")));
    QVERIFY(pages->setCurrentElement(anna));
    pages->findChild<QTabWidget *>(QStringLiteral("pageTabs"))->setCurrentIndex(1);
    waitForTasks();
    extraEditor->type(QStringLiteral("extra"));
    list->clearDelete();
    anna = new Ordinary(module.get(), QStringLiteral("anna"));
    anna->append(new Supplement(module.get(), QStringLiteral("anna")));
    list->append(anna);
    QTRY_COMPARE(pages->currentElement(), static_cast<Element *>(anna));
    QCOMPARE(extraEditor->line->text(), QStringLiteral("extra"));
    QVERIFY(extraEditor->isContentChanged());
}

void LeavingTest::editsSurviveThatTheElementIsReplacedDuringTheUpdate()
{
    change();
    machine->isSlow = true;
    machine->writesFail = true;
    pages->apply();
    QVERIFY(!pages->setCurrentElement(bob));
    replaceAll();
    QTRY_COMPARE(pages->currentElement(), static_cast<Element *>(anna));
    machine->gate.release(3);
    waitForTasks();
    QCoreApplication::processEvents();
    QCOMPARE(current(), QStringLiteral("anna"));
    QCOMPARE(editor->line->text(), QStringLiteral("mine"));
    QVERIFY(pages->canApply());
}

void LeavingTest::elementThatIsReplacedUnderTheQuestionStays()
{
    change();
    answer(QMessageBox::Save, [this] { replaceAll(); });
    QVERIFY(!pages->setCurrentElement(list.get()));
    QTRY_COMPARE(pages->currentElement(), static_cast<Element *>(anna));
    QCOMPARE(module->count(OperationType::Write), 0);
    QCOMPARE(editor->line->text(), QStringLiteral("mine"));
    QVERIFY(pages->canApply());
}

void LeavingTest::discardUnderTheQuestionGoesThoughTheElementWasReplaced()
{
    change();
    answer(QMessageBox::Discard, [this] { replaceAll(); });
    QVERIFY(pages->setCurrentElement(list.get()));
    waitForTasks();
    QCoreApplication::processEvents();
    QCOMPARE(current(), QStringLiteral("list"));
    QCOMPARE(message(), QString());
    QVERIFY(pages->setCurrentElement(anna));
    waitForTasks();
    QCOMPARE(editor->line->text(), QStringLiteral("anna's"));
    QVERIFY(!pages->canApply());
}

void LeavingTest::editsOfWhatIsGoneAreSaidToBeLost()
{
    change();
    list->clearDelete();
    bob = add(QStringLiteral("bob"));
    QTRY_COMPARE(current(), QStringLiteral("list"));
    QVERIFY2(message().contains(QStringLiteral("lost")), qPrintable(message()));
    QCOMPARE(questions, 0);
    QVERIFY(pages->setCurrentElement(bob));
    waitForTasks();
    QCOMPARE(editor->line->text(), QStringLiteral("bob's"));
    QVERIFY(!pages->canApply());
}

QTEST_MAIN(LeavingTest)
#include "tst_leaving.moc"
