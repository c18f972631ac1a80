// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QProxyStyle>

/// The platform's style, but with the icons of selected rows drawn towards the colour of selected text. Styles draw
/// them towards the colour of the selection instead, in which an icon of much the same colour all but vanishes.
class SelectedIcons : public QProxyStyle
{
    Q_OBJECT

public:
    QPixmap generatedIconPixmap(QIcon::Mode mode, const QPixmap &pixmap, const QStyleOption *option) const override;
};
