// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "rowfilter.h"

#include <element.h>
#include <treenodemodel.h>

void RowFilter::setModel(const QAbstractItemModel *model)
{
    _model = model;
    _nodes = qobject_cast<const TreeNodeModel *>(model);
}

bool RowFilter::narrowsVariant(const QModelIndex &parent) const
{
    if (!_nodes)
        return false;
    const TreeNode *node = parent.isValid() ? _nodes->node(parent) : _nodes->rootNode();
    const auto *container = dynamic_cast<const Element *>(node);
    return container && container->displayChildrenVariant() != 0;
}

bool RowFilter::isInVariant(const QModelIndex &row) const
{
    return (_nodes->node(row)->treeNodeSpecialFlags() & InChosenVariant) != 0;
}

QString RowFilter::textOf(int row, const QModelIndex &parent, int columns) const
{
    QString text;
    for (int column = 0; column < columns; ++column) {
        const QString cell = _model->index(row, column, parent).data().toString();
        if (cell.isEmpty())
            continue;
        if (!text.isEmpty())
            text += QLatin1Char('\n'); // a match does not reach from one cell into the next
        text += cell;
    }
    return text;
}

bool RowFilter::matchesBelow(const QModelIndex &row) const
{
    const int rows = _model->rowCount(row);
    if (rows == 0)
        return false;
    const int columns = _model->columnCount(row);
    const bool narrows = narrowsVariant(row);
    for (int child = 0; child < rows; ++child) {
        const QModelIndex index = _model->index(child, 0, row);
        if ((!narrows || isInVariant(index)) && (matches(textOf(child, row, columns)) || matchesBelow(index)))
            return true;
    }
    return false;
}
