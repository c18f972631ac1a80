// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <kraglobal.h>

#include <QObject>

/// Keeps the wheel from changing values in passing: a spin box, or a box with a choice, turns only while it has the
/// focus. Otherwise the wheel scrolls the page on which it stands.
class KRA_EXPORT WheelGuard : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

    void guard(QWidget *widget);

    bool eventFilter(QObject *watched, QEvent *event) override;
};
