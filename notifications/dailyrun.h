// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QByteArray>

/// The daily run of `warnquota` that the system's own quota package brings.
namespace DailyRun
{

/// Whether "/etc/default/quota" asks for it. A file that is missing does not.
bool isOn();

/// Whether such a file with this content does.
bool isOnIn(const QByteArray &settings);

} // namespace DailyRun
