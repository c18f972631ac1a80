// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <devicequota.h>
#include <memorysizetransfer.h>

#include <array>

#include <sys/quota.h>

class LocalTimes;

/// Makes amounts of space from counts of bytes.
class MemorySizes
{
public:
    /// Of what is used hardly two are alike.
    MemorySize used(quint64 bytes) const { return {_units, bytes}; }
    /// Most accounts of a machine have one of a few limits: what came up lately is given out again, and accounts with
    /// the same limit share its text.
    MemorySize limit(quint64 bytes);

private:
    MemorySizeTransfer _units;
    std::array<MemorySize, 256> _recent;
};

/// Sets what the kernel knows of one account: usage, limits, the times to force, and whether the account is limited.
/// The facts of the device, `kindIsOn` among them, stay as they are and are set before.
void setFromKernel(DeviceQuota &quota, const dqblk &record, MemorySizes &sizes, LocalTimes &times);

/// A limit in blocks as a count of bytes; the most that can be counted for one that is more.
quint64 limitInBytes(quint64 blocks);

/// A time of the kernel's; invalid for 0, and the last one that can be told for one that is later.
QDateTime toTime(quint64 seconds);

/// The limits for the kernel, and the times to force that are set: without one its timer starts anew. A limit in bytes
/// is its number and unit joined; what is less than a block of 1024 bytes is dropped. Usage is never written.
dqblk toKernel(const DeviceQuota &quota);

/// Whether one of the four limits is not 0.
bool hasLimit(const dqblk &record);
