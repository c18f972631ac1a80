// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "abstractusersgroupswidget.h"

/// The list of all groups with their quotas.
class GroupsWidget : public AbstractUsersGroupsWidget
{
    Q_OBJECT

public:
    explicit GroupsWidget(Module *module, AccessCheck access, QWidget *parent = nullptr);
};
