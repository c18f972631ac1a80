// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "toys.h"

#include <elementswidgetproxymodel.h>
#include <elementtreeview.h>
#include <treenodemodel.h>

#include <QSignalSpy>
#include <QSortFilterProxyModel>
#include <QTest>
#include <QToolTip>

using namespace toys;

class EditorsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        module = std::make_unique<ToyModule>();
        element = std::make_unique<Ordinary>(module.get(), QStringLiteral("anna"));
    }
    void cleanup()
    {
        element.reset();
        module.reset();
    }

    void editorShowsOneElementWeakly();
    void editorOffersTheOperationsOfItsElement();
    void moduleHearsOfAnotherElement();
    void startsBlockedUntilARecordComes();
    void elementWithRecordIsShownAtOnce();
    void sameElementAgainChangesNothing();
    void readBlocksAndAsksTheElement();
    void onlyContentIsDisabled();
    void innerStateOfTheFormSurvivesTheBlock();
    void fillingTheFormIsNoChange();
    void withoutRightsNothingCanBeEdited();
    void elementThatCannotBeWrittenCannotBeEdited();
    void applyExportsAndBlocks();
    void applyRefusesWhatItsValidatorRejects();
    void spinBoxIsJudgedToo();
    void unreadableTextThatNobodyEditedIsNotJudged();
    void nothingExportedIsNothingChanged();
    void resetReadsAnew();
    void focusComesBackAfterTheBlock();
    void listReadsOnlyWhatNeedsReading();
    void paranoidListReadsAlways();
    void listRefreshReadsAgain();
    void viewFindsNodesThroughProxies();
    void viewTellsOfCurrentAndSelected();

private:
    std::unique_ptr<ToyModule> module;
    std::unique_ptr<Ordinary> element;
};

void EditorsTest::editorShowsOneElementWeakly()
{
    Editor editor(module.get());
    QVERIFY(!editor.element());
    QCOMPARE(editor.caption(), QString());
    editor.setElement(element.get());
    QCOMPARE(editor.element(), element.get());
    QCOMPARE(editor.caption(), QStringLiteral("About anna"));
    QCOMPARE(editor.role(), int(ElementEditor::MainRole));
    QCOMPARE(editor.contextType(), ContextOperation::ElementWidgetContext);
    element.reset();
    QVERIFY(!editor.element());
    QVERIFY(!editor.isEditable());
    editor.read();
    editor.applyContentChanges();
    QVERIFY(module->asked.empty());
}

void EditorsTest::editorOffersTheOperationsOfItsElement()
{
    Editor editor(module.get());
    QCOMPARE(editor.availableOperations(), OperationTypes());
    editor.setElement(element.get());
    QCOMPARE(editor.availableOperations(), OperationType::Read | OperationType::Write);
    QCOMPARE(editor.elementType(), QStringLiteral("Toy"));
    QCOMPARE(editor.module(), module.get());
}

void EditorsTest::moduleHearsOfAnotherElement()
{
    Editor editor(module.get());
    editor.connectToModule(module.get());
    std::vector<ContextOperation *> heard;
    connect(module.get(), &Module::elementContextOperationChanged, this,
            [&heard](ContextOperation *operation) { heard.push_back(operation); });
    editor.setElement(element.get());
    QCOMPARE(heard, std::vector<ContextOperation *>{&editor});
}

void EditorsTest::startsBlockedUntilARecordComes()
{
    Editor editor(module.get());
    QVERIFY(editor.isBlocked());
    editor.setElement(element.get());
    QVERIFY(editor.isBlocked());
    QVERIFY(!editor.line->isEnabled());
    ElementData record;
    record.text = QStringLiteral("hello");
    editor.afterSuccessfulRead(element.get(), &record);
    QVERIFY(!editor.isBlocked());
    QVERIFY(editor.line->isEnabled());
    QCOMPARE(editor.line->text(), QStringLiteral("hello"));
}

void EditorsTest::elementWithRecordIsShownAtOnce()
{
    element->setText(QStringLiteral("known"));
    Editor editor(module.get());
    editor.setElement(element.get());
    QCOMPARE(editor.line->text(), QStringLiteral("known"));
    QVERIFY(editor.isEditable());
    QVERIFY(module->asked.empty());
}

