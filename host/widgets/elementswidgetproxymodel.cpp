// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "elementswidgetproxymodel.h"

#include "elementswidgetproxymodel_p.h"

#include <algorithm>

namespace
{
/// More stretches than this in one change are one change of the layout.
constexpr size_t maximumRuns = 16;

/// A line for each word; a short one stays behind the word before it.
QString inLines(const QString &header)
{
    constexpr int longestJoined = 2;
    QString lines;
    const QStringList words = header.split(QLatin1Char(' '));
    for (const QString &word : words) {
        if (!lines.isEmpty())
            lines += word.size() <= longestJoined ? QLatin1Char(' ') : QLatin1Char('\n');
        lines += word;
    }
    return lines;
}
} // namespace

ElementsWidgetProxyModel::Private::Private(ElementsWidgetProxyModel *model)
    : q(model)
{
    updateTimer.setSingleShot(true);
    updateTimer.setInterval(0);
    QObject::connect(&updateTimer, &QTimer::timeout, model, [this] { updateAll(); });
}

ProxyMapping *ElementsWidgetProxyModel::Private::known(const QModelIndex &sourceParent) const
{
    if (!sourceParent.isValid())
        return top.get();
    const auto found = below.find(QPersistentModelIndex(sourceParent));
    return found == below.end() ? nullptr : found->second.get();
}

/// The mapping of the rows under a parent; null when there are none, or when the parent itself is not shown.
ProxyMapping *ElementsWidgetProxyModel::Private::mapping(const QModelIndex &sourceParent)
{
    if (ProxyMapping *present = known(sourceParent))
        return present;
    const QAbstractItemModel *source = q->sourceModel();
    if (!source || sourceParent.column() > 0)
        return nullptr;
    if (!sourceParent.isValid()) {
        top = std::make_unique<ProxyMapping>(*source, QModelIndex(), nullptr);
        bring(*top);
        return top.get();
    }
    if (source->rowCount(sourceParent) == 0)
        return nullptr;
    const QModelIndex parent = q->mapFromSource(sourceParent);
    if (!parent.isValid())
        return nullptr;
    auto *above = static_cast<ProxyMapping *>(parent.internalPointer());
    auto made = std::make_unique<ProxyMapping>(*source, sourceParent, above);
    bring(*made);
    return below.emplace(sourceParent, std::move(made)).first->second.get();
}

void ElementsWidgetProxyModel::Private::prepareAndUse(ProxyMapping &mapping)
{
    while (prepare(mapping, mapping.sourceRowCount())) {
    }
    mapping.use(sortColumn, sortOrder);
}

void ElementsWidgetProxyModel::Private::bring(ProxyMapping &mapping)
{
    prepareAndUse(mapping);
    if (removal.count > 0 && removalParent == mapping.sourceParent())
        for (int row = removal.first; row < removal.first + removal.count; ++row)
            mapping.setAccepted(row, false);
    mapping.show(mapping.wantedRows());
}

QModelIndex ElementsWidgetProxyModel::Private::parentIndex(const ProxyMapping &mapping) const
{
    if (!mapping.above())
        return {};
    return q->createIndex(mapping.above()->proxyRow(mapping.sourceParent().row()), 0, mapping.above());
}

bool ElementsWidgetProxyModel::Private::isVisible(const ProxyMapping *mapping) const
{
    for (; mapping->above(); mapping = mapping->above())
        if (!mapping->sourceParent().isValid() || mapping->above()->proxyRow(mapping->sourceParent().row()) < 0)
            return false;
    return true;
}

void ElementsWidgetProxyModel::Private::clear()
{
    below.clear();
    top.reset();
    updateTimer.stop();
    removal.count = 0;
}

void ElementsWidgetProxyModel::Private::dropInvisible()
{
    std::vector<QPersistentModelIndex> dropped;
    for (const auto &[parent, mapping] : below)
        if (!isVisible(mapping.get()))
            dropped.push_back(parent);
    for (const QPersistentModelIndex &parent : dropped)
        below.erase(parent);
}

