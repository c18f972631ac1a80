// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "elementtask.h"

#include "elementeditor.h"

namespace
{

/// The main editor of an element while that shows it; null for none, and for an element that is gone.
ElementEditor *editorShowing(Element *element)
{
    ElementEditor *editor = element ? element->elementWidget(ElementEditor::MainRole) : nullptr;
    return editor && editor->element() == element ? editor : nullptr;
}

} // namespace

ElementTask::ElementTask(Element *element, std::unique_ptr<ElementData> data)
    : _element(element)
    , _title(element ? element->title() : QString())
    , _data(std::move(data))
{}

ElementTask::~ElementTask() = default;

TaskDescription::TaskStatus ReadPropertyHeavyTask::afterRun()
{
    Element *target = element();
    if (!target || !elementData())
        return status();
    elementData()->configureParams();
    target->setRecord(takeElementData());
    ElementEditor *editor = editorShowing(target);
    if (editor && !editor->isContentChanged()) // what was typed is replaced by a revert or a successful update only
        editor->afterSuccessfulRead(target, target->record());
    return status();
}

TaskDescription::TaskStatus UpdateTask::afterRun()
{
    Element *target = element();
    if (target && target->availableOperations().testFlag(OperationType::Read))
        target->performOperation(OperationType::Read, nullptr, 0);
    if (status() != Succeeded)
        return status();
    // Looked up anew for each step: an editor may ask the administrator something, and then anything may have happened.
    if (ElementEditor *editor = editorShowing(element()))
        editor->afterSuccessfulUpdate();
    if (ElementEditor *editor = editorShowing(element()))
        editor->setUnchanged();
    return status();
}

bool UpdateTask::changesMachine() const
{
    return true;
}
