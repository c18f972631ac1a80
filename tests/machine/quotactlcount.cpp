// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "quotactlcount.h"

#include <array>
#include <atomic>
#include <cstdarg>

#include <dlfcn.h>
#include <sys/quota.h>
#include <unistd.h>

namespace
{

constexpr long QuotactlFd = 443;

std::atomic_int byPath{0};
std::atomic_int byDescriptor{0};

/// The C library's function of that name. No guarded static: its guard may itself use syscall().
template<typename Function>
Function bare(std::atomic<Function> &found, const char *name)
{
    if (found.load() == nullptr)
        found.store(reinterpret_cast<Function>(dlsym(RTLD_NEXT, name)));
    return found.load();
}

std::atomic<int (*)(int, const char *, int, char *)> bareQuotactl{nullptr};
std::atomic<long (*)(long, ...)> bareSyscall{nullptr};

} // namespace

// The C library's declarations say that they never throw; so must the definitions that take their place.
// NOLINTNEXTLINE(readability-inconsistent-declaration-parameter-name): its parameters bear names that are reserved
extern "C" __attribute__((visibility("default"))) int quotactl(int command, const char *device, int id,
                                                               char *address) noexcept
{
    ++byPath;
    return bare(bareQuotactl, "quotactl")(command, device, id, address);
}

// A system call has six arguments at the most; those that were not given are not looked at.
// NOLINTNEXTLINE(readability-inconsistent-declaration-parameter-name, cert-dcl50-cpp)
extern "C" __attribute__((visibility("default"))) long syscall(long number, ...) noexcept
{
    std::array<long, 6> arguments = {};
    va_list list;
    va_start(list, number);
    for (long &argument : arguments)
        argument = va_arg(list, long);
    va_end(list);
    if (number == QuotactlFd)
        ++byDescriptor;
    return bare(bareSyscall, "syscall")(number, arguments[0], arguments[1], arguments[2], arguments[3], arguments[4],
                                        arguments[5]);
}

QuotactlCount::Questions QuotactlCount::questions()
{
    return {byPath, byDescriptor};
}
