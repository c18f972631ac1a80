// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "realconsole.h"

#include <taskobserver.h>

#include <QAction>
#include <QLabel>
#include <QTest>
#include <QToolBar>

RealConsole::RealConsole()
{
    _session.loadPlugins({Session::pluginFolder()});
    _window = std::make_unique<MainWindow>(_session);
    _window->show();
    _driver = std::make_unique<ConsoleDriver>(*_window);
}

RealConsole::~RealConsole()
{
    _driver.reset();
    _window.reset();
    TaskObserver::instance()->closeDown();
}

bool RealConsole::click(const QString &action)
{
    const auto *bar = _window->findChild<QToolBar *>();
    QWidget *button = bar->widgetForAction(_window->findChild<QAction *>(action));
    if (!button->isEnabled())
        return false;
    QTest::mouseClick(button, Qt::LeftButton);
    return true;
}

bool RealConsole::refresh()
{
    return click(QStringLiteral("refreshAction")) && _driver->settle();
}

QString RealConsole::message() const
{
    const auto *label = _window->findChild<QLabel *>(QStringLiteral("pageMessage"));
    return label->isVisible() ? label->text() : QString();
}
