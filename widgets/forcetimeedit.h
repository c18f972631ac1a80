// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QDateTime>
#include <QDateTimeEdit>

/// The moment at which a soft limit becomes hard, in a form; blank while no grace time runs.
///
/// The form shows minutes of the wall clock, which stand for two moments in the hour that the end of summer time
/// repeats. So a moment that was not edited stays what it was, to the second.
class ForceTimeEdit
{
public:
    /// The widget is the form's and outlives this.
    explicit ForceTimeEdit(QDateTimeEdit *edit);

    QDateTimeEdit *edit() const { return _edit; }

    void show(const QDateTime &moment);
    /// What was shown last, or what it was edited to. Invalid while the edit is blank.
    QDateTime moment() const;

private:
    QDateTimeEdit *_edit;
    QDateTime _moment;
    QDateTime _first; // as filled in; its date and time alone matter
};
