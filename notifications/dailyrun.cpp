// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "dailyrun.h"

#include "wholefile.h"

#include <QRegularExpression>

bool DailyRun::isOn()
{
    return isOnIn(WholeFile::read(QStringLiteral("/etc/default/quota")).value_or(QByteArray()));
}

bool DailyRun::isOnIn(const QByteArray &settings)
{
    // A shell reads the file, and the last assignment holds.
    static const QRegularExpression assignment(QStringLiteral(R"(^\s*(?:export\s+)?run_warnquota=(.*)$)"));
    static const QRegularExpression yes(QStringLiteral(R"(^("true"|'true'|true)\s*(;.*|(?<=\s)#.*)?$)"));
    bool isOn = false;
    const QStringList lines = WholeFile::text(settings).split(QLatin1Char('\n'));
    for (const QString &line : lines) {
        const QRegularExpressionMatch match = assignment.match(line);
        if (match.hasMatch())
            isOn = yes.match(match.captured(1)).hasMatch();
    }
    return isOn;
}
