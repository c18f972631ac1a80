// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <sandbox.h>

namespace MachineFiles
{
inline const QString cronTable = QStringLiteral("cron.d/warnquota"); // below /etc
inline const QByteArray tableHead = "# Cron job for quota notifications\n# Dont edit this file\nPATH=/usr/sbin\n";

/// A machine with an empty cron table, and the three files.
inline void reset(Sandbox &sandbox)
{
    sandbox.reset();
    sandbox.writeEtc(cronTable, tableHead);
    sandbox.writeEtc(QStringLiteral("warnquota.conf"), "MAIL_CMD = \"/usr/sbin/sendmail -t\"\n");
    sandbox.writeEtc(QStringLiteral("quotatab"), "/dev/vda: the disk\n");
    sandbox.writeEtc(QStringLiteral("quotagrpadmins"), "staff: anna\n");
}
} // namespace MachineFiles
