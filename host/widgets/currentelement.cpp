// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "currentelement.h"

#include <taskobserver.h>

#include <algorithm>

CurrentElement::CurrentElement()
{
    _findTimer.setSingleShot(true);
    _findTimer.setInterval(0);
    connect(&_findTimer, &QTimer::timeout, this, &CurrentElement::find);
}

void CurrentElement::set(Element *element)
{
    // Within one turn, what went first is what is to be found again: whatever followed it, followed because it went.
    if (!_findTimer.isActive() || _left.isEmpty() || (!_path.isEmpty() && _left.isInPlace()))
        _left = _path;
    _findTimer.start();
    unwatchAll();
    _element = element;
    _path = element ? NodePath(element) : NodePath();
    if (element) {
        _anchor = element->parentNode() ? element->parentNode() : element;
        watch(_anchor);
    }
}

void CurrentElement::forgetLost()
{
    _left = NodePath();
    _findTimer.stop();
}

void CurrentElement::setHeld(bool held)
{
    _isHeld = held;
    if (!held)
        lookAgain();
}

void CurrentElement::lookAgain()
{
    if (!_left.isEmpty())
        _findTimer.start();
}

void CurrentElement::lose()
{
    set(nullptr);
    Q_EMIT lost();
}

void CurrentElement::find()
{
    if (_isHeld)
        return;
    if (_left.isInPlace())
        _left = NodePath();
    if (_left.isEmpty())
        return;
    Element *again = _left.find();
    const auto *base = dynamic_cast<Element *>(_left.base());
    if (!again && base && TaskObserver::instance()->isBusyWith(base))
        return; // the end of its task brings us here again
    if (!again)
        again = _left.findNearest();
    _left = NodePath();
    Q_EMIT found(again);
}

void CurrentElement::watch(TreeNode *node)
{
    const auto isNode = [node](const NodePointer<TreeNode> &each) { return each.data() == node; };
    if (std::any_of(_watched.cbegin(), _watched.cend(), isNode))
        return;
    node->addObserver(this);
    _watched.emplace_back(node);
}

void CurrentElement::unwatchAll()
{
    _anchor = nullptr;
    for (const NodePointer<TreeNode> &node : _watched)
        if (node)
            node->removeObserver(this);
    _watched.clear();
}

void CurrentElement::rowsAboutToBeRemoved(TreeNode *parent, int first, int last)
{
    if (parent != _anchor)
        return;
    const Element *present = element();
    // An element that is being deleted is no longer pointed at.
    if (!present || (present != _anchor && present->row() >= first && present->row() <= last))
        lose();
}

void CurrentElement::rowsRemoved(TreeNode *parent)
{
    // A row that became current while it was about to go.
    if (parent == _anchor && !_path.isInPlace())
        lose();
}

void CurrentElement::nodeDataChanged(TreeNode *node)
{
    if (node != element())
        return;
    _path = NodePath(element()); // its title may have changed
    Q_EMIT changed();
}

void CurrentElement::childrenDataChanged(TreeNode *parent)
{
    if (element() && element()->parentNode() == parent)
        nodeDataChanged(element());
}

void CurrentElement::observedNodeDestroyed(TreeNode *node)
{
    if (node == _anchor)
        lose();
    else
        Q_EMIT changed();
}
