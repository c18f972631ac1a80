// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "groupwidget.h"

/// The same editor as a tab of the console's own page of a local group.
class LocalGroupQuotaWidget : public GroupWidget
{
    Q_OBJECT

public:
    explicit LocalGroupQuotaWidget(Module *module, AccessCheck access, QWidget *parent = nullptr);
};
