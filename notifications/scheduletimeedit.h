// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QDateTimeEdit>

/// Takes a time of the clock, with a day or without. Where a day is shown without its month it may be any from 1 to 31:
/// the date is moved to the next month that has it.
class ScheduleTimeEdit : public QDateTimeEdit
{
    Q_OBJECT

public:
    explicit ScheduleTimeEdit(QWidget *parent = nullptr);

    /// Shows these sections. The value stays, and so does the place that is typed at while nothing changes.
    void showSections(const QString &format);

    void stepBy(int steps) override;
    QValidator::State validate(QString &input, int &position) const override;

protected:
    QDateTime dateTimeFromText(const QString &text) const override;
    StepEnabled stepEnabled() const override;

private:
    bool showsDayAlone() const;
    bool stepsDayAlone() const { return showsDayAlone() && currentSection() == DaySection; }
    /// Invalid when the text is not that of a day and a time.
    QDateTime dayAndTime(const QString &text) const;
};
