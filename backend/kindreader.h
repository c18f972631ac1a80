// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <kindsettings.h>
#include <quotakind.h>

#include <QDateTime>
#include <QString>

#include <optional>

#include <sys/quota.h>

class DeviceTable;
class Reporter;

/// What one kind of quota on one device is like.
struct KindState
{
    KindSettings settings;
    bool isFilesystemFeature = false; ///< the file system keeps this kind in itself, without options and files
};

/// The file in the mount point that keeps a kind of quota.
struct QuotaFile
{
    QString name;                  ///< the usual one, unless a mount option names another
    std::optional<QDateTime> date; ///< none when there is no such file; the kernel need not renew it at every write

    bool exists() const { return date.has_value(); }
};

/// Asks the mount tables, the mount point and the kernel about one kind of quota on one device.
/// Belongs to the thread of its DeviceTable.
class KindReader
{
public:
    /// What it is made with is not owned and must live longer.
    KindReader(DeviceTable &devices, Reporter &reporter);

    /// Looks for the quota file. An error when the device is not mounted.
    QuotaFile quotaFile(const QString &device, QuotaKind kind);
    /// What the kernel says. That it is off is no error.
    bool isQuotaOn(const QString &device, QuotaKind kind);
    /// What a device is for askWhetherOn() of which the kernel says that it is mounted nowhere.
    enum class NotMounted
    {
        IsError,
        IsOff
    };
    /// The same, but nothing when the kernel has no answer, which is an error: off is another thing than not known.
    std::optional<bool> askWhetherOn(const QString &device, QuotaKind kind,
                                     NotMounted notMounted = NotMounted::IsError);
    /// The grace periods and flags of a kind that is on; nothing when the kernel has no answer, which is an error.
    std::optional<dqinfo> askInfo(const QString &device, QuotaKind kind);
    KindState read(const QString &device, QuotaKind kind);

private:
    DeviceTable &_devices;
    Reporter &_reporter;
};
