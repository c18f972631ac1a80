// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QString>

/// Runs this machine's own programs. They are asked, and made to do things, apart from the code under test.
namespace Shell
{
struct Result
{
    int exitCode = -1;
    QString output;
    QString errors;
};

/// Runs a bash script to its end.
Result run(const QString &script);
/// Runs one, and warns with what it said unless it ends with 0.
bool succeeds(const QString &script);
} // namespace Shell
