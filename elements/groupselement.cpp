// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "groupselement.h"

#include "elementicons.h"

GroupsElement::GroupsElement(Module *module, AccessCheck access)
    : AbstractContainerElement(typeName(), QString(), tr("Groups"), module, access, Place::Top)
{}

QString GroupsElement::caption() const
{
    return tr("Groups quota management");
}

QIcon GroupsElement::icon() const
{
    return ElementIcons::instance().groups;
}
