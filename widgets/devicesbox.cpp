// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "devicesbox.h"

#include <QComboBox>
#include <QSignalBlocker>

void DevicesBox::fill(QComboBox *box, const QStringList &devices, const QString &wanted)
{
    const QSignalBlocker silent(box);
    box->clear();
    box->addItems(devices);
    box->setCurrentText(wanted);
}
