// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QtGlobal>

/// What the kernel stores of a limit, in quota files of its format "vfsv1". Space is counted in blocks.
namespace LimitRange
{
constexpr quint64 BlockSize = 1024;
constexpr quint64 MostFiles = (quint64(1) << 63) - 1;
constexpr quint64 MostBytes = MostFiles / BlockSize * BlockSize;

constexpr quint64 wholeBlocks(quint64 bytes)
{
    return bytes / BlockSize * BlockSize;
}
} // namespace LimitRange
