// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "abstractusersgroupswidget.h"

#include "abstractquotawidget.h"
#include "devicesbox.h"
#include "ui_abstractusersgroupswidget.h"

#include <abstractcontainerelement.h>
#include <abstractelement.h>
#include <abstractelementdata.h>
#include <accountcolumn.h>
#include <elementswidgetproxymodel.h>
#include <listcolumns.h>
#include <treenodemodel.h>

#include <QHeaderView>
#include <QScrollBar>
#include <QSettings>
#include <QShortcut>

#include <algorithm>

namespace
{
bool supportsQuota(const QVector<TreeNode *> &accounts, const QString &device)
{
    const auto *first = dynamic_cast<const Element *>(accounts.value(0));
    const auto *record = first ? dynamic_cast<const AbstractElementData *>(first->record()) : nullptr;
    return record && record->deviceQuotas.value(device).kindIsOn;
}

Qt::CheckState checkState(bool isChecked)
{
    return isChecked ? Qt::Checked : Qt::Unchecked;
}
} // namespace

AbstractUsersGroupsWidget::AbstractUsersGroupsWidget(const QString &name, Module *module, AccessCheck access,
                                                     QWidget *parent)
    : ListElementWidget(module, access, parent)
    , _name(name)
    , _ui(std::make_unique<Ui::AbstractUsersGroupsWidget>())
    , _nodes(new TreeNodeModel(this))
    , _rows(new ElementsWidgetProxyModel(this))
{
    setElementType(name);
    _ui->setupUi(this);
    // Before the rows themselves hear of it, and with them the selection.
    connect(_nodes, &QAbstractItemModel::rowsAboutToBeRemoved, this, &AbstractUsersGroupsWidget::rememberRows);
    // And before they sort what comes: by what it shows.
    connect(_nodes, &QAbstractItemModel::rowsInserted, this,
            [this] { chooseDeviceForRows(_ui->_devicesComboBox->currentText()); });
    _rows->setSourceModel(_nodes);
    ElementTreeView *view = _ui->_elementTreeView;
    view->setModel(_rows);
    connect(_nodes, &QAbstractItemModel::rowsInserted, this, &AbstractUsersGroupsWidget::findRowsAgain,
            Qt::QueuedConnection);
    _columns = std::make_unique<ListColumns>(view, name);
    setFocusProxy(view);
    buildFilters();

    connect(this, &QWidget::windowTitleChanged, view, &QWidget::setAccessibleName);
    connect(view, &ElementTreeView::elementContextOperationChangedFocused, this,
            &ElementWidget::elementContextOperationChanged);
    connect(view, &ElementTreeView::elementContextOperationChangedSelected, this,
            &ElementWidget::elementContextOperationChanged);
    connect(view, &QTreeView::doubleClicked, this, &AbstractUsersGroupsWidget::choiceElement);
    for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Enter}) {
        auto *enter = new QShortcut(key, view, nullptr, nullptr, Qt::WidgetShortcut);
        connect(enter, &QShortcut::activated, this, [this, view] { choiceElement(view->currentIndex()); });
    }
    connect(view, &QWidget::customContextMenuRequested, this, &AbstractUsersGroupsWidget::customContextMenuRequest);
    connect(_ui->_devicesComboBox, &QComboBox::currentTextChanged, this, &AbstractUsersGroupsWidget::deviceChanged);
    connect(_ui->_filtersPushButton, &QPushButton::clicked, this, &AbstractUsersGroupsWidget::showHideFiltersWidget);
    connect(_ui->_filtersListWidget, &QListWidget::itemChanged, this, &AbstractUsersGroupsWidget::filterItemChanged);
    connect(_ui->_filtersListWidget, &QListWidget::doubleClicked, this,
            &AbstractUsersGroupsWidget::filterItemDoubleCkicked);
}

AbstractUsersGroupsWidget::~AbstractUsersGroupsWidget()
{
    if (_filtersLoaded)
        saveFilters();
}

void AbstractUsersGroupsWidget::setFilterText(const QString &text)
{
    _rows->setFilterText(text);
}

void AbstractUsersGroupsWidget::read()
{
    if (role() != MainRole || !availableOperations().testFlag(OperationType::ReadContent))
        return;
    if (_nodes->rootNode() != element()) {
        _nodes->setRootNode(element());
        _columns->load();
        loadFilters();
        deviceChanged(_ui->_devicesComboBox->currentText());
        const auto *container = dynamic_cast<const ContainerElement *>(element());
        if (!container || container->content() != ContainerElement::Content::Stale)
            return; // the view has rows read that never were
    }
    ListElementWidget::read();
}

void AbstractUsersGroupsWidget::performOperation(OperationType type, ElementData *record, int extra)
{
    const auto key = AbstractContainerElement::devicesKey();
    if (record && record->params.contains(key)) {
        QComboBox *box = _ui->_devicesComboBox;
        const QString before = box->currentText();
        DevicesBox::fill(box, record->params.value(key).toStringList(), before);
        if (box->currentText() == before)
            updateWarning(before);
        else
            deviceChanged(box->currentText());
    }
    ListElementWidget::performOperation(type, record, extra);
}

