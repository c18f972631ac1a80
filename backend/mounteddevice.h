// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QByteArray>
#include <QString>

/// A device that the kernel is asked about many times. A descriptor of its mount point saves the kernel the look-up of
/// the path, which takes four fifths of a question.
class MountedDevice
{
public:
    /// Without a mount point, or with one where something else is mounted by now, the device has its path alone.
    explicit MountedDevice(const QString &path, const QString &mountPoint = QString());
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
