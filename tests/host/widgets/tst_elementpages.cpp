// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "pagefixture.h"

#include <elementtreeview.h>
#include <treenodemodel.h>

#include <QApplication>
#include <QLabel>
#include <QMessageBox>
#include <QScrollArea>
#include <QSemaphore>
#include <QSignalSpy>
#include <QTabWidget>
#include <QTest>
#include <QTimer>

using namespace toys;

Q_DECLARE_METATYPE(Element *)

class ElementPagesTest : public QObject, private PageFixture
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { qRegisterMetaType<Element *>("Element*"); }
    void init() { setUp(); }
    void cleanup();

    void showsTheHeadOfAnElement();
    void longTitleIsShortenedWithToolTip();
    void showsTheMainEditorAndReads();
    void readsEachTimeThePageIsShown();
    void elementWithoutEditorSaysSo();
    void sameEditorServesTheNextElement();
    void editorIsGivenBackUnharmed();
    void pagesMayGoBeforeEditors();
    void supplementsAreTabsByOrder();
    void tabIsReadWhenItFirstComesToTheFront();
    void supplementThatGoesTakesItsTabAlong();
    void supplementThatIsRenamedGetsItsTabBack();
    void editorOfAnotherOwnerIsNoTab();
    void deletedEditorLeavesThePage();
    void deletedElementLeavesThePage();
    void supplementsAreAskedForOnce();
    void leavingUnchangedAsksNothing();
    void stayKeepsThePage();
    void discardLeavesAndForgets();
    void applyThatIsRefusedStays();
    void mayLeaveDiscardsByReadingAnew();
    void questionStandsOverItsWindow();
    void applyAndRevertFollowTheChanges();
    void refreshReadsTheEditorAgain();
    void refreshOfAContainerMarksItStale();
    void refreshAsksWhenChangesWouldBeLost();
    void focusStaysOnThePageThatFollows();
    void elementThatMayNotBeChangedIsShown();
    void currentElementIsFoundAgainAfterARead();
    void currentElementIsFoundAgainThoughTheViewMovedOn();
    void elementBelowAReplacedOneIsFoundAgain();
    void parentBecomesCurrentWhenItIsGone();
    void elementThatComesLaterInATaskIsAwaited();

private:
    void answer(QMessageBox::StandardButton button);
    void change()
    {
        QVERIFY(pages->setCurrentElement(anna));
        editor->afterSuccessfulRead(anna, anna->record());
        editor->type(QStringLiteral("mine"));
        QVERIFY(pages->canApply());
        module->asked.clear();
    }
    QTabWidget *tabs() const { return part<QTabWidget>("pageTabs"); }
    QStringList questions;
};

void ElementPagesTest::cleanup()
{
    questions.clear();
    takeDown();
}

/// Answers the next question.
void ElementPagesTest::answer(QMessageBox::StandardButton button)
{
    auto *timer = new QTimer(pages.get());
    timer->setInterval(0);
    connect(timer, &QTimer::timeout, this, [this, timer, button] {
        auto *box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget());
        if (!box)
            return;
        timer->stop();
        questions.append(box->text());
        QVERIFY(box->parentWidget());
        QCOMPARE(box->parentWidget()->window(), pages->window());
        box->button(button)->click();
    });
    timer->start();
}

void ElementPagesTest::showsTheHeadOfAnElement()
{
    QSignalSpy current(pages.get(), &ElementPages::currentElementChanged);
    QVERIFY(!part<QLabel>("pageTitle")->isVisible());
    QVERIFY(pages->setCurrentElement(anna));
    QCOMPARE(pages->currentElement(), static_cast<Element *>(anna));
    QCOMPARE(part<QLabel>("pageTitle")->text(), QStringLiteral("anna"));
    QCOMPARE(part<QLabel>("pageCaption")->text(), QStringLiteral("About anna"));
    QCOMPARE(current.count(), 1);
    anna->setTitle(QStringLiteral("anne"));
    QTRY_COMPARE(part<QLabel>("pageTitle")->text(), QStringLiteral("anne"));
    QVERIFY(pages->setCurrentElement(list.get())); // its caption is its title
    QVERIFY(!part<QLabel>("pageCaption")->isVisible());
    QVERIFY(pages->setCurrentElement(nullptr));
    QVERIFY(!part<QLabel>("pageTitle")->isVisible());
}

