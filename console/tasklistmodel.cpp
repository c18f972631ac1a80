// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tasklistmodel.h"

#include <plaintooltip.h>

#include <QIcon>
#include <QLocale>

#include <algorithm>

namespace
{
constexpr int tickMilliseconds = 500;

bool hasStarted(const TaskReport &report)
{
    return report.startedAt.isValid();
}

QString iconName(const TaskReport &report)
{
    switch (report.status) {
    case TaskDescription::Failed:
        return report.isNote ? QStringLiteral("kra-task-succeeded") : QStringLiteral("kra-task-failed");
    case TaskDescription::Succeeded:
        return QStringLiteral("kra-task-succeeded");
    case TaskDescription::Cancelled:
        return QStringLiteral("process-stop");
    case TaskDescription::NotFinished:
        break;
    }
    return hasStarted(report) ? QStringLiteral("kra-task-running") : QStringLiteral("kra-task-queued");
}

QString timeText(const QDateTime &time)
{
    return QLocale().toString(time.time(), QStringLiteral("HH:mm:ss"));
}
} // namespace

TaskListModel::TaskListModel(TaskObserver &observer, QObject *parent)
    : QAbstractTableModel(parent)
    , _observer(observer)
{
    _ticking.setInterval(tickMilliseconds);
    connect(&_ticking, &QTimer::timeout, this, &TaskListModel::tick);
    connect(&observer, &TaskObserver::taskQueued, this, &TaskListModel::queued);
    connect(&observer, &TaskObserver::taskStarted, this, &TaskListModel::update);
    connect(&observer, &TaskObserver::taskDetail, this, &TaskListModel::addDetail);
    connect(&observer, &TaskObserver::taskProgress, this, &TaskListModel::setProgress);
    connect(&observer, &TaskObserver::taskCancelling, this, &TaskListModel::update);
    connect(&observer, &TaskObserver::taskFinished, this, &TaskListModel::update);
}

int TaskListModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(_entries.size());
}

int TaskListModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : ColumnCount;
}

QVariant TaskListModel::data(const QModelIndex &index, int role) const
{
    // A view without a current row asks for the data of none when something is to be copied.
    if (!index.isValid() || !checkIndex(index))
        return {};
    const Entry &entry = _entries.at(static_cast<size_t>(index.row()));
    if (role == Qt::DecorationRole && index.column() == StateColumn)
        return QIcon::fromTheme(iconName(entry.report));
    if (role == Qt::TextAlignmentRole && index.column() == DurationColumn)
        return Element::numberAlignment();
    if (role == Qt::ToolTipRole && index.column() == MessageColumn)
        return plainToolTip(message(entry));
    if (role != Qt::DisplayRole)
        return {};
    switch (index.column()) {
    case StateColumn:
        return stateText(entry);
    case TaskColumn:
        return entry.report.description;
    case ElementColumn:
        return entry.report.elementTitle;
    case StartedColumn:
        return hasStarted(entry.report) ? timeText(entry.report.startedAt) : QString();
    case DurationColumn:
        return durationText(entry);
    default:
        return message(entry).simplified(); // one line of the list, whatever a program printed
    }
}

QVariant TaskListModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation == Qt::Horizontal && role == Qt::TextAlignmentRole && section == DurationColumn)
        return Element::numberAlignment();
    const QStringList texts = {tr("State"), tr("Task"), tr("Element"), tr("Started"), tr("Duration"), tr("Message")};
    return orientation == Qt::Horizontal && role == Qt::DisplayRole ? texts.value(section) : QVariant();
}

QString TaskListModel::fullText(const QModelIndex &index) const
{
    if (!index.isValid() || !checkIndex(index))
        return {};
    const Entry &entry = _entries.at(static_cast<size_t>(index.row()));
    const TaskReport &report = entry.report;
    QStringList lines(report.description);
    if (!report.elementTitle.isEmpty())
        lines.append(tr("Element: %1").arg(report.elementTitle));
    QString state = stateText(entry);
    if (hasStarted(report))
        state = tr("%1. Started at %2, %3.").arg(state, timeText(report.startedAt), durationText(entry));
    lines.append(state);
    for (const QString &text : {report.message, report.result})
        if (!text.isEmpty())
            lines += {QString(), text};
    if (!entry.details.isEmpty())
        lines += QStringList{QString()} + entry.details;
    return lines.join(QLatin1Char('\n'));
}

void TaskListModel::clearFinished()
{
    for (int row = rowCount() - 1; row >= 0; --row) {
        if (!_entries.at(static_cast<size_t>(row)).isOver())
            continue;
        beginRemoveRows({}, row, row);
        _entries.erase(_entries.begin() + row);
        endRemoveRows();
    }
}

bool TaskListModel::canCancel(const QModelIndex &index) const
{
    if (!index.isValid() || !checkIndex(index))
        return false;
    const Entry &entry = _entries.at(static_cast<size_t>(index.row()));
    return entry.report.isCancellable && !entry.report.isCancelled && !entry.isOver();
}

