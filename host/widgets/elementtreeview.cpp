// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "elementtreeview.h"

#include "isolatingdelegate.h"

#include <element.h>
#include <treenodemodel.h>

#include <QAbstractProxyModel>

#include <vector>

ElementTreeView::ElementTreeView(QWidget *parent)
    : QTreeView(parent)
{
    setUniformRowHeights(true);
    setAlternatingRowColors(true);
    setAllColumnsShowFocus(true);
    setEditTriggers(NoEditTriggers);
    setContextMenuPolicy(Qt::CustomContextMenu);
    setItemDelegate(new IsolatingDelegate(this));
}

TreeNode *ElementTreeView::node(const QModelIndex &index) const
{
    QModelIndex source = index;
    while (const auto *proxy = qobject_cast<const QAbstractProxyModel *>(source.model()))
        source = proxy->mapToSource(source);
    const auto *nodes = qobject_cast<const TreeNodeModel *>(source.model());
    return nodes ? nodes->node(source) : nullptr;
}

QModelIndex ElementTreeView::indexOf(TreeNode *node) const
{
    std::vector<const QAbstractProxyModel *> proxies;
    const QAbstractItemModel *source = model();
    while (const auto *proxy = qobject_cast<const QAbstractProxyModel *>(source)) {
        proxies.push_back(proxy);
        source = proxy->sourceModel();
    }
    const auto *nodes = qobject_cast<const TreeNodeModel *>(source);
    if (!nodes || !node)
        return {};
    QModelIndex index = nodes->indexOf(node);
    for (auto proxy = proxies.rbegin(); proxy != proxies.rend(); ++proxy)
        index = (*proxy)->mapFromSource(index);
    return index;
}

void ElementTreeView::currentChanged(const QModelIndex &current, const QModelIndex &previous)
{
    QTreeView::currentChanged(current, previous);
    Q_EMIT elementContextOperationChangedFocused(dynamic_cast<Element *>(node(current)));
}

void ElementTreeView::selectionChanged(const QItemSelection &selected, const QItemSelection &deselected)
{
    QTreeView::selectionChanged(selected, deselected);
    const QItemSelection selection = selectionModel()->selection();
    const QModelIndex first = selection.value(0).topLeft();
    Q_EMIT elementContextOperationChangedSelected(dynamic_cast<Element *>(node(first)));
}

void ElementTreeView::focusInEvent(QFocusEvent *event)
{
    QTreeView::focusInEvent(event);
    Q_EMIT elementContextOperationChangedFocused(dynamic_cast<Element *>(node(currentIndex())));
}
