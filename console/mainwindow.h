// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <element.h>

#include <QMainWindow>

#include <memory>

class ElementPages;
class ListBar;
class NavigationPane;
class NoticeBar;
class Session;
class TaskListModel;
class TaskPane;
class QTimer;
struct TaskReport;

namespace Ui
{
class MainWindow;
}

/// The console's window: the tree, the page of the current element, the task list, and what is done with them.
class MainWindow : public QMainWindow
{
    Q_OBJECT

public:
    /// The session outlives the window.
    explicit MainWindow(Session &session, QWidget *parent = nullptr);
    ~MainWindow() override;

public Q_SLOTS:
    /// Closes the window as the administrator would: it asks about changes and waits for a task that changes the
    /// machine. Asked a second time, or without an answer within half a minute, it gives up what was typed and not
    /// applied and closes the window. Then TaskObserver::closeDown() still finishes what changes the machine.
    void terminate();

protected:
    /// Asks about changes that were not applied, and waits for tasks that change the machine; closed once more, it
    /// waits no longer.
    void closeEvent(QCloseEvent *event) override;

private:
    void buildLayout();
    void connectActions();
    void connectParts();
    void restoreLayout();
    void saveLayout() const;

    void choose(Element *element);
    void followPage(Element *element);
    void updateActions();
    void showTitle();
    void watchMenusOfPage();
    void watchContext();
    void showListMenu(const QPoint &globalPosition);
    void showMenu(Element *element, const QPoint &globalPosition);
    void moveFocus(int step);
    void showPlugins();
    void showAbout();

    void waitForTasks();
    void keepOpen();
    void endNow();
    void taskEnded(const TaskReport &task);

    Session &_session;
    std::unique_ptr<Ui::MainWindow> _ui;
    TaskListModel *_tasks;
    NavigationPane *_navigation;
    ElementPages *_pages;
    ListBar *_listBar;
    QAction *_listBarAction;
    TaskPane *_taskPane;
    NoticeBar *_rightsNotice;
    NoticeBar *_pluginsNotice;
    NoticeBar *_closingNotice;
    QTimer *_terminationGrace;            // runs from the first terminate() on
    NodePointer<Element> _contextElement; // that a list's menu is about
    bool _closesWhenAnswered = false;
    bool _isAskedToClose = false; // and asks the administrator
    bool _isClosing = false;      // as soon as what changes the machine has ended
    QString _keptOpenBy;          // the failed task of which the notice speaks
};
