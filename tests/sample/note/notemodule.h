// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <module.h>

/// Brings the note's element and editor, and turns what is asked of them into tasks.
class NoteModule : public Module
{
    Q_OBJECT

public:
    explicit NoteModule(QObject *parent);
    void performOperation(ContextOperation *operation, OperationType type, ElementData *data, int extra) override;
};
