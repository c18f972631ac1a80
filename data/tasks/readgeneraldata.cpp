// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "readgeneraldata.h"

#include "managerrun.h"

#include <generaldata.h>
#include <quotamanager.h>

#include <QCoreApplication>

ReadGeneralData::ReadGeneralData(Element *element)
    : ReadPropertyHeavyTask(element)
{
    setDescription(QCoreApplication::translate("QObject", "Read genaral quota settings"));
}

void ReadGeneralData::run()
{
    runWithManager(
        *this, [this](QuotaManager &manager) { setElementData(std::make_unique<GeneralData>(manager.readGeneral())); });
    ReadPropertyHeavyTask::run();
}
