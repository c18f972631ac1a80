// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QRegularExpressionValidator>

/// Accepts what the grammar of the expert mode accepts.
class ScheduleValidator : public QRegularExpressionValidator
{
    Q_OBJECT

public:
    explicit ScheduleValidator(QObject *parent = nullptr);

    /// Of a lenient one any text may be on its way to one that is accepted. A line that does not fit to begin with
    /// could otherwise not be edited at all.
    void setLenient(bool lenient) { _isLenient = lenient; }
    State validate(QString &input, int &position) const override;

private:
    bool _isLenient = false;
};
