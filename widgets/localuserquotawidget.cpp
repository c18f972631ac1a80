// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "localuserquotawidget.h"

#include <localuserquotaelement.h>

LocalUserQuotaWidget::LocalUserQuotaWidget(Module *module, AccessCheck access, QWidget *parent)
    : UserWidget(module, access, parent)
{
    setElementType(LocalUserQuotaElement::typeName());
    setOwnerType(LocalUserQuotaElement::accountType());
    setOrder(800);
    setWindowTitle(tr("Quota"));
}
