// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QFlags>

/// What can be asked of an element or of the editor that shows it.
enum class OperationType
{
    CreateSupplement =
        1, ///< asked of a module that extends another one's elements: hang your supplement under this one
    RemoveSupplement = 2, ///< asked of the module of a supplement, before the element it hangs under goes
    ReadContent = 8,      ///< read the children of a container
    Read = 32,            ///< read the element's own record
    Write = 64,           ///< apply a record; the only operation whose data changes owner
    ChangeDisplay = 2048, ///< change a container's display variant; the data is a ChangeDisplayElementData
};
Q_DECLARE_FLAGS(OperationTypes, OperationType)
Q_DECLARE_OPERATORS_FOR_FLAGS(OperationTypes)
