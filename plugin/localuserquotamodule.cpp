// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "localuserquotamodule.h"

#include <localuserquotaelement.h>
#include <localuserquotawidget.h>

namespace
{

SupplementElement *makeSupplement(Module *module)
{
    return new LocalUserQuotaElement(module, &Module::isAdministratorHierarchy);
}

} // namespace

LocalUserQuotaModule::LocalUserQuotaModule(QObject *parent)
    : LocalQuotaModule(
          QStringLiteral("LocalUserQuotaModule"), QStringLiteral("LocalUserModule"), tr("Support user quota settings"),
          {LocalUserQuotaElement::accountType(), LocalUserQuotaElement::typeName(), &makeSupplement}, parent)
{
    insertElementWidget(new LocalUserQuotaWidget(this, &Module::isAdministratorHierarchy));
    connectElementWidgets();
}
