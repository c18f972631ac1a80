// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "userelement.h"

#include "elementicons.h"

#include <userdata.h>

UserElement::UserElement(const QString &title, Module *module, AccessCheck access)
    : AbstractElement(typeName(), QString(), title, module, access, Place::Child)
{}

QString UserElement::caption() const
{
    return tr("User quota settings: %1").arg(title());
}

QIcon UserElement::icon() const
{
    return ElementIcons::instance().user;
}

const AbstractElementData *UserElement::accountRecord() const
{
    return dynamic_cast<const UserData *>(record());
}
