// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <element.h>

#include <QMenu>

/// What can be done with an element, for the menu on its row. Once the element is gone, nothing.
class ElementMenu : public QMenu
{
    Q_OBJECT

public:
    ElementMenu(Element *element, bool isShown, QWidget *parent = nullptr);

Q_SIGNALS:
    void openChosen(Element *element);
    /// Show the element and read it again.
    void refreshChosen(Element *element);
    /// Another display variant is shown.
    void variantChosen();

private:
    void addVariants(const Element &element);

    NodePointer<Element> _element;
};

/// The names of an element's display variants, the one for all children first. Empty where there is nothing to choose.
QStringList variantNames(const Element &element);
/// Narrows what an element shows of its children.
void chooseVariant(Element &element, int variant);
