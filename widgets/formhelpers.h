// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QObject>
#include <QVector>

class QSpinBox;
class QWidget;

/// What the forms of this folder have in common.

/// Connections that are made one by one and cut together.
class ConnectionList
{
public:
    void operator+=(const QMetaObject::Connection &connection) { _connections += connection; }
    void cut();

private:
    QVector<QMetaObject::Connection> _connections;
};

/// Keeps the spin box's suffix in the plural of its value. The context and the source text of the translation are kept,
/// not copied.
void keepPluralSuffix(QSpinBox *spinBox, const char *context, const char *suffix);

/// Gives a screen reader the tool tips of a form without their markup.
void describeByToolTips(const QWidget *form);