void EditorsTest::sameElementAgainChangesNothing()
{
    element->setText(QStringLiteral("known"));
    Editor editor(module.get());
    editor.setElement(element.get());
    editor.type(QStringLiteral("mine"));
    QVERIFY(editor.isContentChanged());
    editor.setElement(element.get());
    QVERIFY(editor.isContentChanged());
    QCOMPARE(editor.line->text(), QStringLiteral("mine"));
    Ordinary other(module.get(), QStringLiteral("bob"));
    editor.setElement(&other);
    QVERIFY(!editor.isContentChanged());
    QVERIFY(editor.isBlocked());
}

void EditorsTest::readBlocksAndAsksTheElement()
{
    element->setText(QStringLiteral("known"));
    Editor editor(module.get());
    editor.setElement(element.get());
    editor.read();
    QVERIFY(editor.isBlocked());
    QCOMPARE(editor.line->text(), QStringLiteral("known"));
    QCOMPARE(module->asked.size(), size_t(1));
    QCOMPARE(module->asked[0].type, OperationType::Read);
    QCOMPARE(module->asked[0].operation, static_cast<ContextOperation *>(element.get()));
}

void EditorsTest::onlyContentIsDisabled()
{
    Editor editor(module.get());
    editor.setElement(element.get());
    QVERIFY(!editor.line->isEnabled());
    QVERIFY(!editor.box->isEnabled());
    QVERIFY(editor.device->isEnabled());
    QVERIFY(editor.findChild<QWidget *>(QStringLiteral("frame"))->isEnabled());
    QVERIFY(editor.isEnabled());
}

void EditorsTest::innerStateOfTheFormSurvivesTheBlock()
{
    element->setText(QStringLiteral("known"));
    Editor editor(module.get());
    editor.setElement(element.get()); // the form disables its check box while it is filled
    QVERIFY(editor.box->isEnabled());
    QVERIFY(!editor.check->isEnabled());
    editor.check->setEnabled(true);
    editor.blockEditWidget(true);
    QVERIFY(!editor.check->isEnabled());
    editor.blockEditWidget(false);
    QVERIFY(editor.check->isEnabled());
}

void EditorsTest::fillingTheFormIsNoChange()
{
    Editor editor(module.get());
    editor.setElement(element.get());
    QSignalSpy changes(&editor, &ElementWidget::contentChanged);
    ElementData record;
    record.text = QStringLiteral("hello");
    editor.afterSuccessfulRead(element.get(), &record);
    QVERIFY(!editor.isContentChanged());
    QCOMPARE(changes.count(), 0);
    editor.type(QStringLiteral("mine"));
    QVERIFY(editor.isContentChanged());
    QCOMPARE(changes.count(), 1);
    editor.afterSuccessfulRead(element.get(), &record);
    QVERIFY(!editor.isContentChanged());
}

void EditorsTest::withoutRightsNothingCanBeEdited()
{
    element->setText(QStringLiteral("known"));
    Editor editor(module.get(), mayNothing);
    editor.setElement(element.get());
    QVERIFY(!editor.isBlocked());
    QVERIFY(!editor.isEditable());
    QVERIFY(!editor.line->isEnabled());
    QVERIFY(editor.device->isEnabled());
    editor.type(QStringLiteral("mine"));
    QVERIFY(!editor.isContentChanged());
    editor.applyContentChanges();
    QVERIFY(module->asked.empty());
}

void EditorsTest::elementThatCannotBeWrittenCannotBeEdited()
{
    Container readOnly(module.get(), QStringLiteral("list"));
    readOnly.setRecord(std::make_unique<ElementData>());
    Editor editor(module.get());
    editor.setElement(&readOnly);
    QVERIFY(!editor.isEditable());
    QVERIFY(!editor.line->isEnabled());
}

void EditorsTest::applyExportsAndBlocks()
{
    element->setText(QStringLiteral("known"));
    Editor editor(module.get());
    editor.setElement(element.get());
    editor.type(QStringLiteral("mine"));
    editor.applyContentChanges();
    QCOMPARE(module->count(OperationType::Write), 1);
    QCOMPARE(module->asked[0].operation, static_cast<ContextOperation *>(element.get()));
    QCOMPARE(module->written->text, QStringLiteral("mine"));
    QVERIFY(editor.isBlocked());
    editor.applyContentChanges();
    QCOMPARE(module->count(OperationType::Write), 1);
}

