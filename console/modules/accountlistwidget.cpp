// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "accountlistwidget.h"

#include "accountmodule.h"
#include "everybody.h"

#include <elementswidgetproxymodel.h>
#include <elementtreeview.h>
#include <listcolumns.h>
#include <treenodemodel.h>

#include <QVBoxLayout>

AccountListWidget::AccountListWidget(AccountModule *module)
    : ListElementWidget(module, &everybody)
    , _nodes(new TreeNodeModel(this))
    , _rows(new ElementsWidgetProxyModel(this))
    , _view(new ElementTreeView(this))
{
    setElementType(module->accountKind().containerType);
    setWindowTitle(module->accountKind().containerTitle);

    _rows->setSourceModel(_nodes);
    _view->setObjectName(QStringLiteral("accountView"));
    _view->setAccessibleName(windowTitle());
    _view->setRootIsDecorated(false);
    _view->setItemsExpandable(false);
    _view->setModel(_rows);
    _columns = std::make_unique<ListColumns>(_view, elementType());

    auto *whole = new QVBoxLayout(this);
    whole->setContentsMargins(0, 0, 0, 0);
    whole->addWidget(_view);
    setFocusProxy(_view);

    connect(_view, &ElementTreeView::elementContextOperationChangedFocused, this,
            &ElementWidget::elementContextOperationChanged);
    connect(_view, &ElementTreeView::elementContextOperationChangedSelected, this,
            &ElementWidget::elementContextOperationChanged);
    connect(_view, &QTreeView::activated, this, &AccountListWidget::open);
    connect(_view, &QWidget::customContextMenuRequested, this, &AccountListWidget::requestMenu);
}

AccountListWidget::~AccountListWidget() = default;

void AccountListWidget::setElement(Element *element)
{
    ListElementWidget::setElement(element);
    _nodes->setRootNode(element);
    if (element)
        _columns->load();
}

void AccountListWidget::setFilterText(const QString &text)
{
    _rows->setFilterText(text);
}

void AccountListWidget::open(const QModelIndex &index)
{
    if (TreeNode *node = _view->node(index))
        node->emitSetCurrentNode();
}

void AccountListWidget::requestMenu(const QPoint &position)
{
    Q_EMIT customContextMenuRequested(_view->viewport()->mapToGlobal(position));
}
