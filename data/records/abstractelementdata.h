// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "devicequota.h"

#include <elementdata.h>

#include <QMap>
#include <QString>

/// One account's quota on every quota-capable device.
class AbstractElementData : public ElementData
{
public:
    /// The id of a record that names nobody. The super-user is 0, so 0 would not do.
    static constexpr qint32 NoId = -1;

    QString name;
    /// Numeric user or group id. The kernel's ids are unsigned: 4,294,967,294 is an account and stands here as -2.
    qint32 id = NoId;
    /// By device path. A device is looked up with value(): one that is missing reads as a default DeviceQuota.
    QMap<QString, DeviceQuota> deviceQuotas;
};
