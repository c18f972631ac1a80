// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "icontheme.h"

#include <QIcon>

void installIconTheme()
{
    Q_INIT_RESOURCE(icons); // of a static library, which the linker would leave out
    QIcon::setFallbackThemeName(QStringLiteral("kra"));
}
