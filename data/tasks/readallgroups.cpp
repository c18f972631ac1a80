// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "readallgroups.h"

#include <groupqelement.h>
#include <module.h>

#include <QCoreApplication>

namespace
{

AbstractElement *makeElement(const QString &name, Module *module)
{
    return new GroupQElement(name, module, &Module::isAdministratorHierarchy);
}

} // namespace

ReadAllGroups::ReadAllGroups(Element *element)
    : AbstractReadAllUsersGroupTask(element)
{
    setDescription(QCoreApplication::translate("QObject", "Read all groups list"));
}

void ReadAllGroups::run()
{
    readAccounts(&QuotaManager::readAllGroups);
}

TaskDescription::TaskStatus ReadAllGroups::afterRun()
{
    replaceChildren(GroupQElement::typeName(), &makeElement);
    return AbstractReadAllUsersGroupTask::afterRun();
}
