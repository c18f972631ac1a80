// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "notificationselement.h"

#include "elementicons.h"
#include "generalelement.h"

NotificationsElement::NotificationsElement(Module *module, AccessCheck access)
    : OrdinaryElement(typeName(), GeneralElement::typeName(), tr("Notifications"), module, access, Place::Top)
{}

QString NotificationsElement::caption() const
{
    return tr("Notifications settings");
}

QIcon NotificationsElement::icon() const
{
    return ElementIcons::instance().notifications;
}
