// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QFlags>

/// What can be asked of an element or of the editor that shows it.
enum class OperationType
{
    /// Asked of a module that extends another one's elements: hang your supplement under this one.
    CreateSupplement = 1,
    /// Asked of the module of a supplement, before the element it hangs under goes.
    RemoveSupplement = 2,
    /// Read the children of a container.
    ReadContent = 8,
    /// Read the element's own record.
    Read = 32,
    /// Apply a record; the only operation whose data changes owner.
    Write = 64,
    /// Change a container's display variant; the data is a ChangeDisplayElementData.
    ChangeDisplay = 2048,
};
Q_DECLARE_FLAGS(OperationTypes, OperationType)
Q_DECLARE_OPERATORS_FOR_FLAGS(OperationTypes)
