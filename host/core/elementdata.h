// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "kraglobal.h"

#include <QString>
#include <QVariantMap>

/// A record: what a read task found out about an element, what its editor shows, and what an update task applies.
///
/// A plain value on one thread at a time: a task fills it on the worker thread and hands it over when it has ended.
class KRA_EXPORT ElementData
{
public:
    ElementData() = default;
    ElementData(const ElementData &) = default;
    ElementData &operator=(const ElementData &) = default;
    virtual ~ElementData();

    /// Called once on the user-interface thread when the record of a read arrives, before element and editor get it.
    /// A record may complete `params` from its own fields here. The default does nothing.
    virtual void configureParams();

    QVariantMap params; ///< values that travel beside the record, by name (a list of devices, what was changed)
    QString text;       ///< free for the module that makes the record
    int number = 0;     ///< free for the module that makes the record
};

/// The record that goes with OperationType::ChangeDisplay.
class KRA_EXPORT ChangeDisplayElementData : public ElementData
{
public:
    explicit ChangeDisplayElementData(int displayType);

    /// The wanted display variant: 0 for all children, i for those of the i-th text of displayChildrenVariants().
    int displayType() const { return _displayType; }

private:
    int _displayType;
};
