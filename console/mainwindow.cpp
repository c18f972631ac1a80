// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "mainwindow.h"

#include "browserguard.h"
#include "elementmenu.h"
#include "listbar.h"
#include "navigationpane.h"
#include "noticebar.h"
#include "pluginsdialog.h"
#include "plugintext.h"
#include "searchfield.h"
#include "session.h"
#include "taskindicator.h"
#include "tasklistmodel.h"
#include "taskpane.h"
#include "ui_mainwindow.h"

#include <elementpages.h>
#include <elementtreeview.h>
#include <listelementwidget.h>
#include <module.h>

#include <QApplication>
#include <QCloseEvent>
#include <QMessageBox>
#include <QSettings>
#include <QSysInfo>
#include <QTimer>

#include <algorithm>
#include <utility>

namespace
{
constexpr char geometryKey[] = "window/geometry";
constexpr char stateKey[] = "window/state";
constexpr char splitterKey[] = "window/splitter";

constexpr int terminationGrace = 30000; // milliseconds: less than a session manager waits before it kills

constexpr int defaultTreeCharacters = 40;
constexpr int defaultTaskLines = 9;

/// Gives the focus to the first widget of a part of the window that takes it. False when none does.
bool focusInto(QWidget *part)
{
    for (QWidget *widget = part->nextInFocusChain(); widget != part; widget = widget->nextInFocusChain()) {
        if (part->isAncestorOf(widget) && (widget->focusPolicy() & Qt::TabFocus) && !widget->focusProxy() &&
            widget->isVisible() && widget->isEnabled()) {
            widget->setFocus(Qt::ShortcutFocusReason);
            return true;
        }
    }
    return false;
}
} // namespace

MainWindow::MainWindow(Session &session, QWidget *parent)
    : QMainWindow(parent)
    , _session(session)
    , _ui(std::make_unique<Ui::MainWindow>())
    , _tasks(new TaskListModel(*TaskObserver::instance(), this))
    , _navigation(new NavigationPane(session.tree().rootNode(), this))
    , _pages(new ElementPages(this))
    , _listBar(new ListBar(this))
    , _taskPane(new TaskPane(_tasks, this))
    , _rightsNotice(new NoticeBar(this))
    , _pluginsNotice(new NoticeBar(this))
    , _closingNotice(new NoticeBar(this))
    , _terminationGrace(new QTimer(this))
{
    _ui->setupUi(this);
    new BrowserGuard(statusBar());
    buildLayout();
    connectActions();
    connectParts();
    watchContext();
    restoreLayout();

    if (!session.isAdministrator())
        _rightsNotice->say(QStringLiteral("dialog-warning"),
                           tr("The console runs without administrator rights: it shows what can be read, and what "
                              "needs these rights cannot be done."));
    const std::vector<PluginRecord> &plugins = session.pluginRecords();
    if (!std::all_of(plugins.cbegin(), plugins.cend(),
                     [&session](const PluginRecord &record) { return isWhollyAtWork(record, session.tree()); }))
        _pluginsNotice->say(QStringLiteral("kra-plugin"), tr("Not every plug-in is at work."), tr("Show &why"));
    _ui->readAlwaysAction->setChecked(session.readsListsAlways());
    updateActions();
    if (auto *first = dynamic_cast<Element *>(session.tree().rootNode()->childNodes().value(0))) {
        _navigation->expand(first);
        choose(first);
    }
    _navigation->view()->setFocus();
}

MainWindow::~MainWindow() = default;

