// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <elementtask.h>

/// Applies a NotificationsData to the machine. Fails without a message when there is none.
class UpdateNotificationsData : public UpdateTask
{
public:
    UpdateNotificationsData(Element *element, std::unique_ptr<ElementData> data);
    void run() override;
};
