// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <element.h>

#include <QCoreApplication>

/// "Notifications": the quota warnings by mail. Hangs under "Quota management".
class NotificationsElement : public OrdinaryElement
{
    Q_DECLARE_TR_FUNCTIONS(NotificationsElement)

public:
    NotificationsElement(Module *module, AccessCheck access);

    static QString typeName() { return QStringLiteral("QuotaNotificationsElement"); }

    QString caption() const override;
    QIcon icon() const override;
};
