// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "accountreader.h"

AccountReader::AccountReader(QuotaKind kind, std::vector<AccountDevice> devices, QObject *parent)
    : QObject(parent)
    , _kind(kind)
    , _devices(std::move(devices))
{
    connect(&_kernel, qOverload<const QString &>(&QuotaCtl::error), this, &AccountReader::report);
}

QMap<QString, DeviceQuota> AccountReader::read(qint32 id)
{
    QMap<QString, DeviceQuota> quotas;
    for (AccountDevice &device : _devices) {
        const DeviceQuota &facts = device.facts;
        if (!facts.kindIsOn) {
            quotas.insert(facts.deviceName, facts);
            continue;
        }
        _asked = &device;
        _failed = false;
        const dqblk record = _kernel.getQuota(facts.deviceName, id, _kind);
        if (!_failed)
            setFromKernel(*quotas.insert(facts.deviceName, facts), record, _sizes);
    }
    return quotas;
}

void AccountReader::report(const QString &message)
{
    _failed = true;
    if (_asked->failures.contains(message))
        return;
    _asked->failures.append(message);
    Q_EMIT error(message);
}
