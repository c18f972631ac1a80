// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "limitedit.h"

/// What is to be known of a soft and a hard limit in a form beside the numbers that it shows.
struct LimitNotes
{
    LimitNotes(const LimitEdit &soft, const LimitEdit &hard, quint64 used);

    /// Whole sentences, a line each: what the boxes cannot show, and what the numbers will not do.
    QStringList lines;
    // What is odd about the number of one of them; empty for nothing.
    QString softWarning;
    QString hardWarning;

    /// Why what is typed cannot be applied; empty when it can.
    static QString refusal(const LimitEdit &limit, bool isHard);
};
