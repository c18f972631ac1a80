// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "accountcolumn.h"

#include <devicequota.h>

#include <QCoreApplication>
#include <QLocale>
#include <QStringList>

#include <array>

namespace
{
using Wanted = AccountColumn::Wanted;

QString translated(const char *context, const char *text)
{
    return QCoreApplication::translate(context, text);
}

QString graceText(const TimePeriod &period)
{
    QStringList parts;
    const auto add = [&parts](quint32 count, const char *unit) {
        if (count != 0)
            parts.append(QStringLiteral("%1%2").arg(count).arg(translated("QObject", unit)));
    };
    add(period.weeks, QT_TRANSLATE_NOOP("QObject", "w"));
    add(period.days, QT_TRANSLATE_NOOP("QObject", "d"));
    add(period.hours, QT_TRANSLATE_NOOP("QObject", "h"));
    add(period.minutes, QT_TRANSLATE_NOOP("QObject", "min"));
    add(period.seconds, QT_TRANSLATE_NOOP("QObject", "sec"));
    return parts.join(QLatin1Char(' '));
}

/// A size as its language writes numbers, as the view does with those of the other columns.
QString sizeText(const MemorySize &size)
{
    constexpr int shortestGrouped = 4;
    const QLocale locale;
    QString text = size.text;
    int digits = 0;
    while (digits < text.size() && text.at(digits).isDigit())
        ++digits;
    const int point = text.indexOf(QLatin1Char('.'), digits);
    if (point >= 0)
        text.replace(point, 1, locale.decimalPoint());
    return digits < shortestGrouped ? text
                                    : text.replace(0, digits, locale.toString(text.leftRef(digits).toULongLong()));
}

template<bool DeviceQuota::*on>
QVariant stateCell(const DeviceQuota &quota, Wanted /*wanted*/)
{
    return quota.*on ? translated("AbstractElement", QT_TRANSLATE_NOOP("AbstractElement", "on"))
                     : translated("AbstractElement", QT_TRANSLATE_NOOP("AbstractElement", "off"));
}

template<MemorySize DeviceQuota::*field>
QVariant sizeCell(const DeviceQuota &quota, Wanted wanted)
{
    const MemorySize &size = quota.*field;
    if (size.text.isEmpty())
        return {};
    return wanted == Wanted::Text ? QVariant(sizeText(size)) : QVariant(size.bytes);
}

template<quint64 DeviceQuota::*field>
QVariant countCell(const DeviceQuota &quota, Wanted /*wanted*/)
{
    return quota.*field == 0 ? QVariant() : QVariant(quota.*field);
}

template<TimePeriod DeviceQuota::*field>
QVariant graceCell(const DeviceQuota &quota, Wanted wanted)
{
    const qint64 seconds = (quota.*field).toSeconds();
    if (seconds == 0)
        return {};
    return wanted == Wanted::Text ? QVariant(graceText(quota.*field)) : QVariant(seconds);
}

template<QDateTime DeviceQuota::*field>
QVariant timeCell(const DeviceQuota &quota, Wanted wanted)
{
    const QDateTime &time = quota.*field;
    if (!time.isValid())
        return {};
    return wanted == Wanted::Text ? QVariant(time.toString(QStringLiteral("dd.MM.yyyy hh:mm"))) : QVariant(time);
}

constexpr std::array<AccountColumn, AccountColumn::Count - 1> columns = {{
    {QT_TRANSLATE_NOOP("AbstractContainerElement", "Name"), false, nullptr},
    {QT_TRANSLATE_NOOP("AbstractContainerElement", "Quota is on"), false, stateCell<&DeviceQuota::quotaIsOn>},
    {QT_TRANSLATE_NOOP("AbstractContainerElement", "Used blocks"), true, sizeCell<&DeviceQuota::usedBlocks>},
    {QT_TRANSLATE_NOOP("AbstractContainerElement", "Soft block limit"), true, sizeCell<&DeviceQuota::softBlockLimit>},
    {QT_TRANSLATE_NOOP("AbstractContainerElement", "Hard block limit"), true, sizeCell<&DeviceQuota::hardBlockLimit>},
    {QT_TRANSLATE_NOOP("AbstractContainerElement", "Grace block period"), true,
     graceCell<&DeviceQuota::blockGracePeriod>},
    {QT_TRANSLATE_NOOP("AbstractContainerElement", "Blocks time to force"), false,
     timeCell<&DeviceQuota::blocksTimeToForce>},
    {QT_TRANSLATE_NOOP("AbstractContainerElement", "Used inodes"), true, countCell<&DeviceQuota::usedInodes>},
    {QT_TRANSLATE_NOOP("AbstractContainerElement", "Soft inode limit"), true, countCell<&DeviceQuota::softInodeLimit>},
    {QT_TRANSLATE_NOOP("AbstractContainerElement", "Hard inode limit"), true, countCell<&DeviceQuota::hardInodeLimit>},
    {QT_TRANSLATE_NOOP("AbstractContainerElement", "Grace inode period"), true,
     graceCell<&DeviceQuota::inodeGracePeriod>},
    {QT_TRANSLATE_NOOP("AbstractContainerElement", "Inodes time to force"), false,
     timeCell<&DeviceQuota::inodesTimeToForce>},
}};
} // namespace

const AccountColumn *AccountColumn::at(int column)
{
    return column <= Title || column >= Count ? nullptr : &columns.at(static_cast<std::size_t>(column - 1));
}
