// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "answers.h"

#include <taskobserver.h>

#include <QAbstractButton>
#include <QApplication>
#include <QEvent>
#include <QPointer>
#include <QTest>
#include <QTimer>

Answers::Answers(std::mt19937 &random)
    : _random(random)
{
    qApp->installEventFilter(this);
}

bool Answers::eventFilter(QObject *watched, QEvent *event)
{
    auto *dialog = qobject_cast<QDialog *>(watched);
    if (dialog && event->type() == QEvent::Show)
        QTimer::singleShot(0, dialog, [this, dialog] { answer(dialog); });
    return QObject::eventFilter(watched, event);
}

void Answers::answer(QDialog *dialog)
{
    const QPointer<QDialog> shown(dialog);
    constexpr int patience = 30000;
    if (_random() % 2 && !QTest::qWaitFor([] { return !TaskObserver::instance()->isBusy(); }, patience))
        qWarning("Tasks did not end while a dialog stood");
    if (!shown || !shown->isVisible())
        return;
    auto *box = qobject_cast<QMessageBox *>(dialog);
    if (!box)
        return dialog->reject();
    const QList<QAbstractButton *> buttons = box->buttons();
    QAbstractButton *button = buttons.at(static_cast<int>(_random() % static_cast<unsigned>(buttons.size())));
    if (box->text().contains(QLatin1String("reboot"), Qt::CaseInsensitive))
        button = box->button(QMessageBox::No); // no program of this computer is to run
    Q_EMIT chosen(box, button);
    if (button)
        button->click();
}
