// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "filetexts.h"
#include "notificationsdata.h"
#include "scheduleform.h"

#include <vieweditelementwidget.h>
#include <wheelguard.h>

#include <QMap>
#include <QMetaObject>
#include <QVector>

#include <memory>

/// The editor of the quota warnings: the runs of the cron file, which the page calls tasks, one at a time, and the
/// texts of the files that the shown run uses.
///
/// Only what was edited is exported anew: a run and a text that were not go back as they came.
class NotificationsWidget : public ViewEditElementWidget
{
    Q_OBJECT

public:
    explicit NotificationsWidget(Module *module, AccessCheck access, QWidget *parent = nullptr);
    ~NotificationsWidget() override;

    /// Shows a NotificationsData, with the run that was shown before.
    void afterSuccessfulRead(Element *element, ElementData *record) override;
    /// The read that follows finds the shown run by its place in the file.
    void afterSuccessfulUpdate() override;
    /// Also an edited schedule that the grammar of the expert mode does not accept.
    QString whyInvalid() const override;
    std::unique_ptr<ElementData> exportElementData() const override;

public Q_SLOTS:
    /// Shows that run; an empty form for a name that none has.
    void currentJobChanged(const QString &jobName);
    void connectChangeDataWidgets();
    /// Marks the content changed. Until the next read runs are neither switched nor added nor deleted.
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
    /// Asks before a run becomes root's, or its line loses something.
    ApplyWarning warningBeforeApply() const override;
    QWidget *invalidField() const override;
    void resizeEvent(QResizeEvent *event) override;

private:
    void disconnectChangeDataWidgets();
    void showNotes();
    void showRefusals();
    void setRunsEnabled(bool enabled);
    bool isScheduleValid() const;
    QString currentName() const;
    /// A run as the form says it. It is root's from the first edit on.
    WarnquotaJob fromForm(WarnquotaJob run) const;

    std::unique_ptr<Ui::NotificationsWidget> _ui;
    ScheduleForm _schedule;
    FileTexts _texts;
    WheelGuard _wheelGuard;
    QMap<QString, WarnquotaJob> _runs; // as read, and those that were added
    QMap<QString, QString> _files;     // as read
    std::optional<NotificationsAsRead> _asRead;
    NotificationNotes _notes;
    QMap<QString, QString> _refusals; // by the names of the runs that cron refuses
    QString _runToShow;               // after the next read; empty for the one that is shown
    QVector<QMetaObject::Connection> _changeConnections;
};
