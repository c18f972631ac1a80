// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <elementtask.h>

/// Reads the quota settings of every device into a GeneralData.
class ReadGeneralData : public ReadPropertyHeavyTask
{
public:
    explicit ReadGeneralData(Element *element);
    void run() override;
};
