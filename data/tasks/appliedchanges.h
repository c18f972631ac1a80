// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <abstractelementdata.h>
#include <generaldata.h>

/// What an update has changed when it succeeded, in words for the administrator: a line for each field that differs
/// from what had been read. Empty for a record without a touched device.
namespace AppliedChanges
{
QString of(const AbstractElementData &record);
QString of(const GeneralData &record);
} // namespace AppliedChanges
