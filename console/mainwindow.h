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

protected:
    /// Asks about changes that were not applied, and waits for tasks that change the machine.
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
    void watchMenusOfPage();
    void watchContext();
    void showListMenu(const QPoint &globalPosition);
    void showMenu(Element *element, const QPoint &globalPosition);
    void moveFocus(int step);
    void showPlugins();
    void showAbout();

    void waitForTasks();
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
    NodePointer<Element> _contextElement; // that a list's menu is about
    bool _closesWhenAnswered = false;
    bool _isClosing = false; // as soon as what changes the machine has ended
};
