// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "windowtest.h"

#include <elementmenu.h>
#include <language.h>
#include <taskpane.h>

#include <QApplication>
#include <QDockWidget>
#include <QMenu>
#include <QMenuBar>
#include <QPointer>
#include <QPushButton>
#include <QSet>
#include <QTranslator>
#include <QTreeView>

namespace
{
/// Is asked last, and so for the texts that no catalogue has.
class Untranslated : public QTranslator
{
public:
    bool isEmpty() const override { return false; }
    QString translate(const char *context, const char *text, const char * /*comment*/, int /*count*/) const override
    {
        const QString entry = QStringLiteral("%1: %2").arg(QLatin1String(context), QString::fromUtf8(text));
        // No text but a question, whose answer need not be there where one writes from left to right.
        const bool isDirection = qstrcmp(text, "QT_LAYOUT_DIRECTION") == 0;
        if (!isDirection && !entries.contains(entry))
            entries.append(entry);
        return {};
    }
    mutable QStringList entries;
};

QStringList textsOf(const QList<QAction *> &actions)
{
    QStringList texts;
    for (const QAction *action : actions) {
        if (!action->isSeparator())
            texts.append(action->text());
    }
    return texts;
}

/// The keys of texts that share theirs with another one.
QStringList sharedKeys(const QStringList &texts)
{
    QStringList shared;
    QSet<QString> seen;
    for (const QString &text : texts) {
        const QString key = QKeySequence::mnemonic(text).toString();
        if (key.isEmpty() || seen.contains(key))
            shared.append(text);
        seen.insert(key);
    }
    return shared;
}
} // namespace

/// The window as a German administrator sees it, with the texts that are ours and those that are Qt's.
class GermanTest : public WindowTest
{
    Q_OBJECT

public:
    GermanTest();

private Q_SLOTS:
    void menusAndTheirKeys();
    void dialogs();
    void pages();
    void tasks();
    void questions();
    void menusOfElements();
    void noTextWasLookedUpInVain();

private:
    Untranslated _untranslated;
};

GermanTest::GermanTest()
{
    QCoreApplication::installTranslator(&_untranslated);
    Language::install();
}

void GermanTest::menusAndTheirKeys()
{
    const QMenuBar *bar = _window->menuBar();
    QStringList atTheTop = textsOf(bar->actions());
    QCOMPARE(atTheTop.constFirst(), QStringLiteral("&Konsole"));
    for (const QAction *action : bar->actions())
        QCOMPARE(sharedKeys(textsOf(action->menu()->actions())), QStringList());
    // The buttons of the notices are in the same window, and may all be there at once.
    for (const char *button : {"Show &why", "&Keep it open"})
        atTheTop.append(MainWindow::tr(button));
    QCOMPARE(sharedKeys(atTheTop), QStringList());
    QCOMPARE(action("applyAction")->shortcut(), QKeySequence(Qt::CTRL + Qt::Key_S));
    for (const QAction *each : _window->findChildren<QAction *>()) {
        if (each->shortcut().toString() == QLatin1String("Ctrl+S"))
            QCOMPARE(each->shortcut().toString(QKeySequence::NativeText), QStringLiteral("Strg+S")); // Qt's own
    }
}

void GermanTest::dialogs()
{
    action("pluginsAction")->trigger();
    QTRY_VERIFY(QApplication::activeModalWidget());
    QCOMPARE(QApplication::activeModalWidget()->windowTitle(), QStringLiteral("Erweiterungen"));
    const auto closeButton = [] {
        const auto buttons = QApplication::activeModalWidget()->findChildren<QPushButton *>();
        return buttons.isEmpty() ? nullptr : buttons.constFirst();
    };
    QVERIFY(closeButton());
    QCOMPARE(closeButton()->text().remove(QLatin1Char('&')), QStringLiteral("Schließen"));
    closeButton()->click();
    QTRY_VERIFY(!QApplication::activeModalWidget());

    action("aboutAction")->trigger();
    QTRY_VERIFY(QApplication::activeModalWidget());
    QCOMPARE(closeButton()->text().remove(QLatin1Char('&')), QStringLiteral("Schließen"));
    closeButton()->click();
    QTRY_VERIFY(!QApplication::activeModalWidget());
}

