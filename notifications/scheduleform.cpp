// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "scheduleform.h"

#include "crontabreader.h"
#include "ui_notificationswidget.h"

#include <QCoreApplication>

namespace
{
using Mode = ScheduleChoice::Mode;

/// The translations of the page.
struct Texts
{
    Q_DECLARE_TR_FUNCTIONS(NotificationsWidget)
};
} // namespace

ScheduleForm::ScheduleForm(Ui::NotificationsWidget &ui)
    : _ui(ui)
    , _validator(new ScheduleValidator(ui._expertLineEdit))
{
    _ui._expertLineEdit->setValidator(_validator);
}

void ScheduleForm::show(const CronSchedule &schedule, bool isFromFile)
{
    _isFromFile = isFromFile;
    _shownSchedule = schedule;
    _shown = ScheduleChoice::of(schedule, QDate::currentDate());
    _ui._monthRadioButton->setChecked(_shown.mode == Mode::Monthly);
    _ui._dayRadioButton->setChecked(_shown.mode == Mode::Daily);
    _ui._hourRadioButton->setChecked(_shown.mode == Mode::Hourly);
    _ui._expertRadioButton->setChecked(_shown.mode == Mode::Expert);
    _ui._atDateTimeEdit->setDateTime(_shown.at);
    _ui._expertLineEdit->setText(_shown.line);
    _validator->setLenient(!_ui._expertLineEdit->hasAcceptableInput());
    showMode();
}

void ScheduleForm::showMode()
{
    const auto showTime = [this](const QString &format, const QString &label) {
        _ui._atDateTimeEdit->showSections(format);
        _ui._atLabel->setText(label);
    };
    // Tab stops at the chosen mode, and not at the first of them, from where the arrow keys would choose another.
    for (QRadioButton *button :
         {_ui._monthRadioButton, _ui._dayRadioButton, _ui._hourRadioButton, _ui._expertRadioButton})
        button->setFocusPolicy(button->isChecked() ? Qt::StrongFocus : Qt::ClickFocus);
    const Mode mode = choice().mode;
    if (mode == Mode::Monthly)
        showTime(QStringLiteral("dd HH:mm"), Texts::tr("At (day hours:minutes):"));
    else if (mode == Mode::Daily)
        showTime(QStringLiteral("HH:mm"), Texts::tr("At (hours:minutes):"));
    else if (mode == Mode::Hourly)
        showTime(QStringLiteral("mm"), Texts::tr("At (minutes):"));
    _ui._atLabel->setHidden(_ui._atLabel->text().isEmpty()); // and its room with it
    _ui._atDateTimeEdit->setEnabled(mode != Mode::Expert);
    _ui._expertLineEdit->setEnabled(mode == Mode::Expert);
}

void ScheduleForm::showLine()
{
    const ScheduleChoice chosen = choice();
    if (chosen.mode != Mode::Expert)
        _ui._expertLineEdit->setText(CrontabReader::formatSchedule(chosen.schedule()));
    else if (isValid())
        _ui._expertLineEdit->setModified(false); // the framework need not judge it
}

bool ScheduleForm::isEdited() const
{
    return !(choice() == _shown);
}

bool ScheduleForm::isValid() const
{
    return (_isFromFile && !isEdited()) || !schedule().minute.isEmpty();
}

CronSchedule ScheduleForm::schedule() const
{
    return isEdited() ? choice().schedule() : _shownSchedule;
}

QVector<QMetaObject::Connection> ScheduleForm::connectChanges(QObject *context,
                                                              const std::function<void()> &changed) const
{
    QVector<QMetaObject::Connection> connections = {
        QObject::connect(_ui._atDateTimeEdit, &QDateTimeEdit::dateTimeChanged, context, changed),
        QObject::connect(_ui._expertLineEdit, &QLineEdit::textChanged, context, changed),
    };
    for (const QRadioButton *mode :
         {_ui._monthRadioButton, _ui._dayRadioButton, _ui._hourRadioButton, _ui._expertRadioButton})
        connections += QObject::connect(mode, &QRadioButton::toggled, context, changed);
    return connections;
}

ScheduleChoice ScheduleForm::choice() const
{
    Mode mode = Mode::None;
    if (_ui._monthRadioButton->isChecked())
        mode = Mode::Monthly;
    else if (_ui._dayRadioButton->isChecked())
        mode = Mode::Daily;
    else if (_ui._hourRadioButton->isChecked())
        mode = Mode::Hourly;
    else if (_ui._expertRadioButton->isChecked())
        mode = Mode::Expert;
    return {mode, _ui._atDateTimeEdit->dateTime(), _ui._expertLineEdit->text()};
}
