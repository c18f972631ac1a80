// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "contextoperation.h"
#include "element.h"

#include <QObject>
#include <QVariant>

#include <memory>
#include <vector>

class ElementEditor;
class Plugin;

/// A part of a plug-in: it owns a branch of elements and their editors, and turns operations into tasks.
/// User-interface thread only.
class KRA_EXPORT Module : public QObject
{
    Q_OBJECT

public:
    enum Kind
    {
        RootKind = 1,      ///< its elements are the top of the tree
        BranchKind = 2,    ///< its elements hang under those of the module it attaches to
        ExtendingKind = 3, ///< it extends the elements of the module it attaches to by supplements
    };

    /// `parent` owns the module: the plug-in, or the console for its own modules.
    Module(const QString &name, QObject *parent);
    /// Deletes its elements, in the tree or not, with all that hangs below them; the supplements it hung under elements
    /// of the module it extends; and its editors.
    ~Module() override;

    QString name() const;
    /// The name of the module this one attaches to; empty for none.
    QString attachName() const;
    void setAttachName(const QString &name);
    /// Set before the host places the module. The default is RootKind.
    Kind kind() const;
    void setKind(Kind kind);

    /// Key/value data, for the console to show ("description", "administrator") or to set ("paranoid").
    /// A missing key gives an invalid value.
    QVariant getData(const QString &key) const;
    void setData(const QString &key, const QVariant &value);

    /// Takes ownership. Each element type has one editor of each role; a second one is deleted, with std::logic_error.
    void insertElementWidget(ElementEditor *editor);
    /// Ends the insertion: from now on the module hears of its editors, and the host shows them. May be called again
    /// after further insertions.
    void connectElementWidgets();
    /// All inserted editors that still live, in order.
    std::vector<ElementEditor *> elementWidgets() const;
    /// The editor inserted here for that element type and role, or null.
    ElementEditor *elementWidget(const QString &elementType, int role) const;

    /// The elements that were constructed as top elements of this module, in order; null those that were deleted.
    const std::vector<NodePointer<Element>> &topElements() const;
    /// Called by the host when it has placed this module: the module it hangs under, or null. Not owned.
    void setAttachedTo(Module *module);
    Module *attachedTo() const;
    /// The modules of kind 3 that extend this one.
    const std::vector<Module *> &extendingModules() const;

    /// Whether this process may administer: effective user id 0, or CAP_SYS_ADMIN in its effective set
    /// (capabilities(7)).
    static bool isAdministrator(const Module &module);
    /// The same of this module and of every module that it attaches to.
    static bool isAdministratorHierarchy(const Module &module);

    /// What an element or an editor asks of its module. A module starts a task for the operations it knows and passes
    /// everything else here, where it is logged and nothing more (shown with QT_LOGGING_RULES=kra.module.info=true).
    /// `operation` is never null; `extra` is 0 and means nothing yet.
    /// `data` is owned by this call with OperationType::Write, which deletes what nobody took, and stays the caller's
    /// with every other operation.
    virtual void performOperation(ContextOperation *operation, OperationType type, ElementData *data, int extra);

Q_SIGNALS:
    /// What can be done with the shown element changed: another selection, another focus.
    void elementContextOperationChanged(ContextOperation *operation);

private:
    friend class Element;
    void registerTopElement(Element *element);
    void deleteSupplementsBelow(const Module &extended) const;

    class Private;
    std::unique_ptr<Private> d;
};
