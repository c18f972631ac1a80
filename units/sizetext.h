// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "typednumber.h"

/// An amount of space or a number of files as people write it, and the amount in words again.
///
/// Space: a number (see TypedNumber) and a unit, with or without a blank between them: B, KB, MB, GB, TB, PB, EB, in
/// any case, with "iB" or without the B as well ("1.5 TiB", "500M"). All of them are steps of 1024; without a unit it
/// is bytes. What is less than a byte is dropped.
///
/// Files: a number with k or M for thousands and millions, or without. A part of a file is none.
class SizeText
{
public:
    using Fault = TypedNumber::Fault;

    static SizeText ofSpace(const QString &text);
    static SizeText ofFiles(const QString &text);

    bool isValid() const { return _fault == TypedNumber::NoFault; }
    Fault fault() const { return _fault; }
    /// In bytes, or in files. 0 where the text is not valid.
    quint64 amount() const { return _amount; }

    /// Exactly that many bytes, in the largest unit that divides them: "50 GB", "1500 B". Read again it is the same
    /// amount, in every language.
    static QString ofBytes(quint64 bytes);

private:
    explicit SizeText(Fault fault)
        : _fault(fault)
    {}
    explicit SizeText(quint64 amount)
        : _amount(amount)
    {}

    static SizeText joined(const TypedNumber &number, quint64 factor);

    Fault _fault = TypedNumber::NoFault;
    quint64 _amount = 0;
    bool _isCut = false; // less than one was dropped
};
