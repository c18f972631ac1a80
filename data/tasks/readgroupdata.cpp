// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "readgroupdata.h"

#include "managerrun.h"

#include <quotamanager.h>

#include <QCoreApplication>

ReadGroupData::ReadGroupData(Element *element)
    : ReadPropertyHeavyTask(element)
{
    setDescription(QCoreApplication::translate("QObject", "Read group quota settings"));
}

void ReadGroupData::run()
{
    runWithManager(*this, [this](QuotaManager &manager) {
        setElementData(std::make_unique<GroupData>(manager.readGroup(elementTitle())));
    });
    ReadPropertyHeavyTask::run();
}
