// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "quotactl.h"

#include "mounteddevice.h"
#include "quotactlmessages.h"
#include "systemnames.h"

#include <cerrno>

#include <unistd.h>

namespace
{

/// The number of quotactl_fd(), of Linux 5.14 and later, on all processors. The C library has no function for it.
constexpr long QuotactlFd = 443;

} // namespace

QuotaCtl::QuotaCtl(QObject *parent)
    : QObject(parent)
{}

int QuotaCtl::getFormat(const QString &device, int type)
{
    qint32 format = 0;
    return call(Q_GETFMT, device.toUtf8(), type, 0, &format) ? format : -1;
}

dqinfo QuotaCtl::getInfo(const QString &device, int type)
{
    dqinfo info = {};
    return call(Q_GETINFO, device.toUtf8(), type, 0, &info) ? info : dqinfo{};
}

bool QuotaCtl::setInfo(const QString &device, const dqinfo &info, int type)
{
    dqinfo given = info;
    return call(Q_SETINFO, device.toUtf8(), type, 0, &given);
}

dqblk QuotaCtl::getQuota(const QString &device, qint32 id, int type)
{
    dqblk quota = {};
    return call(Q_GETQUOTA, device.toUtf8(), type, id, &quota) ? quota : dqblk{};
}

dqblk QuotaCtl::getQuota(MountedDevice &device, qint32 id, int type)
{
    dqblk quota = {};
    if (device.descriptor() != -1) {
        if (syscall(QuotactlFd, device.descriptor(), QCMD(Q_GETQUOTA, type), id, &quota) == 0)
            return quota;
        device.close(); // an older kernel, or a failure, which the path is to tell
        quota = {};
    }
    return call(Q_GETQUOTA, device.path(), type, id, &quota) ? quota : dqblk{};
}

bool QuotaCtl::setQuota(const QString &device, qint32 id, const dqblk &quota, int type)
{
    dqblk given = quota;
    return call(Q_SETQUOTA, device.toUtf8(), type, id, &given);
}

bool QuotaCtl::switchQuota(const QString &device, int type, bool on)
{
    if (type != UserQuota && type != GroupQuota) {
        reportFailure(EINVAL);
        return false;
    }
    QByteArray quotaFile = '/' + QByteArray(SystemNames::quotaFileName(static_cast<QuotaKind>(type)).data());
    return on ? call(Q_QUOTAON, device.toUtf8(), type, QFMT_VFS_V1, quotaFile.data())
              : call(Q_QUOTAOFF, device.toUtf8(), type, 0, quotaFile.data());
}

bool QuotaCtl::call(int command, const QByteArray &devicePath, int type, qint32 id, void *address)
{
    if (quotactl(QCMD(command, type), devicePath.constData(), id, static_cast<caddr_t>(address)) == 0)
        return true;
    reportFailure(errno);
    return false;
}

void QuotaCtl::reportFailure(int errorNumber)
{
    Q_EMIT error(errorNumber);
    Q_EMIT error(quotaCtlMessage(errorNumber));
}
