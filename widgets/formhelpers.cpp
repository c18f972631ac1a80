// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "formhelpers.h"

#include <QCoreApplication>
#include <QSpinBox>
#include <QTextDocumentFragment>

void ConnectionList::cut()
{
    for (const QMetaObject::Connection &connection : qAsConst(_connections))
        QObject::disconnect(connection);
    _connections.clear();
}

void keepPluralSuffix(QSpinBox *spinBox, const char *context, const char *suffix)
{
    const auto renew = [=](int value) {
        spinBox->setSuffix(QCoreApplication::translate(context, suffix, nullptr, value));
    };
    renew(spinBox->value());
    QObject::connect(spinBox, qOverload<int>(&QSpinBox::valueChanged), spinBox, renew);
}

void describeByToolTips(const QWidget *form)
{
    const QList<QWidget *> widgets = form->findChildren<QWidget *>();
    for (QWidget *widget : widgets)
        if (!widget->toolTip().isEmpty() && widget->accessibleDescription().isEmpty())
            widget->setAccessibleDescription(QTextDocumentFragment::fromHtml(widget->toolTip()).toPlainText());
}
