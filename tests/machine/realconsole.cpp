// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "realconsole.h"

#include <taskobserver.h>

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
