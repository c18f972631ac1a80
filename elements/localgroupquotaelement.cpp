// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "localgroupquotaelement.h"

#include "elementicons.h"

LocalGroupQuotaElement::LocalGroupQuotaElement(Module *module, AccessCheck access)
    : SupplementElement(typeName(), accountType(), tr("Quota"), module, access, Place::Child)
{}

QString LocalGroupQuotaElement::caption() const
{
    return tr("Group quota settings: %1").arg(title());
}

QIcon LocalGroupQuotaElement::icon() const
{
    return ElementIcons::instance().quota;
}
