// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "searchfield.h"

#include <QAction>
#include <QIcon>
#include <QKeyEvent>

namespace
{
constexpr int pauseMilliseconds = 150;
}

SearchField::SearchField(QWidget *parent)
    : QLineEdit(parent)
{
    addAction(QIcon::fromTheme(QStringLiteral("edit-find")), LeadingPosition);
    setClearButtonEnabled(true);
    _pause.setSingleShot(true);
    _pause.setInterval(pauseMilliseconds);
    connect(&_pause, &QTimer::timeout, this, &SearchField::announce);
    connect(this, &QLineEdit::textChanged, this, [this](const QString &text) {
        if (text.isEmpty())
            announce();
        else
            _pause.start();
    });
    connect(this, &QLineEdit::returnPressed, this, &SearchField::announce);
}

void SearchField::resume(const QString &text)
{
    _announced = text; // and so nobody is told
    setText(text);
    _pause.stop();
}

void SearchField::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Escape && !text().isEmpty()) {
        clear();
    } else if (event->key() == Qt::Key_Down) {
        announce();
        Q_EMIT leftDownwards();
    } else {
        QLineEdit::keyPressEvent(event);
    }
}

void SearchField::announce()
{
    _pause.stop();
    if (text() == _announced)
        return;
    _announced = text();
    Q_EMIT searched(_announced);
}