void TaskListModel::cancel(const QModelIndex &index)
{
    if (canCancel(index))
        _observer.cancel(_entries.at(static_cast<size_t>(index.row())).report.id);
}

TaskProgress TaskListModel::currentProgress() const
{
    const Entry *entry = current();
    return entry ? entry->progress : TaskProgress();
}

QString TaskListModel::progressText(const TaskProgress &progress)
{
    const QLocale locale;
    if (progress.total > 0)
        return tr("%1 of %2 %3")
            .arg(locale.toString(progress.done), locale.toString(progress.total), progress.unit)
            .trimmed();
    return progress.done > 0 ? tr("%1 %2").arg(locale.toString(progress.done), progress.unit).trimmed() : QString();
}

QString TaskListModel::currentDescription() const
{
    const Entry *entry = current();
    return entry ? entry->report.description : QString();
}

QString TaskListModel::currentActivity() const
{
    const Entry *entry = current();
    return entry ? message(*entry).simplified() : QString();
}

const TaskListModel::Entry *TaskListModel::current() const
{
    const Entry *first = nullptr;
    for (auto entry = _entries.rbegin(); entry != _entries.rend(); ++entry) {
        if (entry->isOver())
            continue;
        if (entry->report.changesMachine)
            return &*entry;
        if (!first)
            first = &*entry;
    }
    return first;
}

void TaskListModel::queued(const TaskReport &report)
{
    beginInsertRows({}, 0, 0);
    _entries.push_front({report, {}, {}});
    endInsertRows();
    while (rowCount() > maximumTasks && _entries.back().isOver()) {
        beginRemoveRows({}, rowCount() - 1, rowCount() - 1);
        _entries.pop_back();
        endRemoveRows();
    }
}

void TaskListModel::update(const TaskReport &report)
{
    const int row = rowOf(report.id);
    if (row < 0)
        return;
    _entries.at(static_cast<size_t>(row)).report = report;
    rowChanged(row);
    const bool runs = std::any_of(_entries.begin(), _entries.end(),
                                  [](const Entry &entry) { return hasStarted(entry.report) && !entry.isOver(); });
    if (!runs)
        _ticking.stop();
    else if (!_ticking.isActive())
        _ticking.start();
}

void TaskListModel::addDetail(quint64 id, const QString &text)
{
    const int row = rowOf(id);
    if (row < 0)
        return;
    QStringList &details = _entries.at(static_cast<size_t>(row)).details;
    details.append(text);
    if (details.size() > maximumDetails)
        details.removeFirst();
    rowChanged(row, MessageColumn, MessageColumn);
}

void TaskListModel::setProgress(quint64 id, const TaskProgress &progress)
{
    const int row = rowOf(id);
    if (row < 0)
        return;
    _entries.at(static_cast<size_t>(row)).progress = progress;
    rowChanged(row, MessageColumn, MessageColumn);
}

void TaskListModel::tick()
{
    for (int row = 0; row < rowCount(); ++row) {
        const Entry &entry = _entries.at(static_cast<size_t>(row));
        if (hasStarted(entry.report) && !entry.isOver())
            rowChanged(row, DurationColumn, DurationColumn);
    }
}

int TaskListModel::rowOf(quint64 id) const
{
    const auto found =
        std::find_if(_entries.begin(), _entries.end(), [id](const Entry &entry) { return entry.report.id == id; });
    return found == _entries.end() ? -1 : static_cast<int>(found - _entries.begin());
}

void TaskListModel::rowChanged(int row, Column first, Column last)
{
    Q_EMIT dataChanged(index(row, first), index(row, last));
}

QString TaskListModel::stateText(const Entry &entry)
{
    switch (entry.report.status) {
    case TaskDescription::Failed:
        return entry.report.isNote ? tr("Done") : tr("Failed");
    case TaskDescription::Succeeded:
        return tr("Done");
    case TaskDescription::Cancelled:
        return tr("Cancelled");
    case TaskDescription::NotFinished:
        break;
    }
    if (entry.report.isCancelled)
        return tr("Cancelling");
    return hasStarted(entry.report) ? tr("Running") : tr("Waiting");
}

QString TaskListModel::durationText(const Entry &entry)
{
    if (!hasStarted(entry.report))
        return {};
    const qint64 ended = entry.report.runMilliseconds;
    const qint64 milliseconds = ended >= 0 ? ended : entry.report.startedAt.msecsTo(QDateTime::currentDateTime());
    const qint64 seconds = std::max<qint64>(milliseconds, 0) / 1000;
    if (seconds >= 60)
        return tr("%1 min %2 s").arg(seconds / 60).arg(seconds % 60);
    if (ended < 0 || seconds >= 10)
        return tr("%1 s").arg(seconds);
    return tr("%1 s").arg(QLocale().toString(static_cast<double>(milliseconds) / 1000, 'f', 2));
}

QString TaskListModel::message(const Entry &entry)
{
    if (entry.isOver())
        return entry.report.message.isEmpty() ? entry.report.result : entry.report.message;
    const QString progress = progressText(entry.progress);
    return progress.isEmpty() && !entry.details.isEmpty() ? entry.details.constLast() : progress;
}
