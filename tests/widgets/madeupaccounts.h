// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <groupdata.h>
#include <memorysizetransfer.h>
#include <userdata.h>

/// Records of accounts as the back end would read them on some machine.
namespace MadeUpAccounts
{

constexpr quint64 KiB = 1024;
constexpr quint64 MiB = 1024 * KiB;
constexpr quint64 GiB = 1024 * MiB;

inline MemorySize size(quint64 bytes)
{
    return {MemorySizeTransfer(), bytes};
}

/// What an account without limits has on a device whose quotas are on.
inline DeviceQuota noLimits()
{
    DeviceQuota quota;
    quota.filesystemType = QStringLiteral("ext4");
    quota.usedBlocks = size(3 * MiB / 2);
    quota.usedInodes = 17;
    quota.blockGracePeriod = TimePeriod(604800);
    quota.inodeGracePeriod = TimePeriod(604800);
    quota.kindIsOn = true;
    quota.optionIsMounted = true;
    quota.fileExists = true;
    quota.optionInForce = true;
    return quota;
}

inline DeviceQuota limits(quint64 softBytes, quint64 hardBytes, quint64 softFiles = 0, quint64 hardFiles = 0)
{
    DeviceQuota quota = noLimits();
    quota.quotaIsOn = true;
    quota.softBlockLimit = size(softBytes);
    quota.hardBlockLimit = size(hardBytes);
    quota.softInodeLimit = softFiles;
    quota.hardInodeLimit = hardFiles;
    return quota;
}

template<typename Record = UserData>
Record account(const QMap<QString, DeviceQuota> &quotas, const QString &name = QStringLiteral("anna"), qint32 id = 1001)
{
    Record record;
    record.name = name;
    record.id = id;
    record.deviceQuotas = quotas;
    for (auto quota = record.deviceQuotas.begin(); quota != record.deviceQuotas.end(); ++quota)
        quota->deviceName = quota.key();
    return record;
}

} // namespace MadeUpAccounts
