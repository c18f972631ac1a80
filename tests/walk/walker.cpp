// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "walker.h"

#include <elementpages.h>
#include <elementtreeview.h>
#include <navigationpane.h>
#include <searchfield.h>
#include <taskobserver.h>

#include <QAbstractSpinBox>
#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QContextMenuEvent>
#include <QGroupBox>
#include <QHeaderView>
#include <QLineEdit>
#include <QMenu>
#include <QPlainTextEdit>
#include <QTabBar>
#include <QToolBar>
#include <QWheelEvent>

namespace
{
constexpr int rememberedActions = 50;

const QStringList numbers = {QStringLiteral("0"),   QStringLiteral("7"),       QStringLiteral("12"),
                             QStringLiteral("500"), QStringLiteral("1.5"),     QStringLiteral("0.25"),
                             QStringLiteral("-3"),  QStringLiteral("9999999"), QStringLiteral("abc")};
const QStringList lines = {QStringLiteral("5 4 * * *"), QStringLiteral("*/10 8-17 1 * 1"), QStringLiteral("x"),
                           QStringLiteral("    "), QStringLiteral("60 * * * *")};
const QStringList searches = {QStringLiteral("sys"), QStringLiteral("a"), QStringLiteral("Users"),
                              QStringLiteral("an"),  QStringLiteral("q"), QStringLiteral("nobody has this name")};

template<typename Widget>
QList<Widget *> shownChildren(const QWidget *parent)
{
    QList<Widget *> shown;
    const QList<Widget *> all = parent->findChildren<Widget *>();
    for (Widget *each : all)
        if (each->isVisible() && each->isEnabled())
            shown.append(each);
    return shown;
}

QModelIndexList rowsOf(const QTreeView *view)
{
    QModelIndexList rows;
    for (QModelIndex row = view->model()->index(0, 0); row.isValid(); row = view->indexBelow(row))
        rows.append(row);
    return rows;
}

void replaceText(QWidget *widget, const QString &text)
{
    QTest::keyClick(widget, Qt::Key_A, Qt::ControlModifier);
    if (text.isEmpty())
        QTest::keyClick(widget, Qt::Key_Delete);
    QTest::keyClicks(widget, text);
}
} // namespace

Walker::Walker(ConsoleKeyboard &console, WalkMachine &machine, std::mt19937 &random)
    : _console(console)
    , _machine(machine)
    , _random(random)
    , _answers(random)
{
    _ledger.note();
    connect(TaskObserver::instance(), &TaskObserver::taskFinished, this, &Walker::taskEnded);
    connect(&_answers, &Answers::chosen, this, &Walker::noteAnswer);
}

void Walker::step()
{
    static constexpr Action actions[] = {
        &Walker::clickTreeRow,   &Walker::clickTreeRow,   &Walker::clickTreeRow,  &Walker::clickTreeRow,
        &Walker::pressKeyInTree, &Walker::pressKeyInTree, &Walker::searchTree,    &Walker::searchTree,
        &Walker::typeIntoPage,   &Walker::typeIntoPage,   &Walker::typeIntoPage,  &Walker::typeIntoPage,
        &Walker::typeIntoPage,   &Walker::typeIntoPage,   &Walker::giveKeyToPage, &Walker::turnWheel,
        &Walker::chooseDevice,   &Walker::apply,          &Walker::apply,         &Walker::apply,
        &Walker::revert,         &Walker::refresh,        &Walker::refresh,       &Walker::useTab,
        &Walker::useTab,         &Walker::useList,        &Walker::useList,       &Walker::searchList,
        &Walker::openMenu,       &Walker::useTaskList,    &Walker::moveFocus,     &Walker::changeMachine,
        &Walker::changeMachine,  &Walker::changeMachine,  &Walker::settle,        &Walker::settle,
        &Walker::settle,         &Walker::settle,         &Walker::settle,        &Walker::settle,
    };
    constexpr int rare = 150;
    if (below(rare) == 0)
        closeWindow();
    else
        (this->*actions[below(int(std::size(actions)))])();
    constexpr int turns = 3; // a row is announced in one, its page asks to be looked at in the next
    for (int i = 0; i < turns; ++i)
        QCoreApplication::processEvents();
    reopenIfClosed();
}

