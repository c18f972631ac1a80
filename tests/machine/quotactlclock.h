// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <sys/quota.h>

/// Linking this puts a quotactl() in place of the C library's that hands each question on to it and, while the clock
/// runs, counts it and how long it took. The code under test is asked by its own calls. One thread.
namespace QuotactlClock
{
struct Reading
{
    int questions = 0;
    double share = 0; ///< of the time since the start, spent within the C library's quotactl() and the kernel
};

/// The C library's own quotactl(), with nothing around it.
int bareQuotactl(int command, const char *device, int id, caddr_t address);

/// Starts at nothing.
void start();
Reading stop();
} // namespace QuotactlClock
