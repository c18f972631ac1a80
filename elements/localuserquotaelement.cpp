// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "localuserquotaelement.h"

#include "elementicons.h"

LocalUserQuotaElement::LocalUserQuotaElement(Module *module, AccessCheck access)
    : SupplementElement(typeName(), accountType(), tr("Quota"), module, access, Place::Child)
{}

QString LocalUserQuotaElement::caption() const
{
    return tr("User quota settings: %1").arg(title());
}

QIcon LocalUserQuotaElement::icon() const
{
    return ElementIcons::instance().quota;
}
