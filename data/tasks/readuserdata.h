// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <elementtask.h>

/// Reads one user's quota on every device into a UserData. The user is the one that the element's title names.
class ReadUserData : public ReadPropertyHeavyTask
{
public:
    explicit ReadUserData(Element *element);
    void run() override;
};
