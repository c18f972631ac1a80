// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

/// What a quota counts.
enum class Counted
{
    Space,
    Files
};
