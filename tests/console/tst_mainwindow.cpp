// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "windowtest.h"

#include <accountrules.h>
#include <elementmenu.h>
#include <elementtask.h>
#include <localaccounts.h>
#include <pluginsdialog.h>
#include <searchfield.h>
#include <taskindicator.h>

#include <QApplication>
#include <QComboBox>
#include <QDesktopServices>
#include <QDockWidget>
#include <QListWidget>
#include <QMenu>
#include <QPushButton>
#include <QScrollArea>
#include <QSettings>
#include <QSplitter>
#include <QStatusBar>

#include <unistd.h>

/// What the window shows and how it is used.
class MainWindowTest : public WindowTest
{
    Q_OBJECT

private Q_SLOTS:
    void startsWithTheComputer();
    void rowShowsItsPage();
    void keyboardMovesThroughPages();
    void searchNarrowsTheTree();
    void searchOfTheTreeKeepsTheRowOfThePage();
    void aRowThatASearchHidesLightsNoOther();
    void rowOfTheListSurvivesARefresh();
    void searchNarrowsTheList();
    void variantNarrowsTheList();
    void containerIsReadWhenItIsExpanded();
    void refreshReadsAgain();
    void refreshOfAnotherRowReadsItOnce();
    void changesAreAppliedAndReverted();
    void treeGoesBackWhereTheAdministratorStays();
    void nodeThatAsksIsShown();
    void currentNodeIsFoundAgainAfterARead();
    void focusMovesBetweenTheParts();
    void tabVisitsEveryPart();
    void menuOffersWhatIsPossible();
    void menuOfWhatWentChoosesNothing();
    void runningTaskIsSeen();
    void theTitleNamesPageAndComputer();
    void rootStartsNoBrowser();
    void layoutIsRemembered();
    void listsAreReadAlwaysWhereThatIsSet();
    void missingRightsAreSaid();
    void pluginsAreShown();
};

void MainWindowTest::startsWithTheComputer()
{
    QCOMPARE(_pages->currentElement(), computer());
    QCOMPARE(currentTitle(), computer()->title());
    QVERIFY(tree()->isExpanded(tree()->indexOf(computer())));
    QVERIFY(computer()->record());
    QVERIFY(!action("applyAction")->isEnabled());
    QVERIFY(!action("revertAction")->isEnabled());
    QVERIFY(action("refreshAction")->isEnabled());
    QVERIFY(!action("searchListAction")->isEnabled());
    QVERIFY(!find<SearchField>("listSearchField")->isVisible());
}

void MainWindowTest::rowShowsItsPage()
{
    clickAndWait(_fake->form());
    QCOMPARE(_fake->line()->text(), QStringLiteral("as read"));
    QVERIFY(_fake->line()->isVisible());
}

void MainWindowTest::keyboardMovesThroughPages()
{
    tree()->setFocus();
    QTest::keyClick(tree(), Qt::Key_End);
    QTRY_COMPARE(_pages->currentElement(), static_cast<Element *>(_fake->list()));
    QTest::keyClick(tree(), Qt::Key_Home);
    QTRY_COMPARE(_pages->currentElement(), computer());
}

void MainWindowTest::searchNarrowsTheTree()
{
    clickAndWait(_fake->form());
    QTest::keyClick(_window.get(), Qt::Key_F, Qt::ControlModifier);
    auto *field = find<SearchField>("treeSearchField");
    QTRY_VERIFY(field->hasFocus());
    QTest::keyClicks(field, QStringLiteral("LOCAL GROUPS"));
    QTRY_VERIFY(!tree()->indexOf(_fake->form()).isValid());
    QVERIFY(tree()->indexOf(child("LocalGroups")).isValid());
    QVERIFY2(tree()->indexOf(computer()).isValid(), "the way to what was found stays");
    QCOMPARE(_pages->currentElement(), _fake->form());
    QTest::keyClick(field, Qt::Key_Down);
    QVERIFY(tree()->hasFocus());
    QTest::keyClick(_window.get(), Qt::Key_F, Qt::ControlModifier);
    QTest::keyClick(field, Qt::Key_Escape);
    QCOMPARE(field->text(), QString());
    QTRY_VERIFY(tree()->indexOf(_fake->form()).isValid());
    QCOMPARE(tree()->currentIndex(), tree()->indexOf(_fake->form()));
    QVERIFY(!tree()->isExpanded(tree()->indexOf(child("LocalGroups"))));
}

