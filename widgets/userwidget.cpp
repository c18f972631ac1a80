// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "userwidget.h"

#include "ui_userwidget.h"

#include <userdata.h>
#include <userelement.h>

UserWidget::UserWidget(Module *module, AccessCheck access, QWidget *parent)
    : AbstractQuotaWidget(module, access, parent)
{
    setElementType(UserElement::typeName());
    Ui::UserWidget form;
    form.setupUi(this);
    buildDeviceWidget(form._deviceWidget, tr("Quota on this device:"), tr("Quota for user on this device:"));
}

std::unique_ptr<ElementData> UserWidget::exportElementData() const
{
    auto record = std::make_unique<UserData>();
    if (!exportTo(*record))
        return nullptr;
    return record;
}

void UserWidget::afterSuccessfulRead(Element *element, ElementData *record)
{
    AbstractQuotaWidget::afterSuccessfulRead(element, dynamic_cast<UserData *>(record));
}
