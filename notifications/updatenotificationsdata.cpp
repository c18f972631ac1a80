// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "updatenotificationsdata.h"

#include "notificationsmanager.h"

#include <backendrun.h>

#include <QCoreApplication>

UpdateNotificationsData::UpdateNotificationsData(Element *element, std::unique_ptr<ElementData> data)
    : UpdateTask(element, std::move(data))
{
    setDescription(QCoreApplication::translate("QObject", "Update notifications settings"));
}

void UpdateNotificationsData::run()
{
    if (const auto *data = dynamic_cast<const NotificationsData *>(elementData()))
        runWithBackEnd<NotificationsManager>(*this, [data](NotificationsManager &manager) { manager.write(*data); });
    else
        setStatus(Failed);
    UpdateTask::run();
}