void MainWindowTest::searchOfTheTreeKeepsTheRowOfThePage()
{
    clickAndWait(_fake->list());
    QTest::keyClick(_window.get(), Qt::Key_F, Qt::ControlModifier);
    QTest::keyClicks(find<SearchField>("treeSearchField"), QStringLiteral("alph"));
    QTRY_VERIFY(!tree()->indexOf(_fake->form()).isValid());
    QTest::keyClick(_window.get(), Qt::Key_F5);
    waitForTasks();
    QTRY_COMPARE(currentTitle(), QStringLiteral("Fake list"));
    QCOMPARE(_pages->currentElement(), static_cast<Element *>(_fake->list()));
    QTRY_VERIFY(tree()->isExpanded(tree()->indexOf(_fake->list())));
    QVERIFY(tree()->indexOf(_fake->list()->childNodes().at(0)).isValid());
}

/// What was found under the list is not there when it is read again, and with it the list's own row goes. Another row
/// stays.
void MainWindowTest::aRowThatASearchHidesLightsNoOther()
{
    _fake->listTitles = QStringList{QStringLiteral("formula"), QStringLiteral("beta")};
    clickAndWait(_fake->list());
    QTest::keyClick(_window.get(), Qt::Key_F, Qt::ControlModifier);
    QTest::keyClicks(find<SearchField>("treeSearchField"), QStringLiteral("form"));
    QTRY_VERIFY(!tree()->indexOf(child("LocalUsers")).isValid());
    QCOMPARE(tree()->selectionModel()->selectedRows(), QModelIndexList{tree()->indexOf(_fake->list())});
    _fake->listTitles.removeFirst();
    QTest::keyClick(_window.get(), Qt::Key_F5);
    waitForTasks();
    QTRY_VERIFY(!tree()->indexOf(_fake->list()).isValid());
    QVERIFY(tree()->indexOf(_fake->form()).isValid());
    QCOMPARE(tree()->selectionModel()->selectedRows(), QModelIndexList());
    QCOMPARE(_pages->currentElement(), static_cast<Element *>(_fake->list()));

    _fake->listTitles.append(QStringLiteral("form"));
    QTest::keyClick(_window.get(), Qt::Key_F5);
    waitForTasks();
    QTRY_COMPARE(tree()->selectionModel()->selectedRows(), QModelIndexList{tree()->indexOf(_fake->list())});
    QCOMPARE(_pages->currentElement(), static_cast<Element *>(_fake->list()));
}

void MainWindowTest::rowOfTheListSurvivesARefresh()
{
    Element *users = child("LocalUsers");
    clickAndWait(users);
    auto *view = find<ElementTreeView>("accountView");
    QTRY_VERIFY(view->model()->rowCount() > 3);
    view->setFocus();
    view->setCurrentIndex(view->model()->index(3, 0));
    const QString title = view->currentIndex().data().toString();
    const QVector<TreeNode *> before = users->childNodes();
    QTest::keyClick(_window.get(), Qt::Key_F5);
    waitForTasks();
    QCOMPARE(users->childNodes(), before);
    QCOMPARE(view->currentIndex().data().toString(), title);
    QVERIFY(view->selectionModel()->isSelected(view->currentIndex()));
    QVERIFY(view->hasFocus());
    QTest::keyClick(view, Qt::Key_Return);
    QTRY_COMPARE(_pages->currentElement()->title(), title);
}