int Walker::below(int limit)
{
    return static_cast<int>(_random() % static_cast<unsigned>(limit));
}

template<typename Item>
const Item &Walker::pick(const QList<Item> &items)
{
    return items.at(below(items.size()));
}

void Walker::tell(const QString &action)
{
    const QString busy =
        TaskObserver::instance()->isBusy() ? QStringLiteral(" (while a task is under way)") : QString();
    _actions.append(action + busy);
    if (_actions.size() > rememberedActions)
        _actions.removeFirst();
}

ElementTreeView *Walker::tree() const
{
    return _console.window().findChild<NavigationPane *>()->view();
}

ElementPages *Walker::pages() const
{
    return _console.window().findChild<ElementPages *>();
}

QAction *Walker::action(const char *name) const
{
    return _console.window().findChild<QAction *>(QLatin1String(name));
}

ViewEditElementWidget *Walker::form() const
{
    auto *editor = qobject_cast<ViewEditElementWidget *>(pages()->currentEditor());
    return editor && editor->isEditable() ? editor : nullptr;
}

void Walker::clickTreeRow()
{
    const QModelIndexList rows = rowsOf(tree());
    if (rows.isEmpty())
        return; // a search finds nothing
    const QModelIndex row = pick(rows);
    tell(QStringLiteral("click \"%1\" in the tree").arg(row.data().toString()));
    tree()->scrollTo(row);
    QTest::mouseClick(tree()->viewport(), Qt::LeftButton, {}, tree()->visualRect(row).center());
}

void Walker::pressKeyInTree()
{
    static const QList<int> keys = {Qt::Key_Up,   Qt::Key_Down, Qt::Key_Left, Qt::Key_Right,
                                    Qt::Key_Home, Qt::Key_End,  Qt::Key_Right};
    const int key = pick(keys);
    tell(QStringLiteral("press %1 in the tree").arg(QKeySequence(key).toString()));
    QTest::keyClick(tree(), static_cast<Qt::Key>(key));
}

void Walker::searchTree()
{
    QLineEdit *field = _console.window().findChild<NavigationPane *>()->searchField();
    const QString text = below(2) ? QString() : pick(searches);
    tell(QStringLiteral("search the tree for \"%1\"").arg(text));
    replaceText(field, text);
    if (below(3) == 0)
        QTest::keyClick(field, below(2) ? Qt::Key_Down : Qt::Key_Escape);
}

QWidgetList Walker::inputsOfPage() const
{
    QWidgetList inputs;
    const ViewEditElementWidget *page = form();
    if (!page)
        return inputs;
    const QList<QWidget *> all = shownChildren<QWidget>(page);
    for (QWidget *each : all) {
        const auto *line = qobject_cast<QLineEdit *>(each);
        const auto *group = qobject_cast<QGroupBox *>(each);
        const auto *button = qobject_cast<QAbstractButton *>(each);
        const auto *box = qobject_cast<QAbstractSpinBox *>(each);
        const bool takesInput = (box && !box->isReadOnly()) || (line && !line->isReadOnly()) ||
                                (group && group->isCheckable()) || (button && button->isCheckable()) ||
                                qobject_cast<QComboBox *>(each) || qobject_cast<QPlainTextEdit *>(each);
        if (takesInput && each->objectName().startsWith(QLatin1Char('_')))
            inputs.append(each);
    }
    return inputs;
}

QString Walker::changeWidget(QWidget *widget)
{
    if (qobject_cast<QAbstractSpinBox *>(widget)) {
        const QString number = pick(numbers);
        replaceText(widget, number);
        const bool leaves = below(2) == 1;
        if (leaves)
            QTest::keyClick(widget, Qt::Key_Tab);
        return QStringLiteral("type %1%2").arg(number, QLatin1String(leaves ? " and Tab" : ""));
    }
    if (qobject_cast<QLineEdit *>(widget)) {
        const QString line = pick(lines);
        replaceText(widget, line);
        return QStringLiteral("type \"%1\"").arg(line);
    }
    if (qobject_cast<QPlainTextEdit *>(widget)) {
        const QString text = pick(searches);
        QTest::keyClicks(widget, text);
        return QStringLiteral("type \"%1\"").arg(text);
    }
    const bool isList = qobject_cast<QComboBox *>(widget);
    const Qt::Key key = isList ? (below(2) ? Qt::Key_Down : Qt::Key_Up) : Qt::Key_Space;
    QTest::keyClick(widget, key);
    return QStringLiteral("press %1").arg(QKeySequence(key).toString());
}

