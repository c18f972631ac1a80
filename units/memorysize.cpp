// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "memorysize.h"

#include "memorysizetransfer.h"

#include <QLatin1String>
#include <QStringBuilder>

#include <algorithm>
#include <array>
#include <charconv>
#include <limits>

namespace
{

constexpr double UnitStep = 1024.0;
constexpr int BitsPerUnit = 10;
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

/// The number as QString::number() gives it in the general format, in a tenth of the time: lists are made of hundreds
/// of thousands of these.
QString textOf(const MemorySize &size)
{
    constexpr quint64 MostExact = quint64(1) << std::numeric_limits<double>::digits;
    constexpr quint64 LeastWithExponent = 9999; // what is just below 10,000 is rounded up to it
    const int shift = size.unit * BitsPerUnit;
    const quint64 whole = size.bytes >> shift;
    if (size.bytes > MostExact || whole >= LeastWithExponent)
        return QString::number(size.value, 'g', SignificantDigits) % QLatin1Char(' ') % size.unitName;

    int decimals = SignificantDigits - 1;
    for (quint64 next = 10; whole >= next; next *= 10)
        --decimals;
    constexpr std::array<quint64, SignificantDigits> PowersOfTen = {1, 10, 100, 1000};
    const quint64 half = shift == 0 ? 0 : quint64(1) << (shift - 1);
    quint64 number = (size.bytes * PowersOfTen[static_cast<std::size_t>(decimals)] + half) >> shift;
    for (; decimals > 0 && number % 10 == 0; --decimals)
        number /= 10;

    std::array<char, SignificantDigits + 2> digits; // with a point, and for 9.9996, which comes to 10.000
    char *end = std::to_chars(digits.begin(), digits.end(), number).ptr;
    if (decimals > 0) {
        char *point = end - decimals;
        std::copy_backward(point, end, end + 1);
        *point = '.';
        ++end;
    }
    return QLatin1String(digits.begin(), static_cast<int>(end - digits.begin())) % QLatin1Char(' ') % size.unitName;
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
        text = textOf(*this);
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
