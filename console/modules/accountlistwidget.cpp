// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "accountlistwidget.h"

#include "accountmodule.h"

#include <elementtreeview.h>

#include <QVBoxLayout>

AccountListWidget::AccountListWidget(AccountModule *module)
    : ListElementWidget(module, &Element::everybody)
{
    setElementType(module->accountKind().containerType);
    setWindowTitle(module->accountKind().containerTitle);

    auto *view = new ElementTreeView(this);
    view->setObjectName(QStringLiteral("accountView"));
    setView(view, elementType());

    auto *whole = new QVBoxLayout(this);
    whole->setContentsMargins(0, 0, 0, 0);
    whole->addWidget(view);
}

void AccountListWidget::setElement(Element *element)
{
    ListElementWidget::setElement(element);
    listChildren();
}
