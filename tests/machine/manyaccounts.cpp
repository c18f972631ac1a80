// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "manyaccounts.h"

#include "shell.h"

#include <QFileInfo>

#include <pwd.h>

QString ManyAccounts::setUp()
{
    const Shell::Result result = Shell::run(QStringLiteral("./scale-set-up"));
    if (result.exitCode != 0)
        return QStringLiteral("no set-up: %1").arg(result.errors);
    const QByteArray path = device().toUtf8();
    const QVector<quint32> all = ids();
    for (const quint32 id : all) {
        dqblk record = usageAndLimits(id);
        if (quotactl(QCMD(Q_SETQUOTA, USRQUOTA), path.constData(), static_cast<int>(id),
                     reinterpret_cast<caddr_t>(&record)) != 0)
            return QStringLiteral("no limits for %1").arg(id);
    }
    return Shell::succeeds(QStringLiteral("sync")) ? QString() : QStringLiteral("not written to the disk");
}

QString ManyAccounts::device()
{
    return QFileInfo(QStringLiteral("/dev/disk/by-id/virtio-many")).canonicalFilePath();
}

QVector<quint32> ManyAccounts::ids()
{
    QVector<quint32> ids;
    setpwent();
    while (const passwd *account = getpwent())
        ids.append(account->pw_uid);
    endpwent();
    return ids;
}

dqblk ManyAccounts::usageAndLimits(quint32 id)
{
    dqblk record = {};
    record.dqb_bsoftlimit = (1 + id % 20) * 10000;
    record.dqb_bhardlimit = record.dqb_bsoftlimit * 2;
    record.dqb_curspace = (id * quint64(7919) % record.dqb_bsoftlimit) * 1024;
    record.dqb_curinodes = id;
    if (id % 10 == 0) {
        record.dqb_curspace += record.dqb_bsoftlimit * 1024 + 1;
        record.dqb_btime = 2145916800 + id;
    }
    record.dqb_valid = QIF_ALL;
    return record;
}
