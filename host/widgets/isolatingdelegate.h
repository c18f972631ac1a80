// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <kraglobal.h>

#include <QStyledItemDelegate>

/// Shows each cell in the direction of its own text. In a layout from right to left a path would else lose its first
/// slash to the other end, and a number would stand behind its unit.
class KRA_EXPORT IsolatingDelegate : public QStyledItemDelegate
{
    Q_OBJECT

public:
    using QStyledItemDelegate::QStyledItemDelegate;

    /// The same for a text that is drawn in a layout of that direction.
    static QString isolated(const QString &text, Qt::LayoutDirection around);

protected:
    void initStyleOption(QStyleOptionViewItem *option, const QModelIndex &index) const override;
};
