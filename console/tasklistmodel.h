// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <taskobserver.h>

#include <QAbstractTableModel>
#include <QTimer>

#include <deque>

/// What was done and is being done, newest first. It keeps a bounded number of tasks that have ended, and of what each
/// said.
class TaskListModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    enum Column
    {
        StateColumn,
        TaskColumn,
        ElementColumn,
        StartedColumn,
        DurationColumn,
        MessageColumn, ///< the message of a task that has ended; of one that runs how far it is, else what it said last
        ColumnCount
    };
    static constexpr int maximumTasks = 500;
    static constexpr int maximumDetails = 1000;

    explicit TaskListModel(TaskObserver &observer, QObject *parent = nullptr);

    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

    /// All that is known of a task, in lines, to read and to copy.
    QString fullText(const QModelIndex &index) const;
    /// Forgets the tasks that have ended.
    void clearFinished();

    /// Whether the task can be stopped now.
    bool canCancel(const QModelIndex &index) const;
    void cancel(const QModelIndex &index);

    /// The first of the tasks that run or wait and change the machine; else the first that runs or waits. Empty text
    /// for none.
    QString currentDescription() const;
    /// What that task said last.
    QString currentActivity() const;
    /// How far it is; nothing in all where that is not known.
    TaskProgress currentProgress() const;
    /// "12 of 340 accounts"; empty where nothing is known.
    static QString progressText(const TaskProgress &progress);

private:
    struct Entry
    {
        TaskReport report;
        QStringList details;
        TaskProgress progress;
        bool isOver() const { return report.status != TaskDescription::NotFinished; }
    };

    void queued(const TaskReport &report);
    void update(const TaskReport &report);
    void addDetail(quint64 id, const QString &text);
    void setProgress(quint64 id, const TaskProgress &progress);
    void tick();
    const Entry *current() const;
    int rowOf(quint64 id) const;
    void rowChanged(int row, Column first = StateColumn, Column last = MessageColumn);
    static QString stateText(const Entry &entry);
    static QString durationText(const Entry &entry);
    static QString message(const Entry &entry);

    TaskObserver &_observer;
    std::deque<Entry> _entries; // newest first
    QTimer _ticking;
};