/// One change of the layout: what was held on to is found again, or is invalid when it is not shown any more.
template<typename Change>
void ElementsWidgetProxyModel::Private::changeLayout(const Change &change)
{
    Q_EMIT q->layoutAboutToBeChanged();
    const QModelIndexList before = q->persistentIndexList();
    QModelIndexList sources;
    sources.reserve(before.size());
    for (const QModelIndex &index : before)
        sources.append(q->mapToSource(index));
    change();
    dropInvisible();
    QModelIndexList after;
    after.reserve(before.size());
    for (const QModelIndex &source : qAsConst(sources))
        after.append(q->mapFromSource(source));
    q->changePersistentIndexList(before, after);
    Q_EMIT q->layoutChanged();
}

std::vector<ProxyMapping *> ElementsWidgetProxyModel::Private::mappings() const
{
    std::vector<ProxyMapping *> all;
    if (top)
        all.push_back(top.get());
    for (const auto &each : below)
        all.push_back(each.second.get());
    return all;
}

/// False when everything is prepared.
bool ElementsWidgetProxyModel::Private::prepareSlice()
{
    for (ProxyMapping *mapping : mappings()) {
        while (prepare(*mapping, rowsPerSlice)) {
            if (mapping->sourceRowCount() > rowsPerSlice)
                return true;
        }
    }
    return false;
}

void ElementsWidgetProxyModel::Private::updateAll()
{
    if (prepareSlice()) {
        updateTimer.start();
        return;
    }
    updateTimer.stop();
    std::vector<std::pair<ProxyMapping *, Rows>> changed;
    for (ProxyMapping *mapping : mappings()) {
        mapping->use(sortColumn, sortOrder);
        Rows wanted = mapping->wantedRows();
        if (wanted != mapping->shownRows())
            changed.emplace_back(mapping, std::move(wanted));
    }
    if (changed.empty())
        return;
    changeLayout([&changed] {
        for (auto &[mapping, wanted] : changed)
            mapping->show(std::move(wanted));
    });
}

void ElementsWidgetProxyModel::Private::forgetAccepted()
{
    for (ProxyMapping *mapping : mappings())
        mapping->forgetAccepted();
}

/// Shows the rows that are accepted and not shown yet.
void ElementsWidgetProxyModel::Private::showMore(ProxyMapping &mapping)
{
    Rows wanted = mapping.wantedRows();
    const std::vector<RowRun> runs = mapping.runsToInsert(wanted);
    if (runs.size() > maximumRuns) {
        changeLayout([&] { mapping.show(std::move(wanted)); });
        return;
    }
    for (const RowRun &run : runs) {
        q->beginInsertRows(parentIndex(mapping), run.first, run.first + run.count - 1);
        mapping.insertShown(run, wanted);
        q->endInsertRows();
    }
}

/// Hides the rows that are shown and not accepted any more.
void ElementsWidgetProxyModel::Private::showLess(ProxyMapping &mapping)
{
    const std::vector<RowRun> runs = mapping.runsToRemove();
    if (runs.size() > maximumRuns) {
        changeLayout([&] { mapping.show(mapping.wantedRows()); });
        return;
    }
    for (const RowRun &run : runs) {
        q->beginRemoveRows(parentIndex(mapping), run.first, run.first + run.count - 1);
        mapping.removeShown(run);
        q->endRemoveRows();
    }
    if (!runs.empty())
        dropInvisible();
}

/// Looks again whether a row and those above it are shown, now that what is below it has changed.
void ElementsWidgetProxyModel::Private::revisit(const QModelIndex &sourceRow)
{
    if (!filter.hasText() || !sourceRow.isValid())
        return;
    revisit(sourceRow.parent());
    ProxyMapping *present = known(sourceRow.parent());
    if (!present)
        return;
    const bool wasAccepted = present->isAccepted(sourceRow.row());
    const bool accepted = present->accepts(sourceRow.row(), filter);
    present->setAccepted(sourceRow.row(), accepted);
    if (accepted == wasAccepted)
        return;
    if (accepted)
        showMore(*present);
    else
        showLess(*present);
}

ElementsWidgetProxyModel::ElementsWidgetProxyModel(QObject *parent)
    : QAbstractProxyModel(parent)
    , d(std::make_unique<Private>(this))
{}

ElementsWidgetProxyModel::~ElementsWidgetProxyModel() = default;

void ElementsWidgetProxyModel::setFilterText(const QString &text)
{
    if (text == d->filter.text())
        return;
    d->filter.setText(text);
    d->forgetAccepted();
    d->updateAll();
}

