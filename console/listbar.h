// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <element.h>

#include <QPointer>
#include <QWidget>

class ListElementWidget;
class QComboBox;
class SearchField;

/// Narrows the list that is shown: to the rows with a text, and to a display variant of its container.
class ListBar : public QWidget
{
    Q_OBJECT

public:
    explicit ListBar(QWidget *parent = nullptr);

    /// The list of the page in front; null for a page that is none. A list that is left shows all its rows again.
    void setList(ListElementWidget *list);

    SearchField *searchField() const { return _search; }

private:
    void updateVariants();

    QPointer<ListElementWidget> _list;
    NodePointer<Element> _element;
    SearchField *_search;
    QComboBox *_variants;
};
