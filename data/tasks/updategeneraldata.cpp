// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "updategeneraldata.h"

#include <generaldata.h>
#include <quotamanager.h>

#include <QCoreApplication>

UpdateGeneralData::UpdateGeneralData(Element *element, std::unique_ptr<ElementData> data)
    : AbstractUpdateTask(element, std::move(data))
{
    setDescription(QCoreApplication::translate("QObject", "Update general settings"));
}

void UpdateGeneralData::run()
{
    apply<GeneralData>([](QuotaManager &manager, const GeneralData &data) { manager.applyGeneral(data); });
}
