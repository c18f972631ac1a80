// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "wholelistwidget.h"

#include <isolatingdelegate.h>

#include <QEvent>

WholeListWidget::WholeListWidget(QWidget *parent)
    : QListWidget(parent)
{
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setResizeMode(Adjust);
    setItemDelegate(new IsolatingDelegate(this));
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

QSize WholeListWidget::sizeHint() const
{
    return {sizeHintForColumn(0), wholeHeight()};
}

QSize WholeListWidget::minimumSizeHint() const
{
    return {0, wholeHeight()};
}

void WholeListWidget::changeEvent(QEvent *event)
{
    QListWidget::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange)
        layOut();
}

void WholeListWidget::resizeEvent(QResizeEvent *event)
{
    QListWidget::resizeEvent(event);
    layOut();
}

void WholeListWidget::layOut()
{
    doItemsLayout(); // the height follows from how the items wrap at this width
    updateGeometry();
}

int WholeListWidget::wholeHeight() const
{
    return contentsSize().height() + 2 * frameWidth();
}

TextListWidget::TextListWidget(QWidget *parent)
    : WholeListWidget(parent)
{
    setFrameShape(QFrame::NoFrame);
    viewport()->setAutoFillBackground(false);
    setEditTriggers(NoEditTriggers);
    setSelectionMode(NoSelection);
    setFocusPolicy(Qt::NoFocus);
    setWordWrap(true);
    hide();
}

void TextListWidget::setTexts(const QStringList &texts)
{
    clear();
    addItems(texts);
    setVisible(!texts.isEmpty());
    layOut();
}
