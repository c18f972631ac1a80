// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "consolekeyboard.h"

#include <taskobserver.h>

#include <QApplication>
#include <QSettings>
#include <QStandardPaths>
#include <QtTest>

void ConsoleKeyboard::useOwnSettings(const QString &testName)
{
    QStandardPaths::setTestModeEnabled(true);
    QCoreApplication::setOrganizationName(QStringLiteral("kra-test"));
    QCoreApplication::setApplicationName(testName);
}

void ConsoleKeyboard::open()
{
    _session = std::make_unique<Session>();
    _session->loadPlugins({Session::pluginFolder()});
    _window = std::make_unique<MainWindow>(*_session);
    _window->show();
    _window->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(_window.get()));
    settle();
}

void ConsoleKeyboard::close()
{
    settle();
    _window.reset();
    _session.reset();
}

void ConsoleKeyboard::press(int key, Qt::KeyboardModifiers modifiers)
{
    QWidget *focused = QApplication::focusWidget();
    QVERIFY2(focused, "Nothing has the focus");
    QTest::keyClick(focused, static_cast<Qt::Key>(key), modifiers);
}

void ConsoleKeyboard::type(const QString &text)
{
    for (const QChar character : text)
        QTest::keyClick(QApplication::focusWidget(), character.toLatin1());
}

void ConsoleKeyboard::tabTo(const char *name)
{
    constexpr int widgetsOfTheWindow = 40;
    for (int i = 0; i < widgetsOfTheWindow && focus() != QLatin1String(name); ++i)
        press(Qt::Key_Tab);
    QCOMPARE(focus(), QString::fromLatin1(name));
}

QString ConsoleKeyboard::focus()
{
    const QWidget *focused = QApplication::focusWidget();
    return focused ? focused->objectName() : QString();
}

void ConsoleKeyboard::settle()
{
    QTRY_VERIFY(!TaskObserver::instance()->isBusy());
    QCoreApplication::processEvents();
}
