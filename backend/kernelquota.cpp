// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "kernelquota.h"

#include "localtimes.h"

#include <limits>
#include <tuple>

namespace
{

/// The kernel counts limits in blocks of 1024 bytes.
constexpr int BlockShift = 10;

quint64 toSeconds(const QDateTime &time)
{
    return static_cast<quint64>(time.toSecsSinceEpoch());
}

} // namespace

quint64 limitInBytes(quint64 blocks)
{
    constexpr quint64 Most = std::numeric_limits<quint64>::max();
    return blocks <= (Most >> BlockShift) ? blocks << BlockShift : Most;
}

QDateTime toTime(quint64 seconds)
{
    // A date counts milliseconds, and is asked for in any time zone.
    constexpr qint64 Last = std::numeric_limits<qint64>::max() / 1000 - 2 * 24 * 60 * 60;
    return seconds == 0 ? QDateTime()
                        : QDateTime::fromSecsSinceEpoch(static_cast<qint64>(qMin(seconds, quint64(Last))));
}

MemorySize MemorySizes::limit(quint64 bytes)
{
    // Limits are round numbers: only the upper half of the product differs with all of their digits.
    constexpr quint64 GoldenRatio = 0x9E3779B97F4A7C15; // of 2^64, as usual for such hashes
    constexpr int PlaceBits = 8;
    static_assert(std::tuple_size_v<decltype(_recent)> == 1 << PlaceBits);
    MemorySize &recent = _recent[(bytes * GoldenRatio) >> (64 - PlaceBits)];
    if (recent.bytes != bytes)
        recent = MemorySize(_units, bytes);
    return recent;
}

void setFromKernel(DeviceQuota &quota, const dqblk &record, MemorySizes &sizes, LocalTimes &times)
{
    quota.usedBlocks = sizes.used(record.dqb_curspace);
    quota.hardBlockLimit = sizes.limit(limitInBytes(record.dqb_bhardlimit));
    quota.softBlockLimit = sizes.limit(limitInBytes(record.dqb_bsoftlimit));
    quota.usedInodes = record.dqb_curinodes;
    quota.hardInodeLimit = record.dqb_ihardlimit;
    quota.softInodeLimit = record.dqb_isoftlimit;
    quota.inodesTimeToForce = times.at(record.dqb_itime);
    quota.blocksTimeToForce = times.at(record.dqb_btime);
    quota.quotaIsOn = quota.kindIsOn && hasLimit(record);
}

dqblk toKernel(const DeviceQuota &quota)
{
    dqblk record = {};
    record.dqb_bhardlimit = quota.hardBlockLimit.toBytes() >> BlockShift;
    record.dqb_bsoftlimit = quota.softBlockLimit.toBytes() >> BlockShift;
    record.dqb_ihardlimit = quota.hardInodeLimit;
    record.dqb_isoftlimit = quota.softInodeLimit;
    record.dqb_valid = QIF_LIMITS;
    if (quota.blocksTimeToForce.isValid()) {
        record.dqb_btime = toSeconds(quota.blocksTimeToForce);
        record.dqb_valid |= QIF_BTIME;
    }
    if (quota.inodesTimeToForce.isValid()) {
        record.dqb_itime = toSeconds(quota.inodesTimeToForce);
        record.dqb_valid |= QIF_ITIME;
    }
    return record;
}

bool hasLimit(const dqblk &record)
{
    return record.dqb_bhardlimit != 0 || record.dqb_bsoftlimit != 0 || record.dqb_ihardlimit != 0 ||
           record.dqb_isoftlimit != 0;
}
