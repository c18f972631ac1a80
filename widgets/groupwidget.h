// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "abstractquotawidget.h"

/// The editor of a group's quota.
class GroupWidget : public AbstractQuotaWidget
{
    Q_OBJECT

public:
    explicit GroupWidget(Module *module, AccessCheck access, QWidget *parent = nullptr);

    std::unique_ptr<ElementData> exportElementData() const override;
    /// Shows a GroupData. Any other record counts as none.
    void afterSuccessfulRead(Element *element, ElementData *record) override;
};
