// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "elidedlabel.h"

#include <plaintooltip.h>

#include <QEvent>

ElidedLabel::ElidedLabel(QWidget *parent)
    : QLabel(parent)
{
    setTextFormat(Qt::PlainText);
    // Its text follows its width, so its width must not follow its text.
    setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
}

void ElidedLabel::setFullText(const QString &text)
{
    _fullText = text.simplified();
    setAccessibleName(_fullText);
    fit();
}

void ElidedLabel::resizeEvent(QResizeEvent *event)
{
    QLabel::resizeEvent(event);
    fit();
}

void ElidedLabel::changeEvent(QEvent *event)
{
    QLabel::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange)
        fit();
}

void ElidedLabel::fit()
{
    const QString fitting = fontMetrics().elidedText(_fullText, Qt::ElideRight, contentsRect().width());
    setText(fitting);
    setToolTip(fitting == _fullText ? QString() : plainToolTip(_fullText));
}
