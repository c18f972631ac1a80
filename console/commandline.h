// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QStringList>

#include <optional>

/// What the console was asked on its command line, read before there is a display.
class CommandLine
{
public:
    /// Needs an application object, which may be one without a display.
    explicit CommandLine(const QStringList &arguments);

    /// The code to end with, after printing: 0 for help and version, 2 for what is not understood.
    std::optional<int> exitCode() const { return _exitCode; }
    QStringList pluginFolders() const { return _pluginFolders; }
    /// For DisplayCheck, in the language of this object's time: later there may be no application object to ask for it.
    QString noWindowText() const { return _noWindowText; }

private:
    QString _noWindowText;
    std::optional<int> _exitCode;
    QStringList _pluginFolders;
};

/// While it lives, a window system that cannot be reached ends the process with one line and code 1, where Qt would
/// abort it. For the time of the application object's construction.
class DisplayCheck
{
public:
    explicit DisplayCheck(const QString &noWindowText);
    DisplayCheck(const DisplayCheck &) = delete;
    DisplayCheck &operator=(const DisplayCheck &) = delete;
    ~DisplayCheck();
};
