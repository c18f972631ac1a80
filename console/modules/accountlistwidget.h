// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <listelementwidget.h>

class AccountModule;

/// The list of all accounts of a kind.
class AccountListWidget : public ListElementWidget
{
    Q_OBJECT

public:
    explicit AccountListWidget(AccountModule *module);

    void setElement(Element *element) override;
};
