// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "wheelguard.h"

#include <QEvent>
#include <QWidget>

void WheelGuard::guard(QWidget *widget)
{
    widget->setFocusPolicy(Qt::StrongFocus);
    widget->installEventFilter(this);
}

bool WheelGuard::eventFilter(QObject *watched, QEvent *event)
{
    const auto *widget = qobject_cast<const QWidget *>(watched);
    if (event->type() != QEvent::Wheel || !widget || widget->hasFocus())
        return QObject::eventFilter(watched, event);
    event->ignore();
    return true;
}
