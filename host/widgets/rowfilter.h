// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QAbstractItemModel>
#include <QStringMatcher>

class TreeNodeModel;

/// Which rows of a model are shown: by their texts, and by the display variant of the element they stand under.
class RowFilter
{
public:
    void setModel(const QAbstractItemModel *model);
    /// Whether it is a model of nodes.
    bool isOnNodes() const { return _nodes != nullptr; }

    QString text() const { return _matcher.pattern(); }
    bool hasText() const { return !text().isEmpty(); }
    void setText(const QString &text) { _matcher.setPattern(text); }

    /// Whether only some of the rows under that parent belong to its chosen variant.
    bool narrowsVariant(const QModelIndex &parent) const;
    bool isInVariant(const QModelIndex &row) const;

    /// All texts of a row in one.
    QString textOf(int row, const QModelIndex &parent, int columns) const;
    bool matches(const QString &rowText) const { return _matcher.indexIn(rowText) >= 0; }
    /// Whether a row somewhere below matches and is not left out by a variant. Looks at what is loaded.
    bool matchesBelow(const QModelIndex &row) const;

private:
    const QAbstractItemModel *_model = nullptr;
    const TreeNodeModel *_nodes = nullptr; // the same model, where it is one of nodes
    QStringMatcher _matcher{QString(), Qt::CaseInsensitive};
};
