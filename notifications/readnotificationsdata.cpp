// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "readnotificationsdata.h"

#include "notificationsmanager.h"

#include <backendrun.h>

#include <QCoreApplication>

ReadNotificationsData::ReadNotificationsData(Element *element)
    : ReadPropertyHeavyTask(element)
{
    // In the words of the update on purpose.
    setDescription(QCoreApplication::translate("QObject", "Update notifications settings"));
}

void ReadNotificationsData::run()
{
    runWithBackEnd<NotificationsManager>(*this, [this](NotificationsManager &manager) {
        std::unique_ptr<NotificationsData> data = manager.read();
        const NotificationNotes &notes = data->notes;
        // The first use: nobody has made the files yet, which the page explains.
        setMessageNote(notes.isTableMissing && !notes.isCronMissing && notes.isNothingBroken);
        setElementData(std::move(data));
    });
    ReadPropertyHeavyTask::run();
}