void MainWindowTest::searchNarrowsTheList()
{
    clickAndWait(_fake->list());
    auto *field = find<SearchField>("listSearchField");
    QTRY_VERIFY(field->isVisible());
    QTest::keyClick(_window.get(), Qt::Key_F, Qt::ControlModifier | Qt::ShiftModifier);
    QTRY_VERIFY(field->hasFocus());
    QTest::keyClicks(field, QStringLiteral("alp"));
    QTRY_COMPARE(_fake->listFilter, QStringLiteral("alp"));
    clickAndWait(computer());
    QTRY_VERIFY(!field->isVisible());
    clickAndWait(_fake->list()); // as it was left
    QTRY_VERIFY(field->isVisible());
    QCOMPARE(field->text(), QStringLiteral("alp"));
    QCOMPARE(_fake->listFilter, QStringLiteral("alp"));
    clickAndWait(child("LocalUsers"));
    QCOMPARE(field->text(), QString());
    QCOMPARE(_fake->listFilter, QStringLiteral("alp"));
    clickAndWait(_fake->list());
    field->clear();
    QTRY_COMPARE(_fake->listFilter, QString());
}

void MainWindowTest::variantNarrowsTheList()
{
    Element *users = child("LocalUsers");
    clickAndWait(users);
    auto *box = find<QComboBox>("variantBox");
    QTRY_VERIFY(box->isVisible());
    QCOMPARE(box->count(), 3);
    const auto *view = find<ElementTreeView>("accountView");
    const QVector<TreeNode *> accounts = users->childNodes();
    const auto system = std::count_if(accounts.begin(), accounts.end(), [](const TreeNode *account) {
        return AccountRules::isSystemId(account->data(1, SortRole).toUInt());
    });
    QCOMPARE(view->model()->rowCount(), accounts.size());
    box->setFocus();
    QTest::keyClick(box, Qt::Key_Down);
    QTRY_COMPARE(view->model()->rowCount(), int(system));
    QTest::keyClick(box, Qt::Key_Down);
    QTRY_COMPARE(view->model()->rowCount(), accounts.size() - int(system));
    clickAndWait(_fake->list());
    QTRY_VERIFY2(!box->isVisible(), "this list has no variants");
    clickAndWait(users);
    QTRY_COMPARE(box->currentIndex(), 2);
    // The menu on its row chooses as well, and the box says so. While it is open nothing of it is exchanged.
    QSignalSpy exchanged(box->model(), &QAbstractItemModel::rowsAboutToBeRemoved);
    Q_EMIT tree()->customContextMenuRequested(tree()->visualRect(tree()->indexOf(users)).center());
    QPointer<ElementMenu> menu;
    QTRY_VERIFY((menu = _window->findChild<ElementMenu *>()));
    menu->findChild<QMenu *>()->actions().at(1)->trigger();
    QCOMPARE(box->currentIndex(), 1);
    QTRY_COMPARE(view->model()->rowCount(), int(system));
    menu->close();
    QTRY_VERIFY(!menu);
    QVERIFY(exchanged.isEmpty());
}

void MainWindowTest::containerIsReadWhenItIsExpanded()
{
    QCOMPARE(_fake->list()->childNodes().size(), 0);
    tree()->expand(tree()->indexOf(_fake->list()));
    QTRY_COMPARE(_fake->list()->childNodes().size(), 3);
    QCOMPARE(_fake->reads, 1);
    QCOMPARE(_pages->currentElement(), computer());
}

void MainWindowTest::refreshReadsAgain()
{
    clickAndWait(_fake->form());
    const int before = _fake->reads;
    _fake->stored = QStringLiteral("changed elsewhere");
    QTest::keyClick(_window.get(), Qt::Key_F5);
    QTRY_COMPARE(_fake->line()->text(), QStringLiteral("changed elsewhere"));
    QCOMPARE(_fake->reads, before + 1);
}

void MainWindowTest::refreshOfAnotherRowReadsItOnce()
{
    const auto choose = [this] {
        const QModelIndex row = tree()->indexOf(_fake->form());
        Q_EMIT tree()->customContextMenuRequested(tree()->visualRect(row).center());
        auto *menu = _window->findChild<ElementMenu *>();
        QVERIFY(menu);
        menu->actions().at(1)->trigger();
        delete menu;
        waitForTasks();
    };
    const int before = _fake->reads;
    choose();
    QCOMPARE(_pages->currentElement(), _fake->form());
    QCOMPARE(_fake->reads, before + 1);
    choose(); // now it is shown
    QCOMPARE(_fake->reads, before + 2);
}

