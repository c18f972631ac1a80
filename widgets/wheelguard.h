// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QObject>

/// Keeps the wheel from changing values in passing: who scrolls a page does not mean the spin box, or the box with a
/// choice, that comes under the pointer. Only the one with the focus turns.
class WheelGuard : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

    void guard(QWidget *widget);

    bool eventFilter(QObject *watched, QEvent *event) override;
};
