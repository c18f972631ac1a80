// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "accountreader.h"

#include "quotactlmessages.h"

AccountReader::AccountReader(QuotaKind kind, std::vector<AccountDevice> devices, QObject *parent)
    : QObject(parent)
    , _kind(kind)
    , _devices(std::move(devices))
{
    connect(&_kernel, qOverload<int>(&QuotaCtl::error), this, &AccountReader::fail);
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
        const dqblk record = _kernel.getQuota(device.path, id, _kind);
        if (!_failed)
            setFromKernel(*quotas.insert(facts.deviceName, facts), record, _sizes);
    }
    return quotas;
}

void AccountReader::fail(int errorNumber)
{
    _failed = true;
    const QStringList texts = quotaCtlMessages(_asked->facts.deviceName, errorNumber);
    for (const QString &text : texts) {
        if (_asked->failures.contains(text))
            continue;
        _asked->failures.append(text);
        Q_EMIT error(text);
    }
}
