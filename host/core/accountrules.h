// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QString>

/// What holds for the accounts of every computer, whichever file they were read from.
namespace AccountRules
{

constexpr quint32 LastSystemId = 999;
constexpr quint32 NobodyId = 65534;

/// Accounts that the system made for itself.
constexpr bool isSystemId(quint32 id)
{
    return id <= LastSystemId || id == NobodyId;
}

/// "+" and "-" begin lines that let accounts of a network service in or keep them out. Those are no accounts, though
/// the C library reads them as some with the id 0, which is root's.
inline bool isAccountName(const QString &name)
{
    return !name.startsWith(QLatin1Char('+')) && !name.startsWith(QLatin1Char('-'));
}

} // namespace AccountRules
