// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "abstractreadallusersgrouptask.h"

/// Reads all groups with their quotas, and hangs an element for each under the list's element.
class ReadAllGroups : public AbstractReadAllUsersGroupTask
{
public:
    explicit ReadAllGroups(Element *element);
    void run() override;
    TaskStatus afterRun() override;
};