void MainWindowTest::changesAreAppliedAndReverted()
{
    clickAndWait(_fake->form());
    typeChange(QStringLiteral("new"));
    QVERIFY(_window->isWindowModified());
    QTest::keyClick(_window.get(), Qt::Key_R, Qt::ControlModifier);
    QTRY_COMPARE(_fake->line()->text(), QStringLiteral("as read"));
    QTRY_VERIFY(!action("revertAction")->isEnabled());
    typeChange(QStringLiteral("newer"));
    QTest::keyClick(_window.get(), Qt::Key_S, Qt::ControlModifier);
    QTRY_COMPARE(_fake->stored, QStringLiteral("newer"));
    QTRY_VERIFY(!_window->isWindowModified());
    QCOMPARE(_fake->line()->text(), QStringLiteral("newer"));
}

void MainWindowTest::treeGoesBackWhereTheAdministratorStays()
{
    clickAndWait(_fake->form());
    typeChange(QStringLiteral("precious"));
    int asked = 0;
    answer(QMessageBox::Cancel, &asked);
    click(computer());
    QTRY_COMPARE(asked, 1);
    QTRY_COMPARE(currentTitle(), QStringLiteral("Fake form"));
    QCOMPARE(_pages->currentElement(), _fake->form());
    QCOMPARE(_fake->line()->text(), QStringLiteral("precious"));
    answer(QMessageBox::Discard, &asked);
    click(computer());
    QTRY_COMPARE(_pages->currentElement(), computer());
    QCOMPARE(asked, 2);
    QCOMPARE(_fake->stored, QStringLiteral("as read"));
}

void MainWindowTest::nodeThatAsksIsShown()
{
    clickAndWait(_fake->list());
    TreeNode *gamma = _fake->list()->childNodes().at(2);
    auto *field = find<SearchField>("treeSearchField");
    field->setText(QStringLiteral("Local users"));
    QTRY_VERIFY(!tree()->indexOf(gamma).isValid());
    gamma->emitSetCurrentNode();
    QCOMPARE(_pages->currentElement(), dynamic_cast<Element *>(gamma));
    QCOMPARE(currentTitle(), QStringLiteral("gamma"));
    QCOMPARE(field->text(), QString());
    QVERIFY(tree()->isExpanded(tree()->indexOf(_fake->list())));
}

void MainWindowTest::currentNodeIsFoundAgainAfterARead()
{
    clickAndWait(_fake->list());
    _fake->list()->childNodes().at(1)->emitSetCurrentNode();
    QCOMPARE(currentTitle(), QStringLiteral("beta"));
    waitForTasks();
    QStringList shown;
    connect(_pages, &ElementPages::currentElementChanged, _window.get(),
            [&shown](const Element *element) { shown.append(element ? element->title() : QString()); });
    _fake->list()->performOperation(OperationType::ReadContent, nullptr, 0);
    waitForTasks();
    QTRY_COMPARE(_pages->currentElement(), dynamic_cast<Element *>(_fake->list()->childNodes().at(1)));
    QTRY_COMPARE(currentTitle(), QStringLiteral("beta"));
    waitForTasks();
    QCOMPARE(shown, QStringList(QStringLiteral("beta"))); // and no other page in between
}

void MainWindowTest::focusMovesBetweenTheParts()
{
    clickAndWait(_fake->form());
    tree()->setFocus();
    const auto focusIn = [](const QWidget *part) { return part->isAncestorOf(QApplication::focusWidget()); };
    const QWidget *page = find<QWidget>("pageArea");
    const QWidget *tasks = find<QDockWidget>("taskDock");
    QTest::keyClick(_window.get(), Qt::Key_F6);
    QVERIFY(focusIn(page));
    QTest::keyClick(_window.get(), Qt::Key_F6);
    QVERIFY(focusIn(tasks));
    QTest::keyClick(_window.get(), Qt::Key_F6);
    QVERIFY(tree()->hasFocus());
    QTest::keyClick(_window.get(), Qt::Key_F6, Qt::ShiftModifier);
    QVERIFY(focusIn(tasks));
}

