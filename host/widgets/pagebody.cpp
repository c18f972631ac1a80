// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "pagebody.h"

#include "elementwidget.h"

#include <QLabel>
#include <QScrollArea>
#include <QSignalBlocker>
#include <QTabWidget>

#include <algorithm>

namespace
{
bool holdsTabStops(const QWidget *editor)
{
    const QList<QWidget *> widgets = editor->findChildren<QWidget *>();
    return std::any_of(widgets.begin(), widgets.end(),
                       [](const QWidget *widget) { return widget->focusPolicy() & Qt::TabFocus; });
}
} // namespace

PageBody::PageBody(QWidget *parent)
    : QStackedWidget(parent)
    , _tabs(new QTabWidget(this))
    , _emptyLabel(new QLabel(this))
{
    _tabs->setObjectName(QStringLiteral("pageTabs"));
    _tabs->setDocumentMode(true);
    _tabs->setTabBarAutoHide(true);
    // The bar is a tab stop by itself. Through the widget Tab would reach for it while it is hidden, and stay where it
    // is.
    _tabs->setFocusProxy(nullptr);
    _tabs->setFocusPolicy(Qt::NoFocus);
    connect(_tabs, &QTabWidget::currentChanged, this, &PageBody::frontEditorChanged);

    _emptyLabel->setObjectName(QStringLiteral("pageEmptyText"));
    _emptyLabel->setTextFormat(Qt::PlainText);
    _emptyLabel->setAlignment(Qt::AlignCenter);
    _emptyLabel->setWordWrap(true);
    _emptyLabel->setMargin(2 * _emptyLabel->fontMetrics().lineSpacing());
    _emptyLabel->setForegroundRole(QPalette::PlaceholderText);
    addWidget(_emptyLabel);
    addWidget(_tabs);
}

PageBody::~PageBody()
{
    const QSignalBlocker nobodyHears(_tabs);
    while (_tabs->count() > 0)
        giveBack(0);
}

void PageBody::setEditors(const std::vector<PageEditor> &editors, const QString &emptyText)
{
    const ElementWidget *before = frontEditor();
    const QWidget *focused = window()->focusWidget();
    const bool hasFocusWithin = focused && isAncestorOf(focused);
    {
        const QSignalBlocker oneChange(_tabs);
        for (int tab = _tabs->count() - 1; tab >= 0; --tab) {
            const ElementWidget *here = editorAt(tab);
            const bool stays = here && std::any_of(editors.begin(), editors.end(),
                                                   [here](const PageEditor &each) { return each.editor == here; });
            if (!stays)
                giveBack(tab);
        }
        // What stayed keeps its order, so that only new tabs are put in between.
        int tab = 0;
        for (const PageEditor &each : editors) {
            if (!each.editor)
                continue;
            if (editorAt(tab) != each.editor) {
                auto *area = new QScrollArea;
                area->setFrameShape(QFrame::NoFrame);
                area->setWidgetResizable(true);
                area->setWidget(each.editor);
                // An editor has the colour of the page around it.
                area->viewport()->setAutoFillBackground(false);
                each.editor->setAutoFillBackground(false);
                // Nobody sees that an area has the focus: it takes it only to be scrolled where nothing in it does.
                area->setFocusPolicy(holdsTabStops(each.editor) ? Qt::NoFocus : Qt::StrongFocus);
                _tabs->insertTab(tab, area, each.title);
                each.editor->show();
            }
            _tabs->setTabText(tab, each.title);
            _tabs->widget(tab)->setAccessibleName(each.title);
            ++tab;
        }
        if (!before && _tabs->count() > 0)
            _tabs->setCurrentIndex(0);
    }
    _emptyLabel->setText(emptyText);
    setCurrentWidget(_tabs->count() > 0 ? static_cast<QWidget *>(_tabs) : _emptyLabel);
    focused = window()->focusWidget();
    if (hasFocusWithin && !(focused && isAncestorOf(focused))) // it goes with the page
        (frontEditor() ? static_cast<QWidget *>(frontEditor()) : this)->setFocus();
    if (frontEditor() != before)
        Q_EMIT frontEditorChanged();
}

ElementWidget *PageBody::frontEditor() const
{
    return editorAt(_tabs->currentIndex());
}

void PageBody::bringToFront(ElementWidget *editor)
{
    for (int tab = 0; tab < _tabs->count(); ++tab)
        if (editorAt(tab) == editor)
            _tabs->setCurrentIndex(tab);
}

ElementWidget *PageBody::editorAt(int tab) const
{
    const auto *area = qobject_cast<const QScrollArea *>(_tabs->widget(tab));
    return area ? qobject_cast<ElementWidget *>(area->widget()) : nullptr;
}

void PageBody::giveBack(int tab)
{
    auto *area = qobject_cast<QScrollArea *>(_tabs->widget(tab));
    if (area->widget())
        area->takeWidget()->hide();
    delete area; // takes its tab with it
}
