// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "taskindicator.h"

#include "tasklistmodel.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QProgressBar>

TaskIndicator::TaskIndicator(TaskListModel *tasks, QWidget *parent)
    : QWidget(parent)
    , _tasks(tasks)
    , _text(new QLabel(this))
    , _progress(new QProgressBar(this))
{
    _text->setTextFormat(Qt::PlainText);
    _progress->setRange(0, 0); // how long a task will take is not known
    _progress->setTextVisible(false);
    _progress->setAccessibleName(tr("A task is running"));
    _progress->setFixedSize(12 * fontMetrics().averageCharWidth(), fontMetrics().height());
    auto *row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->addWidget(_text);
    row->addWidget(_progress);
    hide();
    connect(tasks, &QAbstractItemModel::rowsInserted, this, &TaskIndicator::showCurrentTask);
    connect(tasks, &QAbstractItemModel::dataChanged, this, &TaskIndicator::showCurrentTask);
}

void TaskIndicator::showCurrentTask()
{
    const QString description = _tasks->currentDescription();
    _text->setText(description);
    setHidden(description.isEmpty());
}
