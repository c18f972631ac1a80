// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "groupwidget.h"

#include "ui_groupwidget.h"

#include <groupdata.h>
#include <groupqelement.h>

GroupWidget::GroupWidget(Module *module, AccessCheck access, QWidget *parent)
    : AbstractQuotaWidget(module, access, parent)
{
    setElementType(GroupQElement::typeName());
    Ui::GroupWidget form;
    form.setupUi(this);
    buildDeviceWidget(form._deviceWidget, tr("Quota on this device:"), tr("Quota for groups on this device:"));
}

std::unique_ptr<ElementData> GroupWidget::exportElementData() const
{
    auto record = std::make_unique<GroupData>();
    if (!exportTo(*record))
        return nullptr;
    return record;
}

void GroupWidget::afterSuccessfulRead(Element *element, ElementData *record)
{
    AbstractQuotaWidget::afterSuccessfulRead(element, dynamic_cast<GroupData *>(record));
}
