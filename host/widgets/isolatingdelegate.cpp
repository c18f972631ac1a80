// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "isolatingdelegate.h"

QString IsolatingDelegate::isolated(const QString &text, Qt::LayoutDirection around)
{
    constexpr ushort firstStrongIsolate = 0x2068;
    constexpr ushort popDirectionalIsolate = 0x2069;
    if (around == Qt::LeftToRight || text.isEmpty())
        return text;
    return QChar(firstStrongIsolate) + text + QChar(popDirectionalIsolate);
}

void IsolatingDelegate::initStyleOption(QStyleOptionViewItem *option, const QModelIndex &index) const
{
    QStyledItemDelegate::initStyleOption(option, index);
    option->text = isolated(option->text, option->direction);
}
