// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <vieweditelementwidget.h>

class QPlainTextEdit;

/// Shows the note and lets it be edited.
class NoteEditor : public ViewEditElementWidget
{
    Q_OBJECT

public:
    explicit NoteEditor(Module *module);

    void afterSuccessfulRead(Element *element, ElementData *record) override;
    std::unique_ptr<ElementData> exportElementData() const override;

private:
    QPlainTextEdit *_noteEdit; // owned as a child
};
