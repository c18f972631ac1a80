// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "groupswidget.h"

#include <groupselement.h>

GroupsWidget::GroupsWidget(Module *module, AccessCheck access, QWidget *parent)
    : AbstractUsersGroupsWidget(GroupsElement::typeName(), module, access, parent)
{
    setWindowTitle(tr("Groups"));
    setOrder(600);
    setWarningText(tr("*To display all information enable quotas for groups on this device"));
}
