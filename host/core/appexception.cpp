// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "appexception.h"

#include <QCoreApplication>

namespace
{

struct Texts
{
    Q_DECLARE_TR_FUNCTIONS(AppException)
};

QString textOf(const QString &program, int exitCode, const QString &errorText)
{
    if (exitCode < 0)
        return QStringLiteral("%1: %2").arg(program, errorText);
    const QString call = Texts::tr("%1 ended with exit code %2").arg(program, QString::number(exitCode));
    return errorText.isEmpty() ? call : QStringLiteral("%1: %2").arg(call, errorText);
}

} // namespace

AppException::AppException(const QString &program, int exitCode, const QString &errorText)
    : _program(program)
    , _exitCode(exitCode)
    , _errorText(errorText)
    , _what(textOf(program, exitCode, errorText).toUtf8())
{}

const char *AppException::what() const noexcept
{
    return _what.constData();
}
