// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <listelementwidget.h>

#include <memory>

class QListWidgetItem;
namespace Ui
{
class AbstractUsersGroupsWidget;
}

/// The list of all accounts of a kind with their quotas on one chosen device.
///
/// A chosen device that a new read lacks stays chosen, shown as absent: only the administrator chooses another.
class AbstractUsersGroupsWidget : public ListElementWidget
{
    Q_OBJECT

public:
    /// `name` is the element type that is listed. The columns that are not shown are kept under it, as are the widths,
    /// the order and the sorting of those that are: by a list that has shown its element, and has loaded them so.
    AbstractUsersGroupsWidget(const QString &name, Module *module, AccessCheck access, QWidget *parent = nullptr);
    ~AbstractUsersGroupsWidget() override;

    /// The first call lists the element's rows, which by itself has them read if they never were.
    void read() override;
    /// Also shows the devices that come in the parameters of a record (AbstractContainerElement::devicesKey()).
    void performOperation(OperationType type, ElementData *record, int extra) override;

public Q_SLOTS:
    /// Opens the account's page at the same device.
    void choiceElement(const QModelIndex &index) override;
    void deviceChanged(const QString &deviceName);
    void showHideFiltersWidget();
    void filterItemChanged(QListWidgetItem *item);
    void filterItemDoubleCkicked(const QModelIndex &index);

protected:
    /// For a device without quotas of this kind.
    void setWarningText(const QString &text);
    /// They show the chosen device.
    void completeRows(int first, int last) override;

private:
    /// Shows the warning where the device has no quotas of this kind, as far as the first account knows; of an absent
    /// device that it is.
    void updateWarning(const QString &deviceName);
    void buildFilters();
    void loadFilters();
    void saveFilters() const;
    QString filterKey(int filter) const;

    QString _name;
    std::unique_ptr<Ui::AbstractUsersGroupsWidget> _ui;
    QString _warningText;
    bool _filtersLoaded = false;
};
