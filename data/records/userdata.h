// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "abstractelementdata.h"

/// A user account's record: told from a group's by its dynamic type.
class UserData : public AbstractElementData
{};
