// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "rebootcommand.h"

#include <QProcess>

QProcessEnvironment RebootCommand::environment()
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("XDG_RUNTIME_DIR"),
                       QStringLiteral("/run/user/%1").arg(qEnvironmentVariable("SUDO_UID")));
    return environment;
}

void RebootCommand::run()
{
    constexpr int waitMilliseconds = 30000;
    QProcess process;
    process.setProcessEnvironment(environment());
    process.start(QStringLiteral("/usr/bin/zel-wmfunc"), {QStringLiteral("ZELWM_REBOOT")});
    process.waitForFinished(waitMilliseconds);
}
