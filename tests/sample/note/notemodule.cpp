// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "notemodule.h"

#include "noteeditor.h"
#include "noteelement.h"
#include "notetasks.h"

#include <taskobserver.h>

NoteModule::NoteModule(QObject *parent)
    : Module(QStringLiteral("SampleNoteModule"), parent)
{
    setAttachName(QStringLiteral("LocalComputerModule"));
    setKind(BranchKind);
    setData(QStringLiteral("description"), tr("A note on this computer"));
    new NoteElement(this); // as a top element it belongs to this module
    insertElementWidget(new NoteEditor(this));
    connectElementWidgets();
}

void NoteModule::performOperation(ContextOperation *operation, OperationType type, ElementData *data, int extra)
{
    auto *element = dynamic_cast<NoteElement *>(operation);
    if (element && type == OperationType::Read)
        TaskObserver::instance()->performTask(new ReadNote(element));
    else if (element && type == OperationType::Write)
        TaskObserver::instance()->performTask(new WriteNote(element, std::unique_ptr<ElementData>(data)));
    else
        Module::performOperation(operation, type, data, extra);
}
