// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "treenodemodel.h"

#include "plaintooltip.h"

#include <QHash>
#include <QLocale>
#include <QVarLengthArray>

#include <utility>

namespace
{
/// A number with the digits grouped as the views group them.
QString cellText(const QVariant &value)
{
    switch (value.userType()) {
    case QMetaType::Int:
    case QMetaType::LongLong:
        return QLocale().toString(value.toLongLong());
    case QMetaType::UInt:
    case QMetaType::ULongLong:
        return QLocale().toString(value.toULongLong());
    default:
        return value.toString();
    }
}
} // namespace

class TreeNodeModel::Private : public TreeNodeObserver
{
public:
    explicit Private(TreeNodeModel *model)
        : q(model)
    {}

    void rowsAboutToBeInserted(TreeNode *parent, int first, int last) override;
    void rowsInserted(TreeNode *parent) override;
    void rowsAboutToBeRemoved(TreeNode *parent, int first, int last) override;
    void rowsRemoved(TreeNode *parent) override;
    void nodeDataChanged(TreeNode *node) override;
    void childrenDataChanged(TreeNode *parent) override;
    void currentNodeRequested(TreeNode *node) override;
    void observedNodeDestroyed(TreeNode *node) override;

    bool isShown(const TreeNode *node) const;
    /// The root for an invalid index.
    TreeNode *parentNode(const QModelIndex &index) const;
    void changeRoot(TreeNode *node);
    void noteChange(TreeNode *parent, int first, int last);
    void tellChanges();

    TreeNode *observed = nullptr; // the root that was set
    TreeNode *root = nullptr;     // the root that is shown: null while the views have yet to leave the one before

private:
    enum class Change
    {
        Hidden, ///< below a node that is no row here
        Insertion,
        Removal
    };
    struct Rows
    {
        int first;
        int last;
    };

    void beginChange(Change change, TreeNode *parent, int first, int last);
    void endChange();

    TreeNodeModel *q;
    QVarLengthArray<Change, 4> changes;  // begun, not ended; more than one when an observer changes the tree in answer
    int beginnings = 0;                  // of changes that the views are just being told of
    bool isRootLate = false;             // another root was set meanwhile
    QHash<TreeNode *, Rows> changedRows; // by parent, until the event loop turns
    bool isTellingQueued = false;
};

bool TreeNodeModel::Private::isShown(const TreeNode *node) const
{
    while (node && node != root && node->isTreeRow())
        node = node->parentNode();
    return node && node == root;
}

TreeNode *TreeNodeModel::Private::parentNode(const QModelIndex &index) const
{
    return index.isValid() ? q->node(index) : root;
}

void TreeNodeModel::Private::rowsAboutToBeInserted(TreeNode *parent, int first, int last)
{
    beginChange(Change::Insertion, parent, first, last);
}

void TreeNodeModel::Private::rowsInserted(TreeNode * /*parent*/)
{
    endChange();
}

void TreeNodeModel::Private::rowsAboutToBeRemoved(TreeNode *parent, int first, int last)
{
    beginChange(Change::Removal, parent, first, last);
}

void TreeNodeModel::Private::rowsRemoved(TreeNode * /*parent*/)
{
    endChange();
}

void TreeNodeModel::Private::beginChange(Change change, TreeNode *parent, int first, int last)
{
    if (!isShown(parent)) {
        changes.append(Change::Hidden);
        return;
    }
    tellChanges();
    changes.append(change);
    ++beginnings;
    if (change == Change::Insertion)
        q->beginInsertRows(q->indexOf(parent), first, last);
    else
        q->beginRemoveRows(q->indexOf(parent), first, last);
    --beginnings;
    if (beginnings == 0 && std::exchange(isRootLate, false))
        changeRoot(observed);
}

void TreeNodeModel::Private::endChange()
{
    if (changes.isEmpty()) {
        // The root was set while the change was under way, so its beginning was not heard.
        q->beginResetModel();
        q->endResetModel();
        return;
    }
    const Change change = changes.back();
    changes.removeLast();
    if (change == Change::Insertion)
        q->endInsertRows();
    else if (change == Change::Removal)
        q->endRemoveRows();
}

void TreeNodeModel::Private::nodeDataChanged(TreeNode *node)
{
    if (node != root && isShown(node))
        noteChange(node->parentNode(), node->row(), node->row());
}

void TreeNodeModel::Private::childrenDataChanged(TreeNode *parent)
{
    if (!parent->childNodes().isEmpty() && isShown(parent))
        noteChange(parent, 0, parent->childNodes().size() - 1);
}

void TreeNodeModel::Private::currentNodeRequested(TreeNode *node)
{
    if (node != root)
        Q_EMIT q->currentNodeRequested(node);
}

