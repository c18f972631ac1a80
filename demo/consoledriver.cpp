// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "consoledriver.h"

#include <elementpages.h>
#include <elementtreeview.h>
#include <navigationpane.h>
#include <taskobserver.h>

#include <QTest>

namespace
{
constexpr int Patience = 180000; // milliseconds: the demo computer is emulated
}

ConsoleDriver::ConsoleDriver(QWidget &window)
    : _tree(window.findChild<NavigationPane *>()->view())
    , _pages(window.findChild<ElementPages *>())
{}

bool ConsoleDriver::open(const QStringList &titles)
{
    QModelIndex index = _tree->model()->index(0, 0);
    for (const QString &title : titles) {
        if (!unfold(index))
            return false;
        index = child(index, title);
        if (!index.isValid())
            return false;
    }
    _tree->scrollTo(index);
    QTest::mouseClick(_tree->viewport(), Qt::LeftButton, {}, _tree->visualRect(index).center());
    const TreeNode *chosen = _tree->node(index);
    return QTest::qWaitFor([this, chosen] { return _pages->currentElement() == chosen; }, Patience) && settle();
}

bool ConsoleDriver::settle()
{
    const bool isIdle = QTest::qWaitFor([] { return !TaskObserver::instance()->isBusy(); }, Patience);
    QCoreApplication::processEvents();
    return isIdle;
}

ElementWidget *ConsoleDriver::editor() const
{
    return _pages->currentEditor();
}

bool ConsoleDriver::unfold(const QModelIndex &parent)
{
    const QPersistentModelIndex row = parent;
    if (!_tree->isExpanded(row)) {
        _tree->scrollTo(row);
        QTest::mouseClick(_tree->viewport(), Qt::LeftButton, {}, _tree->visualRect(row).center());
        QTest::keyClick(_tree, Qt::Key_Right);
    }
    return QTest::qWaitFor([this, &row] { return _tree->model()->rowCount(row) > 0; }, Patience);
}

QModelIndex ConsoleDriver::child(const QModelIndex &parent, const QString &title) const
{
    const QAbstractItemModel *rows = _tree->model();
    for (int row = 0; row < rows->rowCount(parent); ++row) {
        const QModelIndex index = rows->index(row, 0, parent);
        if (index.data().toString() == title)
            return index;
    }
    return {};
}
