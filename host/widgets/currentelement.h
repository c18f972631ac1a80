// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "nodepath.h"

#include <element.h>

#include <QObject>
#include <QTimer>

#include <vector>

/// The element that a page shows, and what becomes of it: when it goes because its container was read again, the
/// element that takes its place is looked for.
class CurrentElement : public QObject, private TreeNodeObserver
{
    Q_OBJECT

public:
    CurrentElement();
    ~CurrentElement() override { unwatchAll(); }

    Element *element() const { return _element.data(); }
    void set(Element *element);
    /// What went is not to be found again.
    void forgetLost();
    /// Emits changed() when this supplement is destroyed.
    void watchSupplement(Element *supplement) { watch(supplement); }

    /// While held, nothing is found. Releasing looks again.
    void setHeld(bool held);
    /// A task has ended, which may have brought what is looked for.
    void lookAgain();

Q_SIGNALS:
    /// The element goes; element() is null already.
    void lost();
    /// What takes the place of an element that went: one of the same type and title, else the nearest above it that is
    /// left, else null. Also said of an element that another one followed in the same turn of the event loop, since a
    /// view moves on from rows that are about to go.
    void found(Element *element);
    /// Its title or record changed, or one of its supplements went.
    void changed();

private:
    void lose();
    void find();
    void watch(TreeNode *node);
    void unwatchAll();

    // Of the node above the element, which hears before any view of the tree does, and of the supplements.
    void rowsAboutToBeInserted(TreeNode * /*parent*/, int /*first*/, int /*last*/) override {}
    void rowsInserted(TreeNode * /*parent*/) override {}
    void rowsAboutToBeRemoved(TreeNode *parent, int first, int last) override;
    void rowsRemoved(TreeNode *parent) override;
    void nodeDataChanged(TreeNode *node) override;
    void childrenDataChanged(TreeNode *parent) override;
    void currentNodeRequested(TreeNode * /*node*/) override {}
    void observedNodeDestroyed(TreeNode *node) override;

    NodePointer<Element> _element;
    NodePath _path;              // known before the element goes
    NodePath _left;              // of an element that went, or that was left in this turn
    TreeNode *_anchor = nullptr; // the node above the element; only compared
    std::vector<NodePointer<TreeNode>> _watched;
    QTimer _findTimer; // runs while the turn is not over
    bool _isHeld = false;
};
