// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "memorysize.h"

#include "memorysizetransfer.h"

#include <limits>

namespace
{

constexpr double UnitStep = 1024.0;
constexpr int SignificantDigits = 4;

double bytesPerUnit(int unit)
{
    switch (unit) {
    case MemorySizeTransfer::Bytes:
        return 1.0;
    case MemorySizeTransfer::Kb:
        return UnitStep;
    case MemorySizeTransfer::Mb:
        return UnitStep * UnitStep;
    case MemorySizeTransfer::Gb:
        return UnitStep * UnitStep * UnitStep;
    default:
        return 0.0;
    }
}

} // namespace

MemorySize::MemorySize()
    : unit(MemorySizeTransfer::Bytes)
    , unitName(MemorySizeTransfer::unitName(MemorySizeTransfer::Bytes))
{}

MemorySize::MemorySize(const MemorySizeTransfer &units, quint64 byteCount)
    : bytes(byteCount)
    , value(static_cast<double>(byteCount))
{
    const QMap<int, QString> &table = units.units();
    auto current = table.cbegin();
    for (auto next = std::next(current); value >= UnitStep && next != table.cend(); ++next) {
        current = next;
        value /= UnitStep;
    }
    unit = current.key();
    unitName = current.value();
    if (byteCount != 0)
        text = QStringLiteral("%1 %2").arg(QString::number(value, 'g', SignificantDigits), unitName);
}

quint64 MemorySize::toBytes() const
{
    constexpr double TooMany = 18446744073709551616.0; // 2^64
    const double joined = value * bytesPerUnit(unit);
    if (!(joined > 0.0)) // not "joined <= 0.0": what is no number must not get through
        return 0;
    if (joined >= TooMany)
        return std::numeric_limits<quint64>::max();
    return static_cast<quint64>(joined);
}
