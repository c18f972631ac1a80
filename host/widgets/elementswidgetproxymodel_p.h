// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "elementswidgetproxymodel.h"
#include "proxymapping.h"
#include "rowfilter.h"

#include <QHash>
#include <QTimer>

#include <limits>
#include <unordered_map>

class ElementsWidgetProxyModel::Private
{
public:
    struct HashIndex
    {
        size_t operator()(const QPersistentModelIndex &index) const { return qHash(index); }
    };
    using Rows = std::vector<int>;

    explicit Private(ElementsWidgetProxyModel *model);

    ProxyMapping *known(const QModelIndex &sourceParent) const;
    ProxyMapping *mapping(const QModelIndex &sourceParent);
    QModelIndex parentIndex(const ProxyMapping &mapping) const;
    bool isVisible(const ProxyMapping *mapping) const;
    bool prepare(ProxyMapping &mapping, int rows) { return mapping.prepare(sortColumn, keyMaker, filter, rows); }
    void prepareAndUse(ProxyMapping &mapping);
    void bring(ProxyMapping &mapping);
    void clear();
    void dropInvisible();

    template<typename Change>
    void changeLayout(const Change &change);
    std::vector<ProxyMapping *> mappings() const;
    bool prepareSlice();
    void updateAll();
    void forgetAccepted();
    void showMore(ProxyMapping &mapping);
    void showLess(ProxyMapping &mapping);
    void revisit(const QModelIndex &sourceRow);

    // What changes of the source do, in elementswidgetproxymodel_source.cpp.
    void connectSource(QAbstractItemModel *model);
    void sourceDataChanged(const QModelIndex &topLeft, const QModelIndex &bottomRight, const QVector<int> &roles);
    void sourceRowsInserted(const QModelIndex &parent, int first, int last);
    void sourceRowsAboutToBeRemoved(const QModelIndex &parent, int first, int last);
    void sourceRowsRemoved(const QModelIndex &parent, int first, int last);

    ElementsWidgetProxyModel *q;
    std::unique_ptr<ProxyMapping> top;
    std::unordered_map<QPersistentModelIndex, std::unique_ptr<ProxyMapping>, HashIndex> below;
    SortKeyMaker keyMaker;
    RowFilter filter;
    int rowsPerSlice = std::numeric_limits<int>::max();
    bool headersInLines = false;
    int sortColumn = -1; // asked for, as are the next and the filter: shown as soon as they are prepared
    Qt::SortOrder sortOrder = Qt::AscendingOrder;
    QTimer updateTimer;
    std::vector<QMetaObject::Connection> connections;
    // The rows that the source is about to remove: nobody may find them here any more.
    QPersistentModelIndex removalParent;
    RowRun removal{0, 0};
    // While the source changes its layout.
    QModelIndexList layoutProxies;
    std::vector<QPersistentModelIndex> layoutSources;
};
