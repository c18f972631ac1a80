// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "programdetail.h"

#include <process.h>

QString programComplaint(const ProcessResult &result)
{
    constexpr int part = 8000;
    const QString text = QString::fromLocal8Bit(result.standardError);
    if (text.size() <= 2 * part)
        return text;
    return text.left(part) + QStringLiteral("\n[…]\n") + text.right(part);
}

QString programDetail(const QString &program, const QStringList &arguments, const ProcessResult &result)
{
    const QString ending = Process::describe(program, arguments, result);
    const QString complaint = programComplaint(result).trimmed();
    return complaint.isEmpty() ? ending : ending + QLatin1Char('\n') + complaint;
}
