// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "notificationsdata.h"

NotificationsData::~NotificationsData() = default;

QString NotificationsData::droppedLinesKey()
{
    return QStringLiteral("droppedLines");
}

QString NotificationsData::dailyRunKey()
{
    return QStringLiteral("dailyRun");
}

QString NotificationsData::editedFilesKey()
{
    return QStringLiteral("editedFiles");
}

QString NotificationsData::asReadKey()
{
    return QStringLiteral("asRead");
}
