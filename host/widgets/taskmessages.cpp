// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "taskmessages.h"

#include <taskobserver.h>

#include <QCoreApplication>
#include <QStringList>

#include <algorithm>

void TaskMessages::note(const TaskReport &finished)
{
    Element *element = finished.element.data();
    const auto replaced = [&finished, element](const Entry &entry) {
        const Element *of = entry.element.data();
        return !of || (of == element && entry.changesMachine == finished.changesMachine);
    };
    _entries.erase(std::remove_if(_entries.begin(), _entries.end(), replaced), _entries.end());
    const bool isUnread =
        finished.status == TaskDescription::Cancelled && !finished.changesMachine && isStillUnread(finished);
    if (!element || (finished.status != TaskDescription::Failed && !isUnread))
        return;
    QString text = finished.message.trimmed();
    if (text.isEmpty())
        text = QCoreApplication::translate("ElementPages", "%1: failed, without saying why.").arg(finished.description);
    _entries.push_back({element, finished.changesMachine, finished.isNote, text});
}

void TaskMessages::add(Element *element, bool changesMachine, const QString &text)
{
    _entries.push_back({element, changesMachine, false, text});
}

void TaskMessages::forget(const Element *element)
{
    const auto ofElement = [element](const Entry &entry) { return entry.element.data() == element; };
    _entries.erase(std::remove_if(_entries.begin(), _entries.end(), ofElement), _entries.end());
}

bool TaskMessages::hasFailedUpdate(const Element *element) const
{
    return std::any_of(_entries.begin(), _entries.end(), [element](const Entry &entry) {
        return element && entry.element.data() == element && entry.changesMachine;
    });
}

bool TaskMessages::hasFailure(const Element *element) const
{
    return std::any_of(_entries.begin(), _entries.end(), [element](const Entry &entry) {
        return element && entry.element.data() == element && !entry.isNote;
    });
}

QString TaskMessages::text(const Element *element) const
{
    QStringList texts;
    for (const Entry &entry : _entries)
        if (element && entry.element.data() == element)
            texts.append(entry.text);
    return texts.join(QLatin1Char('\n'));
}
