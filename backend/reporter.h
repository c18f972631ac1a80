// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QStringList>

/// What the parts of the back end report to, for the one run that they are made for.
class Reporter
{
public:
    /// Lets each text through once: while it lives, an error that is in `said` already is dropped, and another is
    /// added to it. So what fails for one reason at each of many questions is said once.
    class Once
    {
    public:
        Once(Reporter &reporter, QStringList &said);
        ~Once();
        Once(const Once &) = delete;
        Once &operator=(const Once &) = delete;

    private:
        Reporter &_reporter;
        QStringList *const _before;
    };

    Reporter() = default;
    virtual ~Reporter() = default;
    Reporter(const Reporter &) = delete;
    Reporter &operator=(const Reporter &) = delete;

    /// Something failed; the text is for the administrator.
    void error(const QString &message);
    /// What is being done now, or how it ended, whether or not that is an error.
    virtual void detail(const QString &text) = 0;
    /// How far a long read is; `unit` is what is counted, in the plural.
    virtual void progress(quint64 done, quint64 total, const QString &unit) = 0;
    /// Whether a long read is to stop.
    virtual bool isCancelled() const = 0;

protected:
    virtual void passError(const QString &message) = 0;

private:
    QStringList *_said = nullptr;
};
