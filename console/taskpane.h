// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QPersistentModelIndex>
#include <QWidget>

#include <memory>

class TaskListModel;

namespace Ui
{
class TaskPane;
}

/// The task list, and beside it everything that the chosen task said.
class TaskPane : public QWidget
{
    Q_OBJECT

public:
    explicit TaskPane(TaskListModel *tasks, QWidget *parent = nullptr);
    ~TaskPane() override;

private:
    void showDetails();
    void changeDetails(const QString &text);
    void copy();

    std::unique_ptr<Ui::TaskPane> _ui;
    TaskListModel *_tasks;
    QPersistentModelIndex _shown; // in the details
};
