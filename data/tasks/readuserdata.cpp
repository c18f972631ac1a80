// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "readuserdata.h"

#include "managerrun.h"

#include <quotamanager.h>

#include <QCoreApplication>

ReadUserData::ReadUserData(Element *element)
    : ReadPropertyHeavyTask(element)
{
    setDescription(QCoreApplication::translate("QObject", "Read user quota settings"));
}

void ReadUserData::run()
{
    runWithManager(*this, [this](QuotaManager &manager) {
        setElementData(std::make_unique<UserData>(manager.readUser(elementTitle())));
    });
    ReadPropertyHeavyTask::run();
}
