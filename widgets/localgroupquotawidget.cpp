// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "localgroupquotawidget.h"

#include <localgroupquotaelement.h>

LocalGroupQuotaWidget::LocalGroupQuotaWidget(Module *module, AccessCheck access, QWidget *parent)
    : GroupWidget(module, access, parent)
{
    setElementType(LocalGroupQuotaElement::typeName());
    setOwnerType(LocalGroupQuotaElement::accountType());
    setOrder(800);
    setWindowTitle(tr("Quota"));
}