void GermanTest::pages()
{
    QCOMPARE(currentTitle(), computer()->title());
    for (const char *type : {"LocalUsers", "LocalGroups"}) {
        auto *accounts = child(type);
        clickAndWait(accounts);
        const auto *view = find<ElementTreeView>("accountView");
        QVERIFY(view);
        QTRY_VERIFY(view->model()->rowCount(view->rootIndex()) > 0);
        auto *first = dynamic_cast<Element *>(accounts->childNodes().constFirst());
        QVERIFY(_pages->setCurrentElement(first));
        waitForTasks();
    }
    QVERIFY(child("LocalUsers")->caption() == QLatin1String("Benutzer dieses Rechners"));
}

void GermanTest::tasks()
{
    clickAndWait(_fake->form());
    auto *view = _window->findChild<TaskPane *>()->findChild<QTreeView *>(QStringLiteral("view"));
    QCOMPARE(view->model()->headerData(0, Qt::Horizontal).toString(), QStringLiteral("Zustand"));
    QCOMPARE(view->model()->index(0, 0).data().toString(), QStringLiteral("Erledigt"));
    view->setCurrentIndex(view->model()->index(0, 0));
    QTest::mouseClick(find<QWidget>("detailsButton"), Qt::LeftButton);
    QVERIFY(sharedKeys(textsOf(view->actions())).isEmpty());
}

void GermanTest::questions()
{
    clickAndWait(_fake->form());
    typeChange(QStringLiteral("precious"));
    int asked = 0;
    QStringList buttons;
    QTimer look;
    connect(&look, &QTimer::timeout, this, [&] {
        const auto *box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget());
        if (!box)
            return;
        look.stop();
        for (const QAbstractButton *button : box->buttons())
            buttons.append(button->text());
        answer(QMessageBox::Save, &asked);
    });
    look.start(1);
    _fake->writesFail = true;
    click(computer());
    QTRY_COMPARE(asked, 1);
    waitForTasks();
    buttons.sort();
    QCOMPARE(buttons, (QStringList{QStringLiteral("&Anwenden"), QStringLiteral("Auf dieser Seite &bleiben"),
                                   QStringLiteral("Änderungen &verwerfen")}));
    QCOMPARE(sharedKeys(buttons), QStringList());

    QCOMPARE(_pages->currentElement(), _fake->form()); // since the write failed
    _fake->writesFail = false;
    _fake->writesWait = true;
    action("applyAction")->trigger();
    QTRY_VERIFY(TaskObserver::instance()->isChangingMachine());
    _window->close();
    QVERIFY2(find<NoticeBar>("closingNotice")->text().startsWith(QLatin1String("Es wird gewartet, bis \"Write fake\"")),
             qPrintable(find<NoticeBar>("closingNotice")->text()));
}

void GermanTest::menusOfElements()
{
    for (Element *element : {static_cast<Element *>(_fake->form()), child("LocalUsers")}) {
        Q_EMIT tree()->customContextMenuRequested(tree()->visualRect(tree()->indexOf(element)).center());
        const QPointer<QMenu> menu = _window->findChild<ElementMenu *>();
        QVERIFY(menu);
        QCOMPARE(menu->actions().constFirst()->text(), QStringLiteral("Ö&ffnen"));
        QCOMPARE(sharedKeys(textsOf(menu->actions())), QStringList());
        menu->close();
        QTRY_VERIFY(!menu);
    }
}

/// In all of the above.
void GermanTest::noTextWasLookedUpInVain()
{
    QCOMPARE(_untranslated.entries.join(QLatin1Char('\n')), QString());
}

int main(int argc, char *argv[])
{
    qputenv("LANGUAGE", "de");
    qputenv("LC_ALL", "C.UTF-8");
    QApplication application(argc, argv);
    GermanTest test;
    return QTest::qExec(&test, argc, argv);
}
#include "tst_german.moc"
