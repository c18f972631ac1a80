// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "localquotamodule.h"

/// The tab "Quota" of the console's own groups.
class LocalGroupQuotaModule : public LocalQuotaModule
{
    Q_OBJECT

public:
    explicit LocalGroupQuotaModule(QObject *parent);
};
