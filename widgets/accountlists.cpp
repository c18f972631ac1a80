// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "accountlists.h"

#include <groupselement.h>
#include <userselement.h>

namespace
{
/// Lists hold accounts, as many as there are, and no lists.
void readAgainBelow(TreeNode *node)
{
    auto *list = dynamic_cast<ContainerElement *>(node);
    const bool isOfAccounts = node->id() == UsersElement::typeName() || node->id() == GroupsElement::typeName();
    if (list && isOfAccounts && list->content() != ContainerElement::Content::NeverRead)
        list->setContent(ContainerElement::Content::Stale);
    if (list)
        return;
    const QVector<TreeNode *> children = node->childNodes();
    for (TreeNode *child : children)
        readAgainBelow(child);
}
} // namespace

void readAccountListsAgain(TreeNode *node)
{
    if (!node)
        return;
    while (node->parentNode())
        node = node->parentNode();
    readAgainBelow(node);
}
