// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "abstractupdatetask.h"

/// Applies a GroupData: the limits of one group.
class UpdateGroupData : public AbstractUpdateTask
{
public:
    UpdateGroupData(Element *element, std::unique_ptr<ElementData> data);
    void run() override;
};
