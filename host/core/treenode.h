// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "kraglobal.h"
#include "noderole.h"

#include <QStringList>
#include <QVariant>
#include <QVector>

#include <functional>
#include <memory>

class TreeNode;

/// Who wants to know of changes below a node: a model, or the window that owns the tree.
/// Every call comes on the user-interface thread, while the change is made.
///
/// Who is told may delete nodes and add or remove observers. An observer that heard that rows are about to change also
/// hears the end of it, even if `parent` was deleted in between; one that was added in between hears the end only.
class KRA_EXPORT TreeNodeObserver
{
public:
    virtual ~TreeNodeObserver();
    virtual void rowsAboutToBeInserted(TreeNode *parent, int first, int last) = 0;
    virtual void rowsInserted(TreeNode *parent) = 0;
    virtual void rowsAboutToBeRemoved(TreeNode *parent, int first, int last) = 0;
    virtual void rowsRemoved(TreeNode *parent) = 0;
    virtual void nodeDataChanged(TreeNode *node) = 0;
    virtual void childrenDataChanged(TreeNode *parent) = 0;
    virtual void currentNodeRequested(TreeNode *node) = 0;
    /// The observed node itself goes; the observer is already taken off it.
    virtual void observedNodeDestroyed(TreeNode *node) = 0;
};

/// A node of the tree of administered objects. It owns its children.
///
/// Built for trees of 100,000 nodes: no QObject, and nothing stored for what most nodes do not have.
/// User-interface thread only.
class KRA_EXPORT TreeNode
{
public:
    TreeNode();
    TreeNode(const TreeNode &) = delete;
    TreeNode &operator=(const TreeNode &) = delete;
    /// Leaves its parent and deletes everything below it.
    virtual ~TreeNode();

    TreeNode *parentNode() const { return _parent; }
    /// The children that are rows of the tree, in order.
    const QVector<TreeNode *> &childNodes() const { return _children; }
    /// The children that are no rows (see isTreeRow()), in the order they were appended.
    QVector<TreeNode *> supplementNodes() const;
    /// Every node below this one, parents before their children, supplements included.
    QVector<TreeNode *> allChildNodes() const;
    /// The place among the parent's rows; 0 for a node without a parent or one that is no row.
    int row() const { return _row; }

    /// What the node is found by: for an element its type name.
    virtual QString id() const;
    /// What tells it from the other children of that id when its parent was read again: for an element its title.
    virtual QString key() const;
    /// Whether the node is shown as a row of the tree. A supplement is not: it is a tab on its parent's page.
    virtual bool isTreeRow() const;

    /// Takes ownership of a node that has no parent yet.
    void append(TreeNode *child);
    /// Takes ownership of all of them in one change, which the views see as one insertion.
    void append(const QVector<TreeNode *> &children);
    /// Makes the rows those of a new reading: one for each key, in that order. A child with that id and key stays, and
    /// with it whatever stands on it: pages, selections, what is unfolded. `update` brings it up to date, without a
    /// word to anybody, and says whether its cells changed. The others are deleted, and `make` makes the new ones.
    void replaceChildren(const QString &id, const QStringList &keys, const std::function<TreeNode *(int place)> &make,
                         const std::function<bool(TreeNode &child, int place)> &update);
    /// Removes and deletes all children that are rows, in one change. Supplements stay: they are the node's own.
    void clearDelete();

    /// Bits of NodeFlag.
    virtual int treeNodeSpecialFlags() const;

    virtual int columnCount() const;
    virtual QVariant headerData(int section, Qt::Orientation orientation, int role) const;
    virtual QVariant data(int column, int role) const;

    /// Whether the children have yet to be asked for. While true, views show the node as one that may have children.
    virtual bool canFetchChildren() const;
    /// Starts the first read of the children. Called only while canFetchChildren() is true.
    virtual void fetchChildren();

    /// Says that the node's cells changed. All calls within one turn of the event loop reach a view as one range.
    void nodeDataChanged();
    /// Says that the cells, or the special flags, of all children changed.
    void emitNodeChildsDataChanged();
    /// Asks whoever shows the tree to make this the current node.
    void emitSetCurrentNode();

    /// An observer of a node hears of everything below it. Not owned.
    void addObserver(TreeNodeObserver *observer);
    void removeObserver(TreeNodeObserver *observer);

protected:
    /// What the destructor begins with: weak pointers become null, the observers of this node are told, and it leaves
    /// its parent. A subclass whose own destructor asks others for something calls it first, so that nobody finds the
    /// half-destroyed node in the tree.
    void leaveTree();

private:
    template<typename Node>
    friend class NodePointer;
    struct Life;
    struct Extras;
    struct Listener;
    class Listeners;

    Extras &extras();
    std::shared_ptr<Life> life();
    static TreeNode *nodeOf(const std::shared_ptr<Life> &life);
    void leaveParent();
    void insertRows(int at, const QVector<TreeNode *> &rows);
    void removeRows(int first, int last);
    void renumberFrom(int row);

    TreeNode *_parent = nullptr;
    QVector<TreeNode *> _children;
    std::unique_ptr<Extras> _extras; // observers, supplements, weak pointers: absent on most nodes
    int _row = 0;
    bool _isSupplement = false; // kept, since the destructor can no longer ask isTreeRow()
    bool _isDying = false;
};

/// A pointer to a node that becomes null when the node's deletion begins. Copied on any thread, looked at on the
/// user-interface thread only.
template<typename Node>
class NodePointer
{
public:
    NodePointer() = default;
    NodePointer(Node *node) // NOLINT(google-explicit-constructor): it stands for the pointer
        : _life(node ? static_cast<TreeNode *>(node)->life() : nullptr)
    {}
    Node *data() const { return static_cast<Node *>(TreeNode::nodeOf(_life)); }
    Node *get() const { return data(); }
    Node *operator->() const { return data(); }
    explicit operator bool() const { return data() != nullptr; }

private:
    std::shared_ptr<TreeNode::Life> _life;
};

/// Pointers are equal that point at one node now: all that became null are.
template<typename Left, typename Right>
bool operator==(const NodePointer<Left> &left, const NodePointer<Right> &right)
{
    return left.data() == right.data();
}

template<typename Left, typename Right>
bool operator!=(const NodePointer<Left> &left, const NodePointer<Right> &right)
{
    return !(left == right);
}

template<typename Left, typename Right>
bool operator==(const NodePointer<Left> &left, const Right *right)
{
    return left.data() == right;
}

template<typename Left, typename Right>
bool operator!=(const NodePointer<Left> &left, const Right *right)
{
    return !(left == right);
}
