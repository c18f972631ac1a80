// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "answers.h"
#include "limitledger.h"
#include "typedpage.h"
#include "walkmachine.h"

#include <consolekeyboard.h>

#include <QObject>
#include <QStringList>

#include <random>

class ElementPages;
class ElementTreeView;
class QAction;
class QTreeView;
class ViewEditElementWidget;
struct TaskReport;

/// Somebody who uses the console's window at random, with mouse and keys, while the machine changes, and who
/// remembers what was typed.
class Walker : public QObject
{
    Q_OBJECT

public:
    Walker(ConsoleKeyboard &console, WalkMachine &machine, std::mt19937 &random);

    /// One thing at random; all that it leads to at once is done afterwards.
    void step();
    /// What was done last, oldest first.
    QStringList lastActions() const { return _actions; }

    /// What is not as it should be after any step; in words.
    QStringList problems();
    /// What is not as it should be when everything has come to rest.
    QStringList problemsAtRest();

private:
    using Action = void (Walker::*)();

    void clickTreeRow();
    void pressKeyInTree();
    void searchTree();
    void typeIntoPage();
    void giveKeyToPage();
    void turnWheel();
    void chooseDevice();
    void apply();
    void revert();
    void refresh();
    void useTab();
    void useList();
    void searchList();
    void openMenu();
    void useTaskList();
    void cancelNow();
    void moveFocus();
    void closeWindow();
    void changeMachine();
    void settle();

    int below(int limit);
    template<typename Item>
    const Item &pick(const QList<Item> &items);
    void tell(const QString &action);
    void pressAction(const char *name);
    void reopenIfClosed();
    void taskEnded(const TaskReport &task);
    void noteAnswer(const QMessageBox *box, QAbstractButton *button);
    QWidgetList inputsOfPage() const;
    QString changeWidget(QWidget *widget); // says in words how

    ElementTreeView *tree() const;
    QTreeView *taskList() const;
    ElementPages *pages() const;
    QAction *action(const char *name) const;
    ViewEditElementWidget *form() const; // in front and open for typing; else null
    QString highlightProblem() const;

    ConsoleKeyboard &_console;
    WalkMachine &_machine;
    std::mt19937 &_random;
    Answers _answers;
    LimitLedger _ledger;
    TypedPage _typed;
    QStringList _actions;
    QStringList _problems; // seen while a step went on
};
