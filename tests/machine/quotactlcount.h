// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

/// Linking this puts a quotactl() and a syscall() in place of the C library's that hand each question on to it and
/// count those to the kernel's quotas. The code under test is asked by its own calls. One thread.
namespace QuotactlCount
{
struct Questions
{
    int byPath = 0;
    int byDescriptor = 0;
};

/// Of the process so far.
Questions questions();
} // namespace QuotactlCount
