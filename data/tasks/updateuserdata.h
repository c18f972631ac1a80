// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "abstractupdatetask.h"

/// Applies a UserData: the limits of one user.
class UpdateUserData : public AbstractUpdateTask
{
public:
    UpdateUserData(Element *element, std::unique_ptr<ElementData> data);
    void run() override;
};
