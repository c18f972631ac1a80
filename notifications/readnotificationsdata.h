// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <elementtask.h>

/// Reads the quota warnings of the machine into a NotificationsData.
class ReadNotificationsData : public ReadPropertyHeavyTask
{
public:
    explicit ReadNotificationsData(Element *element);
    void run() override;
};
