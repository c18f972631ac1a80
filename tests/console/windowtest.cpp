// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "windowtest.h"

#include <QApplication>
#include <QPushButton>
#include <QSettings>

void WindowTest::initTestCase()
{
    QStandardPaths::setTestModeEnabled(true);
    QCoreApplication::setOrganizationName(QStringLiteral("kra-test"));
    QCoreApplication::setApplicationName(QFileInfo(QCoreApplication::applicationFilePath()).fileName());
}

void WindowTest::init()
{
    QSettings().clear();
    _session = std::make_unique<Session>();
    _fake = new FakeModule(&_owner);
    _session->tree().addModule(_fake);
    connect(TaskObserver::instance(), &TaskObserver::taskQueued, &_owner,
            [this](const TaskReport &task) { _lastTask = task.id; });
    openWindow();
}

void WindowTest::cleanup()
{
    _fake->gate.release(100);
    waitForTasks();
    _window.reset();
    _session.reset();
    delete _fake;
}

void WindowTest::openWindow()
{
    _window = std::make_unique<MainWindow>(*_session);
    _pages = _window->findChild<ElementPages *>();
    _window->show();
    QVERIFY(QTest::qWaitForWindowExposed(_window.get()));
    _window->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(_window.get()));
    waitForTasks();
}

void WindowTest::closeWindow()
{
    _window->close();
    QTRY_VERIFY(!_window->isVisible());
    _window.reset();
}

Element *WindowTest::child(const char *type)
{
    for (TreeNode *node : computer()->childNodes()) {
        if (node->id() == QLatin1String(type))
            return dynamic_cast<Element *>(node);
    }
    return nullptr;
}

void WindowTest::click(Element *element, Qt::MouseButton button)
{
    const QModelIndex index = tree()->indexOf(element);
    QVERIFY(index.isValid());
    tree()->scrollTo(index);
    QTest::mouseClick(tree()->viewport(), button, {}, tree()->visualRect(index).center());
}

void WindowTest::clickAndWait(Element *element)
{
    click(element);
    QTRY_COMPARE(_pages->currentElement(), element);
    waitForTasks();
}

void WindowTest::typeChange(const QString &text)
{
    QTRY_VERIFY(_fake->line()->isEnabled());
    _fake->line()->setFocus();
    _fake->line()->selectAll();
    QTest::keyClicks(_fake->line(), text);
    QVERIFY(action("applyAction")->isEnabled());
}

/// Answers the next question, and counts it.
void WindowTest::answer(QMessageBox::StandardButton button, int *asked)
{
    auto *timer = new QTimer(qApp);
    connect(timer, &QTimer::timeout, qApp, [=] {
        auto *box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget());
        if (!box)
            return;
        ++*asked;
        timer->stop();
        timer->deleteLater();
        box->button(button)->click();
    });
    timer->start(10);
}

/// The key that the button's label names; no menu may answer to it as well.
void WindowTest::pressKeyOfButton(const NoticeBar *notice)
{
    QTest::keySequence(_window.get(), QKeySequence::mnemonic(notice->findChild<QPushButton *>()->text()));
}
