// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "taskindicator.h"

#include "tasklistmodel.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QProgressBar>

#include <algorithm>

namespace
{
constexpr int steps = 1000;
}

TaskIndicator::TaskIndicator(TaskListModel *tasks, QWidget *parent)
    : QWidget(parent)
    , _tasks(tasks)
    , _text(new QLabel(this))
    , _progress(new QProgressBar(this))
{
    _text->setTextFormat(Qt::PlainText);
    _progress->setAccessibleName(tr("A task is running"));
    _progress->setAlignment(Qt::AlignCenter);
    _progress->setFixedWidth(32 * fontMetrics().averageCharWidth());
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
    const TaskProgress progress = _tasks->currentProgress();
    const bool isKnown = progress.total > 0;
    _progress->setTextVisible(isKnown);
    _progress->setFormat(TaskListModel::progressText(progress));
    _progress->setRange(0, isKnown ? steps : 0);
    if (isKnown) {
        const double part = static_cast<double>(progress.done) / static_cast<double>(progress.total);
        _progress->setValue(static_cast<int>(steps * std::min(part, 1.0)));
    }
    const QString description = _tasks->currentDescription();
    _text->setText(description);
    setHidden(description.isEmpty());
}
