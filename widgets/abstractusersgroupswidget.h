// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <listelementwidget.h>

#include <memory>

class ElementsWidgetProxyModel;
class ListColumns;
class QListWidgetItem;
class QModelIndex;
class TreeNodeModel;
namespace Ui
{
class AbstractUsersGroupsWidget;
}

/// The list of all accounts of a kind with their quotas on one chosen device. A row that is double-clicked, or entered
/// with Return, opens the account's page at the same device.
class AbstractUsersGroupsWidget : public ListElementWidget
{
    Q_OBJECT

public:
    /// `name` is the element type that is listed. The columns that are not shown are kept under it, as are the widths,
    /// the order and the sorting of those that are: by a list that has shown its element, and has loaded them so.
    AbstractUsersGroupsWidget(const QString &name, Module *module, AccessCheck access, QWidget *parent = nullptr);
    ~AbstractUsersGroupsWidget() override;

    void setFilterText(const QString &text) override;
    /// The first call lists the element's rows, which by itself has them read if they never were.
    void read() override;
    /// Also shows the devices that come in the parameters of a record (AbstractContainerElement::devicesKey()).
    void performOperation(OperationType type, ElementData *record, int extra) override;

public Q_SLOTS:
    void choiceElement(const QModelIndex &index);
    void customContextMenuRequest(const QPoint &point);
    void deviceChanged(const QString &deviceName);
    void showHideFiltersWidget();
    void filterItemChanged(QListWidgetItem *item);
    void filterItemDoubleCkicked(const QModelIndex &index);

protected:
    void setWarningText(const QString &text);

private:
    /// Shows the warning where the device has no quotas of this kind, as far as the first account knows.
    void updateWarning(const QString &deviceName);
    void chooseDeviceForRows(const QString &deviceName);
    void buildFilters();
    void loadFilters();
    void saveFilters() const;
    QString filterKey(int filter) const;
    void rememberRows();
    void findRowsAgain();

    QString _name;
    std::unique_ptr<Ui::AbstractUsersGroupsWidget> _ui;
    TreeNodeModel *_nodes;
    ElementsWidgetProxyModel *_rows;
    std::unique_ptr<ListColumns> _columns;
    bool _filtersLoaded = false;
    // Of rows that are being replaced.
    QString _currentTitle;
    int _topRow = 0;
};
