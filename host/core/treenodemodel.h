// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "kraglobal.h"
#include "treenode.h"

#include <QAbstractItemModel>

#include <memory>

/// The item model over a tree of nodes. Several models may show one tree, each from a root of its own; the root itself
/// is no row. The model does not own the nodes; when its root is deleted it becomes empty.
class KRA_EXPORT TreeNodeModel : public QAbstractItemModel
{
    Q_OBJECT

public:
    explicit TreeNodeModel(QObject *parent = nullptr);
    ~TreeNodeModel() override;

    void setRootNode(TreeNode *root);
    TreeNode *rootNode() const;
    /// Null for an invalid index.
    TreeNode *node(const QModelIndex &index) const;
    /// The index of a node's first column; invalid for the root and for nodes that are no rows below it.
    QModelIndex indexOf(const TreeNode *node, int column = 0) const;

    QModelIndex index(int row, int column, const QModelIndex &parent = {}) const override;
    QModelIndex parent(const QModelIndex &child) const override;
    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    bool hasChildren(const QModelIndex &parent = {}) const override;
    bool canFetchMore(const QModelIndex &parent) const override;
    void fetchMore(const QModelIndex &parent) override;
    QVariant data(const QModelIndex &index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

Q_SIGNALS:
    /// A node below the root asked to become the current one.
    void currentNodeRequested(TreeNode *node);

private:
    class Private;
    std::unique_ptr<Private> d;
};
