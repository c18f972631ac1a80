// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "messageboxes.h"

#include <QAbstractButton>
#include <QApplication>
#include <QEvent>
#include <QPushButton>

MessageBoxes::MessageBoxes()
{
    qApp->installEventFilter(this);
}

QStringList MessageBoxes::takeTexts()
{
    return std::exchange(_texts, {});
}

bool MessageBoxes::eventFilter(QObject *watched, QEvent *event)
{
    auto *box = qobject_cast<QMessageBox *>(watched);
    if (box && event->type() == QEvent::Show) {
        _texts.append(box->text());
        QAbstractButton *answer = box->button(_preferred);
        if (!answer)
            answer = box->defaultButton() ? box->defaultButton() : box->buttons().constFirst();
        QMetaObject::invokeMethod(answer, &QAbstractButton::click, Qt::QueuedConnection);
    }
    return QObject::eventFilter(watched, event);
}
