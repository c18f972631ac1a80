// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QWidget>

class QLabel;
class QProgressBar;
class TaskListModel;

/// Says in the status bar what is being done. Hidden while nothing is.
class TaskIndicator : public QWidget
{
    Q_OBJECT

public:
    explicit TaskIndicator(TaskListModel *tasks, QWidget *parent = nullptr);

private:
    void showCurrentTask();

    TaskListModel *_tasks;
    QLabel *_text;
    QProgressBar *_progress;
};
