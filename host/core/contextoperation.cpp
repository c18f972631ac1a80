// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "contextoperation.h"

#include "module.h"

ContextOperation::~ContextOperation() = default;

void ContextOperation::performOperation(OperationType type, ElementData *data, int extra)
{
    module()->performOperation(this, type, data, extra);
}
