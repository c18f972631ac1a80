// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <elementtask.h>

/// Reads the note. A file that is not there yet is an empty note.
class ReadNote : public ReadPropertyHeavyTask
{
public:
    explicit ReadNote(Element *element);
    void run() override;
};

/// Replaces the note.
class WriteNote : public UpdateTask
{
public:
    WriteNote(Element *element, std::unique_ptr<ElementData> data);
    void run() override;

private:
    void write(const QString &note);
};
