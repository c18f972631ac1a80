// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "generalpage.h"

/// A table of what was asked in each case, what the real programs did and said, and how the machine stood afterwards.
/// It is left with the other results of the run.
namespace ResultsTable
{
/// Drops what an earlier run has left.
void begin();
void add(const QString &title, const QString &device, const GeneralPage::Applied &applied);
/// The same for a program that was run by hand.
void add(const QString &title, const QString &command);
} // namespace ResultsTable
