// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "listelementwidget.h"

#include <module.h>

void ListElementWidget::read()
{
    if (role() != MainRole || !availableOperations().testFlag(OperationType::ReadContent))
        return;
    const auto *container = dynamic_cast<const ContainerElement *>(element());
    if (module()->getData(QStringLiteral("paranoid")).toBool() || (container && container->needsContentRead()))
        element()->performOperation(OperationType::ReadContent, nullptr, 0);
}

void ListElementWidget::refresh()
{
    if (auto *container = dynamic_cast<ContainerElement *>(element()))
        container->setContent(ContainerElement::Content::Stale);
    read();
}
