// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "elementwidget.h"

#include <module.h>

class ElementWidget::Private
{
public:
    Private(Module *ofModule, AccessCheck accessCheck)
        : module(ofModule)
        , access(accessCheck)
    {}

    Module *module;
    AccessCheck access;
    NodePointer<Element> element;
    QString elementType;
    QString ownerType;
    int order = 0;
    bool contentChanged = false;
};

ElementWidget::ElementWidget(Module *module, AccessCheck access, QWidget *parent)
    : QWidget(parent)
    , d(std::make_unique<Private>(module, access))
{}

ElementWidget::~ElementWidget() = default;

QString ElementWidget::elementType() const
{
    return d->elementType;
}

Module *ElementWidget::module() const
{
    return d->module;
}

OperationTypes ElementWidget::availableOperations() const
{
    const Element *shown = element();
    return shown ? shown->availableOperations() : OperationTypes();
}

int ElementWidget::role() const
{
    return MainRole;
}

Element *ElementWidget::element() const
{
    return d->element.data();
}

QObject *ElementWidget::object()
{
    return this;
}

void ElementWidget::connectToModule(Module *module)
{
    connect(this, &ElementWidget::elementContextOperationChanged, module, &Module::elementContextOperationChanged,
            Qt::UniqueConnection);
}

void ElementWidget::afterSuccessfulRead(Element * /*element*/, ElementData * /*record*/)
{
    setUnchanged();
}

void ElementWidget::afterSuccessfulUpdate() {}

void ElementWidget::setUnchanged()
{
    setContentChanged(false);
}

QString ElementWidget::ownerType() const
{
    return d->ownerType;
}

int ElementWidget::order() const
{
    return d->order;
}

QString ElementWidget::caption() const
{
    const Element *shown = element();
    return shown ? shown->caption() : QString();
}

void ElementWidget::setElement(Element *element)
{
    if (element == this->element() && element)
        return;
    d->element = element;
    setContentChanged(false);
    Q_EMIT elementContextOperationChanged(this);
}

void ElementWidget::followTo(Element *element)
{
    d->element = element;
    Q_EMIT elementContextOperationChanged(this);
}

void ElementWidget::read() {}

void ElementWidget::refresh()
{
    read();
}

bool ElementWidget::isContentChanged() const
{
    return d->contentChanged;
}

bool ElementWidget::isAccessible() const
{
    return !d->access || d->access(*d->module);
}

void ElementWidget::setElementType(const QString &type)
{
    d->elementType = type;
}

void ElementWidget::setOwnerType(const QString &type)
{
    d->ownerType = type;
}

void ElementWidget::setOrder(int order)
{
    d->order = order;
}

void ElementWidget::setContentChanged(bool changed)
{
    if (changed == d->contentChanged)
        return;
    d->contentChanged = changed;
    Q_EMIT contentChanged(changed);
}
