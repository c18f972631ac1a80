// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "taskpane.h"

#include "tasklistmodel.h"
#include "ui_taskpane.h"

#include <isolatingdelegate.h>

#include <QClipboard>
#include <QScrollBar>
#include <QTextCursor>

#include <algorithm>

TaskPane::TaskPane(TaskListModel *tasks, QWidget *parent)
    : QWidget(parent)
    , _ui(std::make_unique<Ui::TaskPane>())
    , _tasks(tasks)
{
    _ui->setupUi(this);
    _ui->view->setModel(tasks);
    _ui->view->setItemDelegate(new IsolatingDelegate(_ui->view));
    const int character = fontMetrics().averageCharWidth();
    const int widths[] = {16, 38, 22, 13, 12};
    for (int column = 0; column < TaskListModel::MessageColumn; ++column)
        _ui->view->setColumnWidth(column, widths[column] * character);
    _ui->splitter->setStretchFactor(0, 3);
    _ui->splitter->setStretchFactor(1, 2);
    _ui->details->setHidden(true);
    _ui->details->setUndoRedoEnabled(false); // nobody edits it
    setFocusProxy(_ui->view);

    connect(_ui->view->selectionModel(), &QItemSelectionModel::currentChanged, this, &TaskPane::showDetails);
    connect(tasks, &QAbstractItemModel::dataChanged, this, &TaskPane::showDetails);
    connect(_ui->detailsButton, &QToolButton::toggled, _ui->details, &QWidget::setVisible);
    connect(_ui->view, &QTreeView::activated, _ui->detailsButton, [this] { _ui->detailsButton->setChecked(true); });
    _ui->view->addActions({_ui->cancelAction, _ui->copyAction});
    _ui->cancelButton->setDefaultAction(_ui->cancelAction);
    _ui->copyButton->setDefaultAction(_ui->copyAction);
    connect(_ui->cancelAction, &QAction::triggered, this, [this] { _tasks->cancel(_ui->view->currentIndex()); });
    connect(_ui->copyAction, &QAction::triggered, this, &TaskPane::copy);
    connect(_ui->clearButton, &QToolButton::clicked, tasks, &TaskListModel::clearFinished);
    showDetails();
}

TaskPane::~TaskPane() = default;

void TaskPane::showDetails()
{
    const QModelIndex current = _ui->view->currentIndex();
    _ui->copyAction->setEnabled(current.isValid());
    _ui->cancelAction->setEnabled(_tasks->canCancel(current));
    const QString text = current.isValid() ? _tasks->fullText(current) : QString();
    if (current != _shown)
        _ui->details->setPlainText(text);
    else
        changeDetails(text);
    _shown = current;
}

/// Only what differs: what is being read stays in sight, and what is selected stays so, while a running task goes on
/// talking.
void TaskPane::changeDetails(const QString &text)
{
    const QString before = _ui->details->toPlainText();
    if (text == before)
        return;
    const int shorter = std::min(text.size(), before.size());
    int same = 0;
    while (same < shorter && text.at(same) == before.at(same))
        ++same;
    int sameEnd = 0;
    while (sameEnd < shorter - same && text.at(text.size() - 1 - sameEnd) == before.at(before.size() - 1 - sameEnd))
        ++sameEnd;
    const int position = _ui->details->verticalScrollBar()->value();
    QTextCursor edit(_ui->details->document());
    edit.setPosition(same);
    edit.setPosition(before.size() - sameEnd, QTextCursor::KeepAnchor);
    edit.insertText(text.mid(same, text.size() - same - sameEnd));
    if (_ui->details->toPlainText() != text)
        _ui->details->setPlainText(text); // it holds characters that a document writes otherwise
    _ui->details->verticalScrollBar()->setValue(position);
}

void TaskPane::copy()
{
    QGuiApplication::clipboard()->setText(_tasks->fullText(_ui->view->currentIndex()));
}
