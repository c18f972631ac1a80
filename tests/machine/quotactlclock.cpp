// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "quotactlclock.h"

#include <QtGlobal>

#include <dlfcn.h>
#include <x86intrin.h>

namespace
{

// Ticks of the processor's own counter: to ask an emulated machine for its time takes as long as the call that is
// timed.
bool isRunning = false;
quint64 started = 0;
quint64 ticksInside = 0;
int questions = 0;

} // namespace

// The C library's declaration says that it never throws; so must the definition that takes its place.
// NOLINTNEXTLINE(readability-inconsistent-declaration-parameter-name): its parameters bear names that are reserved
extern "C" __attribute__((visibility("default"))) int quotactl(int command, const char *device, int id,
                                                               char *address) noexcept
{
    if (!isRunning)
        return QuotactlClock::bareQuotactl(command, device, id, address);
    const quint64 before = __rdtsc();
    const int result = QuotactlClock::bareQuotactl(command, device, id, address);
    ticksInside += __rdtsc() - before;
    ++questions;
    return result;
}

int QuotactlClock::bareQuotactl(int command, const char *device, int id, caddr_t address)
{
    static const auto bare = reinterpret_cast<decltype(&::quotactl)>(dlsym(RTLD_NEXT, "quotactl"));
    return bare(command, device, id, address);
}

void QuotactlClock::start()
{
    questions = 0;
    ticksInside = 0;
    isRunning = true;
    started = __rdtsc();
}

QuotactlClock::Reading QuotactlClock::stop()
{
    const quint64 ticks = __rdtsc() - started;
    isRunning = false;
    return {questions, static_cast<double>(ticksInside) / static_cast<double>(ticks)};
}
