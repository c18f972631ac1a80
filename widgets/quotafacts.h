// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <quotakind.h>

#include <QCoreApplication>
#include <QStringList>

class ElementData;
struct DeviceSettings;

/// What was read of a device, in words: one text for each fact.
class QuotaFacts
{
    Q_DECLARE_TR_FUNCTIONS(QuotaFacts)

public:
    /// Where quotas of this kind stand on the device: configured, in force, on, with a file.
    static QStringList ofKind(const DeviceSettings &settings, QuotaKind kind);
    /// Where the device is, and what is out of the ordinary with it as a whole.
    static QStringList ofDevice(const DeviceSettings &settings);
    /// Why no device at all is there, where that is not for want of one: see silentSourceKey(). Else empty.
    static QString ofSilentSource(const ElementData &record);
    /// What is said of a device that an earlier read brought and the last one did not.
    static QString ofAbsentDevice();
};
