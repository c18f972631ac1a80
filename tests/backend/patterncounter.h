// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QMap>
#include <QString>

/// Counts how often each regular expression is compiled, by standing between Qt and its expression library.
/// Programs with one thread only.
namespace PatternCounter
{

/// By pattern, since the last reset().
QMap<QString, int> compiled();
void reset();

} // namespace PatternCounter
