// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "quotactl.h"

#include "quotactlmessages.h"
#include "systemnames.h"

#include <QByteArray>

#include <cerrno>

QuotaCtl::QuotaCtl(QObject *parent)
    : QObject(parent)
{}

int QuotaCtl::getFormat(const QString &device, int type)
{
    qint32 format = 0;
    return call(Q_GETFMT, device, type, 0, &format) ? format : -1;
}

dqinfo QuotaCtl::getInfo(const QString &device, int type)
{
    dqinfo info = {};
    return call(Q_GETINFO, device, type, 0, &info) ? info : dqinfo{};
}

bool QuotaCtl::setInfo(const QString &device, const dqinfo &info, int type)
{
    dqinfo given = info;
    return call(Q_SETINFO, device, type, 0, &given);
}

dqblk QuotaCtl::getQuota(const QString &device, qint32 id, int type)
{
    dqblk quota = {};
    return call(Q_GETQUOTA, device, type, id, &quota) ? quota : dqblk{};
}

bool QuotaCtl::setQuota(const QString &device, qint32 id, const dqblk &quota, int type)
{
    dqblk given = quota;
    return call(Q_SETQUOTA, device, type, id, &given);
}

bool QuotaCtl::switchQuota(const QString &device, int type, bool on)
{
    if (type != UserQuota && type != GroupQuota) {
        reportFailure(EINVAL);
        return false;
    }
    QByteArray quotaFile = '/' + QByteArray(SystemNames::quotaFileName(static_cast<QuotaKind>(type)).data());
    return on ? call(Q_QUOTAON, device, type, QFMT_VFS_V1, quotaFile.data())
              : call(Q_QUOTAOFF, device, type, 0, quotaFile.data());
}

bool QuotaCtl::call(int command, const QString &device, int type, qint32 id, void *address)
{
    if (quotactl(QCMD(command, type), device.toUtf8().constData(), id, static_cast<caddr_t>(address)) == 0)
        return true;
    reportFailure(errno);
    return false;
}

void QuotaCtl::reportFailure(int errorNumber)
{
    Q_EMIT error(errorNumber);
    Q_EMIT error(quotaCtlMessage(errorNumber));
}
