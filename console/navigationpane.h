// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <element.h>

#include <QTimer>
#include <QVector>
#include <QWidget>

class ElementTreeView;
class ElementsWidgetProxyModel;
class SearchField;
class TreeNodeModel;

/// The tree of all elements with its search field. It knows which node is current also while the search hides it.
class NavigationPane : public QWidget
{
    Q_OBJECT

public:
    explicit NavigationPane(TreeNode *root, QWidget *parent = nullptr);

    /// Makes a node current and its row visible, which ends a search that hides it. Announces nothing.
    void setCurrentNode(TreeNode *node);
    void expand(TreeNode *node);

    SearchField *searchField() const { return _search; }
    ElementTreeView *view() const { return _view; }

Q_SIGNALS:
    /// A row was chosen. Comes once the event loop turns, so that whoever moves through rows quickly stops at the last.
    void elementChosen(Element *element);
    /// An element asked to be shown.
    void elementRequested(Element *element);
    void menuRequested(Element *element, const QPoint &globalPosition);

private:
    void noteRow(const QModelIndex &index);
    void announce();
    void request(TreeNode *node);
    void requestMenu(const QPoint &position);
    void search(const QString &text);
    void showCurrent();
    void expandAll();
    QVector<TreeNode *> parents() const;

    TreeNode *_root;
    TreeNodeModel *_nodes;
    ElementsWidgetProxyModel *_rows;
    SearchField *_search;
    ElementTreeView *_view;
    QTimer _announcing;
    QTimer _showing; // runs when rows came
    NodePointer<TreeNode> _current;
    bool _isRemoving = false; // meanwhile the view moves on from rows that go, which is nobody's choice
    QVector<NodePointer<TreeNode>> _expandedBeforeSearch;
};
