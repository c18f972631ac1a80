// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "kraglobal.h"
#include "operationtype.h"

#include <QString>

class ElementData;
class Module;

/// The face that elements and editors show a module: what they are, and what can be asked of them.
/// User-interface thread only.
class KRA_EXPORT ContextOperation
{
public:
    enum ContextType
    {
        ElementContext = 0,
        ElementWidgetContext = 1
    };

    virtual ~ContextOperation();

    virtual ContextType contextType() const = 0;
    /// The type name of the element, or of the elements that the editor shows ("QuotaGeneralElement").
    virtual QString elementType() const = 0;
    /// Not owned; never null while plug-ins are loaded.
    virtual Module *module() const = 0;
    virtual OperationTypes availableOperations() const = 0;

    /// Forwards to the module, which starts a task for it or leaves it to the host's default handling.
    /// `data` changes owner with OperationType::Write only; with every other operation it stays the caller's.
    virtual void performOperation(OperationType type, ElementData *data, int extra);
};
