// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <kraglobal.h>

#include <QTreeView>

class ContextOperation;
class TreeNode;

/// A view of elements, over a TreeNodeModel or a proxy of one. Rows are uniform, so that 100,000 of them scroll.
class KRA_EXPORT ElementTreeView : public QTreeView
{
    Q_OBJECT

public:
    explicit ElementTreeView(QWidget *parent = nullptr);

    /// The node of an index of this view's model, through all proxies; null when there is none.
    TreeNode *node(const QModelIndex &index) const;
    /// The index in this view's model; invalid when the node is not shown.
    QModelIndex indexOf(TreeNode *node) const;

Q_SIGNALS:
    /// Another element became current here, or the view got the focus. Null when no element is current.
    void elementContextOperationChangedFocused(ContextOperation *operation);
    /// Other elements were selected: the first of them. Null when none is selected.
    void elementContextOperationChangedSelected(ContextOperation *operation);

protected:
    void currentChanged(const QModelIndex &current, const QModelIndex &previous) override;
    void selectionChanged(const QItemSelection &selected, const QItemSelection &deselected) override;
    void focusInEvent(QFocusEvent *event) override;
};