void MainWindow::buildLayout()
{
    _rightsNotice->setObjectName(QStringLiteral("rightsNotice"));
    _closingNotice->setObjectName(QStringLiteral("closingNotice"));
    _pluginsNotice->setObjectName(QStringLiteral("pluginsNotice"));
    int row = 0;
    for (NoticeBar *notice : {_rightsNotice, _pluginsNotice, _closingNotice})
        _ui->centralLayout->insertWidget(row++, notice);
    _ui->centralLayout->setStretchFactor(_ui->splitter, 1);
    _ui->pageLayout->addWidget(_pages, 1);
    _ui->splitter->insertWidget(0, _navigation);
    _ui->splitter->setStretchFactor(1, 1);
    _ui->taskDock->setWidget(_taskPane);

    auto *space = new QWidget(this);
    space->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
    _ui->toolBar->addWidget(space);
    _listBarAction = _ui->toolBar->addWidget(_listBar);

    QAction *showTasks = _ui->taskDock->toggleViewAction();
    showTasks->setText(tr("Tas&ks"));
    _ui->viewMenu->addAction(showTasks);
    statusBar()->addPermanentWidget(new TaskIndicator(_tasks, this));
}

void MainWindow::connectActions()
{
    connect(_ui->applyAction, &QAction::triggered, _pages, &ElementPages::apply);
    connect(_ui->revertAction, &QAction::triggered, _pages, &ElementPages::revert);
    connect(_ui->refreshAction, &QAction::triggered, _pages, &ElementPages::refresh);
    connect(_ui->quitAction, &QAction::triggered, this, &QWidget::close);
    connect(_ui->pluginsAction, &QAction::triggered, this, &MainWindow::showPlugins);
    connect(_ui->nextPartAction, &QAction::triggered, this, [this] { moveFocus(1); });
    connect(_ui->previousPartAction, &QAction::triggered, this, [this] { moveFocus(-1); });
    connect(_ui->aboutAction, &QAction::triggered, this, &MainWindow::showAbout);
    connect(_ui->aboutQtAction, &QAction::triggered, qApp, &QApplication::aboutQt);
    connect(_ui->readAlwaysAction, &QAction::triggered, this,
            [this](bool always) { _session.setReadsListsAlways(always); });
    const auto startSearch = [](SearchField *field) {
        field->setFocus(Qt::ShortcutFocusReason);
        field->selectAll();
    };
    connect(_ui->searchTreeAction, &QAction::triggered, this, [=] { startSearch(_navigation->searchField()); });
    connect(_ui->searchListAction, &QAction::triggered, this, [=] { startSearch(_listBar->searchField()); });
}

void MainWindow::connectParts()
{
    connect(_navigation, &NavigationPane::elementChosen, this, &MainWindow::choose);
    connect(_navigation, &NavigationPane::elementRequested, this, &MainWindow::choose);
    connect(_navigation, &NavigationPane::menuRequested, this, &MainWindow::showMenu);
    connect(_pages, &ElementPages::currentElementChanged, this, &MainWindow::followPage);
    connect(_pages, &ElementPages::actionsChanged, this, &MainWindow::updateActions);
    connect(
        _pages, &ElementPages::answered, this,
        [this](bool stays) {
            if (stays)
                _terminationGrace->stop();
            if (std::exchange(_closesWhenAnswered, false) && !stays)
                close();
        },
        Qt::QueuedConnection); // after what the question was about
    connect(_pluginsNotice, &NoticeBar::buttonClicked, this, &MainWindow::showPlugins);
    connect(_closingNotice, &NoticeBar::buttonClicked, this, &MainWindow::keepOpen);
    _terminationGrace->setObjectName(QStringLiteral("terminationGrace"));
    _terminationGrace->setSingleShot(true);
    _terminationGrace->setInterval(terminationGrace);
    connect(_terminationGrace, &QTimer::timeout, this, &MainWindow::endNow);
    connect(TaskObserver::instance(), &TaskObserver::taskFinished, this, &MainWindow::taskEnded);
    connect(_tasks, &QAbstractItemModel::dataChanged, this, [this] {
        if (_isClosing)
            waitForTasks(); // says what runs now
    });
}

