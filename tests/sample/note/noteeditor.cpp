// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "noteeditor.h"

#include "notedata.h"
#include "noteelement.h"

#include <QPlainTextEdit>
#include <QSignalBlocker>
#include <QVBoxLayout>

NoteEditor::NoteEditor(Module *module)
    : ViewEditElementWidget(module, &Element::everybody)
    , _noteEdit(new QPlainTextEdit)
{
    setElementType(NoteElement::typeName());
    _noteEdit->setObjectName(QStringLiteral("noteEdit"));
    _noteEdit->setAccessibleName(tr("Note"));
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(_noteEdit);
    connect(_noteEdit, &QPlainTextEdit::textChanged, this, &NoteEditor::changeContent);
}

void NoteEditor::afterSuccessfulRead(Element *element, ElementData *record)
{
    if (const auto *note = dynamic_cast<const NoteData *>(record)) {
        const QSignalBlocker blocker(_noteEdit); // what is shown now was not typed
        _noteEdit->setPlainText(note->note);
    }
    ViewEditElementWidget::afterSuccessfulRead(element, record);
}

std::unique_ptr<ElementData> NoteEditor::exportElementData() const
{
    auto record = std::make_unique<NoteData>();
    record->note = _noteEdit->toPlainText();
    return record;
}
