// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "patterncounter.h"

#include <dlfcn.h>

namespace
{

QMap<QString, int> &counts()
{
    static QMap<QString, int> all;
    return all;
}

using Compile = void *(*)(const char16_t *, std::size_t, std::uint32_t, int *, std::size_t *, void *);

} // namespace

// The name and the form under which the library offers it; its header would come with a package of its own.
extern "C" __attribute__((visibility("default"))) void *pcre2_compile_16(const char16_t *pattern, std::size_t length,
                                                                         std::uint32_t options, int *error,
                                                                         std::size_t *offset, void *context)
{
    static const auto compile = reinterpret_cast<Compile>(dlsym(RTLD_NEXT, "pcre2_compile_16"));
    ++counts()[QString::fromUtf16(pattern, static_cast<int>(length))];
    return compile(pattern, length, options, error, offset, context);
}

namespace PatternCounter
{

QMap<QString, int> compiled()
{
    return counts();
}

void reset()
{
    counts().clear();
}

} // namespace PatternCounter
