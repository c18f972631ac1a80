// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "abstractquotawidget.h"

#include "accountlists.h"
#include "countlimitedit.h"
#include "devicesbox.h"
#include "forcetimeedit.h"
#include "formhelpers.h"
#include "generalwidget.h"
#include "limitnotes.h"
#include "quotafacts.h"
#include "sizelimitedit.h"
#include "ui_devicewidget.h"

#include <generalelement.h>
#include <wheelguard.h>

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
    SizeLimitEdit softBlocks{ui._softLimitBlocksCheckBox, ui._softLimitBlocksDoubleSpinBox,
                             ui._softLimitDimensionComboBox, ui._softLimitBlocksAnyButton};
    SizeLimitEdit hardBlocks{ui._hardLimitBlocksCheckBox, ui._hardLimitBlocksDoubleSpinBox,
                             ui._hardLimitDimensionComboBox, ui._hardLimitBlocksAnyButton};
    CountLimitEdit softInodes{ui._softLimitInodesCheckBox, ui._softLimitInodesSpinBox, ui._softLimitInodesAnyButton};
    CountLimitEdit hardInodes{ui._hardLimitInodesCheckBox, ui._hardLimitInodesSpinBox, ui._hardLimitInodesAnyButton};
    ForceTimeEdit blocksTime{ui._blocksDateTimeEdit};
    ForceTimeEdit inodesTime{ui._inodesDateTimeEdit};

    const std::array<LimitEdit *, 4> limits = {&softBlocks, &hardBlocks, &softInodes, &hardInodes};
    const std::array<QDateTimeEdit *, 2> times = {blocksTime.edit(), inodesTime.edit()};
    ConnectionList changes;
    WheelGuard wheel;

    /// The first limit whose number is refused; null when there is none.
    const LimitEdit *refused() const
    {
        const auto found =
            std::find_if(limits.cbegin(), limits.cend(), [](const LimitEdit *limit) { return limit->isRefused(); });
        return found == limits.cend() ? nullptr : *found;
    }
};

namespace
{
/// Nothing, where a spin box has a number: its lowest one stands for it.
template<typename SpinBox>
void showNothing(SpinBox *box, bool isNothing)
{
    box->setSpecialValueText(isNothing ? QStringLiteral(" ") : QString());
    if (isNothing)
        box->setValue(0);
}
} // namespace

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
    describeByToolTips(place);
    showUsedAsText();

    connect(ui._devicesComboBox, &QComboBox::currentTextChanged, this, &AbstractQuotaWidget::currentDeviceChanged);
    connect(ui._goToGeneralFormPushButton, &QPushButton::clicked, this, &AbstractQuotaWidget::goToGeneralForm);
    const std::array<QSpinBox *, 3> counts = {ui._usedInodesSpinBox, ui._softLimitInodesSpinBox,
                                              ui._hardLimitInodesSpinBox};
    for (QSpinBox *count : counts)
        keepPluralSuffix(count, "AbstractQuotaWidget", QT_TRANSLATE_N_NOOP("AbstractQuotaWidget", " files"));

    for (const LimitEdit *limit : _form->limits) {
        _form->wheel.guard(limit->box());
        connect(limit, &LimitEdit::refused, this, [this] {
            say(tr("The amount was not taken, since nothing could be edited just then. Please type it again."));
        });
    }
    _form->wheel.guard(_form->softBlocks.unit());
    _form->wheel.guard(_form->hardBlocks.unit());
    for (QDateTimeEdit *time : _form->times)
        _form->wheel.guard(time);

    _form->wheel.guard(ui._devicesComboBox);

    forgetRecord();
    blockEditWidget(true);
}

void AbstractQuotaWidget::setElement(Element *element)
{
    if (element != this->element())
        forgetRecord();
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
    _record = *account;
    showRecord();
    ViewEditElementWidget::afterSuccessfulRead(element, record);
}

void AbstractQuotaWidget::afterSuccessfulUpdate()
{
    ViewEditElementWidget::afterSuccessfulUpdate();
    if (!ownerType().isEmpty() || (_record && !_record->deviceQuotas.value(_device).kindIsOn))
        readAccountListsAgain(element());
}

QString AbstractQuotaWidget::whyInvalid() const
{
    const LimitEdit *refused = _form->refused();
    if (!refused)
        return ViewEditElementWidget::whyInvalid();
    const bool isHard = refused == &_form->hardBlocks || refused == &_form->hardInodes;
    return LimitNotes::refusal(*refused, isHard);
}

QWidget *AbstractQuotaWidget::invalidField() const
{
    const LimitEdit *refused = _form->refused();
    return refused ? refused->box() : ViewEditElementWidget::invalidField();
}

