// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "groupqelement.h"

#include "elementicons.h"

#include <groupdata.h>

GroupQElement::GroupQElement(const QString &title, Module *module, AccessCheck access)
    : AbstractElement(typeName(), QString(), title, module, access, Place::Child)
{}

QString GroupQElement::caption() const
{
    return tr("Group quota settings: %1").arg(title());
}

QIcon GroupQElement::icon() const
{
    return ElementIcons::instance().group;
}

const AbstractElementData *GroupQElement::accountRecord() const
{
    return dynamic_cast<const GroupData *>(record());
}
