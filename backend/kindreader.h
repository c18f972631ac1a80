// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <kindsettings.h>
#include <quotakind.h>

#include <QObject>
#include <QString>

#include <optional>

class DeviceTable;

/// What one kind of quota on one device is like.
struct KindState
{
    KindSettings settings;
    bool isFilesystemFeature = false; ///< the file system keeps this kind in itself, without options and files
};

/// Asks the mount tables, the mount point and the kernel about one kind of quota on one device.
/// Belongs to the thread of its DeviceTable.
class KindReader : public QObject
{
    Q_OBJECT

public:
    /// `devices` is not owned and must live longer.
    explicit KindReader(DeviceTable &devices, QObject *parent = nullptr);

    /// See QuotaManager for these.
    bool quotaFileExists(const QString &device, QuotaKind kind);
    bool isQuotaOn(const QString &device, QuotaKind kind);
    /// The same, but nothing when the kernel has no answer, which is an error: off is another thing than not known.
    std::optional<bool> askWhetherOn(const QString &device, QuotaKind kind);
    KindState read(const QString &device, QuotaKind kind);

Q_SIGNALS:
    void error(const QString &message);

private:
    DeviceTable &_devices;
};
