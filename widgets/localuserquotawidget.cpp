// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "localuserquotawidget.h"

LocalUserQuotaWidget::LocalUserQuotaWidget(Module *module, AccessCheck access, QWidget *parent)
    : UserWidget(module, access, parent)
{
    setElementType(QStringLiteral("LocalUserQuotaElement"));
    setOwnerType(QStringLiteral("LocalUser"));
    setOrder(800);
    setWindowTitle(tr("Quota"));
}
