// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "userswidget.h"

#include <userselement.h>

UsersWidget::UsersWidget(Module *module, AccessCheck access, QWidget *parent)
    : AbstractUsersGroupsWidget(UsersElement::typeName(), module, access, parent)
{
    setWindowTitle(tr("Users"));
    setOrder(900);
    setWarningText(tr("*To display all information enable quotas for users on this device"));
}