void ElementPagesTest::longTitleIsShortenedWithToolTip()
{
    const QString title = QStringLiteral("a very long title ").repeated(30).trimmed();
    anna->setTitle(title);
    QVERIFY(pages->setCurrentElement(anna));
    const auto *label = part<QLabel>("pageTitle");
    QTRY_COMPARE(label->toolTip(), title);
    QVERIFY(label->text().size() < title.size());
    QCOMPARE(pages->width(), 600);
    pages->setCurrentElement(bob);
    QCOMPARE(label->toolTip(), QString());
}

void ElementPagesTest::showsTheMainEditorAndReads()
{
    QVERIFY(pages->setCurrentElement(anna));
    QCOMPARE(pages->currentEditor(), static_cast<ElementWidget *>(editor));
    QVERIFY(editor->isVisible());
    QVERIFY(!tabs()->tabBar()->isVisible());
    QCOMPARE(editor->element(), static_cast<Element *>(anna));
    QCOMPARE(editor->line->text(), QStringLiteral("about anna"));
    QVERIFY(editor->isBlocked()); // the fresh record is on its way
    QCOMPARE(module->count(OperationType::Read), 1);
    QCOMPARE(module->asked.back().operation, static_cast<ContextOperation *>(anna));
    QVERIFY(pages->setCurrentElement(anna));
    QCOMPARE(module->count(OperationType::Read), 1);
}

void ElementPagesTest::readsEachTimeThePageIsShown()
{
    pages->setCurrentElement(anna);
    pages->setCurrentElement(list.get());
    pages->setCurrentElement(anna);
    QCOMPARE(module->count(OperationType::Read), 2);
}

void ElementPagesTest::elementWithoutEditorSaysSo()
{
    QVERIFY(pages->setCurrentElement(list.get()));
    QVERIFY(!pages->currentEditor());
    QVERIFY(pages->editors().empty());
    QVERIFY(part<QLabel>("pageEmptyText")->isVisible());
    QVERIFY(part<QLabel>("pageEmptyText")->text().contains(QStringLiteral("entries below")));
    pages->setCurrentElement(anna);
    QVERIFY(!part<QLabel>("pageEmptyText")->isVisible());
}

void ElementPagesTest::sameEditorServesTheNextElement()
{
    pages->setCurrentElement(anna);
    pages->setCurrentElement(bob);
    QCOMPARE(pages->currentEditor(), static_cast<ElementWidget *>(editor));
    QCOMPARE(editor->element(), static_cast<Element *>(bob));
    QCOMPARE(editor->line->text(), QStringLiteral("about bob"));
    QCOMPARE(module->count(OperationType::Read), 2);
    QCOMPARE(module->asked.back().operation, static_cast<ContextOperation *>(bob));
}

void ElementPagesTest::editorIsGivenBackUnharmed()
{
    pages->setCurrentElement(anna);
    pages->setCurrentElement(list.get());
    QVERIFY(!editor->parentWidget());
    QVERIFY(!editor->isVisible());
    QSignalSpy actions(pages.get(), &ElementPages::actionsChanged);
    editor->blockEditWidget(false);
    QCOMPARE(actions.count(), 0);
}

void ElementPagesTest::pagesMayGoBeforeEditors()
{
    pages->setCurrentElement(anna);
    QPointer<Editor> alive(editor);
    pages = std::make_unique<ElementPages>();
    QVERIFY(alive);
    QVERIFY(!alive->parentWidget());
    pages->setCurrentElement(anna);
    QCOMPARE(pages->currentEditor(), static_cast<ElementWidget *>(editor));
}

