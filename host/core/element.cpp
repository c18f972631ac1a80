// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "element.h"

#include "elementdata.h"
#include "elementeditor.h"
#include "module.h"

#include <QCoreApplication>
#include <QPointer>

#include <utility>

namespace
{
bool isNumber(const QVariant &value)
{
    switch (static_cast<QMetaType::Type>(value.userType())) {
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::LongLong:
    case QMetaType::ULongLong:
    case QMetaType::Double:
        return true;
    default:
        return false;
    }
}
} // namespace

Element::Element(QString type, QString parentType, QString title, Module *module, AccessCheck access, Place place)
    : _type(std::move(type))
    , _parentType(std::move(parentType))
    , _title(std::move(title))
    , _module(module)
    , _access(access)
{
    if (place == Place::Top)
        _module->registerTopElement(this);
}

Element::~Element()
{
    leaveTree();
    std::vector<NodePointer<TreeNode>> supplements;
    for (TreeNode *supplement : supplementNodes())
        supplements.emplace_back(supplement);
    for (const NodePointer<TreeNode> &pointer : supplements) {
        // One that its module leaves alone goes with the children.
        if (auto *supplement = dynamic_cast<SupplementElement *>(pointer.data()))
            supplement->performOperation(OperationType::RemoveSupplement, nullptr, 0);
    }
}

void Element::setTitle(const QString &title)
{
    if (_title == title)
        return;
    _title = title;
    nodeDataChanged();
}

QString Element::caption() const
{
    return _title;
}

QIcon Element::icon() const
{
    return {};
}

void Element::setRecord(std::unique_ptr<ElementData> record)
{
    _record = std::move(record);
    nodeDataChanged();
}

std::unique_ptr<ElementData> Element::exchangeRecord(std::unique_ptr<ElementData> record)
{
    return std::exchange(_record, std::move(record));
}

std::unique_ptr<ElementData> Element::takeRecord()
{
    return exchangeRecord(nullptr);
}

bool Element::isAccessible() const
{
    return !_access || _access(*_module);
}

ElementEditor *Element::elementWidget(int role) const
{
    if (ElementEditor *editor = _module->elementWidget(_type, role))
        return editor;
    for (const Module *extending : _module->extendingModules()) {
        if (ElementEditor *editor = extending->elementWidget(_type, role))
            return editor;
    }
    return nullptr;
}

QVariant Element::data(int column, int role) const
{
    if (role == Qt::TextAlignmentRole)
        return isNumber(data(column, SortRole)) ? QVariant(numberAlignment()) : QVariant();
    if (column != 0)
        return {};
    switch (role) {
    case Qt::DisplayRole:
    case Qt::ToolTipRole:
    case SortRole:
        return _title;
    case Qt::DecorationRole:
    case IconRole: {
        const QIcon shown = icon();
        return shown.isNull() ? QVariant() : shown; // a view keeps room for an icon that is there but empty
    }
    default:
        return {};
    }
}

int Element::numberAlignment()
{
    return Qt::AlignRight | Qt::AlignVCenter;
}

QVariant Element::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (section == 0 && orientation == Qt::Horizontal && role == Qt::DisplayRole)
        return QCoreApplication::translate("Element", "Title");
    return {};
}

QStringList Element::displayChildrenVariants() const
{
    return {};
}

void Element::requestSupplements()
{
    if (std::exchange(_supplementsRequested, true))
        return;
    const NodePointer<Element> self(this);
    std::vector<QPointer<Module>> extendingModules;
    for (Module *module : _module->extendingModules())
        extendingModules.emplace_back(module);
    for (const QPointer<Module> &module : extendingModules) {
        if (module && self)
            module->performOperation(this, OperationType::CreateSupplement, nullptr, 0);
    }
}

OperationTypes OrdinaryElement::availableOperations() const
{
    return OperationType::Read | OperationType::Write;
}

OperationTypes ContainerElement::availableOperations() const
{
    return OperationType::ReadContent | OperationType::Read;
}

void ContainerElement::performOperation(OperationType type, ElementData *data, int extra)
{
    const auto *display = dynamic_cast<const ChangeDisplayElementData *>(data);
    if (type == OperationType::ChangeDisplay && display) {
        setDisplayChildrenVariant(display->displayType());
        emitNodeChildsDataChanged();
        return;
    }
    if (type == OperationType::ReadContent)
        setContent(Content::Reading);
    Element::performOperation(type, data, extra);
}

bool ContainerElement::canFetchChildren() const
{
    return _content == Content::NeverRead;
}

void ContainerElement::fetchChildren()
{
    performOperation(OperationType::ReadContent, nullptr, 0);
}

OperationTypes SupplementElement::availableOperations() const
{
    return OperationType::Read | OperationType::Write;
}

bool SupplementElement::isTreeRow() const
{
    return false;
}
