// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "updategroupdata.h"

#include <quotamanager.h>

#include <QCoreApplication>

UpdateGroupData::UpdateGroupData(Element *element, std::unique_ptr<ElementData> data)
    : AbstractUpdateTask(element, std::move(data))
{
    setDescription(QCoreApplication::translate("QObject", "Update user settings")); // the same for users and groups
}

void UpdateGroupData::run()
{
    apply<GroupData>([](QuotaManager &manager, const GroupData &data) { manager.writeQuotas(data, GroupQuota); });
}