void ElementPagesTest::supplementsAreTabsByOrder()
{
    auto *first = new Editor(module.get(), mayAll, QStringLiteral("ToyFirst"));
    first->setOwnerType(QStringLiteral("Toy"));
    first->setOrder(900);
    first->setWindowTitle(QStringLiteral("First"));
    module->insertElementWidget(first);
    module->handler = [this](Element *, OperationType type, ElementData *) {
        if (type == OperationType::Read && anna->supplementNodes().isEmpty()) {
            anna->append(new Supplement(module.get(), QStringLiteral("anna")));
            anna->append(new Supplement(module.get(), QStringLiteral("anna"), QStringLiteral("ToyFirst")));
        }
    };
    pages->setCurrentElement(anna);
    runTask(TaskDescription::Succeeded, QString(), false); // it may have brought supplements
    QTRY_COMPARE(tabs()->count(), 3);
    QCOMPARE(pages->editors(), (std::vector<ElementWidget *>{editor, first, extraEditor}));
    QCOMPARE(tabs()->tabText(0), QStringLiteral("General"));
    QCOMPARE(tabs()->tabText(1), QStringLiteral("First"));
    QCOMPARE(tabs()->tabText(2), QStringLiteral("Extra"));
    QCOMPARE(pages->currentEditor(), static_cast<ElementWidget *>(editor));
    QVERIFY(tabs()->tabBar()->isVisible());
}

void ElementPagesTest::tabIsReadWhenItFirstComesToTheFront()
{
    auto *supplement = new Supplement(module.get(), QStringLiteral("anna"));
    anna->append(supplement);
    pages->setCurrentElement(anna);
    QCOMPARE(tabs()->count(), 2);
    QCOMPARE(module->count(OperationType::Read), 1);
    QCOMPARE(extraEditor->element(), static_cast<Element *>(supplement));
    tabs()->setCurrentIndex(1);
    QCOMPARE(pages->currentEditor(), static_cast<ElementWidget *>(extraEditor));
    QCOMPARE(module->count(OperationType::Read), 2);
    QCOMPARE(module->asked.back().operation, static_cast<ContextOperation *>(supplement));
    tabs()->setCurrentIndex(0);
    tabs()->setCurrentIndex(1);
    QCOMPARE(module->count(OperationType::Read), 2);
}

void ElementPagesTest::supplementThatGoesTakesItsTabAlong()
{
    auto *supplement = new Supplement(module.get(), QStringLiteral("anna"));
    anna->append(supplement);
    pages->setCurrentElement(anna);
    tabs()->setCurrentIndex(1);
    delete supplement;
    QTRY_COMPARE(tabs()->count(), 1);
    QCOMPARE(pages->currentEditor(), static_cast<ElementWidget *>(editor));
    QVERIFY(!extraEditor->parentWidget());
}

void ElementPagesTest::supplementThatIsRenamedGetsItsTabBack()
{
    auto *supplement = new Supplement(module.get(), QStringLiteral("anna"));
    anna->append(supplement);
    pages->setCurrentElement(anna);
    tabs()->setCurrentIndex(1);
    delete supplement;
    auto *renamed = new Supplement(module.get(), QStringLiteral("anne"));
    anna->append(renamed);
    QTRY_COMPARE(extraEditor->element(), static_cast<Element *>(renamed));
    QCOMPARE(tabs()->count(), 2);
    QCOMPARE(pages->currentEditor(), static_cast<ElementWidget *>(extraEditor));
    QCOMPARE(module->asked.back().operation, static_cast<ContextOperation *>(renamed));
}

void ElementPagesTest::editorOfAnotherOwnerIsNoTab()
{
    extraEditor->setOwnerType(QStringLiteral("SomethingElse"));
    anna->append(new Supplement(module.get(), QStringLiteral("anna")));
    pages->setCurrentElement(anna);
    QCOMPARE(tabs()->count(), 1);
}

void ElementPagesTest::deletedEditorLeavesThePage()
{
    pages->setCurrentElement(anna);
    delete editor;
    QTRY_VERIFY(part<QLabel>("pageEmptyText")->isVisible());
    QVERIFY(pages->editors().empty());
    QVERIFY(!pages->currentEditor());
    QVERIFY(!pages->canApply());
    pages->apply();
    pages->revert();
    pages->refresh();
}

void ElementPagesTest::deletedElementLeavesThePage()
{
    auto *alone = new Ordinary(module.get(), QStringLiteral("alone")); // under nothing
    pages->setCurrentElement(alone);
    QSignalSpy current(pages.get(), &ElementPages::currentElementChanged);
    delete alone;
    QVERIFY(!pages->currentElement());
    QTRY_COMPARE(current.count(), 1);
    QVERIFY(!part<QLabel>("pageTitle")->isVisible());
    QVERIFY(!editor->parentWidget());
    pages->refresh();
    QVERIFY(pages->mayLeave());
}

