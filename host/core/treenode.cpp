// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "treenode.h"

#include <QVarLengthArray>

#include <algorithm>

/// Outlives its node, for the pointers that point at it.
struct TreeNode::Life
{
    TreeNode *node;
};

struct TreeNode::Extras
{
    QVector<TreeNodeObserver *> observers;
    QVector<TreeNode *> supplements;
    std::shared_ptr<Life> life;
};

/// An observer, and the node that it is registered on.
struct TreeNode::Listener
{
    std::shared_ptr<Life> life;
    TreeNodeObserver *observer;

    bool operator==(const Listener &other) const { return life == other.life && observer == other.observer; }
    bool isRegistered() const { return life->node && life->node->_extras->observers.contains(observer); }
};

/// Everybody who hears of a change at a node: the observers of it and of all nodes above it.
///
/// Whom to tell is settled before the first is told, since who is told may delete nodes and take observers off.
class TreeNode::Listeners
{
public:
    explicit Listeners(TreeNode *node) { add(node); }

    template<typename Tell>
    void tell(const Tell &tellOne) const
    {
        for (const Listener &listener : _listeners) {
            if (listener.isRegistered())
                tellOne(*listener.observer);
        }
    }

    /// Tells the beginning of a change to the node's rows. False when somebody deleted the node in answer.
    template<typename Tell>
    bool tellBegin(TreeNode *node, const Tell &tellOne)
    {
        if (_listeners.isEmpty())
            return true;
        _life = node->life();
        tell(tellOne);
        return _life->node;
    }

    /// Tells the end of that change: also to those who came in between, and though the node be gone.
    template<typename Tell>
    void tellEnd(const Tell &tellOne)
    {
        if (_life)
            add(_life->node);
        tell(tellOne);
    }

private:
    void add(TreeNode *node)
    {
        for (; node; node = node->_parent) {
            if (!node->_extras)
                continue;
            for (TreeNodeObserver *observer : qAsConst(node->_extras->observers)) {
                const Listener listener{node->life(), observer};
                if (std::find(_listeners.cbegin(), _listeners.cend(), listener) == _listeners.cend())
                    _listeners.append(listener);
            }
        }
    }

    QVarLengthArray<Listener, 8> _listeners;
    std::shared_ptr<Life> _life;
};

TreeNodeObserver::~TreeNodeObserver() = default;

TreeNode::TreeNode() = default;

TreeNode::~TreeNode()
{
    leaveTree();
    // One by one from the back: a module that hears of one child's end may delete another one.
    const auto deleteAll = [](QVector<TreeNode *> &nodes) {
        while (!nodes.isEmpty()) {
            TreeNode *node = nodes.takeLast();
            node->_parent = nullptr;
            if (!node->_isDying)
                delete node;
        }
    };
    if (_extras)
        deleteAll(_extras->supplements);
    deleteAll(_children);
}

QVector<TreeNode *> TreeNode::supplementNodes() const
{
    return _extras ? _extras->supplements : QVector<TreeNode *>();
}

QVector<TreeNode *> TreeNode::allChildNodes() const
{
    QVector<TreeNode *> nodes;
    const auto addBelow = [&nodes](const TreeNode *node, const auto &self) -> void {
        for (const QVector<TreeNode *> &children : {node->_children, node->supplementNodes()}) {
            for (TreeNode *child : children) {
                nodes.append(child);
                self(child, self);
            }
        }
    };
    addBelow(this, addBelow);
    return nodes;
}

QString TreeNode::id() const
{
    return {};
}

QString TreeNode::key() const
{
    return {};
}

bool TreeNode::isTreeRow() const
{
    return true;
}

void TreeNode::append(TreeNode *child)
{
    append(QVector<TreeNode *>{child});
}

void TreeNode::append(const QVector<TreeNode *> &children)
{
    QVector<TreeNode *> rows;
    rows.reserve(children.size());
    for (TreeNode *child : children) {
        Q_ASSERT(child && child != this && !child->_parent);
        if (child->isTreeRow()) {
            rows.append(child);
        } else {
            child->_isSupplement = true;
            child->_parent = this;
            extras().supplements.append(child);
        }
    }
    insertRows(_children.size(), rows);
}

