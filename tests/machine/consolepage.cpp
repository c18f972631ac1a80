// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "consolepage.h"

#include <taskobserver.h>

ConsolePage::ConsolePage(RealConsole &console, const QStringList &titles)
    : _console(console)
    , _titles(titles)
{
    connect(TaskObserver::instance(), &TaskObserver::taskDetail, this, &ConsolePage::noteDetail);
    connect(TaskObserver::instance(), &TaskObserver::taskFinished, this, &ConsolePage::noteEnd);
}

bool ConsolePage::open()
{
    return _console.driver().open(_titles) && _console.driver().editor();
}

ConsolePage::Applied ConsolePage::apply()
{
    _applied = {};
    _applied.message = QStringLiteral("Apply did nothing.");
    _details.clear();
    _boxes.takeTexts();
    const bool isDone = _console.click(QStringLiteral("applyAction")) && _console.driver().settle();
    _applied.succeeded = _applied.succeeded && isDone;
    _applied.boxes = _boxes.takeTexts();
    return _applied;
}

void ConsolePage::noteDetail(quint64 id, const QString &text)
{
    Q_UNUSED(id) // tasks run one after the other
    _details.append(text);
}

void ConsolePage::noteEnd(const TaskReport &task)
{
    if (!task.changesMachine)
        return;
    _applied.succeeded = task.status == TaskDescription::Succeeded;
    _applied.message = task.message;
    _applied.details = _details;
    _applied.milliseconds = task.runMilliseconds;
}
