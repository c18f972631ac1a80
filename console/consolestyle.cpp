// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "consolestyle.h"

#include <QHeaderView>
#include <QPainter>
#include <QStyleOption>
#include <QTreeView>

namespace
{
constexpr double textShare = 0.55; // of its colour in an icon
}

int ConsoleStyle::pixelMetric(PixelMetric metric, const QStyleOption *option, const QWidget *widget) const
{
    const int usual = QProxyStyle::pixelMetric(metric, option, widget);
    const bool isBesideColumn = (metric == PM_FocusFrameHMargin && qobject_cast<const QTreeView *>(widget)) ||
                                (metric == PM_HeaderMargin && qobject_cast<const QHeaderView *>(widget));
    return isBesideColumn ? 2 * usual : usual;
}

QPixmap ConsoleStyle::generatedIconPixmap(QIcon::Mode mode, const QPixmap &pixmap, const QStyleOption *option) const
{
    if (mode != QIcon::Selected)
        return QProxyStyle::generatedIconPixmap(mode, pixmap, option);
    QPixmap drawn = pixmap;
    QColor color = option->palette.color(QPalette::Active, QPalette::HighlightedText);
    color.setAlphaF(textShare);
    QPainter painter(&drawn);
    painter.setCompositionMode(QPainter::CompositionMode_SourceAtop);
    painter.fillRect(drawn.rect(), color);
    return drawn;
}
