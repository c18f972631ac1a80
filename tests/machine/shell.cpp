// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "shell.h"

#include <QProcess>

Shell::Result Shell::run(const QString &script)
{
    QProcess bash;
    bash.start(QStringLiteral("/bin/bash"), {QStringLiteral("-c"), script});
    bash.waitForFinished(-1);
    return {bash.exitStatus() == QProcess::NormalExit ? bash.exitCode() : -1,
            QString::fromUtf8(bash.readAllStandardOutput()), QString::fromUtf8(bash.readAllStandardError())};
}

bool Shell::succeeds(const QString &script)
{
    const Result result = run(script);
    if (result.exitCode != 0)
        qWarning("%s", qPrintable(result.errors));
    return result.exitCode == 0;
}
