// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "abstractreadallusersgrouptask.h"

/// Reads all users with their quotas, and hangs an element for each under the list's element.
class ReadAllUsers : public AbstractReadAllUsersGroupTask
{
public:
    explicit ReadAllUsers(Element *element);
    void run() override;
    TaskStatus afterRun() override;
};
