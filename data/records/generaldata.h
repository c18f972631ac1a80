// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "devicesettings.h"
#include "quotakind.h"

#include <elementdata.h>

#include <QMap>
#include <QString>
#include <QVector>

#include <optional>

/// The device whose settings an administrator edited, and what had been read of it. Edited is what differs from that.
struct TouchedSettings
{
    QString device;
    DeviceSettings asRead;
    /// Kinds that are off, and whose option is to leave "/etc/fstab" all the same.
    QVector<QuotaKind> optionsToTake = {};
};

/// The quota settings of every quota-capable device.
class GeneralData : public ElementData
{
public:
    /// Key of `params`: a QStringList with one text for each line of "/etc/fstab" that brought no device, saying why.
    static QString passedOverKey() { return QStringLiteral("passedOver"); }

    /// By device path. A device is looked up with value(): one that is missing reads as a default DeviceSettings.
    QMap<QString, DeviceSettings> deviceSettings;
    /// With it an update applies the edited fields of that device and nothing else; without it every device as it
    /// stands.
    std::optional<TouchedSettings> touched;
};
