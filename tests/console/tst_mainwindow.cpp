// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "fakemodule.h"

#include <elementmenu.h>
#include <elementpages.h>
#include <elementtask.h>
#include <elementtreeview.h>
#include <localaccounts.h>
#include <mainwindow.h>
#include <noticebar.h>
#include <pluginsdialog.h>
#include <searchfield.h>
#include <session.h>
#include <taskindicator.h>

#include <taskobserver.h>

#include <QApplication>
#include <QComboBox>
#include <QDockWidget>
#include <QListWidget>
#include <QMenu>
#include <QMessageBox>
#include <QPushButton>
#include <QScrollArea>
#include <QSettings>
#include <QSplitter>
#include <QtTest>

#include <unistd.h>

/// The real window, driven by keyboard and mouse.
class MainWindowTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();

    void startsWithTheComputer();
    void rowShowsItsPage();
    void keyboardMovesThroughPages();
    void searchNarrowsTheTree();
    void searchNarrowsTheList();
    void variantNarrowsTheList();
    void containerIsReadWhenItIsExpanded();
    void refreshReadsAgain();
    void changesAreAppliedAndReverted();
    void treeGoesBackWhereTheAdministratorStays();
    void nodeThatAsksIsShown();
    void currentNodeIsFoundAgainAfterARead();
    void focusMovesBetweenTheParts();
    void tabVisitsEveryPart();
    void menuOffersWhatIsPossible();
    void menuOfWhatWentChoosesNothing();
    void runningTaskIsSeen();
    void closingAsksForChanges();
    void closingWhileAQuestionStandsFollowsItsAnswer_data();
    void closingWhileAQuestionStandsFollowsItsAnswer();
    void closingWaitsForAWrite();
    void closingCanBeTakenBack();
    void stayingEndsTheClosingThoughAWriteRuns();
    void failedWriteKeepsTheWindow();
    void layoutIsRemembered();
    void listsAreReadAlwaysWhereThatIsSet();
    void missingRightsAreSaid();
    void pluginsAreShown();

private:
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
};

void MainWindowTest::initTestCase()
{
    QStandardPaths::setTestModeEnabled(true);
    QCoreApplication::setOrganizationName(QStringLiteral("kra-test"));
    QCoreApplication::setApplicationName(QStringLiteral("tst_mainwindow"));
}

void MainWindowTest::init()
{
    QSettings().clear();
    _session = std::make_unique<Session>();
    _fake = new FakeModule(&_owner);
    _session->tree().addModule(_fake);
    openWindow();
}

void MainWindowTest::cleanup()
{
    _fake->gate.release(100);
    waitForTasks();
    _window.reset();
    _session.reset();
    delete _fake;
}

void MainWindowTest::openWindow()
{
    _window = std::make_unique<MainWindow>(*_session);
    _pages = _window->findChild<ElementPages *>();
    _window->show();
    QVERIFY(QTest::qWaitForWindowExposed(_window.get()));
    _window->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(_window.get()));
    waitForTasks();
}

void MainWindowTest::closeWindow()
{
    _window->close();
    QTRY_VERIFY(!_window->isVisible());
    _window.reset();
}

Element *MainWindowTest::child(const char *type)
{
    for (TreeNode *node : computer()->childNodes()) {
        if (node->id() == QLatin1String(type))
            return dynamic_cast<Element *>(node);
    }
    return nullptr;
}

void MainWindowTest::click(Element *element, Qt::MouseButton button)
{
    const QModelIndex index = tree()->indexOf(element);
    QVERIFY(index.isValid());
    tree()->scrollTo(index);
    QTest::mouseClick(tree()->viewport(), button, {}, tree()->visualRect(index).center());
}

void MainWindowTest::clickAndWait(Element *element)
{
    click(element);
    QTRY_COMPARE(_pages->currentElement(), element);
    waitForTasks();
}

void MainWindowTest::typeChange(const QString &text)
{
    QTRY_VERIFY(_fake->line()->isEnabled());
    _fake->line()->setFocus();
    _fake->line()->selectAll();
    QTest::keyClicks(_fake->line(), text);
    QVERIFY(action("applyAction")->isEnabled());
}

/// Answers the next question, and counts it.
void MainWindowTest::answer(QMessageBox::StandardButton button, int *asked)
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
void MainWindowTest::pressKeyOfButton(const NoticeBar *notice)
{
    QTest::keySequence(_window.get(), QKeySequence::mnemonic(notice->findChild<QPushButton *>()->text()));
}

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
        return LocalAccounts::isSystemId(account->data(1, SortRole).toUInt());
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

void MainWindowTest::closingAsksForChanges()
{
    clickAndWait(_fake->form());
    typeChange(QStringLiteral("precious"));
    int asked = 0;
    answer(QMessageBox::Cancel, &asked);
    _window->close();
    QCOMPARE(asked, 1);
    QVERIFY(_window->isVisible());
    QCOMPARE(_fake->line()->text(), QStringLiteral("precious"));
    answer(QMessageBox::Save, &asked);
    _window->close();
    QTRY_VERIFY(!_window->isVisible());
    QCOMPARE(_fake->stored, QStringLiteral("precious"));
}

