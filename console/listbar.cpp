// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "listbar.h"

#include "elementmenu.h"
#include "searchfield.h"

#include <listelementwidget.h>

#include <QComboBox>
#include <QHBoxLayout>

ListBar::ListBar(QWidget *parent)
    : QWidget(parent)
    , _search(new SearchField(this))
    , _variants(new QComboBox(this))
{
    _search->setObjectName(QStringLiteral("listSearchField"));
    _search->setPlaceholderText(tr("Search this list (Ctrl+Shift+F)"));
    _search->setToolTip(tr("Shows the rows that contain the text.\nDown goes to the list, Escape ends the search."));
    _search->setAccessibleName(tr("Search this list"));
    _variants->setObjectName(QStringLiteral("variantBox"));
    _variants->setAccessibleName(tr("Which of them are shown"));
    _variants->setSizeAdjustPolicy(QComboBox::AdjustToContents);
    _variants->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);

    auto *row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    _search->setFixedWidth(40 * fontMetrics().averageCharWidth());
    row->addWidget(_search);
    row->addWidget(_variants);
    setSizePolicy(QSizePolicy::Maximum, QSizePolicy::Preferred);

    connect(_search, &SearchField::searched, this, [this](const QString &text) {
        if (!_list)
            return;
        _searches.insert(_list, text);
        _list->setFilterText(text);
    });
    connect(_search, &SearchField::leftDownwards, this, [this] {
        if (_list)
            _list->setFocus();
    });
    connect(_variants, qOverload<int>(&QComboBox::activated), this, [this](int variant) {
        if (_element)
            chooseVariant(*_element.data(), variant);
    });
}

void ListBar::setList(ListElementWidget *list)
{
    if (list != _list) {
        if (list)
            connect(list, &QObject::destroyed, this, &ListBar::forget, Qt::UniqueConnection);
        _list = list;
        _search->resume(_searches.value(list));
    }
    _element = list ? list->element() : nullptr;
    updateVariants();
}

void ListBar::forget(QObject *list)
{
    _searches.remove(list);
}

void ListBar::updateVariants()
{
    const QStringList names = _element ? variantNames(*_element.data()) : QStringList();
    if (names != _variantNames) { // else it may be open
        _variantNames = names;
        _variants->clear();
        _variants->addItems(names);
    }
    _variants->setHidden(names.isEmpty());
    if (_element)
        _variants->setCurrentIndex(_element->displayChildrenVariant());
}
