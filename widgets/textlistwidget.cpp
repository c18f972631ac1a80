// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "textlistwidget.h"

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
