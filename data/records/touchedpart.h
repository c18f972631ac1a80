// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "quotakind.h"

#include <QString>
#include <QVector>

#include <optional>

class ElementData;

/// The part of a record that an administrator edited. It travels in the record's `params`, and then this part alone is
/// applied: the rest of the record is as old as its last read, and somebody may have changed the machine since.
///
/// The keys: "touchedDevice" is the device's path, "touchedKinds" a list of QuotaKind numbers, "touchedGraces" those
/// of them whose grace periods were edited. Without the first the whole record is to be applied; without one of the
/// others both kinds of the device.
struct TouchedPart
{
    QString device;
    QVector<QuotaKind> kinds{UserQuota, GroupQuota};
    QVector<QuotaKind> graces{UserQuota, GroupQuota};

    /// What a record says of itself; none where all of it counts.
    static std::optional<TouchedPart> of(const ElementData &record);
    void noteIn(ElementData &record) const;

    bool contains(const QString &someDevice, QuotaKind kind) const
    {
        return someDevice == device && kinds.contains(kind);
    }
};