void AbstractUsersGroupsWidget::choiceElement(const QModelIndex &index)
{
    auto *chosen = dynamic_cast<Element *>(_ui->_elementTreeView->node(index));
    auto *editor = chosen ? dynamic_cast<AbstractQuotaWidget *>(chosen->elementWidget(MainRole)) : nullptr;
    if (!editor)
        return;
    _ui->_elementTreeView->clearSelection();
    editor->setDeviceToNextShow(_ui->_devicesComboBox->currentText());
    chosen->emitSetCurrentNode();
}

void AbstractUsersGroupsWidget::customContextMenuRequest(const QPoint &point)
{
    const ElementTreeView *view = _ui->_elementTreeView;
    Q_EMIT customContextMenuRequested(view->mapToGlobal(point + QPoint(0, view->header()->height())));
}

void AbstractUsersGroupsWidget::deviceChanged(const QString &deviceName)
{
    if (!element())
        return;
    updateWarning(deviceName);
    chooseDeviceForRows(deviceName);
    element()->emitNodeChildsDataChanged();
}

void AbstractUsersGroupsWidget::showHideFiltersWidget()
{
    _ui->_filtersListWidget->setVisible(_ui->_filtersListWidget->isHidden());
}

void AbstractUsersGroupsWidget::filterItemChanged(QListWidgetItem *item)
{
    const int section = item->data(Qt::UserRole).toInt();
    _ui->_elementTreeView->header()->setSectionHidden(section, item->checkState() == Qt::Unchecked);
}

void AbstractUsersGroupsWidget::filterItemDoubleCkicked(const QModelIndex &index)
{
    if (QListWidgetItem *item = _ui->_filtersListWidget->item(index.row()))
        item->setCheckState(checkState(item->checkState() == Qt::Unchecked));
}

void AbstractUsersGroupsWidget::setWarningText(const QString &text)
{
    _ui->_warningLabel->setText(text);
}

void AbstractUsersGroupsWidget::updateWarning(const QString &deviceName)
{
    if (element())
        _ui->_warningLabel->setHidden(supportsQuota(element()->childNodes(), deviceName));
}

void AbstractUsersGroupsWidget::chooseDeviceForRows(const QString &deviceName)
{
    if (!element())
        return;
    const QVector<TreeNode *> &accounts = element()->childNodes();
    for (TreeNode *node : accounts)
        if (auto *account = dynamic_cast<AbstractElement *>(node))
            account->setDeviceForData(deviceName);
}

void AbstractUsersGroupsWidget::buildFilters()
{
    for (int filter = 0; filter < AccountColumn::Count - 1; ++filter) {
        // Named after one column, a filter hides the section before it: section 0 and the first name show the same.
        auto *item = new QListWidgetItem(AbstractContainerElement::columnName(filter + 1), _ui->_filtersListWidget);
        item->setFlags(item->flags() | Qt::ItemIsUserCheckable);
        item->setCheckState(Qt::Checked);
        item->setData(Qt::UserRole, filter);
    }
}

void AbstractUsersGroupsWidget::loadFilters()
{
    const QSettings settings;
    for (int filter = 0; filter < _ui->_filtersListWidget->count(); ++filter) {
        QListWidgetItem *item = _ui->_filtersListWidget->item(filter);
        if (!_filtersLoaded)
            item->setCheckState(checkState(settings.value(filterKey(filter), true).toBool()));
        filterItemChanged(item); // also where its state is no other: the columns are new
    }
    _filtersLoaded = true;
}

void AbstractUsersGroupsWidget::saveFilters() const
{
    QSettings settings;
    for (int filter = 0; filter < _ui->_filtersListWidget->count(); ++filter)
        settings.setValue(filterKey(filter), _ui->_filtersListWidget->item(filter)->checkState() == Qt::Checked);
}

QString AbstractUsersGroupsWidget::filterKey(int filter) const
{
    return QStringLiteral("filtersForQuota/%1").arg(_name) + QString::number(filter);
}

void AbstractUsersGroupsWidget::rememberRows()
{
    const auto *current =
        dynamic_cast<const Element *>(_ui->_elementTreeView->node(_ui->_elementTreeView->currentIndex()));
    _currentTitle = current ? current->title() : QString();
    _topRow = _ui->_elementTreeView->verticalScrollBar()->value();
}

void AbstractUsersGroupsWidget::findRowsAgain()
{
    ElementTreeView *view = _ui->_elementTreeView;
    if (_topRow > 0) {
        view->doItemsLayout(); // the scroll bar has no range before
        view->verticalScrollBar()->setValue(_topRow);
        _topRow = 0;
    }
    if (_currentTitle.isEmpty() || !element())
        return;
    const QVector<TreeNode *> &accounts = element()->childNodes();
    const auto again = std::find_if(accounts.cbegin(), accounts.cend(), [this](const TreeNode *node) {
        const auto *account = dynamic_cast<const Element *>(node);
        return account && account->title() == _currentTitle;
    });
    _currentTitle.clear();
    if (again != accounts.cend())
        view->setCurrentIndex(view->indexOf(*again));
}