void EditorsTest::applyRefusesWhatItsValidatorRejects()
{
    element->setText(QStringLiteral("5"));
    Editor editor(module.get());
    editor.line->setValidator(new QIntValidator(1, 10, editor.line));
    editor.setElement(element.get());
    editor.show();
    QVERIFY(QTest::qWaitForWindowActive(&editor));
    editor.type(QStringLiteral("0"));
    QVERIFY(!editor.isContentValid());
    editor.applyContentChanges();
    QCOMPARE(module->count(OperationType::Write), 0);
    QVERIFY(editor.isContentChanged());
    QVERIFY(editor.isEditable());
    QCOMPARE(editor.line->text(), QStringLiteral("0"));
    QCOMPARE(editor.focusWidget(), static_cast<QWidget *>(editor.line));
    QVERIFY(!QToolTip::text().isEmpty());
    editor.type(QStringLiteral("7"));
    editor.applyContentChanges();
    QCOMPARE(module->count(OperationType::Write), 1);
}

void EditorsTest::spinBoxIsJudgedToo()
{
    element->setText(QStringLiteral("text"));
    Editor editor(module.get());
    editor.setElement(element.get());
    auto *line = editor.box->findChild<QLineEdit *>();
    line->selectAll();
    QTest::keyClicks(line, QStringLiteral("1")); // below the minimum, and not ended yet
    QVERIFY(!editor.isContentValid());
    editor.applyContentChanges();
    QCOMPARE(module->count(OperationType::Write), 0);
    QTest::keyClicks(line, QStringLiteral("2"));
    QVERIFY(editor.isContentValid());
}

void EditorsTest::unreadableTextThatNobodyEditedIsNotJudged()
{
    element->setText(QStringLiteral("not a number"));
    Editor editor(module.get());
    editor.line->setValidator(new QIntValidator(1, 10, editor.line));
    editor.setElement(element.get());
    QVERIFY(editor.isContentValid());
    editor.type(QStringLiteral("still none"));
    QVERIFY(!editor.isContentValid());
    editor.line->setEnabled(false);
    QVERIFY(editor.isContentValid());
}

void EditorsTest::nothingExportedIsNothingChanged()
{
    element->setText(QStringLiteral("known"));
    Editor editor(module.get());
    editor.exportsNothing = true;
    editor.setElement(element.get());
    editor.type(QStringLiteral("mine"));
    editor.applyContentChanges();
    QCOMPARE(module->count(OperationType::Write), 0);
    QVERIFY(!editor.isContentChanged());
    QVERIFY(editor.isEditable());
}

void EditorsTest::resetReadsAnew()
{
    element->setText(QStringLiteral("known"));
    Editor editor(module.get());
    editor.setElement(element.get());
    editor.type(QStringLiteral("mine"));
    editor.reset();
    QCOMPARE(module->count(OperationType::Read), 1);
    editor.afterSuccessfulRead(element.get(), element->record());
    QCOMPARE(editor.line->text(), QStringLiteral("known"));
    QVERIFY(!editor.isContentChanged());
}

void EditorsTest::focusComesBackAfterTheBlock()
{
    element->setText(QStringLiteral("known"));
    Editor editor(module.get());
    editor.setElement(element.get());
    editor.show();
    QVERIFY(QTest::qWaitForWindowActive(&editor));
    editor.line->setFocus();
    editor.blockEditWidget(true);
    QVERIFY(editor.focusWidget() != editor.line);
    editor.blockEditWidget(false);
    QCOMPARE(editor.focusWidget(), static_cast<QWidget *>(editor.line));

    // What cannot be edited any more hands it on; nothing else is behind it.
    editor.box->setFocus();
    editor.blockEditWidget(true);
    editor.box->setEnabled(false);
    editor.blockEditWidget(false);
    QCOMPARE(editor.focusWidget(), static_cast<QWidget *>(editor.device));

    editor.line->setFocus();
    editor.blockEditWidget(true);
    QCOMPARE(editor.focusWidget(), static_cast<QWidget *>(&editor)); // not in another part of the window
    editor.device->setFocus();                                       // moved by hand
    editor.blockEditWidget(false);
    QCOMPARE(editor.focusWidget(), static_cast<QWidget *>(editor.device));
}

