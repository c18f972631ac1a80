// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "appliedchanges.h"

#include <limitname.h>
#include <limitrange.h>
#include <memorysizetransfer.h>

#include <QCoreApplication>
#include <QLocale>

#include <cmath>

namespace
{
struct Texts
{
    Q_DECLARE_TR_FUNCTIONS(AppliedChanges)
};

/// The lines of one update, each with the device and what of it was changed.
class Lines
{
public:
    explicit Lines(const QString &device)
        : _device(device)
    {}

    void add(const QString &what, const QString &before, const QString &after)
    {
        if (before == after)
            return;
        //: "anna, /dev/vda1: soft limit on space: 2 Gb, before: none"
        _lines += Texts::tr("%1: %2: %3, before: %4").arg(_device, what, orNone(after), orNone(before));
    }
    QString text() const { return _lines.join(QLatin1Char('\n')); }

private:
    static QString orNone(const QString &value) { return value.isEmpty() ? Texts::tr("none") : value; }

    QString _device;
    QStringList _lines;
};

/// As the kernel keeps it, and to the byte: two rounded sizes may look alike.
QString sizeText(const MemorySize &size)
{
    constexpr double longestExact = 9999;
    const quint64 bytes = LimitRange::wholeBlocks(size.exactBytes());
    const MemorySize shown(MemorySizeTransfer(), bytes);
    if (shown.value <= longestExact && std::floor(shown.value) == shown.value)
        return shown.text;
    return Texts::tr("%1 (%2 bytes)").arg(shown.text, QLocale().toString(bytes));
}

QString countText(quint64 count)
{
    return count == 0 ? QString() : QLocale().toString(count);
}

QString timeText(const QDateTime &time)
{
    return time.isValid() ? time.toString(QStringLiteral("dd.MM.yyyy hh:mm")) : QString();
}

QString stateText(bool isOn)
{
    return isOn ? Texts::tr("on") : Texts::tr("off");
}
} // namespace

QString AppliedChanges::of(const AbstractElementData &record)
{
    if (!record.touched)
        return {};
    const DeviceQuota &before = record.touched->asRead;
    const DeviceQuota after = record.deviceQuotas.value(record.touched->device);
    Lines lines(QStringLiteral("%1, %2").arg(record.name, record.touched->device));
    lines.add(LimitName::softSpace(), sizeText(before.softBlockLimit), sizeText(after.softBlockLimit));
    lines.add(LimitName::hardSpace(), sizeText(before.hardBlockLimit), sizeText(after.hardBlockLimit));
    lines.add(LimitName::softFiles(), countText(before.softInodeLimit), countText(after.softInodeLimit));
    lines.add(LimitName::hardFiles(), countText(before.hardInodeLimit), countText(after.hardInodeLimit));
    lines.add(LimitName::spaceTime(), timeText(before.blocksTimeToForce), timeText(after.blocksTimeToForce));
    lines.add(LimitName::filesTime(), timeText(before.inodesTimeToForce), timeText(after.inodesTimeToForce));
    return lines.text();
}

QString AppliedChanges::of(const GeneralData &record)
{
    if (!record.touched)
        return {};
    const DeviceSettings &before = record.touched->asRead;
    const DeviceSettings after = record.deviceSettings.value(record.touched->device);
    Lines lines(record.touched->device);
    const auto addKind = [&](QuotaKind kind, const KindSettings &from, const KindSettings &to) {
        const bool isGroup = kind == GroupQuota;
        lines.add(isGroup ? Texts::tr("quotas for groups") : Texts::tr("quotas for users"), stateText(from.quotaOn),
                  stateText(to.quotaOn));
        if (record.touched->optionsToTake.contains(kind))
            lines.add(isGroup ? Texts::tr("option for groups in /etc/fstab")
                              : Texts::tr("option for users in /etc/fstab"),
                      Texts::tr("present"), QString());
        if (!to.quotaOn)
            return;
        lines.add(isGroup ? Texts::tr("grace period for space, groups") : Texts::tr("grace period for space, users"),
                  from.blockGrace.text, to.blockGrace.text);
        lines.add(isGroup ? Texts::tr("grace period for files, groups") : Texts::tr("grace period for files, users"),
                  from.inodeGrace.text, to.inodeGrace.text);
    };
    addKind(UserQuota, before.userSettings, after.userSettings);
    addKind(GroupQuota, before.groupSettings, after.groupSettings);
    return lines.text();
}
