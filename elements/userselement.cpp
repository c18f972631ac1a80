// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "userselement.h"

#include "elementicons.h"

UsersElement::UsersElement(Module *module, AccessCheck access)
    : AbstractContainerElement(typeName(), QString(), tr("Users"), module, access, Place::Top)
{}

QString UsersElement::caption() const
{
    return tr("Users quota management");
}

QIcon UsersElement::icon() const
{
    return ElementIcons::instance().users;
}
