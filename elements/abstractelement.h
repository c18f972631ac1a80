// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <element.h>

class AbstractElementData;

/// An account in a list: one user's or group's quota on one chosen device, a device property for each column.
class AbstractElement : public OrdinaryElement
{
public:
    using OrdinaryElement::OrdinaryElement;

    /// Chooses the device whose quota the cells show. The caller announces the change, once for all rows.
    void setDeviceForData(const QString &deviceName) { _deviceName = deviceName; }

    /// Every cell is empty until a record of the element's own kind came; so is every cell of a device that gave no
    /// answer, and of one that the record does not hold, but for "off". NodeRole::SortRole gives numbers and dates.
    QVariant data(int column, int role) const override;
    /// Adds NodeFlag::InChosenVariant when the account is of the kind, system or ordinary, that its list has chosen.
    int treeNodeSpecialFlags() const override;

protected:
    /// The current record; null when there is none, or one of another kind.
    virtual const AbstractElementData *accountRecord() const = 0;

private:
    QString _deviceName;
};
