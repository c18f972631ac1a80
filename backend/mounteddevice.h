// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

#include <sys/types.h>

/// The number of a block device; none for what is no such device.
std::optional<dev_t> deviceNumber(const QByteArray &path);
/// The number of the device whose file system the folder shows now; none where it cannot be asked.
std::optional<dev_t> numberOfDeviceAt(const QByteArray &folder);

/// A device that the kernel is asked about many times. A descriptor of its mount point saves the kernel the look-up of
/// the path, which takes four fifths of a question.
class MountedDevice
{
public:
    /// Without a mount point, or with one where something else is mounted by now, the device has its path alone.
    explicit MountedDevice(const QString &path, const QByteArray &mountPoint = QByteArray());
    ~MountedDevice() { close(); }
    MountedDevice(MountedDevice &&other) noexcept;
    MountedDevice &operator=(MountedDevice &&) = delete;
    MountedDevice(const MountedDevice &) = delete;
    MountedDevice &operator=(const MountedDevice &) = delete;

    const QByteArray &path() const { return _path; }
    /// Of the mount point; -1 when there is none.
    int descriptor() const { return _descriptor; }
    /// From now on the device has its path alone.
    void close();

private:
    QByteArray _path;
    int _descriptor = -1;
};
