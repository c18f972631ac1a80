// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <element.h>

/// The note, as a row of the tree under the element that the module attaches to.
class NoteElement : public OrdinaryElement
{
public:
    static QString typeName();
    explicit NoteElement(Module *module);
    QIcon icon() const override;
};
