// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "devicesettings.h"

QString DeviceSettings::quotaFeature()
{
    return QStringLiteral("quota-feature");
}
