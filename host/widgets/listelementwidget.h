// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "elementwidget.h"

class ElementTreeView;
class ElementsWidgetProxyModel;
class QModelIndex;
class TreeNodeModel;

/// An editor that shows a container's children as rows. It has no content of its own to apply.
///
/// For the menu of a row it emits its own customContextMenuRequested(), with the place in coordinates of the screen,
/// and before that elementContextOperationChanged() with the row's element. The host opens the menu.
class KRA_EXPORT ListElementWidget : public ElementWidget
{
    Q_OBJECT

public:
    explicit ListElementWidget(Module *module, AccessCheck access, QWidget *parent = nullptr);
    ~ListElementWidget() override;

    /// Performs OperationType::ReadContent when the container's content needs to be read, or always where the module's
    /// value "paranoid" is true.
    void read() override;
    void refresh() override;

    /// Shows the rows in which a cell contains the text; empty shows all. The search field of the console calls it.
    virtual void setFilterText(const QString &text);

public Q_SLOTS:
    /// Opens the page of a row: one that was double-clicked, or entered with Return.
    virtual void choiceElement(const QModelIndex &index);
    /// Asks for the menu of the row at this point of the view, which has its header above it.
    void customContextMenuRequest(const QPoint &point);

protected:
    /// Makes a child of this editor the view of its rows, sorted and searched, which becomes its focus proxy: once, in
    /// the constructor of the subclass. The columns are kept under the list's name (ListColumns).
    ///
    /// Where all rows are taken away and others come, the row of the same title is current again, at the same place.
    void setView(ElementTreeView *view, const QString &listName);
    /// Lists the shown element's children from now on, in columns as they were left. A container that was never read
    /// is read by that.
    void listChildren();
    /// Whether it does.
    bool listsChildren() const;
    /// The rows as they are sorted and searched.
    ElementsWidgetProxyModel *rows() const;
    /// Called for children that came, by their places, before their rows are sorted and seen.
    virtual void completeRows(int first, int last);

private:
    class Private;
    std::unique_ptr<Private> d;
};
