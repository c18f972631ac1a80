// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QApplication>
#include <QWheelEvent>
#include <QWidget>

/// Turns the wheel over a widget. Whether that took it: if not, it goes on to the page, which scrolls.
inline bool turnedWheel(QWidget *widget, int delta)
{
    const QPointF at = widget->rect().center();
    QWheelEvent event(at, widget->mapToGlobal(at.toPoint()), QPoint(), QPoint(0, delta), Qt::NoButton, Qt::NoModifier,
                      Qt::NoScrollPhase, false);
    QApplication::sendEvent(widget, &event);
    return event.isAccepted();
}
