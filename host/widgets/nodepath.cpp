// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "nodepath.h"

#include <element.h>

#include <algorithm>

NodePath::NodePath(Element *element)
{
    for (TreeNode *node = element; node; node = node->parentNode())
        _steps.push_back({NodePointer<TreeNode>(node), node->id(), node->key()});
    std::reverse(_steps.begin(), _steps.end());
}

bool NodePath::isInPlace() const
{
    const TreeNode *above = nullptr;
    for (const Step &step : _steps) {
        if (!step.node || step.node->parentNode() != above)
            return false;
        above = step.node.data();
    }
    return above != nullptr;
}

TreeNode *NodePath::base() const
{
    const auto living = std::find_if(_steps.rbegin(), _steps.rend(), [](const Step &step) { return bool(step.node); });
    return living == _steps.rend() ? nullptr : living->node.data();
}

Element *NodePath::descend(bool nearest) const
{
    TreeNode *node = base();
    auto step = std::find_if(_steps.begin(), _steps.end(), [](const Step &each) { return !each.node; });
    for (; node && step != _steps.end(); ++step) {
        const QVector<TreeNode *> &children = node->childNodes();
        const auto child = std::find_if(children.begin(), children.end(), [&step](const TreeNode *each) {
            return each->id() == step->type && each->key() == step->title;
        });
        if (child == children.end())
            break;
        node = *child;
    }
    if (step != _steps.end() && !nearest)
        return nullptr;
    return dynamic_cast<Element *>(node);
}