void ElementPagesTest::supplementsAreAskedForOnce()
{
    ToyModule extending(QStringLiteral("Extending"));
    extending.setKind(Module::ExtendingKind);
    extending.setAttachedTo(module.get());
    extending.handler = [&extending](Element *of, OperationType type, ElementData *) {
        if (type == OperationType::CreateSupplement)
            of->append(new Supplement(&extending, of->title()));
    };
    auto *inserted = new Editor(&extending, mayAll, QStringLiteral("ToySupplement"));
    inserted->setOwnerType(QStringLiteral("Toy"));
    extending.insertElementWidget(inserted);
    pages->setCurrentElement(anna);
    QCOMPARE(tabs()->count(), 2);
    pages->setCurrentElement(bob);
    pages->setCurrentElement(anna);
    QCOMPARE(extending.count(OperationType::CreateSupplement), 2);
    pages->setCurrentElement(nullptr);
    list->clearDelete(); // while the module is there
    anna = nullptr;
}

void ElementPagesTest::leavingUnchangedAsksNothing()
{
    pages->setCurrentElement(anna);
    QVERIFY(pages->mayLeave());
    QVERIFY(pages->setCurrentElement(bob));
}

void ElementPagesTest::stayKeepsThePage()
{
    change();
    answer(QMessageBox::Cancel);
    QVERIFY(!pages->setCurrentElement(bob));
    QCOMPARE(questions.size(), 1);
    QVERIFY(questions.first().contains(QStringLiteral("anna")));
    QCOMPARE(pages->currentElement(), static_cast<Element *>(anna));
    QCOMPARE(editor->line->text(), QStringLiteral("mine"));
    QVERIFY(pages->canApply());
    answer(QMessageBox::Cancel);
    QVERIFY(!pages->mayLeave());
    QVERIFY(module->asked.empty());
}

void ElementPagesTest::discardLeavesAndForgets()
{
    change();
    answer(QMessageBox::Discard);
    QVERIFY(pages->setCurrentElement(bob));
    QCOMPARE(pages->currentElement(), static_cast<Element *>(bob));
    QCOMPARE(module->count(OperationType::Write), 0);
    pages->setCurrentElement(anna);
    QCOMPARE(editor->line->text(), QStringLiteral("about anna"));
    QVERIFY(!pages->canApply());
}

void ElementPagesTest::applyThatIsRefusedStays()
{
    change();
    editor->line->setValidator(new QIntValidator(editor->line));
    answer(QMessageBox::Save);
    QVERIFY(!pages->setCurrentElement(bob));
    QCOMPARE(pages->currentElement(), static_cast<Element *>(anna));
    QVERIFY(module->asked.empty());
    QVERIFY(pages->canApply());
}

void ElementPagesTest::mayLeaveDiscardsByReadingAnew()
{
    change();
    answer(QMessageBox::Discard);
    QVERIFY(pages->mayLeave());
    QCOMPARE(module->count(OperationType::Read), 1);
    QVERIFY(!pages->canApply());
}

void ElementPagesTest::questionStandsOverItsWindow()
{
    change();
    answer(QMessageBox::Cancel); // which looks at the parent
    QVERIFY(!pages->mayLeave());
    QCOMPARE(questions.size(), 1);
}

void ElementPagesTest::applyAndRevertFollowTheChanges()
{
    QSignalSpy actions(pages.get(), &ElementPages::actionsChanged);
    change();
    QVERIFY(actions.count() > 0);
    pages->apply();
    QCOMPARE(module->count(OperationType::Write), 1);
    QVERIFY(!pages->canApply()); // it is on its way
    editor->afterSuccessfulRead(anna, anna->record());
    QVERIFY(!pages->canApply());
    editor->type(QStringLiteral("other"));
    QVERIFY(pages->canApply());
    pages->revert();
    QCOMPARE(module->count(OperationType::Read), 1);
    actions.clear();
    editor->afterSuccessfulRead(anna, anna->record());
    QVERIFY(actions.count() > 0);
    QVERIFY(!pages->canApply());
    QCOMPARE(editor->line->text(), QStringLiteral("about anna"));
}

void ElementPagesTest::refreshReadsTheEditorAgain()
{
    QVERIFY(!pages->canRefresh());
    pages->setCurrentElement(anna);
    QVERIFY(pages->canRefresh());
    pages->refresh();
    QCOMPARE(module->count(OperationType::Read), 2);
}

