// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "contextoperation.h"

class Element;
class ElementData;
class QObject;

/// What the core knows of an editor: enough to hand it records. ElementWidget is the one implementation.
/// User-interface thread only.
class KRA_EXPORT ElementEditor : public ContextOperation
{
public:
    /// The role of an element type's one main editor.
    static constexpr int MainRole = 1;

    ContextType contextType() const final { return ElementWidgetContext; }

    virtual int role() const = 0;
    /// The element that is shown now; null when none is, or when it was deleted. Not owned.
    virtual Element *element() const = 0;
    /// The object whose deletion ends the editor. Not owned.
    virtual QObject *object() = 0;
    /// Lets the module hear when the operations that are possible here change. A second call does nothing.
    virtual void connectToModule(Module *module) = 0;

    /// Whether the content was edited since it was last read or applied. No record is handed over while it is.
    virtual bool isContentChanged() const { return false; }
    /// A read of `element` brought the record `data`, which is only partial where the read failed. Handed over only
    /// while element() is that element and its content is unchanged; both stay the host's, and `data` is never null.
    virtual void afterSuccessfulRead(Element *element, ElementData *data) = 0;
    /// An update of the shown element succeeded.
    virtual void afterSuccessfulUpdate() = 0;
    /// Forgets that the content was changed.
    virtual void setUnchanged() = 0;
};
