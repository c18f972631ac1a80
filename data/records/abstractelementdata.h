// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "devicequota.h"

#include <elementdata.h>

#include <QMap>
#include <QString>

#include <memory>

/// The device whose quota an administrator edited, and what had been read of it. Edited is what differs from that.
struct TouchedQuota
{
    QString device;
    DeviceQuota asRead;
};

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
    /// Why the kernel gave no answer, by the path of each device that is missing above for that reason.
    QMap<QString, QString> failures;
    /// With it an update applies the edited fields of that device and nothing else; without it every device as it
    /// stands. Behind a pointer, which copies share: lists hold a hundred thousand records, and nearly none has it.
    std::shared_ptr<const TouchedQuota> touched;
};
