// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "contextoperation.h"
#include "treenode.h"

#include <QIcon>
#include <QString>
#include <QStringList>

#include <memory>

class ElementData;
class ElementEditor;

/// An administered object in the tree: it names its type, shows its current record in columns, and passes what is asked
/// of it on to its module. User-interface thread only.
class KRA_EXPORT Element : public TreeNode, public ContextOperation
{
public:
    /// Says whether the process has the rights that an element's operations need (Module::isAdministratorHierarchy).
    /// Null stands for everybody().
    using AccessCheck = bool (*)(const Module &module);
    /// The check of what needs no rights beyond those that the process has.
    static bool everybody(const Module & /*module*/) { return true; }

    enum class Place
    {
        Top,   ///< registers with the module, which owns it until the host hangs it into the tree
        Child, ///< belongs to whoever made it until it is appended to a node
    };

    /// `parentType` names the type of the element that a top element hangs under; empty for the module's first element.
    Element(QString type, QString parentType, QString title, Module *module, AccessCheck access, Place place);
    /// Leaves the tree and has its supplements removed by their modules.
    ~Element() override;

    ContextType contextType() const final { return ElementContext; }
    QString elementType() const final { return _type; }
    Module *module() const final { return _module; }
    QString id() const final { return _type; }
    QString key() const final { return _title; }
    QString parentType() const { return _parentType; }

    QString title() const { return _title; }
    void setTitle(const QString &title);
    /// One line for the head of the element's page. The default is the title.
    virtual QString caption() const;
    virtual QIcon icon() const;

    /// The record of the last read that brought one; null before. Owned by the element.
    ElementData *record() const { return _record.get(); }
    /// Tells that the cells changed. The record before is deleted.
    void setRecord(std::unique_ptr<ElementData> record);
    /// Puts another record in its place, or none, and releases the one before to the caller. Emits no change.
    std::unique_ptr<ElementData> exchangeRecord(std::unique_ptr<ElementData> record);
    /// Releases the record to the caller. Emits no change.
    std::unique_ptr<ElementData> takeRecord();

    /// Whether the access check holds. Where it does not, the element's page shows what can be read, and cannot be
    /// edited.
    bool isAccessible() const;

    /// The editor of that role (ElementEditor::MainRole) which the element's module, or the module that extends it,
    /// inserted for this type of element, whether or not it shows this element now. Null when there is none.
    virtual ElementEditor *elementWidget(int role) const;

    /// Column 0 shows the title and the icon; every other cell is empty. A cell with a number behind it (SortRole) is
    /// aligned as numbers are.
    QVariant data(int column, int role) const override;
    /// Section 0 is the title's.
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    /// How numbers are aligned in lists: so that their digits stand below each other. Their headers are to agree.
    static int numberAlignment();

    /// Texts of the display variants that the children can be narrowed to; empty for none.
    virtual QStringList displayChildrenVariants() const;
    /// 0 for all children, i for those of the i-th text.
    int displayChildrenVariant() const { return _displayVariant; }
    void setDisplayChildrenVariant(int variant) { _displayVariant = static_cast<qint16>(variant); }

    /// Has every module that extends this element's module hang its supplement under it
    /// (OperationType::CreateSupplement). Only the first call does anything: the host makes it when the element's page
    /// is first shown. A module that comes later extends the elements whose pages were not shown before.
    void requestSupplements();

private:
    QString _type;
    QString _parentType;
    QString _title;
    Module *_module;
    AccessCheck _access;
    std::unique_ptr<ElementData> _record;
    qint16 _displayVariant = 0;
    bool _supplementsRequested = false;
};

/// An element with a record and an editor of its own.
class KRA_EXPORT OrdinaryElement : public Element
{
public:
    using Element::Element;
    /// Read and write.
    OperationTypes availableOperations() const override;
};

/// An element whose children are read on demand.
class KRA_EXPORT ContainerElement : public Element
{
public:
    enum class Content : quint8
    {
        NeverRead, ///< shown as one that may have children; the first look at them starts the read
        Reading,
        Read,  ///< whether or not the read succeeded
        Stale, ///< to be read again when it is next shown
    };

    using Element::Element;
    /// Read content and read.
    OperationTypes availableOperations() const override;

    Content content() const { return _content; }
    /// Called by the host around a read of the content, and to mark it stale.
    void setContent(Content content) { _content = content; }
    /// Whether the children should be read when they are to be shown: they never were, or were marked stale.
    bool needsContentRead() const { return _content == Content::NeverRead || _content == Content::Stale; }

    /// Changes the display variant itself, with OperationType::ChangeDisplay and its record. Notes that the content is
    /// being read before it passes OperationType::ReadContent on, as it does with everything else.
    void performOperation(OperationType type, ElementData *data, int extra) override;

    /// Only while the content was never asked for: from then on whoever shows it decides when it is read again.
    bool canFetchChildren() const override;
    /// Performs OperationType::ReadContent.
    void fetchChildren() override;

private:
    Content _content = Content::NeverRead;
};

/// What another module adds to an element: a tab on that element's page, no row of the tree.
class KRA_EXPORT SupplementElement : public Element
{
public:
    using Element::Element;
    /// Read and write.
    OperationTypes availableOperations() const override;
    bool isTreeRow() const final;
};
