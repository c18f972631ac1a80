// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "schedulechoice.h"

#include <QMetaObject>
#include <QVector>

#include <functional>

namespace Ui
{
class NotificationsWidget;
}

/// The part of the page that shows and takes the schedule of one run: the mode, the time, and the line for experts.
class ScheduleForm
{
public:
    /// Of a form that is set up, and outlives this.
    explicit ScheduleForm(Ui::NotificationsWidget &ui);

    /// One that stands in the cron file goes back as it came while it is not edited, whether or not it fits the grammar
    /// of the expert mode.
    void show(const CronSchedule &schedule, bool isFromFile);
    /// Follows the chosen mode.
    void showMode();
    /// Writes the chosen schedule into the expert line, unless that is where it was chosen.
    void showLine();

    bool isEdited() const;
    /// False for an edited line that does not fit.
    bool isValid() const;
    /// All fields are empty when the line does not fit.
    CronSchedule schedule() const;

    /// Calls back on each change of one of the widgets.
    QVector<QMetaObject::Connection> connectChanges(QObject *context, const std::function<void()> &changed) const;

private:
    ScheduleChoice choice() const;

    Ui::NotificationsWidget &_ui;
    ScheduleValidator *_validator; // owned by the line
    CronSchedule _shownSchedule;
    ScheduleChoice _shown; // how that was shown, before it was edited
    bool _isFromFile = false;
};
