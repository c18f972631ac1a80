// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <elementtask.h>

/// Reads one group's quota on every device into a GroupData. The group is the one that the element's title names.
class ReadGroupData : public ReadPropertyHeavyTask
{
public:
    explicit ReadGroupData(Element *element);
    void run() override;
};
