// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "localquotamodules.h"

#include <localgroupquotaelement.h>
#include <localgroupquotawidget.h>
#include <localuserquotaelement.h>
#include <localuserquotawidget.h>

LocalQuotaModule::LocalQuotaModule(const QString &name, const QString &attachName, const QString &description,
                                   Extension extension, QObject *parent)
    : QuotaModule(name, attachName, ExtendingKind, description, {}, parent)
    , _extension(std::move(extension))
{}

void LocalQuotaModule::performOperation(ContextOperation *operation, OperationType type, ElementData *data, int extra)
{
    if (operation->contextType() == ContextOperation::ElementContext) {
        auto *element = static_cast<Element *>(operation);
        if (type == OperationType::RemoveSupplement && element->elementType() == _extension.supplementType) {
            delete element;
            return;
        }
        if (type == OperationType::CreateSupplement && element->elementType() == _extension.accountType) {
            SupplementElement *supplement = _extension.makeSupplement(this);
            supplement->setTitle(element->title());
            element->append(supplement);
        }
    }
    QuotaModule::performOperation(operation, type, data, extra);
}

LocalUserQuotaModule::LocalUserQuotaModule(QObject *parent)
    : LocalQuotaModule(QStringLiteral("LocalUserQuotaModule"), QStringLiteral("LocalUserModule"),
                       tr("Support user quota settings"), Extension::by<LocalUserQuotaElement>(), parent)
{
    insertElementWidget(new LocalUserQuotaWidget(this, &Module::isAdministratorHierarchy));
    connectElementWidgets();
}

LocalGroupQuotaModule::LocalGroupQuotaModule(QObject *parent)
    : LocalQuotaModule(QStringLiteral("LocalGroupQuotaModule"), QStringLiteral("LocalGroupModule"),
                       tr("Support group quota settings"), Extension::by<LocalGroupQuotaElement>(), parent)
{
    insertElementWidget(new LocalGroupQuotaWidget(this, &Module::isAdministratorHierarchy));
    connectElementWidgets();
}