bool AbstractQuotaWidget::isBeingEdited() const
{
    const auto &limits = _form->limits;
    return ViewEditElementWidget::isBeingEdited() ||
           std::any_of(limits.cbegin(), limits.cend(), [](const LimitEdit *limit) { return limit->isDialogOpen(); });
}

ViewEditElementWidget::ApplyWarning AbstractQuotaWidget::warningBeforeApply() const
{
    const DeviceQuota quota = _record ? _record->deviceQuotas.value(_device) : DeviceQuota();
    const auto &limits = _form->limits;
    const bool isLimited =
        std::any_of(limits.cbegin(), limits.cend(), [](const LimitEdit *limit) { return limit->amount() != 0; });
    // A file is made where an update switches quotas on, and that is where they are off and there is a limit.
    if (quota.fileExists || quota.kindIsOn || !isLimited)
        return {};
    return {tr("Warning"), tr("In process of inclusion quota configuration file will be created. "
                              "This process may take several minutes.")};
}

void AbstractQuotaWidget::setDeviceToNextShow(const QString &deviceName)
{
    _deviceToShowNext = deviceName;
}

void AbstractQuotaWidget::currentDeviceChanged(const QString &deviceName)
{
    if (_device != deviceName)
        for (LimitEdit *limit : _form->limits)
            limit->closeDialog();
    _device = deviceName;
    showQuota();
}

void AbstractQuotaWidget::changeData()
{
    _form->ui._devicesComboBox->setEnabled(false);
    showNotes();
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
    editor->setDeviceToNextShow(_device);
    general->emitSetCurrentNode();
}

void AbstractQuotaWidget::connectChangeDataWidgets()
{
    for (LimitEdit *limit : _form->limits)
        _form->changes += connect(limit, &LimitEdit::edited, this, &AbstractQuotaWidget::changeData);
    for (QDateTimeEdit *time : _form->times)
        _form->changes += connect(time, &QDateTimeEdit::dateTimeChanged, this, &AbstractQuotaWidget::changeData);
}

