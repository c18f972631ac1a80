// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "localgroupquotamodule.h"

#include <localgroupquotaelement.h>
#include <localgroupquotawidget.h>

namespace
{

SupplementElement *makeSupplement(Module *module)
{
    return new LocalGroupQuotaElement(module, &Module::isAdministratorHierarchy);
}

} // namespace

LocalGroupQuotaModule::LocalGroupQuotaModule(QObject *parent)
    : LocalQuotaModule(QStringLiteral("LocalGroupQuotaModule"), QStringLiteral("LocalGroupModule"),
                       tr("Support group quota settings"),
                       {LocalGroupQuotaElement::accountType(), LocalGroupQuotaElement::typeName(), &makeSupplement},
                       parent)
{
    insertElementWidget(new LocalGroupQuotaWidget(this, &Module::isAdministratorHierarchy));
    connectElementWidgets();
}
