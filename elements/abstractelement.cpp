// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "abstractelement.h"

#include "accountcolumn.h"

#include <abstractelementdata.h>

#include <QCoreApplication>

namespace
{
/// What a cell is asked for. Only that is made: a list of many accounts asks for a value a million times.
enum class Wanted
{
    Text,
    Value, ///< what it is sorted by
};

bool isSystemAccount(qint32 id)
{
    constexpr quint32 lastSystemId = 999;
    constexpr quint32 nobodyId = 65534;
    const auto kernelId = static_cast<quint32>(id);
    return kernelId <= lastSystemId || kernelId == nobodyId;
}

QString graceText(const TimePeriod &period)
{
    const auto translated = [](const char *unit) { return QCoreApplication::translate("QObject", unit); };
    QStringList parts;
    const auto add = [&parts](quint32 count, const QString &unit) {
        if (count != 0)
            parts.append(QStringLiteral("%1%2").arg(count).arg(unit));
    };
    add(period.weeks, translated(QT_TRANSLATE_NOOP("QObject", "w")));
    add(period.days, translated(QT_TRANSLATE_NOOP("QObject", "d")));
    add(period.hours, translated(QT_TRANSLATE_NOOP("QObject", "h")));
    add(period.minutes, translated(QT_TRANSLATE_NOOP("QObject", "min")));
    add(period.seconds, translated(QT_TRANSLATE_NOOP("QObject", "sec")));
    return parts.join(QLatin1Char(' '));
}

// A cell of nothing is empty: neither text nor value.

QVariant sizeCell(const MemorySize &size, Wanted wanted)
{
    if (size.text.isEmpty())
        return {};
    return wanted == Wanted::Text ? QVariant(size.text) : QVariant(size.bytes);
}

QVariant countCell(quint64 count)
{
    return count == 0 ? QVariant() : QVariant(count);
}

QVariant graceCell(const TimePeriod &period, Wanted wanted)
{
    const qint64 seconds = period.toSeconds();
    if (seconds == 0)
        return {};
    return wanted == Wanted::Text ? QVariant(graceText(period)) : QVariant(seconds);
}

QVariant timeCell(const QDateTime &time, Wanted wanted)
{
    if (!time.isValid())
        return {};
    return wanted == Wanted::Text ? QVariant(time.toString(QStringLiteral("dd.MM.yyyy hh:mm"))) : QVariant(time);
}

QVariant stateCell(bool on)
{
    return on ? QCoreApplication::translate("AbstractElement", "on")
              : QCoreApplication::translate("AbstractElement", "off");
}

QVariant deviceCell(const DeviceQuota &quota, int column, Wanted wanted)
{
    switch (column) {
    case AccountColumn::QuotaIsOn:
        return stateCell(quota.quotaIsOn);
    case AccountColumn::UsedBlocks:
        return sizeCell(quota.usedBlocks, wanted);
    case AccountColumn::SoftBlockLimit:
        return sizeCell(quota.softBlockLimit, wanted);
    case AccountColumn::HardBlockLimit:
        return sizeCell(quota.hardBlockLimit, wanted);
    case AccountColumn::BlockGracePeriod:
        return graceCell(quota.blockGracePeriod, wanted);
    case AccountColumn::BlocksTimeToForce:
        return timeCell(quota.blocksTimeToForce, wanted);
    case AccountColumn::UsedInodes:
        return countCell(quota.usedInodes);
    case AccountColumn::SoftInodeLimit:
        return countCell(quota.softInodeLimit);
    case AccountColumn::HardInodeLimit:
        return countCell(quota.hardInodeLimit);
    case AccountColumn::InodeGracePeriod:
        return graceCell(quota.inodeGracePeriod, wanted);
    case AccountColumn::InodesTimeToForce:
        return timeCell(quota.inodesTimeToForce, wanted);
    default:
        return {};
    }
}
} // namespace

QVariant AbstractElement::data(int column, int role) const
{
    const AbstractElementData *account = accountRecord();
    if (!account)
        return {};
    const bool isText = role == Qt::DisplayRole || role == Qt::ToolTipRole;
    if (column <= AccountColumn::Title || column >= AccountColumn::Count || (!isText && role != SortRole))
        return OrdinaryElement::data(column, role);
    if (column == AccountColumn::Name)
        return account->name;
    const Wanted wanted = isText ? Wanted::Text : Wanted::Value;
    const auto quota = account->deviceQuotas.constFind(_deviceName);
    return quota == account->deviceQuotas.constEnd() ? deviceCell(DeviceQuota(), column, wanted)
                                                     : deviceCell(*quota, column, wanted);
}

int AbstractElement::treeNodeSpecialFlags() const
{
    const int flags = OrdinaryElement::treeNodeSpecialFlags();
    const auto *account = dynamic_cast<const AbstractElementData *>(record());
    const auto *container = dynamic_cast<const Element *>(parentNode());
    if (!account || !container)
        return flags;
    const int ownVariant = isSystemAccount(account->id) ? 1 : 2; // as AbstractContainerElement lists them
    return container->displayChildrenVariant() == ownVariant ? flags | NodeFlag::InChosenVariant : flags;
}
