// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "localquotamodule.h"

/// The tab "Quota" of the console's own users.
class LocalUserQuotaModule : public LocalQuotaModule
{
    Q_OBJECT

public:
    explicit LocalUserQuotaModule(QObject *parent);
};
