// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "limitswriter.h"

#include "accounttable.h"
#include "kernelquota.h"
#include "kindreader.h"
#include "quotactl.h"
#include "quotactlmessages.h"
#include "quotaswitch.h"
#include "reporter.h"

#include <limitname.h>
#include <memorysizetransfer.h>

#include <algorithm>
#include <array>

namespace
{

QString sizeText(quint64 blocks)
{
    return MemorySize(MemorySizeTransfer(), limitInBytes(blocks)).text;
}

QString countText(quint64 count)
{
    return QString::number(count); // as sizes, which have no group separators either
}

QString timeText(quint64 seconds)
{
    return toTime(seconds).toString(QStringLiteral("dd.MM.yyyy hh:mm:ss"));
}

/// What an administrator can edit of one account on one device, in the kernel's record.
struct Field
{
    decltype(dqblk::dqb_bhardlimit) dqblk::*value;
    quint32 bit; ///< says to the kernel that the field is set
    QString (*name)();
    QString (*text)(quint64);
};

constexpr std::array<Field, 6> Fields = {{
    {&dqblk::dqb_bsoftlimit, QIF_BLIMITS, LimitName::softSpace, sizeText},
    {&dqblk::dqb_bhardlimit, QIF_BLIMITS, LimitName::hardSpace, sizeText},
    {&dqblk::dqb_isoftlimit, QIF_ILIMITS, LimitName::softFiles, countText},
    {&dqblk::dqb_ihardlimit, QIF_ILIMITS, LimitName::hardFiles, countText},
    {&dqblk::dqb_btime, QIF_BTIME, LimitName::spaceTime, timeText},
    {&dqblk::dqb_itime, QIF_ITIME, LimitName::filesTime, timeText},
}};

QString textOf(const Field &field, quint64 value)
{
    return value == 0 ? LimitsWriter::tr("none") : field.text(value);
}

} // namespace

LimitsWriter::LimitsWriter(KindReader &kinds, AccountTable &accounts, QuotaSwitch &quotaSwitch, Reporter &reporter)
    : _kinds(kinds)
    , _accounts(accounts)
    , _switch(quotaSwitch)
    , _reporter(reporter)
{}

bool LimitsWriter::write(const AbstractElementData &record, QuotaKind kind)
{
    const Account account{record.name, record.id, kind};
    if (!isKnown(account))
        return false;
    if (record.touched) {
        const QString &device = record.touched->device;
        return !record.deviceQuotas.contains(device) ||
               writeEdited(device, account, record.deviceQuotas.value(device), record.touched->asRead);
    }
    bool isWritten = true;
    for (auto quota = record.deviceQuotas.cbegin(); quota != record.deviceQuotas.cend(); ++quota)
        isWritten = writeWhole(quota.key(), account, quota.value()) && isWritten;
    return isWritten;
}

/// Whether the machine's accounts still have one of that name and that id.
bool LimitsWriter::isKnown(const Account &account)
{
    const QString reason = _accounts.whyWithoutQuota(account.name, account.kind);
    if (!reason.isEmpty()) {
        _reporter.error(reason);
        return false;
    }
    if (_accounts.id(account.name, account.kind) != account.id) {
        _reporter.error(tr("%1 is another account by now: nothing was written").arg(account.name));
        return false;
    }
    return true;
}

bool LimitsWriter::writeWhole(const QString &device, const Account &account, const DeviceQuota &quota)
{
    const std::optional<bool> isOn = _kinds.askWhetherOn(device, account.kind);
    if (!isOn)
        return false;
    const dqblk record = toKernel(quota);
    if (!*isOn && !hasLimit(record))
        return true;
    return (*isOn || switchOn(device, account.kind)) && set(device, account, record);
}

bool LimitsWriter::writeEdited(const QString &device, const Account &account, const DeviceQuota &quota,
                               const DeviceQuota &asRead)
{
    const dqblk wanted = toKernel(quota);
    const dqblk read = toKernel(asRead);
    if (std::all_of(Fields.begin(), Fields.end(),
                    [&](const Field &field) { return wanted.*field.value == read.*field.value; }))
        return true;

    const std::optional<bool> wasOn = _kinds.askWhetherOn(device, account.kind);
    if (!wasOn)
        return false;
    if (!*wasOn && !hasLimit(wanted)) {
        _reporter.error(tr("%1: quotas are off, so nothing was written for %2").arg(device, account.name));
        return false;
    }
    if (!*wasOn && !switchOn(device, account.kind))
        return false;
    const std::optional<dqblk> answer = ask(device, account);
    if (!answer)
        return false;
    dqblk merged = *answer;
    const bool isWhole = mergeInto(merged, wanted, read, device, account, !*wasOn);
    return set(device, account, merged) && isWhole;
}

/// Puts the edited fields into the kernel's answer of now, and has all limits set and the times to force that there
/// are: without its time a timer that runs starts anew. A field that was changed on the machine since the read stays,
/// and then this is false; unless the kind was switched on just now: what the kernel has then is nobody's edit.
bool LimitsWriter::mergeInto(dqblk &now, const dqblk &wanted, const dqblk &read, const QString &device,
                             const Account &account, bool isNewlyOn)
{
    bool isWhole = true;
    now.dqb_valid = QIF_LIMITS;
    for (const Field &field : Fields) {
        const quint64 found = now.*field.value;
        const quint64 shown = read.*field.value;
        const quint64 given = wanted.*field.value;
        const bool isEdited = given != shown && given != found;
        if (isEdited && (isNewlyOn || found == shown)) {
            now.*field.value = given;
        } else if (isEdited) {
            isWhole = false;
            _reporter.error(tr("%1: the %2 of %3 is %4 by now, not %5 as it was shown: %6 was not written")
                                .arg(device, field.name(), account.name, textOf(field, found), textOf(field, shown),
                                     textOf(field, given)));
        }
        if (now.*field.value != 0)
            now.dqb_valid |= field.bit;
    }
    return isWhole;
}

bool LimitsWriter::switchOn(const QString &device, QuotaKind kind)
{
    if (_switch.switchOnDemand(device, kind))
        return true;
    // Not each step that can fail on the way says so.
    _reporter.error(tr("Quotas could not be switched on on %1: the limits were not written").arg(device));
    return false;
}

std::optional<dqblk> LimitsWriter::ask(const QString &device, const Account &account)
{
    bool isAnswered = true;
    QuotaCtl kernel;
    QObject::connect(&kernel, qOverload<int>(&QuotaCtl::error), [&](int errorNumber) {
        isAnswered = false;
        reportQuotaCtlFailure(_reporter, device, errorNumber);
    });
    const dqblk record = kernel.getQuota(device, account.id, account.kind);
    return isAnswered ? std::make_optional(record) : std::nullopt;
}

bool LimitsWriter::set(const QString &device, const Account &account, const dqblk &record)
{
    QuotaCtl kernel;
    QObject::connect(&kernel, qOverload<int>(&QuotaCtl::error),
                     [&](int errorNumber) { reportQuotaCtlFailure(_reporter, device, errorNumber); });
    return kernel.setQuota(device, account.id, record, account.kind);
}
