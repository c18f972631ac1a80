// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "notificationselement.h"

#include "elementicons.h"

NotificationsElement::NotificationsElement(Module *module, AccessCheck access)
    : OrdinaryElement(QStringLiteral("QuotaNotificationsElement"), QStringLiteral("QuotaGeneralElement"),
                      tr("Notifications"), module, access, Place::Top)
{}

QString NotificationsElement::caption() const
{
    return tr("Notifications settings");
}

QIcon NotificationsElement::icon() const
{
    return ElementIcons::instance().notifications;
}
