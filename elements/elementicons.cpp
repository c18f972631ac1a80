// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "elementicons.h"

#include <QCoreApplication>

namespace
{
ElementIcons &icons()
{
    static ElementIcons made;
    return made;
}

void dropIcons()
{
    icons() = ElementIcons(); // an icon's pixmaps must not outlive the application object
}

void makeIcons()
{
    icons() = {
        QIcon::fromTheme(QStringLiteral("drive-harddisk")), QIcon::fromTheme(QStringLiteral("mail-mark-important")),
        QIcon::fromTheme(QStringLiteral("kra-users")),      QIcon::fromTheme(QStringLiteral("kra-user-groups")),
        QIcon::fromTheme(QStringLiteral("kra-user")),       QIcon::fromTheme(QStringLiteral("kra-user-group"))};
    qAddPostRoutine(dropIcons);
}
} // namespace

Q_COREAPP_STARTUP_FUNCTION(makeIcons)

const ElementIcons &ElementIcons::instance()
{
    return icons();
}
