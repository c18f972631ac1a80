// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "kraglobal.h"

#include <QByteArray>
#include <QString>

#include <exception>

/// A program could not be started or ended badly.
class KRA_EXPORT AppException : public std::exception
{
public:
    /// `exitCode` is -1 where the program did not start, did not end in time, or crashed.
    AppException(const QString &program, int exitCode, const QString &errorText);

    QString program() const { return _program; }
    int exitCode() const { return _exitCode; }
    /// The program's standard error, or why it did not run.
    QString errorText() const { return _errorText; }
    /// Program, exit code and error text in one UTF-8 text.
    const char *what() const noexcept override;

private:
    QString _program;
    int _exitCode;
    QString _errorText;
    QByteArray _what;
};