void Walker::typeIntoPage()
{
    const QWidgetList inputs = inputsOfPage();
    if (inputs.isEmpty())
        return;
    QWidget *input = pick(inputs);
    const QString name = input->objectName();
    const QString title = pages()->currentElement()->title();
    const QPointer<ViewEditElementWidget> editor = form();
    input->setFocus();
    const QString how = changeWidget(input);
    tell(QStringLiteral("%1 in %2 on the page of \"%3\"").arg(how, name, title));
    if (editor)
        _typed.note(editor, name);
}

/// A key where the focus is, for what a person does with a box that was typed into before.
void Walker::giveKeyToPage()
{
    static const QList<int> keys = {Qt::Key_Up, Qt::Key_Down, Qt::Key_Delete, Qt::Key_Backspace, Qt::Key_5};
    const QPointer<ViewEditElementWidget> editor = form();
    const QPointer<QWidget> focused = QApplication::focusWidget();
    if (!editor || !focused || !inputsOfPage().contains(focused))
        return;
    const QString name = focused->objectName();
    const int key = pick(keys);
    tell(QStringLiteral("press %1 in %2").arg(QKeySequence(key).toString(), name));
    QTest::keyClick(focused, static_cast<Qt::Key>(key));
    if (editor)
        _typed.note(editor, name);
}

