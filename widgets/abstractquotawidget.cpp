// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "abstractquotawidget.h"

#include "connectionlist.h"
#include "countlimitedit.h"
#include "devicesbox.h"
#include "forcetimeedit.h"
#include "generalwidget.h"
#include "pluralsuffix.h"
#include "sizelimitedit.h"
#include "ui_devicewidget.h"
#include "wheelguard.h"

#include <generalelement.h>
#include <memorysizetransfer.h>
#include <touchedpart.h>

#include <QLineEdit>
#include <QMessageBox>
#include <QPointer>
#include <QStyle>

#include <algorithm>
#include <array>

struct AbstractQuotaWidget::Form
{
    explicit Form(QWidget *place)
        : ui(built(place))
    {}

    static Ui::DeviceWidget built(QWidget *place)
    {
        Ui::DeviceWidget form;
        form.setupUi(place);
        return form;
    }

    Ui::DeviceWidget ui;
    MemorySizeTransfer units;
    SizeLimitEdit softBlocks{ui._softLimitBlocksCheckBox, ui._softLimitBlocksDoubleSpinBox,
                             ui._softLimitDimensionComboBox, units};
    SizeLimitEdit hardBlocks{ui._hardLimitBlocksCheckBox, ui._hardLimitBlocksDoubleSpinBox,
                             ui._hardLimitDimensionComboBox, units};
    CountLimitEdit softInodes{ui._softLimitInodesCheckBox, ui._softLimitInodesSpinBox};
    CountLimitEdit hardInodes{ui._hardLimitInodesCheckBox, ui._hardLimitInodesSpinBox};
    ForceTimeEdit blocksTime{ui._blocksDateTimeEdit};
    ForceTimeEdit inodesTime{ui._inodesDateTimeEdit};

    // Whose changes are changes of the content.
    const std::array<QCheckBox *, 4> checkBoxes = {softBlocks.checkBox(), hardBlocks.checkBox(), softInodes.checkBox(),
                                                   hardInodes.checkBox()};
    const std::array<QDoubleSpinBox *, 2> sizes = {softBlocks.number(), hardBlocks.number()};
    const std::array<QSpinBox *, 2> counts = {softInodes.number(), hardInodes.number()};
    const std::array<QComboBox *, 2> unitBoxes = {softBlocks.unit(), hardBlocks.unit()};
    const std::array<QDateTimeEdit *, 2> times = {blocksTime.edit(), inodesTime.edit()};
    ConnectionList changes;
    WheelGuard wheel;
};

AbstractQuotaWidget::AbstractQuotaWidget(Module *module, AccessCheck access, QWidget *parent)
    : ViewEditElementWidget(module, access, parent)
{}

AbstractQuotaWidget::~AbstractQuotaWidget() = default;

void AbstractQuotaWidget::buildDeviceWidget(QWidget *place, const QString &supportText, const QString &isOnText)
{
    _form = std::make_unique<Form>(place);
    Ui::DeviceWidget &ui = _form->ui;
    ui._deviceSupportQuotaLabel->setText(supportText);
    ui._quotaIsOnLabel->setText(isOnText);

    connect(ui._devicesComboBox, &QComboBox::currentTextChanged, this, &AbstractQuotaWidget::currentDeviceChanged);
    connect(ui._goToGeneralFormPushButton, &QPushButton::clicked, this, &AbstractQuotaWidget::goToGeneralForm);
    for (QSpinBox *count : _form->counts)
        PluralSuffix::keepFor(count, "AbstractQuotaWidget", QT_TRANSLATE_N_NOOP("AbstractQuotaWidget", " files"));

    for (QDoubleSpinBox *size : _form->sizes)
        _form->wheel.guard(size);
    for (QSpinBox *count : _form->counts)
        _form->wheel.guard(count);
    for (QComboBox *unit : _form->unitBoxes)
        _form->wheel.guard(unit);
    for (QDateTimeEdit *time : _form->times)
        _form->wheel.guard(time);

    // Nobody edits what is used, but everybody wants to read it.
    for (QWidget *used :
         {static_cast<QWidget *>(ui._usedBlocksDoubleSpinBox), static_cast<QWidget *>(ui._usedInodesSpinBox)}) {
        QPalette palette = used->palette();
        palette.setColor(QPalette::Disabled, QPalette::Text, palette.color(QPalette::Active, QPalette::Text));
        used->setPalette(palette);
    }

    ui._noDeviceLabel->hide();
    currentDeviceChanged(QString());
    blockEditWidget(true);
}

