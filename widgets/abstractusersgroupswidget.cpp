// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "abstractusersgroupswidget.h"

#include "abstractquotawidget.h"
#include "formhelpers.h"
#include "ui_abstractusersgroupswidget.h"

#include <abstractcontainerelement.h>
#include <abstractelement.h>
#include <abstractelementdata.h>
#include <accountcolumn.h>
#include <elementswidgetproxymodel.h>

#include <QHeaderView>
#include <QSettings>

namespace
{
/// What the first account has on each device; nothing where there is none.
QMap<QString, DeviceQuota> firstQuotas(const Element &list)
{
    const auto *first = dynamic_cast<const Element *>(list.childNodes().value(0));
    const auto *record = first ? dynamic_cast<const AbstractElementData *>(first->record()) : nullptr;
    return record ? record->deviceQuotas : QMap<QString, DeviceQuota>();
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
{
    setElementType(name);
    _ui->setupUi(this);
    setView(_ui->_elementTreeView, name);
    rows()->setHeadersInLines(true);
    buildFilters();

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

void AbstractUsersGroupsWidget::read()
{
    if (role() != MainRole || !availableOperations().testFlag(OperationType::ReadContent))
        return;
    if (!listsChildren()) {
        listChildren();
        loadFilters();
        deviceChanged(_ui->_devicesComboBox->currentText());
        const auto *container = dynamic_cast<const ContainerElement *>(element());
        if (!container || container->content() != ContainerElement::Content::Stale)
            return; // the view has rows read that never were
    }
    updateWarning(_ui->_devicesComboBox->currentText());
    ListElementWidget::read();
}

void AbstractUsersGroupsWidget::performOperation(OperationType type, ElementData *record, int extra)
{
    const auto key = AbstractContainerElement::devicesKey();
    if (record && record->params.contains(key)) {
        DevicesBox *box = _ui->_devicesComboBox;
        const QString before = box->currentText();
        QMap<QString, QString> mountPoints;
        const auto quotas = element() ? firstQuotas(*element()) : QMap<QString, DeviceQuota>();
        for (auto quota = quotas.cbegin(); quota != quotas.cend(); ++quota)
            mountPoints.insert(quota.key(), quota->mountPoint);
        box->setDevices(record->params.value(key).toStringList(), mountPoints, before);
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

void AbstractUsersGroupsWidget::deviceChanged(const QString &deviceName)
{
    if (!element())
        return;
    updateWarning(deviceName);
    completeRows(0, element()->childNodes().size() - 1);
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
    _warningText = text;
    _ui->_warningLabel->setText(text);
}

void AbstractUsersGroupsWidget::updateWarning(const QString &deviceName)
{
    if (!element())
        return;
    const bool isAbsent = _ui->_devicesComboBox->isAbsent();
    _ui->_warningLabel->setText(isAbsent ? tr("%1 was not there at the last read.").arg(deviceName) : _warningText);
    _ui->_warningLabel->setHidden(!isAbsent && firstQuotas(*element()).value(deviceName).kindIsOn);
}

void AbstractUsersGroupsWidget::completeRows(int first, int last)
{
    if (!element())
        return;
    const QString deviceName = _ui->_devicesComboBox->currentText();
    const QVector<TreeNode *> &accounts = element()->childNodes();
    for (int row = first; row <= last; ++row)
        if (auto *account = dynamic_cast<AbstractElement *>(accounts.value(row)))
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