/// The wheel edits nothing but what has the focus.
void Walker::turnWheel()
{
    const QWidgetList inputs = inputsOfPage();
    if (inputs.isEmpty())
        return;
    QWidget *input = pick(inputs);
    if (input->hasFocus())
        return;
    ViewEditElementWidget *editor = form();
    tell(QStringLiteral("turn the wheel over %1").arg(input->objectName()));
    const bool wasChanged = editor->isContentChanged();
    const auto before = TypedPage::valuesOf(editor);
    const QPoint centre = input->rect().center();
    QWheelEvent event(centre, input->mapToGlobal(centre), QPoint(), QPoint(0, below(2) ? 120 : -120), Qt::NoButton,
                      Qt::NoModifier, Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(input, &event);
    if (editor->isContentChanged() && (!wasChanged || TypedPage::valuesOf(editor) != before))
        _problems.append(QStringLiteral("The wheel changed the page"));
}

void Walker::chooseDevice()
{
    const QWidget *editor = pages()->currentEditor();
    const QList<QComboBox *> boxes = editor ? shownChildren<QComboBox>(editor) : QList<QComboBox *>();
    for (QComboBox *box : boxes) {
        if (box->objectName() != QLatin1String("_devicesComboBox") &&
            box->objectName() != QLatin1String("_filesystemsComboBox"))
            continue;
        tell(QStringLiteral("choose another device"));
        QTest::keyClick(box, below(2) ? Qt::Key_Down : Qt::Key_Up);
        return;
    }
}

void Walker::pressAction(const char *name)
{
    static const QMap<QString, QKeySequence> keys = {
        {QStringLiteral("applyAction"), QKeySequence(Qt::CTRL + Qt::Key_S)},
        {QStringLiteral("refreshAction"), QKeySequence(Qt::Key_F5)},
    };
    const QKeySequence key = keys.value(QLatin1String(name));
    if (!key.isEmpty() && below(2)) {
        const int code = key[0];
        QTest::keyClick(&_console.window(), static_cast<Qt::Key>(code & ~Qt::KeyboardModifierMask),
                        static_cast<Qt::KeyboardModifiers>(code & Qt::KeyboardModifierMask));
        return;
    }
    const auto *bar = _console.window().findChild<QToolBar *>();
    QWidget *button = bar->widgetForAction(action(name));
    if (below(4) == 0)
        QTest::mouseDClick(button, Qt::LeftButton);
    else
        QTest::mouseClick(button, Qt::LeftButton);
}

void Walker::apply()
{
    if (!pages()->canApply())
        return;
    tell(QStringLiteral("Apply"));
    _typed.applyAsked(_ledger);
    pressAction("applyAction");
    cancelNow();
}

void Walker::revert()
{
    if (!pages()->canApply())
        return;
    tell(QStringLiteral("Revert"));
    _typed.giveUp();
    pressAction("revertAction");
}

void Walker::refresh()
{
    const int times = 1 + below(2);
    tell(QStringLiteral("Refresh, %1 times").arg(times));
    for (int i = 0; i < times; ++i)
        pressAction("refreshAction");
    cancelNow();
}

void Walker::useTab()
{
    const QList<QTabBar *> bars = shownChildren<QTabBar>(pages());
    if (bars.isEmpty() || bars.constFirst()->count() == 0)
        return;
    QTabBar *bar = bars.constFirst();
    const int tab = below(bar->count());
    tell(QStringLiteral("choose the tab \"%1\"").arg(bar->tabText(tab)));
    QTest::mouseClick(bar, Qt::LeftButton, {}, bar->tabRect(tab).center());
}

void Walker::useList()
{
    const QWidget *editor = pages()->currentEditor();
    const QList<QTreeView *> views = editor ? shownChildren<QTreeView>(editor) : QList<QTreeView *>();
    if (views.isEmpty())
        return;
    QTreeView *view = views.constFirst();
    const QModelIndexList rows = rowsOf(view);
    if (rows.isEmpty() || below(4) == 0) {
        tell(QStringLiteral("sort the list"));
        const int column = below(view->header()->count());
        const QPoint place(view->header()->sectionViewportPosition(column) + 5, view->header()->height() / 2);
        QTest::mouseClick(view->header()->viewport(), Qt::LeftButton, {}, place);
        return;
    }
    const QModelIndex row = pick(rows);
    view->scrollTo(row);
    const QPoint place = view->visualRect(row).center();
    tell(QStringLiteral("click \"%1\" in the list").arg(row.data().toString()));
    QTest::mouseClick(view->viewport(), Qt::LeftButton, {}, place);
    if (below(3) == 0)
        QTest::keyClick(view, Qt::Key_Return);
}

void Walker::searchList()
{
    QTest::keyClick(&_console.window(), Qt::Key_F, Qt::ControlModifier | Qt::ShiftModifier);
    auto *field = qobject_cast<SearchField *>(QApplication::focusWidget());
    if (!field)
        return;
    const QString text = below(2) ? QString() : pick(searches);
    tell(QStringLiteral("search the list for \"%1\"").arg(text));
    replaceText(field, text);
}

void Walker::openMenu()
{
    const QModelIndexList rows = rowsOf(tree());
    if (rows.isEmpty())
        return;
    const QModelIndex row = pick(rows);
    tree()->scrollTo(row);
    const QPoint place = tree()->visualRect(row).center();
    tell(QStringLiteral("open the menu of \"%1\"").arg(row.data().toString()));
    QContextMenuEvent event(QContextMenuEvent::Mouse, place, tree()->viewport()->mapToGlobal(place));
    QCoreApplication::sendEvent(tree()->viewport(), &event);
    auto *menu = qobject_cast<QMenu *>(QApplication::activePopupWidget());
    if (!menu)
        return;
    QList<QAction *> choices;
    const QList<QAction *> all = menu->actions();
    std::copy_if(all.begin(), all.end(), std::back_inserter(choices),
                 [](const QAction *each) { return each->isEnabled() && !each->isSeparator() && !each->menu(); });
    if (choices.isEmpty() || below(2)) {
        QTest::keyClick(menu, Qt::Key_Escape);
        return;
    }
    QAction *choice = pick(choices);
    tell(QStringLiteral("choose \"%1\" there").arg(choice->text()));
    QTest::mouseClick(menu, Qt::LeftButton, {}, menu->actionGeometry(choice).center());
}

QTreeView *Walker::taskList() const
{
    return _console.window().findChild<QWidget *>(QStringLiteral("taskDock"))->findChild<QTreeView *>();
}

/// The task that was queued last, in the same turn, or it has ended.
void Walker::cancelNow()
{
    constexpr int seldom = 4;
    auto *cancel = _console.window().findChild<QAbstractButton *>(QStringLiteral("cancelButton"));
    taskList()->setCurrentIndex(taskList()->model()->index(0, 0));
    if (below(seldom) != 0 || !cancel->isEnabled())
        return;
    tell(QStringLiteral("cancel \"%1\"").arg(taskList()->currentIndex().data().toString()));
    QTest::mouseClick(cancel, Qt::LeftButton);
}

void Walker::useTaskList()
{
    QTreeView *view = taskList();
    tell(QStringLiteral("use the task list"));
    switch (below(3)) {
    case 0:
        QTest::keyClick(view, Qt::Key_Down);
        break;
    case 1:
        QTest::keyClick(view, Qt::Key_C, Qt::ControlModifier);
        break;
    default:
        QTest::mouseClick(_console.window().findChild<QWidget *>(QStringLiteral("clearButton")), Qt::LeftButton);
    }
}

void Walker::moveFocus()
{
    tell(QStringLiteral("move the focus"));
    QWidget *focused = QApplication::focusWidget();
    if (focused)
        QTest::keyClick(focused, below(2) ? Qt::Key_Tab : Qt::Key_F6);
}

void Walker::closeWindow()
{
    tell(QStringLiteral("close the window"));
    _console.window().close();
}

void Walker::reopenIfClosed()
{
    if (_console.window().isVisible())
        return;
    tell(QStringLiteral("open the console again"));
    const QString loss = _typed.lossIfAny();
    if (!loss.isEmpty())
        _problems.append(loss);
    _typed.clear();
    _console.close();
    _console.open();
}

void Walker::changeMachine()
{
    if (TaskObserver::instance()->isChangingMachine())
        return; // what it sets has to be told from what is set here
    _problems += _ledger.takeSurprises();
    tell(_machine.change());
    _ledger.note();
}

void Walker::settle()
{
    tell(QStringLiteral("wait"));
    ConsoleKeyboard::settle();
}

void Walker::taskEnded(const TaskReport &task)
{
    const bool isDone = task.status == TaskDescription::Succeeded;
    if (!isDone)
        tell(QStringLiteral("\"%1\" does not succeed: %2").arg(task.description, task.message));
    if (!task.changesMachine)
        return;
    if (isDone)
        tell(QStringLiteral("\"%1\" succeeds").arg(task.description));
    _problems += _ledger.takeSurprises();
    if (isDone)
        _typed.writeSucceeded(task.element.data());
}

void Walker::noteAnswer(const QMessageBox *box, QAbstractButton *button)
{
    tell(QStringLiteral("answer \"%1\" with \"%2\"").arg(box->text(), button ? button->text() : QString()));
    const QMessageBox::StandardButton answer = box->standardButton(button);
    if (answer == QMessageBox::Discard)
        _typed.giveUp();
    else if (answer == QMessageBox::Save)
        _typed.applyAsked(_ledger);
}

QString Walker::highlightProblem() const
{
    const QModelIndexList selected = tree()->selectionModel()->selectedRows();
    const Element *shown = pages()->currentElement();
    for (const QModelIndex &row : selected)
        if (tree()->node(row) != shown)
            return QStringLiteral("The tree highlights \"%1\", the page shows \"%2\"")
                .arg(row.data().toString(), shown ? shown->title() : QString());
    const QModelIndex row = tree()->indexOf(pages()->currentElement());
    if (selected.isEmpty() && row.isValid())
        return QStringLiteral("The tree highlights nothing, the page shows \"%1\"").arg(shown->title());
    return {};
}

QStringList Walker::problems()
{
    QStringList found = _problems;
    _problems.clear();
    const QString loss = _typed.lossIfAny();
    if (!loss.isEmpty())
        found.append(loss);
    if (pages()->isAsking())
        return found;
    const QString highlight = highlightProblem();
    if (!highlight.isEmpty())
        found.append(highlight);
    bool isChanged = false;
    for (ElementWidget *editor : pages()->editors()) {
        const auto *page = qobject_cast<ViewEditElementWidget *>(editor);
        isChanged = isChanged || (page && page->isContentChanged());
    }
    if (action("applyAction")->isEnabled() && !isChanged)
        found.append(QStringLiteral("Apply is offered for a page without changes"));
    return found;
}

QStringList Walker::problemsAtRest()
{
    constexpr int patience = 60000;
    if (!QTest::qWaitFor([] { return !TaskObserver::instance()->isBusy(); }, patience))
        return {QStringLiteral("A task is stuck")};
    QCoreApplication::processEvents();
    reopenIfClosed();
    return problems() + _ledger.takeSurprises() + _machine.tableProblems();
}
