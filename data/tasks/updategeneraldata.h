// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "abstractupdatetask.h"

/// Applies a GeneralData: switches quotas and sets grace periods, device by device, users before groups.
class UpdateGeneralData : public AbstractUpdateTask
{
public:
    UpdateGeneralData(Element *element, std::unique_ptr<ElementData> data);
    void run() override;
};