void AbstractQuotaWidget::setElement(Element *element)
{
    if (element != this->element()) {
        _data = AbstractElementData();
        currentDeviceChanged(_form->ui._devicesComboBox->currentText());
    }
    ViewEditElementWidget::setElement(element);
}

void AbstractQuotaWidget::afterSuccessfulRead(Element *element, ElementData *record)
{
    if (element != this->element())
        return;
    if (!isBlocked())
        blockEditWidget(true);
    const auto *account = dynamic_cast<const AbstractElementData *>(record);
    if (!account)
        return;
    _data = *account;
    showDevices();
    ViewEditElementWidget::afterSuccessfulRead(element, record);
}

void AbstractQuotaWidget::applyContentChanges()
{
    const QString device = _form->ui._devicesComboBox->currentText();
    if (isEditable() && isContentValid() && !_data.deviceQuotas.value(device).fileExists) {
        const QPointer<AbstractQuotaWidget> alive(this); // the page may go while the box stands
        QMessageBox::information(this, tr("Warning"),
                                 tr("In process of inclusion quota configuration file will be created. "
                                    "This process may take several minutes."));
        if (!alive)
            return;
    }
    ViewEditElementWidget::applyContentChanges();
}

void AbstractQuotaWidget::setDeviceToNextShow(const QString &deviceName)
{
    _deviceName = deviceName;
}

void AbstractQuotaWidget::currentDeviceChanged(const QString &deviceName)
{
    _form->changes.cut();
    Ui::DeviceWidget &ui = _form->ui;
    const DeviceQuota quota = _data.deviceQuotas.value(deviceName);
    const auto stateText = [](bool isOn) { return isOn ? tr("ON") : tr("OFF"); };

    ui._deviceFilesystemLabel->setText(quota.filesystemType);
    ui._quotaIsOnStatusLabel->setText(stateText(quota.quotaIsOn));
    ui._deviceSupportQuotaStatusLabel->setText(stateText(quota.kindIsOn));
    ui._goToGeneralFormPushButton->hide();

    ui._usedBlocksDoubleSpinBox->setValue(quota.usedBlocks.value);
    ui._usedBlocksDoubleSpinBox->setSuffix(QStringLiteral(" %1").arg(quota.usedBlocks.unitName));
    ui._usedInodesSpinBox->setValue(CountLimitEdit::shownCount(quota.usedInodes));
    _form->softBlocks.show(quota.softBlockLimit);
    _form->hardBlocks.show(quota.hardBlockLimit);
    _form->softInodes.show(quota.softInodeLimit);
    _form->hardInodes.show(quota.hardInodeLimit);
    _form->blocksTime.show(quota.blocksTimeToForce);
    _form->inodesTime.show(quota.inodesTimeToForce);
    showHiddenLimits();

    ui._settingsGroupBox->setEnabled(true);
    connectChangeDataWidgets();
}

void AbstractQuotaWidget::changeData()
{
    _form->ui._devicesComboBox->setEnabled(false);
    showHiddenLimits();
    changeContent();
}

void AbstractQuotaWidget::goToGeneralForm()
{
    const TreeNode *computer = element();
    for (int level = 0; level < 3 && computer; ++level)
        computer = computer->parentNode();
    if (!computer)
        return;
    const QVector<TreeNode *> nodes = computer->allChildNodes();
    const auto found = std::find_if(nodes.cbegin(), nodes.cend(),
                                    [](const TreeNode *node) { return node->id() == GeneralElement::typeName(); });
    auto *general = found == nodes.cend() ? nullptr : dynamic_cast<Element *>(*found);
    auto *editor = general ? dynamic_cast<GeneralWidget *>(general->elementWidget(MainRole)) : nullptr;
    if (!editor)
        return;
    editor->setDeviceToNextShow(_form->ui._devicesComboBox->currentText());
    general->emitSetCurrentNode();
}

