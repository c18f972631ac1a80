// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "updateuserdata.h"

#include <quotamanager.h>

#include <QCoreApplication>

UpdateUserData::UpdateUserData(Element *element, std::unique_ptr<ElementData> data)
    : AbstractUpdateTask(element, std::move(data))
{
    setDescription(QCoreApplication::translate("QObject", "Update user settings"));
}

void UpdateUserData::run()
{
    apply<UserData>([](QuotaManager &manager, const UserData &data) { manager.writeQuotas(data, UserQuota); });
}
