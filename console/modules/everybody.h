// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

class Module;

/// The access check of what may be read, and is never changed, without administrator rights.
inline bool everybody(const Module & /*module*/)
{
    return true;
}