bool AbstractQuotaWidget::exportTo(AbstractElementData &record) const
{
    if (!_record)
        return false;
    record.text = _record->text;
    record.name = _record->name;
    record.id = _record->id;
    record.deviceQuotas = _record->deviceQuotas;
    if (_device.isEmpty())
        return true;
    if (!record.deviceQuotas.contains(_device))
        return false;
    record.deviceQuotas.insert(_device, collectQuota());
    record.touched = std::make_shared<TouchedQuota>(TouchedQuota{_device, _record->deviceQuotas.value(_device)});
    return true;
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

void AbstractQuotaWidget::changeEvent(QEvent *event)
{
    ViewEditElementWidget::changeEvent(event);
    if (event->type() == QEvent::PaletteChange && _form)
        showUsedAsText();
}

/// Nobody edits what is used, but everybody wants to read it.
void AbstractQuotaWidget::showUsedAsText()
{
    for (QWidget *used : {static_cast<QWidget *>(_form->ui._usedBlocksDoubleSpinBox),
                          static_cast<QWidget *>(_form->ui._usedInodesSpinBox)}) {
        QPalette readable = palette();
        readable.setColor(QPalette::Disabled, QPalette::Text, readable.color(QPalette::Active, QPalette::Text));
        used->setPalette(readable);
    }
}

void AbstractQuotaWidget::forgetRecord()
{
    _record.reset();
    for (LimitEdit *limit : _form->limits)
        limit->closeDialog();
    _form->ui._devicesComboBox->setDevices({}, {}, QString());
    showFailures();
    showQuota();
}

void AbstractQuotaWidget::showRecord()
{
    if (!_deviceToShowNext.isEmpty())
        _device = std::exchange(_deviceToShowNext, QString());
    QMap<QString, QString> mountPoints;
    for (const DeviceQuota &quota : qAsConst(_record->deviceQuotas))
        mountPoints.insert(quota.deviceName, quota.mountPoint);
    QStringList present = _record->deviceQuotas.keys() + _record->failures.keys();
    present.removeDuplicates(); // of a kind that could not be asked there is a record all the same
    std::sort(present.begin(), present.end());
    DevicesBox *devices = _form->ui._devicesComboBox;
    devices->setDevices(present, mountPoints, _device);
    devices->setEnabled(true);
    showFailures();
    currentDeviceChanged(devices->currentText());
}

/// Why the page has nothing to show, or not all.
void AbstractQuotaWidget::showFailures()
{
    QStringList texts;
    if (_record) {
        const QMap<QString, QString> &failures = _record->failures;
        const QString silence = QuotaFacts::ofSilentSource(*_record);
        for (auto failure = failures.cbegin(); failure != failures.cend(); ++failure)
            texts += tr("%1 gave no answer: %2").arg(failure.key(), failure.value());
        if (_form->ui._devicesComboBox->isAbsent() && !failures.contains(_device))
            texts += tr("%1 was not there at the last read.").arg(_device);
        if (_record->id == AbstractElementData::NoId)
            texts += tr("There is no such account any more.");
        else if (_record->deviceQuotas.isEmpty() && failures.isEmpty())
            texts += silence.isEmpty()
                         ? tr("There is no device to set limits on: no line of /etc/fstab names a present device with "
                              "an ext2, ext3 or ext4 file system.")
                         : silence;
    }
    QLabel *label = _form->ui._noDeviceLabel;
    label->setText(texts.join(QLatin1Char('\n')));
    label->setHidden(texts.isEmpty());
}

bool AbstractQuotaWidget::isUnknown(const QString &device) const
{
    return !_record || device.isEmpty() || _record->failures.contains(device) || _form->ui._devicesComboBox->isAbsent();
}

void AbstractQuotaWidget::showQuota()
{
    _form->changes.cut();
    Ui::DeviceWidget &ui = _form->ui;
    const DeviceQuota quota = _record ? _record->deviceQuotas.value(_device) : DeviceQuota();
    const bool isKnown = !isUnknown(_device);
    const auto stateText = [isKnown](bool isOn) { return !isKnown ? QString() : isOn ? tr("ON") : tr("OFF"); };

    ui._deviceFilesystemLabel->setText(quota.filesystemType);
    ui._quotaIsOnStatusLabel->setText(stateText(quota.quotaIsOn));
    ui._deviceSupportQuotaStatusLabel->setText(stateText(quota.kindIsOn));
    ui._goToGeneralFormPushButton->hide();

    ui._usedBlocksDoubleSpinBox->setValue(quota.usedBlocks.value);
    ui._usedBlocksDoubleSpinBox->setSuffix(QStringLiteral(" %1").arg(quota.usedBlocks.unitName));
    ui._usedInodesSpinBox->setValue(CountLimitEdit::shownCount(quota.usedInodes));
    showNothing(ui._usedBlocksDoubleSpinBox, !isKnown);
    showNothing(ui._usedInodesSpinBox, !isKnown);
    _form->softBlocks.show(quota.softBlockLimit);
    _form->hardBlocks.show(quota.hardBlockLimit);
    _form->softInodes.show(quota.softInodeLimit);
    _form->hardInodes.show(quota.hardInodeLimit);
    _form->blocksTime.show(quota.blocksTimeToForce);
    _form->inodesTime.show(quota.inodesTimeToForce);
    showNotes();

    ui._settingsGroupBox->setHidden(_record && !isKnown);
    ui._settingsGroupBox->setEnabled(true);
    connectChangeDataWidgets();
}

void AbstractQuotaWidget::showNotes()
{
    const DeviceQuota quota = _record ? _record->deviceQuotas.value(_device) : DeviceQuota();
    const auto show = [](QLabel *label, LimitEdit &soft, LimitEdit &hard, quint64 used, const QString &first) {
        const LimitNotes notes(soft, hard, used);
        soft.setWarning(notes.softWarning);
        hard.setWarning(notes.hardWarning);
        const QStringList lines = first.isEmpty() ? notes.lines : QStringList(first) + notes.lines;
        label->setText(lines.join(QLatin1Char('\n')));
        label->setHidden(lines.isEmpty());
    };
    QString usedFiles;
    if (quota.usedInodes != static_cast<quint64>(CountLimitEdit::shownCount(quota.usedInodes)))
        usedFiles = tr("Used are %1, which is more than the box can show.")
                        .arg(AmountDialog::words(Counted::Files, quota.usedInodes));
    show(_form->ui._blocksNoteLabel, _form->softBlocks, _form->hardBlocks, quota.usedBlocks.exactBytes(), QString());
    show(_form->ui._inodesNoteLabel, _form->softInodes, _form->hardInodes, quota.usedInodes, usedFiles);
}

DeviceQuota AbstractQuotaWidget::collectQuota() const
{
    DeviceQuota quota;
    quota.deviceName = _device;
    quota.softBlockLimit = _form->softBlocks.limit();
    quota.hardBlockLimit = _form->hardBlocks.limit();
    quota.softInodeLimit = _form->softInodes.limit();
    quota.hardInodeLimit = _form->hardInodes.limit();
    quota.blocksTimeToForce = _form->blocksTime.moment();
    quota.inodesTimeToForce = _form->inodesTime.moment();
    return quota;
}
