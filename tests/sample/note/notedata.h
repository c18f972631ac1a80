// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <elementdata.h>

/// The note as it stands in its file.
class NoteData : public ElementData
{
public:
    QString note;
};
