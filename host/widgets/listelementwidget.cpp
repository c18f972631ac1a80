// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "listelementwidget.h"

#include "elementswidgetproxymodel.h"
#include "elementtreeview.h"
#include "listcolumns.h"

#include <module.h>
#include <treenodemodel.h>

#include <QHeaderView>
#include <QScrollBar>
#include <QShortcut>

#include <algorithm>
#include <utility>

class ListElementWidget::Private
{
public:
    explicit Private(ListElementWidget *ofEditor)
        : q(ofEditor)
        , nodes(new TreeNodeModel(q))
        , rows(new ElementsWidgetProxyModel(q))
    {}

    void rememberRows();
    void findRowsAgain();

    ListElementWidget *q;
    TreeNodeModel *nodes;
    ElementsWidgetProxyModel *rows;
    ElementTreeView *view = nullptr; // a child of q
    std::unique_ptr<ListColumns> columns;
    // Of rows that are being replaced.
    bool remembersRows = false;
    QString currentTitle;
    int topRow = 0;
};

void ListElementWidget::Private::rememberRows()
{
    if (std::exchange(remembersRows, true))
        return; // those that went before these are being replaced as well
    const auto *current = dynamic_cast<const Element *>(view->node(view->currentIndex()));
    currentTitle = current ? current->title() : QString();
    topRow = view->verticalScrollBar()->value();
}

void ListElementWidget::Private::findRowsAgain()
{
    if (!std::exchange(remembersRows, false))
        return;
    if (topRow > 0) {
        view->doItemsLayout(); // the scroll bar has no range before
        view->verticalScrollBar()->setValue(topRow);
    }
    const Element *list = q->element();
    if (currentTitle.isEmpty() || !list)
        return;
    const QVector<TreeNode *> &children = list->childNodes();
    const auto again = std::find_if(children.cbegin(), children.cend(), [this](const TreeNode *node) {
        const auto *child = dynamic_cast<const Element *>(node);
        return child && child->title() == currentTitle;
    });
    if (again != children.cend() && view->node(view->currentIndex()) != *again)
        view->setCurrentIndex(view->indexOf(*again));
}

ListElementWidget::ListElementWidget(Module *module, AccessCheck access, QWidget *parent)
    : ElementWidget(module, access, parent)
    , d(std::make_unique<Private>(this))
{}

ListElementWidget::~ListElementWidget() = default;

void ListElementWidget::read()
{
    if (role() != MainRole || !availableOperations().testFlag(OperationType::ReadContent))
        return;
    const auto *container = dynamic_cast<const ContainerElement *>(element());
    if (module()->getData(QStringLiteral("paranoid")).toBool() || (container && container->needsContentRead()))
        element()->performOperation(OperationType::ReadContent, nullptr, 0);
}

void ListElementWidget::refresh()
{
    if (auto *container = dynamic_cast<ContainerElement *>(element()))
        container->setContent(ContainerElement::Content::Stale);
    read();
}

void ListElementWidget::setFilterText(const QString &text)
{
    d->rows->setFilterText(text);
}

void ListElementWidget::choiceElement(const QModelIndex &index)
{
    if (TreeNode *node = d->view->node(index))
        node->emitSetCurrentNode();
}

void ListElementWidget::customContextMenuRequest(const QPoint &point)
{
    const QPoint belowHeader = point + QPoint(0, d->view->header()->height());
    Q_EMIT customContextMenuRequested(d->view->mapToGlobal(belowHeader));
}

void ListElementWidget::setView(ElementTreeView *view, const QString &listName)
{
    d->view = view;
    // Slots are called in the order of their connections: these two before the rows and the selection hear of a change.
    connect(d->nodes, &QAbstractItemModel::rowsAboutToBeRemoved, this, [this](const QModelIndex &parent) {
        if (!parent.isValid())
            d->rememberRows();
    });
    connect(d->nodes, &QAbstractItemModel::rowsInserted, this, [this](const QModelIndex &parent, int first, int last) {
        if (!parent.isValid())
            completeRows(first, last);
    });
    d->rows->workInSlices();
    d->rows->setSourceModel(d->nodes);
    view->setModel(d->rows);
    // And this when all have heard of it.
    for (const auto changed : {&QAbstractItemModel::rowsInserted, &QAbstractItemModel::rowsRemoved})
        connect(
            d->nodes, changed, this, [this] { d->findRowsAgain(); }, Qt::QueuedConnection);
    d->columns = std::make_unique<ListColumns>(view, listName);

    view->setRootIsDecorated(false);
    view->setItemsExpandable(false);
    setFocusProxy(view);
    view->setAccessibleName(windowTitle());
    connect(this, &QWidget::windowTitleChanged, view, &QWidget::setAccessibleName);
    connect(view, &ElementTreeView::elementContextOperationChangedFocused, this,
            &ElementWidget::elementContextOperationChanged);
    connect(view, &ElementTreeView::elementContextOperationChangedSelected, this,
            &ElementWidget::elementContextOperationChanged);
    connect(view, &QTreeView::doubleClicked, this, &ListElementWidget::choiceElement);
    for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Enter}) {
        auto *enter = new QShortcut(key, view, nullptr, nullptr, Qt::WidgetShortcut);
        connect(enter, &QShortcut::activated, this, [this, view] { choiceElement(view->currentIndex()); });
    }
    connect(view, &QWidget::customContextMenuRequested, this, &ListElementWidget::customContextMenuRequest);
}

void ListElementWidget::listChildren()
{
    d->nodes->setRootNode(element());
    if (element())
        d->columns->load();
}

bool ListElementWidget::listsChildren() const
{
    return d->nodes->rootNode() == element();
}

ElementsWidgetProxyModel *ListElementWidget::rows() const
{
    return d->rows;
}

void ListElementWidget::completeRows(int /*first*/, int /*last*/) {}
