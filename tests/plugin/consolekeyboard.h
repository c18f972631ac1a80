// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <mainwindow.h>
#include <session.h>

#include <memory>

/// The console's own window with the plug-in of this build, and somebody in front of it who has nothing but a keyboard.
/// Keys go to whatever has the focus, as the window system would send them. A failure ends the running test function.
class ConsoleKeyboard
{
public:
    /// Where the console's settings of this test are, and that they are not the tester's own.
    static void useOwnSettings(const QString &testName);

    ~ConsoleKeyboard() { close(); }

    /// Starts the console and waits until it is up and idle.
    void open();
    /// Ends it, as its main() does. Afterwards it may be opened again.
    void close();

    MainWindow &window() { return *_window; }

    void press(int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
    void type(const QString &text);
    /// Goes on with Tab until a widget of this name has the focus.
    void tabTo(const char *name);
    /// The name of the widget that has the focus.
    static QString focus();
    /// Waits until no task is left.
    static void settle();

private:
    std::unique_ptr<Session> _session;
    std::unique_ptr<MainWindow> _window;
};
