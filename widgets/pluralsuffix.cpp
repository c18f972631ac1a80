// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "pluralsuffix.h"

#include <QCoreApplication>
#include <QSpinBox>

void PluralSuffix::keepFor(QSpinBox *spinBox, const char *context, const char *suffix)
{
    const auto renew = [=](int value) {
        spinBox->setSuffix(QCoreApplication::translate(context, suffix, nullptr, value));
    };
    renew(spinBox->value());
    QObject::connect(spinBox, qOverload<int>(&QSpinBox::valueChanged), spinBox, renew);
}
