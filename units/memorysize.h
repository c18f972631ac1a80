// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QString>
#include <QtGlobal>

class MemorySizeTransfer;

/// An amount of space: a count of bytes, and the same amount as a number in the unit that suits it.
///
/// The two halves are plain fields: who sets `value` and `unit` by hand takes the bytes from toBytes().
struct MemorySize
{
    /// Nothing, in bytes.
    MemorySize();
    /// Splits a count of bytes: the largest unit in which it is at least 1, and the last unit for all above.
    MemorySize(const MemorySizeTransfer &units, quint64 byteCount);

    /// Joins `value` and `unit`, truncated toward zero. A unit that does not exist gives 0; so does a value below zero
    /// or one that is no number, and what is more than 64 bits hold gives the most that they hold.
    quint64 toBytes() const;
    /// `bytes` where it is set, for `value` may be rounded; toBytes() where it is not.
    quint64 exactBytes() const { return bytes != 0 ? bytes : toBytes(); }

    quint64 bytes = 0;
    double value = 0.0;
    int unit = 0; ///< a number of MemorySizeTransfer
    QString unitName;
    QString text; ///< for display: four significant digits and the unit; empty for nothing
};