QString ElementsWidgetProxyModel::filterText() const
{
    return d->filter.text();
}

void ElementsWidgetProxyModel::workInSlices(int rows)
{
    d->rowsPerSlice = rows;
}

void ElementsWidgetProxyModel::setHeadersInLines(bool inLines)
{
    d->headersInLines = inLines;
    if (columnCount() > 0)
        Q_EMIT headerDataChanged(Qt::Horizontal, 0, columnCount() - 1);
}

void ElementsWidgetProxyModel::setSourceModel(QAbstractItemModel *model)
{
    beginResetModel();
    d->clear();
    QAbstractProxyModel::setSourceModel(model);
    d->filter.setModel(model);
    d->connectSource(model);
    endResetModel();
}

QModelIndex ElementsWidgetProxyModel::mapToSource(const QModelIndex &index) const
{
    if (!index.isValid() || !sourceModel())
        return {};
    Q_ASSERT(index.model() == this);
    const auto *mapping = static_cast<const ProxyMapping *>(index.internalPointer());
    if (index.row() >= mapping->shownCount())
        return {};
    return sourceModel()->index(mapping->sourceRow(index.row()), index.column(), mapping->sourceParent());
}

QModelIndex ElementsWidgetProxyModel::mapFromSource(const QModelIndex &index) const
{
    if (!index.isValid())
        return {};
    Q_ASSERT(index.model() == sourceModel());
    ProxyMapping *mapping = d->mapping(index.parent());
    if (!mapping || mapping->proxyRow(index.row()) < 0)
        return {};
    return createIndex(mapping->proxyRow(index.row()), index.column(), mapping);
}

QModelIndex ElementsWidgetProxyModel::index(int row, int column, const QModelIndex &parent) const
{
    if (row < 0 || column < 0 || parent.column() > 0)
        return {};
    ProxyMapping *mapping = d->mapping(mapToSource(parent));
    if (!mapping || row >= mapping->shownCount() || column >= columnCount(parent))
        return {};
    return createIndex(row, column, mapping);
}

QModelIndex ElementsWidgetProxyModel::parent(const QModelIndex &child) const
{
    return child.isValid() ? d->parentIndex(*static_cast<const ProxyMapping *>(child.internalPointer()))
                           : QModelIndex();
}

int ElementsWidgetProxyModel::rowCount(const QModelIndex &parent) const
{
    if (parent.column() > 0)
        return 0;
    const ProxyMapping *mapping = d->mapping(mapToSource(parent));
    return mapping ? mapping->shownCount() : 0;
}

int ElementsWidgetProxyModel::columnCount(const QModelIndex &parent) const
{
    return sourceModel() ? sourceModel()->columnCount(mapToSource(parent)) : 0;
}

bool ElementsWidgetProxyModel::hasChildren(const QModelIndex &parent) const
{
    const QModelIndex source = mapToSource(parent);
    if (!sourceModel() || parent.column() > 0)
        return false;
    if (!parent.isValid())
        d->mapping(source); // who was told that there are no rows is told of those that come
    if (!sourceModel()->hasChildren(source))
        return false;
    return sourceModel()->canFetchMore(source) || rowCount(parent) > 0;
}

Qt::ItemFlags ElementsWidgetProxyModel::flags(const QModelIndex &index) const
{
    // Those of a tree of nodes are alike for all rows, of which a view asks each.
    if (d->filter.isOnNodes() && index.isValid())
        return Qt::ItemIsSelectable | Qt::ItemIsEnabled;
    return QAbstractProxyModel::flags(index);
}

QVariant ElementsWidgetProxyModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    // The columns are the source's, also while no row is shown to look one up by.
    if (orientation == Qt::Horizontal && sourceModel()) {
        const QVariant header = sourceModel()->headerData(section, orientation, role);
        const bool isBroken = d->headersInLines && role == Qt::DisplayRole && header.isValid();
        return isBroken ? inLines(header.toString()) : header;
    }
    return QAbstractProxyModel::headerData(section, orientation, role);
}

void ElementsWidgetProxyModel::sort(int column, Qt::SortOrder order)
{
    d->sortColumn = std::max(column, -1);
    d->sortOrder = order;
    d->updateAll();
}
