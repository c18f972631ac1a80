// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

/// The two kinds of quota. The numbers are the kernel's quota types; where only two answers exist, "is group" is the
/// same value.
enum QuotaKind
{
    UserQuota = 0,
    GroupQuota = 1
};
