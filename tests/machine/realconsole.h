// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <consoledriver.h>
#include <mainwindow.h>
#include <session.h>

/// The console's own window with the real plug-in, and what drives it. The widgets' application must be there first.
class RealConsole
{
public:
    RealConsole();
    ~RealConsole();

    ConsoleDriver &driver() { return *_driver; }
    MainWindow &window() { return *_window; }

    /// Clicks an action on the tool bar. False while it is not available.
    bool click(const QString &action);
    /// Reads the page in front again, and waits for it.
    bool refresh();
    /// What the page says went wrong; empty when nothing did.
    QString message() const;

private:
    Session _session;
    std::unique_ptr<MainWindow> _window;
    std::unique_ptr<ConsoleDriver> _driver;
};
