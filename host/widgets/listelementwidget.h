// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "elementwidget.h"

/// An editor that shows a container's children as rows. It has no content of its own to apply.
///
/// For the menu of a row it emits its own customContextMenuRequested(), with the place in coordinates of the screen,
/// and before that elementContextOperationChanged() with the row's element. The host opens the menu.
class KRA_EXPORT ListElementWidget : public ElementWidget
{
    Q_OBJECT

public:
    using ElementWidget::ElementWidget;

    /// Performs OperationType::ReadContent when the container's content needs to be read, or always where the module's
    /// value "paranoid" is true.
    void read() override;
    void refresh() override;

    /// Shows the rows in which a cell contains the text; empty shows all. The search field of the console calls it.
    virtual void setFilterText(const QString &text) = 0;
};
