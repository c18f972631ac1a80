// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QWidget>

/// The widget of that name in a form. A form without it ends the test program.
template<typename Widget>
Widget *formWidget(const QWidget &form, const QString &name)
{
    auto *found = form.findChild<Widget *>(name);
    if (!found)
        qFatal("The form has no %s", qPrintable(name));
    return found;
}

template<typename Widget>
Widget *formWidget(const QWidget &form, const char *name)
{
    return formWidget<Widget>(form, QString::fromLatin1(name));
}
