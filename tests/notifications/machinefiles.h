// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <privatemounts.h>
#include <sandbox.h>

#include <QDir>
#include <QFile>

/// The main() of a test that also has a "/var/backups" of its own, empty.
#define KRA_NOTIFICATIONS_MAIN(TestClass)                                                                              \
    int main(int argc, char *argv[])                                                                                   \
    {                                                                                                                  \
        Sandbox::enter();                                                                                              \
        PrivateMounts::mountMemory("/var/backups");                                                                    \
        KRA_SANDBOX_APPLICATION application(argc, argv);                                                               \
        TestClass test;                                                                                                \
        return QTest::qExec(&test, argc, argv);                                                                        \
    }

namespace MachineFiles
{
inline const QString cronTable = QStringLiteral("cron.d/warnquota"); // below /etc
inline const QByteArray tableHead = "# Cron job for quota notifications\n# Dont edit this file\nPATH=/usr/sbin\n";

inline QDir backups()
{
    return {QStringLiteral("/var/backups"), QString(), QDir::Name, QDir::Files};
}

inline QByteArrayList backupContents()
{
    QByteArrayList contents;
    const QStringList names = backups().entryList();
    for (const QString &name : names) {
        QFile file(backups().filePath(name));
        contents.append(file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("unreadable"));
    }
    return contents;
}

/// A machine with an empty cron table, the three files, and no backups.
inline void reset(Sandbox &sandbox)
{
    sandbox.reset();
    sandbox.writeEtc(cronTable, tableHead);
    sandbox.writeEtc(QStringLiteral("warnquota.conf"), "MAIL_CMD = \"/usr/sbin/sendmail -t\"\n");
    sandbox.writeEtc(QStringLiteral("quotatab"), "/dev/vda: the disk\n");
    sandbox.writeEtc(QStringLiteral("quotagrpadmins"), "staff: anna\n");
    const QStringList names = backups().entryList();
    for (const QString &name : names)
        backups().remove(name);
}
} // namespace MachineFiles