void EditorsTest::listReadsOnlyWhatNeedsReading()
{
    Container container(module.get(), QStringLiteral("list"));
    ListEditor editor(module.get());
    editor.read();
    QCOMPARE(module->count(OperationType::ReadContent), 0);
    editor.setElement(&container);
    editor.read();
    QCOMPARE(module->count(OperationType::ReadContent), 1);
    QCOMPARE(module->asked.back().operation, static_cast<ContextOperation *>(&container));
    editor.read(); // it is being read
    QCOMPARE(module->count(OperationType::ReadContent), 1);
    container.setContent(ContainerElement::Content::Read);
    editor.read();
    QCOMPARE(module->count(OperationType::ReadContent), 1);
    container.setContent(ContainerElement::Content::Stale);
    editor.read();
    QCOMPARE(module->count(OperationType::ReadContent), 2);
    editor.setElement(element.get()); // has no content to read
    editor.read();
    QCOMPARE(module->asked.size(), size_t(2));
}

void EditorsTest::paranoidListReadsAlways()
{
    Container container(module.get(), QStringLiteral("list"));
    container.setContent(ContainerElement::Content::Read);
    ListEditor editor(module.get());
    editor.setElement(&container);
    module->setData(QStringLiteral("paranoid"), true);
    editor.read();
    editor.read();
    QCOMPARE(module->count(OperationType::ReadContent), 2);
}

void EditorsTest::listRefreshReadsAgain()
{
    Container container(module.get(), QStringLiteral("list"));
    container.setContent(ContainerElement::Content::Read);
    ListEditor editor(module.get());
    editor.refresh();
    editor.setElement(&container);
    editor.refresh();
    QCOMPARE(module->count(OperationType::ReadContent), 1);
}

void EditorsTest::viewFindsNodesThroughProxies()
{
    Container root(module.get(), QStringLiteral("root"));
    root.setContent(ContainerElement::Content::Read);
    auto *anna = new Ordinary(module.get(), QStringLiteral("anna"));
    auto *bob = new Ordinary(module.get(), QStringLiteral("bob"));
    root.append({bob, anna});
    TreeNodeModel model;
    model.setRootNode(&root);
    QSortFilterProxyModel inner;
    inner.setSourceModel(&model);
    ElementsWidgetProxyModel outer;
    outer.setSourceModel(&inner);
    ElementTreeView view;
    QVERIFY(!view.node({}));
    QVERIFY(!view.indexOf(anna).isValid());
    view.setModel(&outer);
    outer.sort(0);
    QCOMPARE(view.indexOf(anna), outer.index(0, 0));
    QCOMPARE(view.node(outer.index(1, 0)), static_cast<TreeNode *>(bob));
    outer.setFilterText(QStringLiteral("anna"));
    QVERIFY(!view.indexOf(bob).isValid());
    QVERIFY(!view.indexOf(nullptr).isValid());
    view.setModel(&model);
    QCOMPARE(view.node(view.indexOf(bob)), static_cast<TreeNode *>(bob));
    QVERIFY(view.uniformRowHeights());
}

void EditorsTest::viewTellsOfCurrentAndSelected()
{
    Container root(module.get(), QStringLiteral("root"));
    auto *anna = new Ordinary(module.get(), QStringLiteral("anna"));
    auto *bob = new Ordinary(module.get(), QStringLiteral("bob"));
    root.append({anna, bob});
    TreeNodeModel model;
    model.setRootNode(&root);
    ElementTreeView view;
    view.setModel(&model);
    std::vector<ContextOperation *> focused;
    std::vector<ContextOperation *> selected;
    connect(&view, &ElementTreeView::elementContextOperationChangedFocused, this,
            [&focused](ContextOperation *operation) { focused.push_back(operation); });
    connect(&view, &ElementTreeView::elementContextOperationChangedSelected, this,
            [&selected](ContextOperation *operation) { selected.push_back(operation); });
    view.setCurrentIndex(view.indexOf(bob));
    QCOMPARE(focused, std::vector<ContextOperation *>{bob});
    QCOMPARE(selected, std::vector<ContextOperation *>{bob});
    view.clearSelection();
    QCOMPARE(selected.back(), static_cast<ContextOperation *>(nullptr));

    view.show();
    QVERIFY(QTest::qWaitForWindowActive(&view));
    focused.clear();
    view.clearFocus();
    view.setFocus();
    QCOMPARE(focused, std::vector<ContextOperation *>{bob});
}

QTEST_MAIN(EditorsTest)
#include "tst_editors.moc"