void ElementPagesTest::refreshOfAContainerMarksItStale()
{
    pages->setCurrentElement(list.get());
    QVERIFY(pages->canRefresh());
    pages->refresh();
    QCOMPARE(module->count(OperationType::ReadContent), 1);
    module->insertElementWidget(new ListEditor(module.get()));
    pages->setCurrentElement(nullptr);
    list->setContent(ContainerElement::Content::Read);
    pages->setCurrentElement(list.get());
    QCOMPARE(module->count(OperationType::ReadContent), 1);
    pages->refresh();
    QCOMPARE(module->count(OperationType::ReadContent), 2);
}

void ElementPagesTest::refreshAsksWhenChangesWouldBeLost()
{
    change();
    answer(QMessageBox::Cancel);
    pages->refresh();
    QVERIFY(module->asked.empty());
    QVERIFY(pages->canApply());
    answer(QMessageBox::Discard);
    pages->refresh();
    QCOMPARE(questions.size(), 2);
    QCOMPARE(module->count(OperationType::Read), 1);
    QVERIFY(!pages->canApply());
}

void ElementPagesTest::focusStaysOnThePageThatFollows()
{
    QWidget window;
    auto *search = new QLineEdit(&window); // what would have the focus next
    pages->setParent(&window);
    window.show();
    pages->show();
    QVERIFY(QTest::qWaitForWindowActive(&window));
    const auto isOnThePage = [this] {
        const QWidget *focused = QApplication::focusWidget();
        return focused == pages.get() || pages->isAncestorOf(focused);
    };
    pages->setCurrentElement(anna);
    editor->afterSuccessfulRead(anna, anna->record());
    editor->line->setFocus();
    editor->blockEditWidget(true);
    QVERIFY(isOnThePage());
    editor->blockEditWidget(false);
    QCOMPARE(QApplication::focusWidget(), static_cast<QWidget *>(editor->line));

    auto *listEditor = new ListEditor(module.get());
    listEditor->setFocusPolicy(Qt::StrongFocus);
    module->insertElementWidget(listEditor);
    pages->setCurrentElement(list.get());
    QVERIFY(isOnThePage());
    listEditor->setFocus();
    pages->setCurrentElement(bob); // as Enter on its row does
    QVERIFY(isOnThePage());
    search->setFocus();
    pages->setCurrentElement(list.get());
    QVERIFY2(search->hasFocus(), "the page takes the focus from no other part of the window");
    pages->setParent(nullptr);
}

void ElementPagesTest::elementThatMayNotBeChangedIsShown()
{
    class Locked : public OrdinaryElement
    {
    public:
        explicit Locked(Module *of)
            : OrdinaryElement(QStringLiteral("Toy"), QString(), QStringLiteral("locked"), of, mayNothing, Place::Child)
        {}
    };
    auto *locked = new Locked(module.get());
    auto record = std::make_unique<ElementData>();
    record->text = QStringLiteral("can be read");
    locked->setRecord(std::move(record));
    list->append(locked);
    pages->setCurrentElement(locked);
    editor->afterSuccessfulRead(locked, locked->record());
    QCOMPARE(editor->line->text(), QStringLiteral("can be read"));
    QVERIFY(!editor->isEditable());
    QVERIFY(!editor->line->isEnabled());
    editor->type(QStringLiteral("mine"));
    QVERIFY(!pages->canApply());
    pages->setCurrentElement(anna);
    editor->afterSuccessfulRead(anna, anna->record());
    QVERIFY(editor->isEditable());
}

void ElementPagesTest::currentElementIsFoundAgainAfterARead()
{
    pages->setCurrentElement(anna);
    anna->setTitle(QStringLiteral("hannah"));
    QSignalSpy current(pages.get(), &ElementPages::currentElementChanged);
    list->clearDelete();
    QVERIFY(!pages->currentElement());
    auto *again = new Ordinary(module.get(), QStringLiteral("hannah"));
    list->append({new Container(module.get(), QStringLiteral("hannah")),
                  new Ordinary(module.get(), QStringLiteral("anna")), again});
    QTRY_COMPARE(pages->currentElement(), static_cast<Element *>(again));
    QCOMPARE(current.count(), 1);
    QCOMPARE(editor->element(), static_cast<Element *>(again));
    QCOMPARE(module->asked.back().operation, static_cast<ContextOperation *>(again));
}

