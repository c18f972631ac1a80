// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "abstracttask.h"
#include "element.h"
#include "elementdata.h"

#include <memory>

/// A task for one element, which may be deleted before the task ends.
class KRA_EXPORT ElementTask : public AbstractTask
{
public:
    explicit ElementTask(Element *element, std::unique_ptr<ElementData> data = nullptr);
    ~ElementTask() override;

    /// Null when the element was deleted. User-interface thread only.
    Element *element() const { return _element.data(); }
    /// The element's title when the task was made. Any thread.
    QString elementTitle() const { return _title; }
    /// The record: the result of a read, the input of an update. Null when there is none.
    ElementData *elementData() const { return _data.get(); }
    void setElementData(std::unique_ptr<ElementData> data) { _data = std::move(data); }

protected:
    std::unique_ptr<ElementData> takeElementData() { return std::move(_data); }

private:
    NodePointer<Element> _element;
    QString _title;
    std::unique_ptr<ElementData> _data;
};

/// Reads the children of a container. The container's content counts as read when the task has ended, however it ended.
class KRA_EXPORT ReadContentTask : public ElementTask
{
public:
    using ElementTask::ElementTask;
};

/// Reads an element's record. Also a read that failed hands over the record it has.
class KRA_EXPORT ReadPropertyHeavyTask : public ElementTask
{
public:
    using ElementTask::ElementTask;
    /// Gives the record to the element, and to the element's main editor while that shows the element and was not
    /// edited.
    TaskStatus afterRun() override;
};

/// Applies a record to the machine.
class KRA_EXPORT UpdateTask : public ElementTask
{
public:
    using ElementTask::ElementTask;
    /// Reads the element again and, when the task succeeded, tells the main editor that shows it. Otherwise the editor
    /// keeps what was typed.
    TaskStatus afterRun() override;
    bool changesMachine() const override;
};