void AbstractQuotaWidget::connectChangeDataWidgets()
{
    ConnectionList &changes = _form->changes;
    for (QCheckBox *box : _form->checkBoxes)
        changes += connect(box, &QCheckBox::toggled, this, &AbstractQuotaWidget::changeData);
    for (QDoubleSpinBox *size : _form->sizes)
        changes +=
            connect(size, qOverload<double>(&QDoubleSpinBox::valueChanged), this, &AbstractQuotaWidget::changeData);
    for (QSpinBox *count : _form->counts)
        changes += connect(count, qOverload<int>(&QSpinBox::valueChanged), this, &AbstractQuotaWidget::changeData);
    // What is typed anew counts, also where it is the number that the form showed for one that it could not show.
    const auto connectTyping = [this, &changes](const QAbstractSpinBox *number) {
        changes +=
            connect(number->findChild<QLineEdit *>(), &QLineEdit::textEdited, this, &AbstractQuotaWidget::changeData);
    };
    std::for_each(_form->sizes.begin(), _form->sizes.end(), connectTyping);
    std::for_each(_form->counts.begin(), _form->counts.end(), connectTyping);
    for (QComboBox *unit : _form->unitBoxes)
        changes +=
            connect(unit, qOverload<int>(&QComboBox::currentIndexChanged), this, &AbstractQuotaWidget::changeData);
    for (QDateTimeEdit *time : _form->times)
        changes += connect(time, &QDateTimeEdit::dateTimeChanged, this, &AbstractQuotaWidget::changeData);
}

void AbstractQuotaWidget::exportTo(AbstractElementData &record) const
{
    record.text = _data.text;
    record.name = _data.name;
    record.id = _data.id;
    record.deviceQuotas = _data.deviceQuotas;
    const DeviceQuota edited = editedQuota();
    if (edited.deviceName.isEmpty())
        return;
    record.deviceQuotas.insert(edited.deviceName, edited);
    TouchedPart part;
    part.device = edited.deviceName;
    part.noteIn(record);
}

void AbstractQuotaWidget::resizeEvent(QResizeEvent *event)
{
    ViewEditElementWidget::resizeEvent(event);
    Ui::DeviceWidget &ui = _form->ui;
    // More than side by side they need at least: a page that scrolls never gets narrower than that.
    const int margins = 6 * style()->pixelMetric(QStyle::PM_LayoutLeftMargin);
    const int needed = ui.groupBox_2->minimumSizeHint().width() + ui.groupBox_16->minimumSizeHint().width() + margins;
    ui.horizontalLayout->setDirection(width() >= needed ? QBoxLayout::LeftToRight : QBoxLayout::TopToBottom);
}

void AbstractQuotaWidget::showDevices()
{
    QComboBox *devices = _form->ui._devicesComboBox;
    const QString chosen = _deviceName.isEmpty() ? devices->currentText() : _deviceName;
    _deviceName.clear();
    DevicesBox::fill(devices, _data.deviceQuotas.keys(), chosen);
    devices->setEnabled(true);
    _form->ui._noDeviceLabel->setVisible(_data.deviceQuotas.isEmpty());
    _form->ui._settingsGroupBox->setHidden(_data.deviceQuotas.isEmpty());
    currentDeviceChanged(devices->currentText());
}

void AbstractQuotaWidget::showHiddenLimits()
{
    const auto files = [](const CountLimitEdit &edit) {
        const QString hidden = edit.hiddenLimit();
        return hidden.isEmpty() ? hidden : hidden + edit.number()->suffix();
    };
    const auto showLines = [](QLabel *label, const QString &soft, const QString &hard) {
        QStringList lines;
        if (!soft.isEmpty())
            lines +=
                tr("The soft limit is %1, which this form cannot show exactly. It stays so until it is changed here.")
                    .arg(soft);
        if (!hard.isEmpty())
            lines +=
                tr("The hard limit is %1, which this form cannot show exactly. It stays so until it is changed here.")
                    .arg(hard);
        label->setText(lines.join(QLatin1Char('\n')));
        label->setHidden(lines.isEmpty());
    };
    showLines(_form->ui._blocksNoteLabel, _form->softBlocks.hiddenLimit(), _form->hardBlocks.hiddenLimit());
    showLines(_form->ui._inodesNoteLabel, files(_form->softInodes), files(_form->hardInodes));
}

DeviceQuota AbstractQuotaWidget::editedQuota() const
{
    DeviceQuota quota;
    quota.deviceName = _form->ui._devicesComboBox->currentText();
    quota.softBlockLimit = _form->softBlocks.limit();
    quota.hardBlockLimit = _form->hardBlocks.limit();
    quota.softInodeLimit = _form->softInodes.limit();
    quota.hardInodeLimit = _form->hardInodes.limit();
    quota.blocksTimeToForce = _form->blocksTime.moment();
    quota.inodesTimeToForce = _form->inodesTime.moment();
    return quota;
}