void MainWindowTest::tabVisitsEveryPart()
{
    clickAndWait(_fake->form());
    for (const auto &[key, modifiers] :
         {std::pair(Qt::Key_Tab, Qt::NoModifier), std::pair(Qt::Key_Backtab, Qt::ShiftModifier)}) {
        tree()->setFocus();
        QSet<const QWidget *> visited;
        for (int i = 0; i < 40 && (i == 0 || QApplication::focusWidget() != tree()); ++i) {
            QTest::keyClick(QApplication::focusWidget(), key, modifiers);
            visited += QApplication::focusWidget();
        }
        QCOMPARE(QApplication::focusWidget(), static_cast<QWidget *>(tree()));
        for (const QWidget *stop :
             {static_cast<QWidget *>(_fake->line()), find<QWidget>("treeSearchField"), find<QWidget>("detailsButton")})
            QVERIFY2(visited.contains(stop), qPrintable(stop->objectName()));
        for (const QWidget *stop : qAsConst(visited)) // where nobody would see it
            QVERIFY2(!qobject_cast<const QScrollArea *>(stop), qPrintable(stop->objectName()));
    }
}

void MainWindowTest::menuOffersWhatIsPossible()
{
    Element *users = child("LocalUsers");
    const QPoint place = tree()->visualRect(tree()->indexOf(users)).center();
    Q_EMIT tree()->customContextMenuRequested(place);
    QPointer<QMenu> menu;
    QTRY_VERIFY((menu = _window->findChild<ElementMenu *>()));
    QStringList texts;
    for (const QAction *offered : menu->actions())
        texts.append(offered->text());
    QVERIFY(texts.contains(QStringLiteral("&Open")));
    QVERIFY(texts.contains(QStringLiteral("&Refresh")));
    QVERIFY(texts.contains(QStringLiteral("&Show")));
    menu->actions().at(0)->trigger();
    menu->close();
    QTRY_COMPARE(_pages->currentElement(), users);
    QTRY_VERIFY(!menu);
}

void MainWindowTest::menuOfWhatWentChoosesNothing()
{
    clickAndWait(_fake->list());
    tree()->expand(tree()->indexOf(_fake->list()));
    const QModelIndex row = tree()->indexOf(_fake->list()->childNodes().at(0));
    Q_EMIT tree()->customContextMenuRequested(tree()->visualRect(row).center());
    const QPointer<QMenu> menu = _window->findChild<ElementMenu *>();
    QVERIFY(menu);
    _fake->list()->clearDelete(); // as another read of the list does
    const QList<QAction *> offers = menu->actions().mid(0, 2);
    for (QAction *offered : offers) {
        offered->trigger();
        QCOMPARE(_pages->currentElement(), _fake->list());
    }
    menu->close();
    QTRY_VERIFY(!menu);
}

void MainWindowTest::runningTaskIsSeen()
{
    const auto *indicator = _window->findChild<TaskIndicator *>();
    QVERIFY(!indicator->isVisible());
    clickAndWait(_fake->form());
    _fake->writesWait = true;
    typeChange(QStringLiteral("slow"));
    QTest::keyClick(_window.get(), Qt::Key_S, Qt::ControlModifier);
    QTRY_VERIFY(indicator->isVisible());
    _fake->gate.release();
    QTRY_VERIFY(!indicator->isVisible());
}

