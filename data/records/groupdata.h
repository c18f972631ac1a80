// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "abstractelementdata.h"

/// A group's record: told from a user's by its dynamic type.
class GroupData : public AbstractElementData
{};
