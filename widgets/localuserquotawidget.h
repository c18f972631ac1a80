// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "userwidget.h"

/// The same editor as a tab of the console's own page of a local user.
class LocalUserQuotaWidget : public UserWidget
{
    Q_OBJECT

public:
    explicit LocalUserQuotaWidget(Module *module, AccessCheck access, QWidget *parent = nullptr);
};
