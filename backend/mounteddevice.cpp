// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "mounteddevice.h"

#include <QFile>

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
    struct stat special = {};
    return fstat(descriptor, &mounted) == 0 && stat(device.constData(), &special) == 0 && S_ISBLK(special.st_mode) &&
           mounted.st_dev == special.st_rdev;
}

} // namespace

MountedDevice::MountedDevice(const QString &path, const QString &mountPoint)
    : _path(path.toUtf8())
{
    if (mountPoint.isEmpty())
        return;
    _descriptor = open(QFile::encodeName(mountPoint).constData(), O_PATH | O_CLOEXEC);
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
