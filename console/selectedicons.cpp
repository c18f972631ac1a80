// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "selectedicons.h"

#include <QPainter>
#include <QStyleOption>

namespace
{
constexpr double share = 0.55; // of the text's colour
}

QPixmap SelectedIcons::generatedIconPixmap(QIcon::Mode mode, const QPixmap &pixmap, const QStyleOption *option) const
{
    if (mode != QIcon::Selected)
        return QProxyStyle::generatedIconPixmap(mode, pixmap, option);
    QPixmap drawn = pixmap;
    QColor colour = option->palette.color(QPalette::Active, QPalette::HighlightedText);
    colour.setAlphaF(share);
    QPainter painter(&drawn);
    painter.setCompositionMode(QPainter::CompositionMode_SourceAtop);
    painter.fillRect(drawn.rect(), colour);
    return drawn;
}
