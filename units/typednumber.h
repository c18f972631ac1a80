// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QString>

/// A number as people type it, whatever their language: "1500", "1.5", "1,5", "1 500", "1,234,567.5".
///
/// A point or a comma before one, two, four or more digits begins decimals. Before exactly three it may as well stand
/// between thousands: such a text is two numbers, and is taken for neither.
struct TypedNumber
{
    enum Fault
    {
        NoFault,
        Empty,
        NotANumber,
        Ambiguous,
        UnknownUnit, ///< of a SizeText
        NotWhole,    ///< of a SizeText: a part of a file
        TooLarge,    ///< more than 64 bits hold
    };

    TypedNumber() = default;
    explicit TypedNumber(const QString &text);

    bool isValid() const { return fault == NoFault; }

    Fault fault = Empty;
    quint64 whole = 0;
    QString decimals; ///< the digits behind the point, without zeros at their end
};