void MainWindowTest::closingWhileAQuestionStandsFollowsItsAnswer_data()
{
    QTest::addColumn<int>("button");
    QTest::addColumn<bool>("closes");
    QTest::addColumn<QString>("stored");
    QTest::newRow("apply") << int(QMessageBox::Save) << true << QStringLiteral("precious");
    QTest::newRow("discard") << int(QMessageBox::Discard) << true << QStringLiteral("as read");
    QTest::newRow("stay") << int(QMessageBox::Cancel) << false << QStringLiteral("as read");
}

void MainWindowTest::closingWhileAQuestionStandsFollowsItsAnswer()
{
    QFETCH(int, button);
    QFETCH(bool, closes);
    QFETCH(QString, stored);
    clickAndWait(_fake->form());
    typeChange(QStringLiteral("precious"));
    int asked = 0;
    QTimer closing;
    connect(&closing, &QTimer::timeout, this, [&] {
        if (!_pages->isAsking())
            return;
        closing.stop();
        _window->close(); // as a signal does
        QVERIFY(_window->isVisible());
        answer(static_cast<QMessageBox::StandardButton>(button), &asked);
    });
    closing.start(1);
    click(computer()); // which asks
    QTRY_COMPARE(asked, 1);
    QTRY_COMPARE(_window->isVisible(), !closes);
    waitForTasks();
    QCOMPARE(asked, 1);
    QCOMPARE(_fake->stored, stored);
    if (!closes)
        QCOMPARE(_fake->line()->text(), QStringLiteral("precious"));
}

void MainWindowTest::closingWaitsForAWrite()
{
    clickAndWait(_fake->form());
    _fake->writesWait = true;
    typeChange(QStringLiteral("slow"));
    QTest::keyClick(_window.get(), Qt::Key_S, Qt::ControlModifier);
    QTRY_VERIFY(TaskObserver::instance()->isChangingMachine());
    QTest::keyClick(_window.get(), Qt::Key_Q, Qt::ControlModifier);
    const auto *notice = find<NoticeBar>("closingNotice");
    QTRY_VERIFY(notice->isVisible());
    QCOMPARE(notice->text(), QStringLiteral("Waiting for \"Write fake\" to finish. The console closes then."));
    QVERIFY(_window->isVisible());
    _fake->gate.release();
    QTRY_VERIFY(!_window->isVisible());
    QCOMPARE(_fake->stored, QStringLiteral("slow"));
}

void MainWindowTest::closingCanBeTakenBack()
{
    clickAndWait(_fake->form());
    _fake->writesWait = true;
    typeChange(QStringLiteral("slow"));
    QTest::keyClick(_window.get(), Qt::Key_S, Qt::ControlModifier);
    QTRY_VERIFY(TaskObserver::instance()->isChangingMachine());
    _window->close();
    const auto *notice = find<NoticeBar>("closingNotice");
    QTRY_VERIFY(notice->isVisible());
    pressKeyOfButton(notice);
    QTRY_VERIFY(!notice->isVisible());
    _fake->gate.release();
    waitForTasks();
    QVERIFY(_window->isVisible());
}

void MainWindowTest::stayingEndsTheClosingThoughAWriteRuns()
{
    class WaitingWrite : public UpdateTask
    {
    public:
        explicit WaitingWrite(QSemaphore *gate)
            : UpdateTask(nullptr)
            , _gate(gate)
        {}
        void run() override
        {
            _gate->acquire();
            UpdateTask::run();
        }

    private:
        QSemaphore *_gate;
    };
    clickAndWait(_fake->form());
    typeChange(QStringLiteral("not done yet"));
    TaskObserver::instance()->performTask(new WaitingWrite(&_fake->gate));
    int asked = 0;
    answer(QMessageBox::Cancel, &asked);
    _window->close();
    QCOMPARE(asked, 1);
    QVERIFY(!find<NoticeBar>("closingNotice")->isVisible());
    _fake->gate.release();
    waitForTasks();
    QVERIFY(_window->isVisible());
    QCOMPARE(asked, 1);
    QVERIFY(_pages->canApply());
}

void MainWindowTest::failedWriteKeepsTheWindow()
{
    clickAndWait(_fake->form());
    _fake->writesWait = true;
    _fake->writesFail = true;
    typeChange(QStringLiteral("lost?"));
    int asked = 0;
    answer(QMessageBox::Save, &asked);
    _window->close();
    QCOMPARE(asked, 1);
    const auto *notice = find<NoticeBar>("closingNotice");
    QTRY_VERIFY(notice->isVisible());
    _fake->gate.release();
    waitForTasks();
    QVERIFY(_window->isVisible());
    QTRY_COMPARE(notice->text(), QStringLiteral("The console stays open, since \"Write fake\" failed."));
    _window->activateWindow(); // which no window manager does here when the question is gone
    QVERIFY(QTest::qWaitForWindowActive(_window.get()));
    pressKeyOfButton(notice);
    QTRY_VERIFY(!notice->isVisible());
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
    const bool isRoot = geteuid() == 0;
    QCOMPARE(find<NoticeBar>("rightsNotice")->isVisible(), !_session->isAdministrator());
    if (!isRoot)
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
