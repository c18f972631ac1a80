// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "fakemodule.h"

#include <elementpages.h>
#include <elementtreeview.h>
#include <mainwindow.h>
#include <noticebar.h>
#include <session.h>

#include <taskobserver.h>

#include <QAction>
#include <QMessageBox>
#include <QtTest>

#include <memory>

/// Tests of the real window, driven by keyboard and mouse: each has a new one, with the modules of the console and a
/// made-up one.
class WindowTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();

protected:
    void openWindow();
    void closeWindow();
    void click(Element *element, Qt::MouseButton button = Qt::LeftButton);
    void clickAndWait(Element *element);
    void typeChange(const QString &text);
    Element *computer() { return dynamic_cast<Element *>(_session->tree().rootNode()->childNodes().at(0)); }
    Element *child(const char *type);
    static void answer(QMessageBox::StandardButton button, int *asked);
    void pressKeyOfButton(const NoticeBar *notice);
    void waitForTasks() { QTRY_VERIFY(!TaskObserver::instance()->isBusy()); }
    template<typename Widget>
    Widget *find(const char *name) const
    {
        return _window->findChild<Widget *>(QLatin1String(name));
    }
    QAction *action(const char *name) const { return find<QAction>(name); }
    ElementTreeView *tree() const { return find<ElementTreeView>("treeView"); }
    QString currentTitle() const { return tree()->currentIndex().data().toString(); }

    QObject _owner;
    std::unique_ptr<Session> _session;
    FakeModule *_fake = nullptr;
    std::unique_ptr<MainWindow> _window;
    ElementPages *_pages = nullptr;
    quint64 _lastTask = 0;
};
