// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QProxyStyle>

/// The platform's style, with what lists of figures and of icons need besides.
///
/// Columns are set apart, so that a number at the right of one does not touch the text at the left of the next. Icons
/// of selected rows are drawn towards the colour of selected text: styles draw them towards that of the selection, in
/// which an icon of much the same colour all but vanishes.
class ConsoleStyle : public QProxyStyle
{
    Q_OBJECT

public:
    int pixelMetric(PixelMetric metric, const QStyleOption *option, const QWidget *widget) const override;
    QPixmap generatedIconPixmap(QIcon::Mode mode, const QPixmap &pixmap, const QStyleOption *option) const override;
};
