// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "quotageneralmodule.h"

#include "taskmakers.h"

#include <generalelement.h>
#include <generalwidget.h>
#include <groupselement.h>
#include <groupswidget.h>
#include <groupwidget.h>
#include <notificationselement.h>
#include <notificationswidget.h>
#include <readallgroups.h>
#include <readallusers.h>
#include <readgeneraldata.h>
#include <readnotificationsdata.h>
#include <updategeneraldata.h>
#include <updatenotificationsdata.h>
#include <userselement.h>
#include <userswidget.h>
#include <userwidget.h>

QuotaGeneralModule::QuotaGeneralModule(QObject *parent)
    : QuotaModule(QStringLiteral("QuotaGeneralModule"), QStringLiteral("LocalComputerModule"), BranchKind,
                  tr("Support system quota"),
                  {{GeneralElement::typeName(), OperationType::Read, &readTask<ReadGeneralData>},
                   {GeneralElement::typeName(), OperationType::Write, &updateTask<UpdateGeneralData>},
                   {NotificationsElement::typeName(), OperationType::Read, &readTask<ReadNotificationsData>},
                   {NotificationsElement::typeName(), OperationType::Write, &updateTask<UpdateNotificationsData>},
                   {UsersElement::typeName(), OperationType::ReadContent, &readTask<ReadAllUsers>},
                   {GroupsElement::typeName(), OperationType::ReadContent, &readTask<ReadAllGroups>}},
                  parent)
{
    // Top elements: the module has them from now on, and the first is the head of its branch.
    new GeneralElement(this, &Module::isAdministratorHierarchy);
    new NotificationsElement(this, &Module::isAdministratorHierarchy);
    new UsersElement(this, &Module::isAdministratorHierarchy);
    new GroupsElement(this, &Module::isAdministratorHierarchy);
    insertElementWidget(new GeneralWidget(this, &Module::isAdministratorHierarchy));
    insertElementWidget(new NotificationsWidget(this, &Module::isAdministratorHierarchy));
    insertElementWidget(new UsersWidget(this, &Module::isAdministratorHierarchy));
    insertElementWidget(new GroupsWidget(this, &Module::isAdministratorHierarchy));
    insertElementWidget(new UserWidget(this, &Module::isAdministratorHierarchy));
    insertElementWidget(new GroupWidget(this, &Module::isAdministratorHierarchy));
    connectElementWidgets();
}
