// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <listelementwidget.h>

#include <memory>

class AccountModule;
class ElementTreeView;
class ElementsWidgetProxyModel;
class ListColumns;
class TreeNodeModel;

/// The list of all accounts of a kind. A row that is double-clicked, or entered with Return, opens the account's page.
class AccountListWidget : public ListElementWidget
{
    Q_OBJECT

public:
    explicit AccountListWidget(AccountModule *module);
    /// Remembers the widths, the order and the sorting of the columns.
    ~AccountListWidget() override;

    void setElement(Element *element) override;
    void setFilterText(const QString &text) override;

private:
    void open(const QModelIndex &index);
    void requestMenu(const QPoint &position);

    TreeNodeModel *_nodes;
    ElementsWidgetProxyModel *_rows;
    ElementTreeView *_view;
    std::unique_ptr<ListColumns> _columns;
};
