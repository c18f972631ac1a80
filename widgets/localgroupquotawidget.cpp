// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "localgroupquotawidget.h"

LocalGroupQuotaWidget::LocalGroupQuotaWidget(Module *module, AccessCheck access, QWidget *parent)
    : GroupWidget(module, access, parent)
{
    setElementType(QStringLiteral("LocalGroupQuotaElement"));
    setOwnerType(QStringLiteral("LocalGroup"));
    setOrder(800);
    setWindowTitle(tr("Quota"));
}
