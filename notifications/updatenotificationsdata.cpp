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
        runWithBackEnd<NotificationsManager>(*this, [this, data](NotificationsManager &manager) {
            QStringList lines;
            const QStringList written = manager.write(*data);
            for (const QString &path : written)
                lines += QCoreApplication::translate("QObject", "Applied: %1").arg(path);
            setResult(lines.join(QLatin1Char('\n')));
        });
    else
        setStatus(Failed);
    UpdateTask::run();
}