void MainWindowTest::theTitleNamesPageAndComputer()
{
    const QString host = QSysInfo::machineHostName();
    clickAndWait(_fake->form());
    QVERIFY2(_window->windowTitle().startsWith(_fake->form()->title()), qPrintable(_window->windowTitle()));
    QVERIFY(_window->windowTitle().contains(host));
    QCOMPARE(_window->windowTitle().count(QLatin1String("[*]")), 1);
    QVERIFY(!_window->isWindowModified());
    typeChange(QStringLiteral("changed"));
    QVERIFY(_window->isWindowModified());
    int asked = 0;
    answer(QMessageBox::Discard, &asked);
    clickAndWait(computer());
    QVERIFY(_window->windowTitle().contains(host));
    QVERIFY(!_window->windowTitle().contains(_fake->form()->title()));
}

void MainWindowTest::rootStartsNoBrowser()
{
    if (geteuid() != 0)
        return;
    QVERIFY(QDesktopServices::openUrl(QUrl(QStringLiteral("https://www.qt.io/licensing"))));
    const QString shown = _window->findChild<QStatusBar *>()->currentMessage();
    QVERIFY(shown.contains(QLatin1String("https://www.qt.io/licensing")));
}

void MainWindowTest::layoutIsRemembered()
{
    _window->resize(930, 610);
    auto *splitter = find<QSplitter>("splitter");
    splitter->setSizes({300, 600});
    find<QDockWidget>("taskDock")->hide();
    QTRY_COMPARE(_window->size(), QSize(930, 610));
    const QList<int> sizes = splitter->sizes();
    closeWindow();
    openWindow();
    QTRY_COMPARE(_window->size(), QSize(930, 610));
    QTRY_COMPARE(find<QSplitter>("splitter")->sizes(), sizes);
    QVERIFY(!find<QDockWidget>("taskDock")->isVisible());
}

void MainWindowTest::listsAreReadAlwaysWhereThatIsSet()
{
    clickAndWait(_fake->list());
    QCOMPARE(_fake->reads, 1);
    clickAndWait(computer());
    clickAndWait(_fake->list());
    QCOMPARE(_fake->reads, 1);
    action("readAlwaysAction")->trigger();
    QVERIFY(action("readAlwaysAction")->isChecked());
    clickAndWait(computer());
    clickAndWait(_fake->list());
    QCOMPARE(_fake->reads, 2);
    closeWindow();
    openWindow();
    QVERIFY(action("readAlwaysAction")->isChecked());
}

void MainWindowTest::missingRightsAreSaid()
{
    QCOMPARE(find<NoticeBar>("rightsNotice")->isVisible(), !_session->isAdministrator());
    if (geteuid() != 0)
        return;
    closeWindow();
    QCOMPARE(seteuid(65534), 0);
    openWindow();
    QCOMPARE(seteuid(0), 0);
    const auto *notice = find<NoticeBar>("rightsNotice");
    QVERIFY(notice->isVisible());
    QVERIFY(notice->text().contains(QLatin1String("without administrator rights")));
}

void MainWindowTest::pluginsAreShown()
{
    const QTemporaryDir folder;
    QFile broken(folder.filePath(QStringLiteral("libbroken.so")));
    QVERIFY(broken.open(QIODevice::WriteOnly));
    broken.write("no library");
    broken.close();
    QVERIFY(!find<NoticeBar>("pluginsNotice")->isVisible());
    closeWindow();
    _session->loadPlugins({folder.path(), QStringLiteral("/no/such/folder")});
    openWindow();
    const auto *notice = find<NoticeBar>("pluginsNotice");
    QVERIFY(notice->isVisible());
    pressKeyOfButton(notice);
    QTRY_VERIFY(!notice->isVisible());
    QPointer<PluginsDialog> dialog;
    QTRY_VERIFY((dialog = _window->findChild<PluginsDialog *>()));
    QTRY_VERIFY(dialog->isVisible());
    const auto *list = dialog->findChild<QListWidget *>();
    QCOMPARE(list->count(), 1);
    QVERIFY(list->item(0)->text().startsWith(QLatin1String("libbroken.so\n")));
    QTest::keyClick(dialog, Qt::Key_Escape);
    QTRY_VERIFY(!dialog);
    action("pluginsAction")->trigger();
    QTRY_VERIFY(_window->findChild<PluginsDialog *>());
}

QTEST_MAIN(MainWindowTest)
#include "tst_mainwindow.moc"
