// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "form.h"

#include <QAbstractSpinBox>
#include <QCheckBox>
#include <QComboBox>
#include <QTest>

QStringList Form::choices(const QComboBox *box)
{
    QStringList texts;
    for (int i = 0; i < box->count(); ++i)
        texts.append(box->itemText(i));
    return texts;
}

bool Form::choose(QComboBox *box, const QString &text)
{
    if (!box->isEnabled())
        return false;
    QTest::keyClick(box, Qt::Key_Home);
    while (box->currentText() != text && box->currentIndex() + 1 < box->count())
        QTest::keyClick(box, Qt::Key_Down);
    return box->currentText() == text;
}

bool Form::check(QCheckBox *box, bool isChecked)
{
    if (box->isEnabled() && box->isChecked() != isChecked)
        QTest::keyClick(box, Qt::Key_Space);
    return box->isChecked() == isChecked;
}

bool Form::type(QAbstractSpinBox *box, const QString &text)
{
    if (!box->isEnabled())
        return false;
    box->setFocus();
    box->selectAll();
    QTest::keyClicks(box, text);
    QTest::keyClick(box, Qt::Key_Tab);
    return true;
}
