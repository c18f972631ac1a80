// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "quotamodule.h"

/// The branch "Quota management" under the local computer.
class QuotaGeneralModule : public QuotaModule
{
    Q_OBJECT

public:
    explicit QuotaGeneralModule(QObject *parent);
};
