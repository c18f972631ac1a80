// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <treenode.h>

#include <QString>

#include <vector>

class Element;

/// Where an element stands, in words: it finds the element that took its place when a container was read again.
class NodePath
{
public:
    NodePath() = default;
    explicit NodePath(Element *element);

    bool isEmpty() const { return _steps.empty(); }
    /// Whether the element itself still lives, where it stood.
    bool isInPlace() const;
    /// The deepest node of the path that still lives: below it the others were replaced.
    TreeNode *base() const;
    /// The element of the same types and titles below base(); null when there is none (yet).
    Element *find() const { return descend(false); }
    /// The same, or the nearest element above it that there is.
    Element *findNearest() const { return descend(true); }

private:
    struct Step
    {
        NodePointer<TreeNode> node;
        QString type;
        QString title;
    };

    Element *descend(bool nearest) const;

    std::vector<Step> _steps; // from the root of the tree down to the element
};
