// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "accountkind.h"

#include <module.h>

/// The accounts of one kind: their list under the local computer, and a page for each.
class AccountModule : public Module
{
    Q_OBJECT

public:
    AccountModule(AccountKind kind, QObject *parent);

    const AccountKind &accountKind() const { return _kind; }

    void performOperation(ContextOperation *operation, OperationType type, ElementData *data, int extra) override;

private:
    const AccountKind _kind;
};

/// The two kinds there are. Made once the icon theme is set.
AccountKind localUserKind();
AccountKind localGroupKind();
