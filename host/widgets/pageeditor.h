// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <element.h>

#include <QPointer>
#include <QString>

#include <vector>

class ElementWidget;

/// One editor on a page, and the element it is to show there.
struct PageEditor
{
    QPointer<ElementWidget> editor;
    NodePointer<Element> element;
    QString title; ///< of its tab
};

/// The editors of an element's page: its own first, then those of its supplements that belong there, larger order
/// first.
std::vector<PageEditor> pageEditorsOf(Element *element);

/// What a page without editors says; `element` is null where none is current.
QString emptyPageText(const Element *element);
