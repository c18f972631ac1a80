// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "navigationpane.h"

#include "searchfield.h"

#include <elementswidgetproxymodel.h>
#include <elementtreeview.h>
#include <treenodemodel.h>

#include <QVBoxLayout>

#include <algorithm>

NavigationPane::NavigationPane(TreeNode *root, QWidget *parent)
    : QWidget(parent)
    , _root(root)
    , _nodes(new TreeNodeModel(this))
    , _rows(new ElementsWidgetProxyModel(this))
    , _search(new SearchField(this))
    , _view(new ElementTreeView(this))
{
    _search->setObjectName(QStringLiteral("treeSearchField"));
    _search->setPlaceholderText(tr("Search the tree (Ctrl+F)"));
    _search->setToolTip(
        tr("Shows the elements that contain the text.\nDown goes to the elements, Escape ends the search."));
    _search->setAccessibleName(tr("Search the tree"));
    _view->setObjectName(QStringLiteral("treeView"));
    _view->setAccessibleName(tr("Tree"));
    _view->setHeaderHidden(true);
    _view->setAlternatingRowColors(false);
    _nodes->setRootNode(root);

    // Heard before the view hears of it, and after.
    connect(_nodes, &QAbstractItemModel::rowsAboutToBeRemoved, this, [this] { _isRemoving = true; });
    _rows->setSourceModel(_nodes);
    _view->setModel(_rows);
    connect(_nodes, &QAbstractItemModel::rowsRemoved, this, [this] {
        _isRemoving = false;
        // The view takes the next row for one that a search hides by now.
        if (_current && !_view->indexOf(_current.data()).isValid())
            _view->selectionModel()->clear();
    });

    auto *whole = new QVBoxLayout(this);
    whole->setContentsMargins(0, 0, 0, 0);
    whole->addWidget(_search);
    whole->addWidget(_view);

    for (QTimer *timer : {&_announcing, &_showing}) {
        timer->setSingleShot(true);
        timer->setInterval(0);
    }
    connect(&_showing, &QTimer::timeout, this, &NavigationPane::showCurrent);
    const auto showLater = [this] { _showing.start(); };
    connect(_rows, &QAbstractItemModel::rowsInserted, this, showLater);
    connect(_rows, &QAbstractItemModel::layoutChanged, this, showLater);
    connect(&_announcing, &QTimer::timeout, this, &NavigationPane::announce);
    connect(_view->selectionModel(), &QItemSelectionModel::currentChanged, this, &NavigationPane::noteRow);
    connect(_view, &QWidget::customContextMenuRequested, this, &NavigationPane::requestMenu);
    connect(_nodes, &TreeNodeModel::currentNodeRequested, this, &NavigationPane::request);
    connect(_search, &SearchField::searched, this, &NavigationPane::search);
    connect(_search, &SearchField::leftDownwards, _view, qOverload<>(&QWidget::setFocus));
}

void NavigationPane::setCurrentNode(TreeNode *node)
{
    _current = node;
    _announcing.stop();
    if (!node)
        return;
    QModelIndex index = _view->indexOf(node);
    if (!index.isValid() && !_search->text().isEmpty()) {
        _search->clear(); // and the search ends with this very node being current
        index = _view->indexOf(node);
    }
    _view->setCurrentIndex(index);
    _announcing.stop();
}

void NavigationPane::expand(TreeNode *node)
{
    _view->expand(_view->indexOf(node));
}

void NavigationPane::noteRow(const QModelIndex &index)
{
    TreeNode *node = _view->node(index);
    if (_isRemoving || !node)
        return;
    _current = node;
    _announcing.start();
}

/// The current row may have been away for a moment: a search hides a list whose rows are being replaced.
void NavigationPane::showCurrent()
{
    if (!_rows->filterText().isEmpty())
        expandAll();
    const QModelIndex index = _view->indexOf(_current.data());
    if (!index.isValid() || index == _view->currentIndex() || _announcing.isActive())
        return;
    _view->setCurrentIndex(index);
    _announcing.stop();
}

void NavigationPane::announce()
{
    if (auto *element = dynamic_cast<Element *>(_current.data()))
        Q_EMIT elementChosen(element);
}

void NavigationPane::request(TreeNode *node)
{
    // A supplement has no row: it is a tab on the page of the element above it.
    while (node && !node->isTreeRow())
        node = node->parentNode();
    if (auto *element = dynamic_cast<Element *>(node))
        Q_EMIT elementRequested(element);
}

void NavigationPane::requestMenu(const QPoint &position)
{
    if (auto *element = dynamic_cast<Element *>(_view->node(_view->indexAt(position))))
        Q_EMIT menuRequested(element, _view->viewport()->mapToGlobal(position));
}

void NavigationPane::search(const QString &text)
{
    if (_rows->filterText().isEmpty()) {
        for (TreeNode *node : parents()) {
            if (_view->isExpanded(_view->indexOf(node)))
                _expandedBeforeSearch.append(node);
        }
    }
    _rows->setFilterText(text);
    if (!text.isEmpty()) {
        expandAll();
        return;
    }
    _view->collapseAll();
    for (const NodePointer<TreeNode> &node : qAsConst(_expandedBeforeSearch)) {
        if (node)
            _view->expand(_view->indexOf(node.data()));
    }
    _expandedBeforeSearch.clear();
    setCurrentNode(_current.data());
}

void NavigationPane::expandAll()
{
    for (TreeNode *node : parents())
        _view->expand(_view->indexOf(node));
}

/// The nodes that have rows below them, parents before their children.
QVector<TreeNode *> NavigationPane::parents() const
{
    QVector<TreeNode *> nodes;
    const QVector<TreeNode *> all = _root->allChildNodes();
    std::copy_if(all.begin(), all.end(), std::back_inserter(nodes),
                 [](const TreeNode *node) { return !node->childNodes().isEmpty(); });
    return nodes;
}
