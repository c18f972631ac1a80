// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "generalelement.h"

#include "elementicons.h"

GeneralElement::GeneralElement(Module *module, AccessCheck access)
    : OrdinaryElement(typeName(), QStringLiteral("LocalComputer"), tr("Quota management"), module, access, Place::Top)
{}

QString GeneralElement::caption() const
{
    return tr("General quota management settings");
}

QIcon GeneralElement::icon() const
{
    return ElementIcons::instance().quota;
}
