// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <element.h>

#include <QHash>
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

    /// The list of the page in front; null for a page that is none. Whoever comes back to a list finds the search in it
    /// as it was left.
    void setList(ListElementWidget *list);

    SearchField *searchField() const { return _search; }

private:
    void forget(QObject *list);
    void updateVariants();

    QPointer<ListElementWidget> _list;
    NodePointer<Element> _element;
    QHash<const QObject *, QString> _searches; // by the list that they narrow
    SearchField *_search;
    QComboBox *_variants;
    QStringList _variantNames; // that it offers
};