void MainWindow::restoreLayout()
{
    const QSettings settings;
    const int characterWidth = fontMetrics().averageCharWidth();
    if (!restoreGeometry(settings.value(QLatin1String(geometryKey)).toByteArray()))
        resize(size().expandedTo(QSize(130 * characterWidth, 40 * fontMetrics().lineSpacing())));
    if (!restoreState(settings.value(QLatin1String(stateKey)).toByteArray()))
        resizeDocks({_ui->taskDock}, {defaultTaskLines * fontMetrics().lineSpacing()}, Qt::Vertical);
    if (!_ui->splitter->restoreState(settings.value(QLatin1String(splitterKey)).toByteArray())) {
        const int tree = defaultTreeCharacters * characterWidth;
        _ui->splitter->setSizes({tree, std::max(width() - tree, tree)});
    }
}

void MainWindow::saveLayout() const
{
    QSettings settings;
    settings.setValue(QLatin1String(geometryKey), saveGeometry());
    settings.setValue(QLatin1String(stateKey), saveState());
    settings.setValue(QLatin1String(splitterKey), _ui->splitter->saveState());
}

void MainWindow::choose(Element *element)
{
    // Where the administrator stays, the tree goes back to the page that stays too.
    if (!_pages->setCurrentElement(element))
        _navigation->setCurrentNode(_pages->currentElement());
}

void MainWindow::followPage(Element *element)
{
    _navigation->setCurrentNode(element);
    updateActions();
}

void MainWindow::updateActions()
{
    _ui->applyAction->setEnabled(_pages->canApply());
    _ui->revertAction->setEnabled(_pages->canApply());
    _ui->refreshAction->setEnabled(_pages->canRefresh());
    showTitle();
    auto *list = qobject_cast<ListElementWidget *>(_pages->currentEditor());
    _listBar->setList(list);
    _listBarAction->setVisible(list);
    _ui->searchListAction->setEnabled(list);
    watchMenusOfPage();
}

/// The platform adds the name of the program.
void MainWindow::showTitle()
{
    const Element *element = _pages->currentElement();
    const QString computer = QSysInfo::machineHostName();
    QString title = element ? element->title() : QString();
    if (title.isEmpty() || title == computer)
        title = computer;
    else
        title = tr("%1 on %2", "a page, on a computer").arg(title, computer);
    setWindowTitle(title.replace(QLatin1String("[*]"), QLatin1String("[*][*]")) + QLatin1String("[*]"));
    setWindowModified(_pages->canApply());
}

void MainWindow::watchMenusOfPage()
{
    for (ElementWidget *editor : _pages->editors()) {
        if (auto *list = qobject_cast<ListElementWidget *>(editor))
            connect(list, &QWidget::customContextMenuRequested, this, &MainWindow::showListMenu, Qt::UniqueConnection);
    }
}

void MainWindow::watchContext()
{
    for (const Module *module : _session.tree().modules()) {
        connect(module, &Module::elementContextOperationChanged, this, [this](ContextOperation *operation) {
            const auto *editor = dynamic_cast<ElementWidget *>(operation);
            _contextElement = editor ? editor->element() : dynamic_cast<Element *>(operation);
        });
    }
}

void MainWindow::showListMenu(const QPoint &globalPosition)
{
    if (_contextElement)
        showMenu(_contextElement.data(), globalPosition);
}

void MainWindow::showMenu(Element *element, const QPoint &globalPosition)
{
    auto *menu = new ElementMenu(element, element == _pages->currentElement(), this);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    connect(menu, &ElementMenu::openChosen, this, &MainWindow::choose);
    connect(menu, &ElementMenu::refreshChosen, this, [this](Element *chosen) {
        choose(chosen); // which reads what was not shown
        if (_pages->currentElement() == chosen && !TaskObserver::instance()->isBusyWith(chosen))
            _pages->refresh();
    });
    connect(menu, &ElementMenu::variantChosen, this, &MainWindow::updateActions);
    menu->popup(globalPosition);
}

