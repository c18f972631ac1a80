// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "noteelement.h"

#include <QCoreApplication>

QString NoteElement::typeName()
{
    return QStringLiteral("SampleNoteElement");
}

NoteElement::NoteElement(Module *module)
    : OrdinaryElement(typeName(), QString(), QCoreApplication::translate("NoteElement", "Note"), module, &everybody,
                      Place::Top)
{}

QIcon NoteElement::icon() const
{
    return QIcon::fromTheme(QStringLiteral("accessories-text-editor"));
}
