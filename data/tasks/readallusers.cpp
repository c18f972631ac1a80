// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "readallusers.h"

#include <module.h>
#include <userelement.h>

#include <QCoreApplication>

namespace
{

AbstractElement *makeElement(const QString &name, Module *module)
{
    return new UserElement(name, module, &Module::isAdministratorHierarchy);
}

} // namespace

ReadAllUsers::ReadAllUsers(Element *element)
    : AbstractReadAllUsersGroupTask(element)
{
    setDescription(QCoreApplication::translate("QObject", "Read all users list"));
}

void ReadAllUsers::run()
{
    readAccounts(&QuotaManager::readAllUsers);
}

TaskDescription::TaskStatus ReadAllUsers::afterRun()
{
    replaceChildren(UserElement::typeName(), &makeElement);
    return AbstractReadAllUsersGroupTask::afterRun();
}
