// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <element.h>

#include <QString>

#include <vector>

struct TaskReport;

/// What the last failed task of each element said, until a task of the same kind succeeds: a read that succeeds does
/// not hide why a write failed, since every write is followed by a read. A read that was cancelled counts as failed
/// where there is nothing to show. Notes (TaskReport::isNote) are kept likewise.
class TaskMessages
{
public:
    void note(const TaskReport &finished);
    /// Says something of an element that no task said.
    void add(Element *element, bool changesMachine, const QString &text);
    void forget(const Element *element);
    bool hasFailedUpdate(const Element *element) const;
    /// Empty when nothing failed.
    QString text(const Element *element) const;
    /// Whether something did fail: the text holds more than notes.
    bool hasFailure(const Element *element) const;

private:
    struct Entry
    {
        NodePointer<Element> element;
        bool changesMachine;
        bool isNote;
        QString text;
    };

    std::vector<Entry> _entries; // failures are few
};