void TreeNode::insertRows(int at, const QVector<TreeNode *> &rows)
{
    if (rows.isEmpty())
        return;
    Listeners listeners(this);
    const int last = at + rows.size() - 1;
    if (listeners.tellBegin(this, [=](auto &observer) { observer.rowsAboutToBeInserted(this, at, last); })) {
        const QVector<TreeNode *> behind = _children.mid(at);
        _children.resize(at);
        _children += rows + behind;
        for (TreeNode *row : rows)
            row->_parent = this;
        renumberFrom(at);
    } else {
        qDeleteAll(rows);
    }
    listeners.tellEnd([=](auto &observer) { observer.rowsInserted(this); });
}

void TreeNode::clearDelete()
{
    removeRows(0, _children.size() - 1);
}

void TreeNode::removeRows(int first, int last)
{
    if (last < first)
        return;
    // The children leave in one change for a node that nobody watches, which deletes them when they have left: each is
    // whole until then, and whatever deletes one of them in between takes it out there.
    TreeNode grave;
    Listeners listeners(this);
    if (listeners.tellBegin(this, [=](auto &observer) { observer.rowsAboutToBeRemoved(this, first, last); })) {
        const int count = last - first + 1;
        grave._children = _children.mid(first, count);
        _children.remove(first, count);
        for (TreeNode *child : qAsConst(grave._children))
            child->_parent = &grave;
        grave.renumberFrom(0);
        renumberFrom(first);
    }
    listeners.tellEnd([=](auto &observer) { observer.rowsRemoved(this); });
}

void TreeNode::renumberFrom(int row)
{
    for (; row < _children.size(); ++row)
        _children.at(row)->_row = row;
}

int TreeNode::treeNodeSpecialFlags() const
{
    return 0;
}

int TreeNode::columnCount() const
{
    return 1;
}

QVariant TreeNode::headerData(int /*section*/, Qt::Orientation /*orientation*/, int /*role*/) const
{
    return {};
}

QVariant TreeNode::data(int /*column*/, int /*role*/) const
{
    return {};
}

bool TreeNode::canFetchChildren() const
{
    return false;
}

void TreeNode::fetchChildren() {}

void TreeNode::nodeDataChanged()
{
    Listeners(this).tell([this](auto &observer) { observer.nodeDataChanged(this); });
}

void TreeNode::emitNodeChildsDataChanged()
{
    Listeners(this).tell([this](auto &observer) { observer.childrenDataChanged(this); });
}

void TreeNode::emitSetCurrentNode()
{
    Listeners(this).tell([this](auto &observer) { observer.currentNodeRequested(this); });
}

void TreeNode::addObserver(TreeNodeObserver *observer)
{
    extras().observers.append(observer);
}

void TreeNode::removeObserver(TreeNodeObserver *observer)
{
    if (_extras)
        _extras->observers.removeOne(observer);
}

TreeNode::Extras &TreeNode::extras()
{
    if (!_extras)
        _extras = std::make_unique<Extras>();
    return *_extras;
}

std::shared_ptr<TreeNode::Life> TreeNode::life()
{
    if (_isDying)
        return std::make_shared<Life>(Life{nullptr});
    std::shared_ptr<Life> &life = extras().life;
    if (!life)
        life = std::make_shared<Life>(Life{this});
    return life;
}

TreeNode *TreeNode::nodeOf(const std::shared_ptr<Life> &life)
{
    return life ? life->node : nullptr;
}

void TreeNode::leaveTree()
{
    _isDying = true;
    if (_extras) {
        if (_extras->life)
            _extras->life->node = nullptr;
        while (!_extras->observers.isEmpty())
            _extras->observers.takeFirst()->observedNodeDestroyed(this);
    }
    leaveParent();
}

void TreeNode::leaveParent()
{
    if (!_parent)
        return;
    if (_isSupplement) {
        _parent->_extras->supplements.removeOne(this);
        _parent = nullptr;
        return;
    }
    TreeNode *parent = _parent;
    Listeners listeners(parent);
    const int row = _row;
    if (listeners.tellBegin(parent, [=](auto &observer) { observer.rowsAboutToBeRemoved(parent, row, row); })) {
        parent->_children.remove(_row);
        parent->renumberFrom(_row);
        _parent = nullptr;
    }
    listeners.tellEnd([=](auto &observer) { observer.rowsRemoved(parent); });
}