void MainWindow::moveFocus(int step)
{
    const auto holdsFocus = [](const QWidget *part) {
        return QApplication::focusWidget() && part->isAncestorOf(QApplication::focusWidget());
    };
    QVector<QWidget *> parts;
    for (QWidget *part : {static_cast<QWidget *>(_navigation), _ui->pageArea, static_cast<QWidget *>(_taskPane)}) {
        if (part->isVisible())
            parts.append(part);
    }
    const auto present = std::find_if(parts.cbegin(), parts.cend(), holdsFocus);
    const int count = parts.size();
    const int at = present == parts.cend() ? (step > 0 ? -1 : 0) : static_cast<int>(present - parts.cbegin());
    for (int i = 1; i <= count; ++i) {
        QWidget *part = parts.at((at + i * step + 2 * count) % count);
        if (part == _navigation)
            return _navigation->view()->setFocus(Qt::ShortcutFocusReason); // the search has a key of its own
        if (focusInto(part))
            return;
    }
}

void MainWindow::showPlugins()
{
    _pluginsNotice->say({}, {});
    auto *dialog = new PluginsDialog(_session.pluginRecords(), _session.tree(), this);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->open();
}

void MainWindow::showAbout()
{
    auto *box =
        new QMessageBox(QMessageBox::NoIcon, tr("About"),
                        tr("%1 %2").arg(QApplication::applicationDisplayName(), QApplication::applicationVersion()),
                        QMessageBox::Close, this);
    box->setTextFormat(Qt::PlainText);
    box->setInformativeText(tr("A console for the administration of this computer.\n\n"
                               "Copyright 2026 The kra authors. Free software under the GNU General Public License, "
                               "version 3 or later. It comes with no warranty."));
    const int extent = style()->pixelMetric(QStyle::PM_MessageBoxIconSize, nullptr, this);
    box->setIconPixmap(windowIcon().pixmap(2 * extent, 2 * extent));
    box->setAttribute(Qt::WA_DeleteOnClose);
    box->open();
}

void MainWindow::closeEvent(QCloseEvent *event)
{
    if (_pages->isAsking()) {                   // and the session ends, say: the answer goes for that as well
        _closesWhenAnswered = !_isAskedToClose; // which closes by itself
        event->ignore();
        return;
    }
    _isAskedToClose = true;
    const bool stays = !_pages->mayLeave();
    _isAskedToClose = false;
    if (!stays && (_isClosing || !TaskObserver::instance()->isChangingMachine())) {
        saveLayout();
        event->accept();
        return;
    }
    event->ignore();
    if (!stays)
        waitForTasks();
}

void MainWindow::waitForTasks()
{
    _isClosing = true;
    const QString activity = _tasks->currentActivity();
    const QString task = QStringLiteral("\"%1\"").arg(_tasks->currentDescription());
    _closingNotice->say(QStringLiteral("kra-task-running"),
                        tr("Waiting for %1 to finish. The console closes then; close the window once more, and the "
                           "rest is done without "
                           "it.")
                            .arg(activity.isEmpty() ? task : QStringLiteral("%1 (%2)").arg(task, activity)),
                        tr("&Keep it open"));
}

void MainWindow::keepOpen()
{
    _isClosing = false;
    _terminationGrace->stop();
    _closingNotice->say({}, {});
}

void MainWindow::terminate()
{
    if (_terminationGrace->isActive())
        return endNow();
    _terminationGrace->start();
    close();
}

void MainWindow::endNow()
{
    saveLayout();
    hide();
    QCoreApplication::exit(); // ends the loops of open questions, too; none of them is answered then
}

void MainWindow::taskEnded(const TaskReport &task)
{
    if (!_isClosing) {
        if (task.changesMachine && task.status == TaskDescription::Succeeded && task.description == _keptOpenBy)
            _closingNotice->say({}, {});
        return;
    }
    if (task.changesMachine && task.status == TaskDescription::Failed) {
        // Closing now would take the reason away before it was read.
        _isClosing = false;
        _keptOpenBy = task.description;
        _closingNotice->say(QStringLiteral("dialog-error"),
                            tr("The console stays open, since \"%1\" failed.").arg(task.description), tr("H&ide"));
    } else if (!TaskObserver::instance()->isChangingMachine()) {
        _isClosing = false;
        _closingNotice->say({}, {});
        close();
    } else {
        waitForTasks();
    }
}
