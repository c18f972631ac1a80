// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "accountreader.h"

#include "kindreader.h"
#include "quotactlmessages.h"
#include "reporter.h"

AccountReader::AccountReader(QuotaKind kind, std::vector<AccountDevice> devices, KindReader &kinds, Reporter &reporter)
    : _kind(kind)
    , _devices(std::move(devices))
    , _kinds(kinds)
    , _reporter(reporter)
{
    QObject::connect(&_kernel, qOverload<int>(&QuotaCtl::error),
                     [this](int errorNumber) { _errorNumber = errorNumber; });
}

void AccountReader::read(AbstractElementData &account)
{
    for (AccountDevice &device : _devices) {
        if (device.facts.kindIsOn)
            read(device, account);
        else
            account.deviceQuotas.insert(device.facts.deviceName, device.facts);
        if (!device.failure.isEmpty())
            account.failures.insert(device.facts.deviceName, device.failure);
    }
}

void AccountReader::leaveOut(AbstractElementData &account, const QString &reason) const
{
    for (const AccountDevice &device : _devices)
        account.failures.insert(device.facts.deviceName, reason);
}

void AccountReader::read(AccountDevice &device, AbstractElementData &account)
{
    const QString &name = device.facts.deviceName;
    const Reporter::Once once(_reporter, device.reported);
    _errorNumber = 0;
    const dqblk record = _kernel.getQuota(device.asked, account.id, _kind);
    if (_errorNumber != 0) {
        reportQuotaCtlFailure(_reporter, name, _errorNumber);
        account.failures.insert(name, quotaCtlMessages(name, _errorNumber).join(QLatin1Char('\n')));
    }
    if (!device.areGracesAsked)
        askGraces(device);
    if (_errorNumber == 0)
        setFromKernel(*account.deviceQuotas.insert(name, device.facts), record, _sizes, _times);
}

/// The grace periods are the device's: the answer holds for the accounts that follow as well.
void AccountReader::askGraces(AccountDevice &device)
{
    device.areGracesAsked = true;
    if (const std::optional<dqinfo> info = _kinds.askInfo(device.facts.deviceName, _kind)) {
        device.facts.blockGracePeriod = TimePeriod::ofSeconds(info->dqi_bgrace);
        device.facts.inodeGracePeriod = TimePeriod::ofSeconds(info->dqi_igrace);
    }
}
