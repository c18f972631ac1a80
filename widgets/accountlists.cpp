// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "accountlists.h"

#include <groupselement.h>
#include <userselement.h>

void readAccountListsAgain(const TreeNode *node)
{
    if (!node)
        return;
    while (node->parentNode())
        node = node->parentNode();
    const QVector<TreeNode *> nodes = node->allChildNodes();
    for (TreeNode *each : nodes) {
        if (each->id() != UsersElement::typeName() && each->id() != GroupsElement::typeName())
            continue;
        auto *list = dynamic_cast<ContainerElement *>(each);
        if (list && list->content() != ContainerElement::Content::NeverRead)
            list->setContent(ContainerElement::Content::Stale);
    }
}
