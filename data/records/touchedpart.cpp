// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "touchedpart.h"

#include <elementdata.h>

namespace
{

QString deviceKey()
{
    return QStringLiteral("touchedDevice");
}

QString kindsKey()
{
    return QStringLiteral("touchedKinds");
}

QString gracesKey()
{
    return QStringLiteral("touchedGraces");
}

QVector<QuotaKind> kindsUnder(const QString &key, const ElementData &record)
{
    if (!record.params.contains(key))
        return {UserQuota, GroupQuota};
    QVector<QuotaKind> kinds;
    const QVariantList numbers = record.params.value(key).toList();
    for (const QVariant &number : numbers)
        kinds.append(number.toInt() == GroupQuota ? GroupQuota : UserQuota);
    return kinds;
}

QVariantList numbersOf(const QVector<QuotaKind> &kinds)
{
    QVariantList numbers;
    for (const QuotaKind kind : kinds)
        numbers.append(static_cast<int>(kind));
    return numbers;
}

} // namespace

std::optional<TouchedPart> TouchedPart::of(const ElementData &record)
{
    if (!record.params.contains(deviceKey()))
        return std::nullopt;
    return TouchedPart{record.params.value(deviceKey()).toString(), kindsUnder(kindsKey(), record),
                       kindsUnder(gracesKey(), record)};
}

void TouchedPart::noteIn(ElementData &record) const
{
    record.params.insert(deviceKey(), device);
    record.params.insert(kindsKey(), numbersOf(kinds));
    record.params.insert(gracesKey(), numbersOf(graces));
}
