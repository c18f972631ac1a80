// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QByteArray>
#include <QObject>
#include <QString>

#include <sys/quota.h>

class MountedDevice;

/// The kernel's quota interface, in the kernel's own units: limits in blocks of 1024 bytes, used space in bytes, times
/// in seconds. Holds no state; made for one question, on the thread that asks it.
///
/// Devices are paths; types are those of QuotaKind. A call that fails emits both signals, the number first.
class QuotaCtl : public QObject
{
    Q_OBJECT

public:
    explicit QuotaCtl(QObject *parent = nullptr);

    /// The number of the quota format that is in use, or -1. Fails with ESRCH while the kind is off.
    int getFormat(const QString &device, int type);

    /// The grace periods and flags. All zero on failure.
    dqinfo getInfo(const QString &device, int type);
    bool setInfo(const QString &device, const dqinfo &info, int type);

    /// One account's limits and usage. All zero on failure.
    dqblk getQuota(const QString &device, qint32 id, int type);
    /// The same to ask for many accounts on one device: by its descriptor for as long as that answers, then by its
    /// path.
    dqblk getQuota(MountedDevice &device, qint32 id, int type);
    bool setQuota(const QString &device, qint32 id, const dqblk &quota, int type);

    /// Hands the kernel the quota file by its bare name below "/", whatever the mount point. Quotas are switched by
    /// programs instead, which know where the file is.
    bool switchQuota(const QString &device, int type, bool on);

Q_SIGNALS:
    void error(const QString &message);
    /// An errno value.
    void error(int errorNumber);

private:
    bool call(int command, const QByteArray &devicePath, int type, qint32 id, void *address);
    void reportFailure(int errorNumber);
};