void ElementPagesTest::currentElementIsFoundAgainThoughTheViewMovedOn()
{
    Container root(module.get(), QStringLiteral("root"));
    root.setContent(ContainerElement::Content::Read);
    Container *users = list.release();
    root.append(users);
    TreeNodeModel model;
    model.setRootNode(&root);
    ElementTreeView view;
    view.setModel(&model);
    view.expandAll();
    connect(&view, &ElementTreeView::elementContextOperationChangedFocused, pages.get(),
            [this](ContextOperation *operation) { pages->setCurrentElement(dynamic_cast<Element *>(operation)); });
    connect(pages.get(), &ElementPages::currentElementChanged, &view,
            [&view](Element *element) { view.setCurrentIndex(view.indexOf(element)); });
    view.setCurrentIndex(view.indexOf(anna));
    QCOMPARE(pages->currentElement(), static_cast<Element *>(anna));

    // The pages hear first, then the view moves on; and at once after another change.
    users->clearDelete();
    anna = new Ordinary(module.get(), QStringLiteral("anna"));
    bob = new Ordinary(module.get(), QStringLiteral("bob"));
    users->append({bob, anna});
    QTRY_COMPARE(pages->currentElement(), static_cast<Element *>(anna));
    view.setCurrentIndex(view.indexOf(bob));
    users->clearDelete();
    anna = new Ordinary(module.get(), QStringLiteral("anna"));
    bob = new Ordinary(module.get(), QStringLiteral("bob"));
    users->append({bob, anna});
    QTRY_COMPARE(pages->currentElement(), static_cast<Element *>(bob));
    view.setCurrentIndex(view.indexOf(anna));
    QTRY_COMPARE(pages->currentElement(), static_cast<Element *>(anna));

    // One by one, as the view sees it: it moves on to the row beside it, which goes too.
    delete anna;
    delete bob;
    auto *again = new Ordinary(module.get(), QStringLiteral("anna"));
    users->append(again);
    QTRY_COMPARE(pages->currentElement(), static_cast<Element *>(again));
    QCOMPARE(view.currentIndex(), view.indexOf(again));

    users->clearDelete();
    auto *thirdTime = new Ordinary(module.get(), QStringLiteral("anna"));
    users->append(thirdTime);
    QTRY_COMPARE(pages->currentElement(), static_cast<Element *>(thirdTime));
    QCOMPARE(view.currentIndex(), view.indexOf(thirdTime));
    pages->disconnect(&view);
    view.disconnect(pages.get());
}

void ElementPagesTest::elementBelowAReplacedOneIsFoundAgain()
{
    auto *inner = new Container(module.get(), QStringLiteral("inner"));
    list->append(inner);
    auto *eve = new Ordinary(module.get(), QStringLiteral("eve"));
    inner->append(eve);
    pages->setCurrentElement(eve);
    list->clearDelete();
    auto *newInner = new Container(module.get(), QStringLiteral("inner"));
    auto *newEve = new Ordinary(module.get(), QStringLiteral("eve"));
    newInner->append(newEve);
    list->append(newInner);
    QTRY_COMPARE(pages->currentElement(), static_cast<Element *>(newEve));
}

void ElementPagesTest::parentBecomesCurrentWhenItIsGone()
{
    pages->setCurrentElement(anna);
    list->clearDelete();
    list->append(new Ordinary(module.get(), QStringLiteral("eve")));
    QTRY_COMPARE(pages->currentElement(), static_cast<Element *>(list.get()));
}

void ElementPagesTest::elementThatComesLaterInATaskIsAwaited()
{
    pages->setCurrentElement(anna);
    QSemaphore started;
    Element *again = nullptr;
    TaskObserver::instance()->performTask(
        new ToyTask(list.get(), TaskDescription::Succeeded, QString(), false, [this, &again](Element *element) {
            QCoreApplication::processEvents(); // while the task is not over
            QVERIFY(!pages->currentElement());
            again = new Ordinary(module.get(), QStringLiteral("anna"));
            element->append(again);
        }));
    list->clearDelete();
    QTRY_VERIFY(again);
    QTRY_COMPARE(pages->currentElement(), again);
}

QTEST_MAIN(ElementPagesTest)
#include "tst_elementpages.moc"
