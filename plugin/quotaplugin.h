// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <plugin.h>

/// The face of this library to the console that loads it: disk quotas for users and groups.
class Q_DECL_EXPORT QuotaPlugin : public Plugin
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID KRA_PLUGIN_IID)

public:
    explicit QuotaPlugin(QObject *parent = nullptr);

    /// Whether the kernel has the quota format module "quota_v2".
    bool isValid() override;
};
