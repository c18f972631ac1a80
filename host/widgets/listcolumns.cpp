// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "listcolumns.h"

#include <QHeaderView>
#include <QSettings>
#include <QStyle>
#include <QTreeView>

#include <algorithm>
#include <utility>

namespace
{
constexpr int widestColumn = 36; // in characters: a name of 32 with its icon

/// How many rows a column's width is found by: as many of the first ones, and as many all over the list.
constexpr int rowsLookedAt = 100;

/// The view by itself looks at the first rows only: the names of a long list tend to get longer.
int widthOfContents(const QTreeView &view, int column)
{
    const QAbstractItemView &asPublic = view;
    int width = asPublic.sizeHintForColumn(column);
    const int last = view.model()->rowCount() - 1;
    const int steps = std::min(last, rowsLookedAt);
    for (int step = 1; step <= steps; ++step) {
        const auto row = static_cast<int>(qint64(last) * step / steps);
        width = std::max(width, view.sizeHintForIndex(view.model()->index(row, column)).width());
    }
    return width;
}

/// What the words of the header need, without the arrow of the sorted column.
int widthOfHeader(const QHeaderView &header, int column)
{
    const QString words = header.model()->headerData(column, Qt::Horizontal).toString();
    const int margin = header.style()->pixelMetric(QStyle::PM_HeaderMargin, nullptr, &header);
    return header.fontMetrics().size(0, words).width() + 2 * margin;
}
} // namespace

ListColumns::ListColumns(QTreeView *view, const QString &listName)
    : _view(view)
    , _key(QStringLiteral("lists/%1").arg(listName))
{
    // The order of the rows' source, until a column is clicked.
    view->header()->setSortIndicator(-1, Qt::AscendingOrder);
    view->setSortingEnabled(true);
    view->header()->setResizeContentsPrecision(rowsLookedAt);
    QObject::connect(view->header(), &QHeaderView::sortIndicatorChanged, &_fitTimer, [view](int column) {
        QHeaderView *header = view->header();
        if (column >= 0 && column < header->count() && !header->isSectionHidden(column))
            header->resizeSection(column, std::max(header->sectionSize(column), header->sectionSizeHint(column)));
    });
    // Not at once: who fills a list may complete its rows when they stand in it.
    _fitTimer.setSingleShot(true);
    _fitTimer.setInterval(0);
    QObject::connect(view->model(), &QAbstractItemModel::rowsInserted, &_fitTimer, qOverload<>(&QTimer::start));
    QObject::connect(&_fitTimer, &QTimer::timeout, &_fitTimer, [this] { fit(); });
    // A list without an element has no columns: what is known of them must not go with them.
    QObject::connect(view->model(), &QAbstractItemModel::modelAboutToBeReset, &_fitTimer, [this] { remember(); });
    QObject::connect(view->model(), &QAbstractItemModel::modelReset, &_fitTimer, [this] { restore(); });
}

ListColumns::~ListColumns()
{
    remember();
    if (!_columns.isEmpty())
        QSettings().setValue(_key, _columns);
}

void ListColumns::load()
{
    if (std::exchange(_isLoaded, true))
        return;
    _columns = QSettings().value(_key).toByteArray();
    restore();
    _fitTimer.start();
}

/// Columns that never had anything in them are as wide as any: they are not worth keeping.
void ListColumns::remember()
{
    if (_isFitted && _view->header()->count() > 0)
        _columns = _view->header()->saveState();
}

void ListColumns::restore()
{
    if (_isLoaded && !_columns.isEmpty() && _view->header()->count() > 0)
        _isFitted = _view->header()->restoreState(_columns);
}

void ListColumns::fit()
{
    if (!_isLoaded || _isFitted)
        return;
    _isFitted = _view->model()->rowCount() > 0;
    QHeaderView *header = _view->header();
    const int character = _view->fontMetrics().averageCharWidth();
    const int last = header->count() - 1; // which takes the room that the others leave
    for (int column = 0; column <= last; ++column) {
        const int needed = std::max(widthOfContents(*_view, column) + character / 2, widthOfHeader(*header, column));
        header->resizeSection(column, std::min(needed, widestColumn * character));
    }
}
