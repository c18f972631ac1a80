// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "rebootcommand.h"

#include <QProcess>

void RebootCommand::run()
{
    constexpr int waitMilliseconds = 30000;
    if (isRunning() && !_wait.hasExpired())
        return;
    _wait = QDeadlineTimer(waitMilliseconds);
    // Without a parent, and so never destroyed while it runs: that would kill the command.
    _process = new QProcess;
    const auto forget = [process = _process.data()] { process->deleteLater(); };
    QObject::connect(_process, qOverload<int, QProcess::ExitStatus>(&QProcess::finished), forget);
    QObject::connect(_process, &QProcess::errorOccurred, [forget](QProcess::ProcessError error) {
        if (error == QProcess::FailedToStart)
            forget();
    });
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("XDG_RUNTIME_DIR"),
                       QStringLiteral("/run/user/%1").arg(qEnvironmentVariable("SUDO_UID")));
    _process->setProcessEnvironment(environment);
    _process->start(QStringLiteral("/usr/bin/zel-wmfunc"), {QStringLiteral("ZELWM_REBOOT")});
}

bool RebootCommand::isRunning() const
{
    return _process;
}