void TreeNodeModel::Private::observedNodeDestroyed(TreeNode * /*node*/)
{
    changeRoot(nullptr);
}

void TreeNodeModel::Private::changeRoot(TreeNode *node)
{
    observed = node;
    changedRows.clear();
    if (!changes.isEmpty()) {
        // What has begun ends with no rows at all, so that what is told of it and what is there agree. Not before all
        // have heard the beginning, however: one of them may be who sets the root.
        root = nullptr;
        if (beginnings > 0) {
            isRootLate = true;
            return;
        }
        while (!changes.isEmpty())
            endChange();
    }
    q->beginResetModel();
    root = observed;
    q->endResetModel();
}

void TreeNodeModel::Private::noteChange(TreeNode *parent, int first, int last)
{
    const auto known = changedRows.find(parent);
    if (known == changedRows.end()) {
        changedRows.insert(parent, {first, last});
    } else {
        known->first = qMin(known->first, first);
        known->last = qMax(known->last, last);
    }
    if (!std::exchange(isTellingQueued, true)) {
        QMetaObject::invokeMethod(
            q,
            [this] {
                isTellingQueued = false;
                tellChanges();
            },
            Qt::QueuedConnection);
    }
}

/// Also called before rows come or go: until then the row numbers are right and the nodes there.
void TreeNodeModel::Private::tellChanges()
{
    // Taken out one by one: who hears of one may change the tree, which comes back here for the rest.
    while (!changedRows.isEmpty()) {
        const QModelIndex parent = q->indexOf(changedRows.cbegin().key());
        const Rows rows = changedRows.cbegin().value();
        changedRows.erase(changedRows.cbegin());
        Q_EMIT q->dataChanged(q->index(rows.first, 0, parent), q->index(rows.last, q->columnCount() - 1, parent));
    }
}

TreeNodeModel::TreeNodeModel(QObject *parent)
    : QAbstractItemModel(parent)
    , d(std::make_unique<Private>(this))
{}

TreeNodeModel::~TreeNodeModel()
{
    if (d->observed)
        d->observed->removeObserver(d.get());
}

void TreeNodeModel::setRootNode(TreeNode *root)
{
    if (d->observed == root)
        return;
    if (d->observed)
        d->observed->removeObserver(d.get());
    if (root)
        root->addObserver(d.get());
    d->changeRoot(root);
}

TreeNode *TreeNodeModel::rootNode() const
{
    return d->observed;
}

TreeNode *TreeNodeModel::node(const QModelIndex &index) const
{
    return static_cast<TreeNode *>(index.internalPointer()); // which is null in an invalid index
}

QModelIndex TreeNodeModel::indexOf(const TreeNode *node, int column) const
{
    if (node == d->root || !d->isShown(node))
        return {};
    return createIndex(node->row(), column, const_cast<TreeNode *>(node));
}

QModelIndex TreeNodeModel::index(int row, int column, const QModelIndex &parent) const
{
    if (!d->root || parent.column() > 0)
        return {};
    const QVector<TreeNode *> &rows = d->parentNode(parent)->childNodes();
    const bool isThere = row >= 0 && row < rows.size() && column >= 0 && column < columnCount();
    return isThere ? createIndex(row, column, rows.at(row)) : QModelIndex();
}

QModelIndex TreeNodeModel::parent(const QModelIndex &child) const
{
    TreeNode *parent = child.isValid() && d->root ? node(child)->parentNode() : nullptr;
    return parent && parent != d->root ? createIndex(parent->row(), 0, parent) : QModelIndex();
}

int TreeNodeModel::rowCount(const QModelIndex &parent) const
{
    return d->root && parent.column() <= 0 ? d->parentNode(parent)->childNodes().size() : 0;
}

int TreeNodeModel::columnCount(const QModelIndex & /*parent*/) const
{
    return d->root ? d->root->columnCount() : 0;
}

bool TreeNodeModel::hasChildren(const QModelIndex &parent) const
{
    return rowCount(parent) > 0 || canFetchMore(parent);
}

bool TreeNodeModel::canFetchMore(const QModelIndex &parent) const
{
    return d->root && parent.column() <= 0 && d->parentNode(parent)->canFetchChildren();
}

void TreeNodeModel::fetchMore(const QModelIndex &parent)
{
    if (canFetchMore(parent))
        d->parentNode(parent)->fetchChildren();
}

QVariant TreeNodeModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid())
        return {};
    const QVariant value = node(index)->data(index.column(), role);
    return role == Qt::ToolTipRole && value.isValid() ? plainToolTip(cellText(value)) : value;
}

QVariant TreeNodeModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    return d->root ? d->root->headerData(section, orientation, role) : QVariant();
}
