// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "taskpane.h"

#include "tasklistmodel.h"
#include "ui_taskpane.h"

#include <QClipboard>
#include <QScrollBar>

TaskPane::TaskPane(TaskListModel *tasks, QWidget *parent)
    : QWidget(parent)
    , _ui(std::make_unique<Ui::TaskPane>())
    , _tasks(tasks)
{
    _ui->setupUi(this);
    _ui->view->setModel(tasks);
    const int character = fontMetrics().averageCharWidth();
    const int widths[] = {16, 38, 22, 13, 12};
    for (int column = 0; column < TaskListModel::MessageColumn; ++column)
        _ui->view->setColumnWidth(column, widths[column] * character);
    _ui->splitter->setStretchFactor(0, 3);
    _ui->splitter->setStretchFactor(1, 2);
    _ui->details->setHidden(true);
    setFocusProxy(_ui->view);

    connect(_ui->view->selectionModel(), &QItemSelectionModel::currentChanged, this, &TaskPane::showDetails);
    connect(tasks, &QAbstractItemModel::dataChanged, this, &TaskPane::showDetails);
    connect(_ui->detailsButton, &QToolButton::toggled, _ui->details, &QWidget::setVisible);
    connect(_ui->view, &QTreeView::activated, _ui->detailsButton, [this] { _ui->detailsButton->setChecked(true); });
    connect(_ui->copyButton, &QToolButton::clicked, this, &TaskPane::copy);
    connect(_ui->clearButton, &QToolButton::clicked, tasks, &TaskListModel::clearFinished);
    showDetails();
}

TaskPane::~TaskPane() = default;

void TaskPane::showDetails()
{
    const QModelIndex current = _ui->view->currentIndex();
    _ui->copyButton->setEnabled(current.isValid());
    const QString text = current.isValid() ? _tasks->fullText(current) : QString();
    if (text == _ui->details->toPlainText())
        return;
    // What is being read stays in sight while a running task goes on talking.
    const int position = _ui->details->verticalScrollBar()->value();
    _ui->details->setPlainText(text);
    _ui->details->verticalScrollBar()->setValue(position);
}

void TaskPane::copy()
{
    QGuiApplication::clipboard()->setText(_tasks->fullText(_ui->view->currentIndex()));
}
