// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "notificationsdata.h"
#include "schedulechoice.h"

#include <vieweditelementwidget.h>

#include <QMap>
#include <QMetaObject>
#include <QVector>

#include <array>
#include <memory>

class QPlainTextEdit;
class ScheduleValidator;
namespace Ui
{
class NotificationsWidget;
}

/// The editor of the quota warnings: the tasks of the cron file, one at a time, and the texts of the files that the
/// shown task uses.
///
/// Only what was edited is exported anew: a schedule and a text that nobody touched go back as they came.
class NotificationsWidget : public ViewEditElementWidget
{
    Q_OBJECT

public:
    explicit NotificationsWidget(Module *module, AccessCheck access, QWidget *parent = nullptr);
    ~NotificationsWidget() override;

    /// Shows a NotificationsData, with the task that was shown before.
    void afterSuccessfulRead(Element *element, ElementData *record) override;
    /// The read that follows finds the shown task by its place in the file.
    void afterSuccessfulUpdate() override;
    /// Also no edited schedule that the grammar of the expert mode does not accept.
    bool isContentValid() const override;
    std::unique_ptr<ElementData> exportElementData() const override;

public Q_SLOTS:
    /// Shows that task; an empty form for a name that no task has.
    void currentJobChanged(const QString &jobName);
    void connectChangeDataWidgets();
    /// Marks the content changed. Until the next read tasks are neither switched nor added nor deleted.
    void changeData();
    /// Follows the chosen mode.
    void cronWidgetsChanged();
    /// Writes the chosen schedule into the expert line, unless that is where it was chosen.
    void changeExpertLineData();
    void addTask();
    void deleteTask();
    /// Keeps at least one of users and groups checked.
    void analizCheckBoxes();

protected:
    void resizeEvent(QResizeEvent *event) override;

private:
    /// The text of one of the files of a task.
    struct FileText
    {
        QPlainTextEdit *edit;
        QString WarnquotaJob::*path;
    };

    void disconnectChangeDataWidgets();
    void showNotes(const QVariantMap &notes);
    void showSchedule(const CronSchedule &schedule);
    void showMode();
    /// Says when cron would not take the line of the expert mode.
    void showRefusal();
    void setTasksEnabled(bool enabled);
    ScheduleChoice choice() const;

    std::unique_ptr<Ui::NotificationsWidget> _ui;
    std::array<FileText, 3> _texts;
    ScheduleValidator *_validator;
    QMap<QString, WarnquotaJob> _tasks; // as read, and those that were added
    QMap<QString, QString> _files;      // as read
    QVariant _asRead;                   // what the record said under asReadKey(), for the update
    ScheduleChoice _shown;              // of the current task, before it was edited
    QString _taskToShow;                // after the next read; empty for the one that is shown
    QVector<QMetaObject::Connection> _changeConnections;
};
