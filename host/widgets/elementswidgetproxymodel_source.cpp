// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "elementswidgetproxymodel_p.h"

#include <algorithm>
#include <utility>

void ElementsWidgetProxyModel::Private::sourceDataChanged(const QModelIndex &topLeft, const QModelIndex &bottomRight,
                                                          const QVector<int> &roles)
{
    if (!topLeft.isValid() || !bottomRight.isValid())
        return;
    if (ProxyMapping *present = known(topLeft.parent())) {
        present->forgetData(topLeft.row(), bottomRight.row(), topLeft.column(), bottomRight.column());
        int first = present->shownCount();
        int last = -1;
        for (int row = topLeft.row(); row <= bottomRight.row(); ++row) {
            const int shown = present->proxyRow(row);
            if (shown >= 0) {
                first = std::min(first, shown);
                last = std::max(last, shown);
            }
        }
        if (last >= 0)
            Q_EMIT q->dataChanged(q->createIndex(first, topLeft.column(), present),
                                  q->createIndex(last, bottomRight.column(), present), roles);
    }
    if (filter.hasText()) // a row may be shown for the sake of one below it
        forgetAccepted();
    updateTimer.start();
}

void ElementsWidgetProxyModel::Private::sourceRowsInserted(const QModelIndex &parent, int first, int last)
{
    ProxyMapping *present = known(parent);
    const int rows = q->sourceModel()->rowCount(parent);
    if (!present && parent.isValid() && rows == last - first + 1) {
        // It had no rows, which may have been asked.
        const QModelIndex shownParent = q->mapFromSource(parent);
        if (shownParent.isValid()) {
            auto made = std::make_unique<ProxyMapping>(*q->sourceModel(), parent,
                                                       static_cast<ProxyMapping *>(shownParent.internalPointer()));
            prepareAndUse(*made);
            present = below.emplace(parent, std::move(made)).first->second.get();
            showMore(*present);
        }
    } else if (present && present->sourceRowCount() < rows) {
        present->sourceRowsInserted(first, last, keyMaker, filter);
        showMore(*present);
    }
    revisit(parent);
}

void ElementsWidgetProxyModel::Private::sourceRowsAboutToBeRemoved(const QModelIndex &parent, int first, int last)
{
    removalParent = parent;
    removal = {first, last - first + 1};
    ProxyMapping *present = known(parent);
    if (!present)
        return;
    for (int row = first; row <= last; ++row)
        present->setAccepted(row, false);
    showLess(*present);
}

void ElementsWidgetProxyModel::Private::sourceRowsRemoved(const QModelIndex &parent, int first, int last)
{
    removal.count = 0;
    if (ProxyMapping *present = known(parent))
        present->sourceRowsRemoved(first, last);
    revisit(parent);
}

void ElementsWidgetProxyModel::Private::connectSource(QAbstractItemModel *model)
{
    for (const QMetaObject::Connection &connection : connections)
        QObject::disconnect(connection);
    connections.clear();
    if (!model)
        return;
    const auto hear = [this, model](auto signal, auto &&slot) {
        connections.push_back(QObject::connect(model, signal, q, std::forward<decltype(slot)>(slot)));
    };
    const auto beginReset = [this] { q->beginResetModel(); };
    const auto endReset = [this] {
        clear();
        q->endResetModel();
    };
    using Model = QAbstractItemModel;
    hear(&Model::dataChanged, [this](const QModelIndex &topLeft, const QModelIndex &bottomRight,
                                     const QVector<int> &roles) { sourceDataChanged(topLeft, bottomRight, roles); });
    hear(&Model::headerDataChanged, [this](Qt::Orientation orientation, int first, int last) {
        if (orientation == Qt::Horizontal)
            Q_EMIT q->headerDataChanged(orientation, first, last);
    });
    hear(&Model::rowsInserted,
         [this](const QModelIndex &parent, int first, int last) { sourceRowsInserted(parent, first, last); });
    hear(&Model::rowsAboutToBeRemoved,
         [this](const QModelIndex &parent, int first, int last) { sourceRowsAboutToBeRemoved(parent, first, last); });
    hear(&Model::rowsRemoved,
         [this](const QModelIndex &parent, int first, int last) { sourceRowsRemoved(parent, first, last); });
    hear(&Model::layoutAboutToBeChanged, [this] {
        Q_EMIT q->layoutAboutToBeChanged();
        layoutProxies = q->persistentIndexList();
        for (const QModelIndex &index : qAsConst(layoutProxies))
            layoutSources.emplace_back(q->mapToSource(index));
    });
    hear(&Model::layoutChanged, [this] {
        clear();
        QModelIndexList after;
        for (const QPersistentModelIndex &source : layoutSources)
            after.append(q->mapFromSource(source));
        q->changePersistentIndexList(layoutProxies, after);
        layoutProxies.clear();
        layoutSources.clear();
        Q_EMIT q->layoutChanged();
    });
    hear(&Model::modelAboutToBeReset, beginReset);
    hear(&Model::modelReset, endReset);
    hear(&Model::rowsAboutToBeMoved, beginReset);
    hear(&Model::rowsMoved, endReset);
    hear(&Model::columnsAboutToBeInserted, beginReset);
    hear(&Model::columnsInserted, endReset);
    hear(&Model::columnsAboutToBeRemoved, beginReset);
    hear(&Model::columnsRemoved, endReset);
    hear(&QObject::destroyed, [this, beginReset, endReset] {
        beginReset();
        filter.setModel(nullptr);
        endReset();
    });
}
