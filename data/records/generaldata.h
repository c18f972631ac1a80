// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "devicesettings.h"

#include <elementdata.h>

#include <QMap>
#include <QString>

/// The quota settings of every quota-capable device.
class GeneralData : public ElementData
{
public:
    /// Key of `params`: a QStringList with one text for each line of "/etc/fstab" that brought no device, saying why.
    static QString passedOverKey();

    /// By device path. A device is looked up with value(): one that is missing reads as a default DeviceSettings.
    QMap<QString, DeviceSettings> deviceSettings;
};
