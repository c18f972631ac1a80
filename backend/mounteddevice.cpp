// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "mounteddevice.h"

#include <utility>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace
{

/// The mount tables are texts: what they call the device's mount point may be another's by now.
bool isOnDevice(int descriptor, const QByteArray &device)
{
    struct stat mounted = {};
    return fstat(descriptor, &mounted) == 0 && deviceNumber(device) == mounted.st_dev;
}

} // namespace

std::optional<dev_t> deviceNumber(const QByteArray &path)
{
    struct stat special = {};
    const bool isDevice = stat(path.constData(), &special) == 0 && S_ISBLK(special.st_mode);
    return isDevice ? std::make_optional(special.st_rdev) : std::nullopt;
}

std::optional<dev_t> numberOfDeviceAt(const QByteArray &folder)
{
    struct stat facts = {};
    return stat(folder.constData(), &facts) == 0 ? std::make_optional(facts.st_dev) : std::nullopt;
}

MountedDevice::MountedDevice(const QString &path, const QByteArray &mountPoint)
    : _path(path.toUtf8())
{
    if (mountPoint.isEmpty())
        return;
    _descriptor = open(mountPoint.constData(), O_PATH | O_CLOEXEC);
    if (_descriptor != -1 && !isOnDevice(_descriptor, _path))
        close();
}

MountedDevice::MountedDevice(MountedDevice &&other) noexcept
    : _path(std::move(other._path))
    , _descriptor(std::exchange(other._descriptor, -1))
{}

void MountedDevice::close()
{
    if (_descriptor != -1)
        ::close(std::exchange(_descriptor, -1));
}
