// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "generalwidget.h"

#include "devicesbox.h"
#include "quotafacts.h"
#include "rebootcommand.h"
#include "ui_generalwidget.h"

#include <generalelement.h>
#include <touchedpart.h>

#include <QMessageBox>
#include <QScopedValueRollback>
#include <QStyle>

#include <algorithm>

namespace
{
std::unique_ptr<Ui::GeneralWidget> makeForm(QWidget *widget)
{
    auto form = std::make_unique<Ui::GeneralWidget>();
    form->setupUi(widget);
    return form;
}

const KindSettings &half(const DeviceSettings &settings, QuotaKind kind)
{
    return kind == GroupQuota ? settings.groupSettings : settings.userSettings;
}

/// Places in the array of grace periods.
std::size_t blockRow(QuotaKind kind)
{
    return kind == GroupQuota ? 2 : 0;
}

std::size_t inodeRow(QuotaKind kind)
{
    return blockRow(kind) + 1;
}

bool waitsForReboot(const KindSettings &kind)
{
    return kind.quotaOn && !kind.optionInForce;
}

/// Quotas that the file system keeps in itself are in force without a mount option.
bool needsReboot(const DeviceSettings &settings)
{
    return !settings.features.contains(DeviceSettings::quotaFeature()) &&
           (waitsForReboot(settings.userSettings) || waitsForReboot(settings.groupSettings));
}
} // namespace

GeneralWidget::GeneralWidget(Module *module, AccessCheck access, QWidget *parent)
    : ViewEditElementWidget(module, access, parent)
    , _ui(makeForm(this))
    , _graceRows({{{_ui->_blocksUsersWeekGraceSpinBox, _ui->_blocksUsersDaysGraceSpinBox, _ui->_blocksUsersHoursSpinBox,
                    _ui->_blocksUsersMinutesSpinBox},
                   {_ui->_inodesUsersWeekGraceSpinBox, _ui->_inodesUsersDaysGraceSpinBox, _ui->_inodesUsersHoursSpinBox,
                    _ui->_inodesUsersMinutesSpinBox},
                   {_ui->_blocksGroupsWeekGraceSpinBox, _ui->_blocksGroupsDaysGraceSpinBox,
                    _ui->_blocksGroupsHoursSpinBox, _ui->_blocksGroupsMinutesSpinBox},
                   {_ui->_inodesGroupsWeekGraceSpinBox, _ui->_inodesGroupsDaysGraceSpinBox,
                    _ui->_inodesGroupsHoursSpinBox, _ui->_inodesGroupsMinutesSpinBox}}})
{
    setElementType(GeneralElement::typeName());
    for (const GracePeriodRow &row : _graceRows)
        for (QSpinBox *spinBox : row.spinBoxes())
            _wheelGuard.guard(spinBox);
    _ui->_missingRightsLabel->hide();
    _ui->_noDeviceLabel->hide();
    showCurrentDevice();
    showPassedOver();
    connect(_ui->_filesystemsComboBox, qOverload<int>(&QComboBox::currentIndexChanged), this,
            &GeneralWidget::showCurrentDevice);
    blockEditWidget(true);
}

GeneralWidget::~GeneralWidget() = default;

void GeneralWidget::setElement(Element *element)
{
    const QScopedValueRollback<bool> showingAgain(_isRead, false);
    ViewEditElementWidget::setElement(element);
}

void GeneralWidget::afterSuccessfulRead(Element *element, ElementData *record)
{
    if (element != this->element() || role() != MainRole)
        return;
    if (!isBlocked())
        blockEditWidget(true);
    const auto *general = dynamic_cast<const GeneralData *>(record);
    if (!general)
        return;
    _data = *general;
    if (_isRead)
        lookForWhatIsStillOff();
    showDevices();
    ViewEditElementWidget::afterSuccessfulRead(element, record);
    if (_isRead && std::any_of(_data.deviceSettings.cbegin(), _data.deviceSettings.cend(), needsReboot))
        askForReboot();
}

std::unique_ptr<ElementData> GeneralWidget::exportElementData() const
{
    const QString device = _ui->_filesystemsComboBox->currentText();
    if (device.isEmpty())
        return nullptr;
    DeviceSettings settings;
    // The character whose number the label shows. No type is a number, and nobody who applies the record asks for one.
    settings.filesystemType = QChar(static_cast<ushort>(_ui->_deviceFilesystemLabel->text().toInt()));
    settings.userSettings = collected(UserQuota);
    settings.groupSettings = collected(GroupQuota);

    auto record = std::make_unique<GeneralData>(_data);
    record->deviceSettings.insert(device, settings);
    TouchedPart touched;
    touched.device = device;
    if (!_touchedKinds.isEmpty())
        touched.kinds = _touchedKinds.values().toVector();
    // A form whose kind was off shows none; it must not put that in the place of what the kernel has by now.
    touched.graces = _touchedGraces.values().toVector();
    touched.noteIn(*record);
    return record;
}

void GeneralWidget::applyContentChanges()
{
    if (!isEditable() || !isContentValid() || (needsQuotaFiles() && !warnOfQuotaFiles()))
        return;
    const QString device = _ui->_filesystemsComboBox->currentText();
    for (const QuotaKind kind : qAsConst(_touchedKinds)) {
        if (settingsBox(kind)->isChecked())
            _askedOn.insert({device, kind});
        else
            _askedOn.remove({device, kind});
    }
    ViewEditElementWidget::applyContentChanges();
}

void GeneralWidget::setDeviceToNextShow(const QString &deviceName)
{
    _deviceName = deviceName;
}

void GeneralWidget::changeData()
{
    _ui->_filesystemsComboBox->setEnabled(false);
    changeContent();
}

void GeneralWidget::rebootSystem()
{
    RebootCommand::run();
}

void GeneralWidget::connectChangeDataWidgets()
{
    const auto watch = [this](const auto *widget, auto signal, QuotaKind kind, bool isGrace) {
        _changeConnections += connect(widget, signal, this, [this, kind, isGrace] {
            _touchedKinds.insert(kind);
            if (isGrace)
                _touchedGraces.insert(kind);
            changeData();
        });
    };
    for (const QuotaKind kind : {UserQuota, GroupQuota}) {
        watch(settingsBox(kind), &QGroupBox::toggled, kind, false);
        for (const std::size_t row : {blockRow(kind), inodeRow(kind)})
            for (const QSpinBox *spinBox : _graceRows.at(row).spinBoxes())
                watch(spinBox, qOverload<int>(&QSpinBox::valueChanged), kind, true);
    }
}

void GeneralWidget::resizeEvent(QResizeEvent *event)
{
    ViewEditElementWidget::resizeEvent(event);
    const int margins = 6 * style()->pixelMetric(QStyle::PM_LayoutLeftMargin);
    // Room for the note whether or not it is shown, so that the halves stay where they are from device to device.
    const bool halvesFit = width() >= 2 * (fontMetrics().horizontalAdvance(graceNote()) + margins);
    const bool gracesFit = width() >= 2 * _ui->groupBox_3->minimumSizeHint().width() + margins;
    _ui->horizontalLayout_3->setDirection(halvesFit ? QBoxLayout::LeftToRight : QBoxLayout::TopToBottom);
    for (QBoxLayout *graces : {_ui->horizontalLayout, _ui->horizontalLayout_4})
        graces->setDirection(gracesFit && !halvesFit ? QBoxLayout::LeftToRight : QBoxLayout::TopToBottom);
}

QString GeneralWidget::graceNote()
{
    return tr("*settings will be available after quotas are enabled");
}

QGroupBox *GeneralWidget::settingsBox(QuotaKind kind) const
{
    return kind == GroupQuota ? _ui->_groupsSettingsGroupBox : _ui->_usersSettingsGroupBox;
}

KindSettings GeneralWidget::collected(QuotaKind kind) const
{
    KindSettings settings;
    settings.device = _ui->_filesystemsComboBox->currentText();
    settings.quotaOn = settingsBox(kind)->isChecked();
    settings.blockGrace = _graceRows.at(blockRow(kind)).period();
    settings.inodeGrace = _graceRows.at(inodeRow(kind)).period();
    return settings;
}

bool GeneralWidget::needsQuotaFiles() const
{
    const DeviceSettings settings = _data.deviceSettings.value(_ui->_filesystemsComboBox->currentText());
    const auto needsFile = [&](QuotaKind kind) {
        return !half(settings, kind).fileExists && settingsBox(kind)->isChecked();
    };
    return needsFile(UserQuota) || needsFile(GroupQuota);
}

/// Waits for the administrator. False when the page was read again or went away meanwhile: then what is shown is not
/// what was to be applied.
bool GeneralWidget::warnOfQuotaFiles()
{
    const bool wasChanged = isContentChanged();
    const QPointer<GeneralWidget> self(this);
    const QPointer<QMessageBox> box = new QMessageBox(
        QMessageBox::Information, tr("Warning"),
        tr("In process of inclusion quota configuration files will be created. This process may take several minutes."),
        QMessageBox::Ok, this);
    box->exec();
    delete box;
    return self && isContentChanged() == wasChanged && isEditable();
}

void GeneralWidget::lookForWhatIsStillOff()
{
    for (auto asked = _askedOn.begin(); asked != _askedOn.end();) {
        const bool isOn = half(_data.deviceSettings.value(asked->first), asked->second).quotaOn;
        asked = isOn ? _askedOn.erase(asked) : std::next(asked);
    }
    _stillOff = _askedOn;
}

QStringList GeneralWidget::factsOf(const DeviceSettings &settings, QuotaKind kind) const
{
    QStringList facts = QuotaFacts::ofKind(settings, kind);
    if (_stillOff.contains({_ui->_filesystemsComboBox->currentText(), kind}))
        facts.prepend(tr("It was to be switched on, but it is still off. The details of the task say what happened."));
    return facts;
}

void GeneralWidget::showDevices()
{
    QComboBox *devices = _ui->_filesystemsComboBox;
    const QString chosen = _deviceName.isEmpty() ? devices->currentText() : _deviceName;
    _deviceName.clear();
    DevicesBox::fill(devices, _data.deviceSettings.keys(), chosen);
    devices->setEnabled(true);
    showCurrentDevice();

    const bool hasDevices = devices->count() > 0;
    _ui->_missingRightsLabel->setVisible(!isAccessible());
    _ui->_noDeviceLabel->setVisible(!hasDevices);
    _ui->_usersHalf->setVisible(hasDevices);
    _ui->_groupsHalf->setVisible(hasDevices);
    showPassedOver();
}

void GeneralWidget::showCurrentDevice()
{
    _changeConnections.cut();
    _touchedKinds.clear();
    _touchedGraces.clear();

    const auto shown = _data.deviceSettings.constFind(_ui->_filesystemsComboBox->currentText());
    const bool isDevice = shown != _data.deviceSettings.constEnd();
    const DeviceSettings settings = isDevice ? *shown : DeviceSettings();
    const KindSettings &users = settings.userSettings;
    const KindSettings &groups = settings.groupSettings;
    const QString note = graceNote();

    _ui->_deviceFilesystemLabel->setText(settings.filesystemType);
    _ui->_usersGracesGroupBox->setEnabled(users.quotaOn);
    _ui->_usersGracesGroupBox->setTitle(users.quotaOn ? QString() : note);
    // A group's grace periods can be set only once its option is in force; a user's as soon as the kind is on.
    _ui->_groupsGracesGroupBox->setEnabled(groups.optionInForce);
    _ui->_groupsGracesGroupBox->setTitle(groups.quotaOn ? QString() : note);

    const bool isSwitched = !settings.features.contains(DeviceSettings::quotaFeature());
    for (QGroupBox *box : {_ui->_usersSettingsGroupBox, _ui->_groupsSettingsGroupBox}) {
        box->setEnabled(isSwitched);
        box->setChecked(true); // so that what follows always is a change, which hands its state to what the box holds
    }
    _ui->_usersSettingsGroupBox->setChecked(users.quotaOn);
    _ui->_groupsSettingsGroupBox->setChecked(groups.quotaOn);

    const std::array<const TimePeriod *, 4> graces = {&users.blockGrace, &users.inodeGrace, &groups.blockGrace,
                                                      &groups.inodeGrace};
    for (std::size_t i = 0; i < graces.size(); ++i)
        _graceRows[i].show(*graces[i]);

    _ui->_deviceFactsListWidget->setTexts(isDevice ? QuotaFacts::ofDevice(settings) : QStringList());
    _ui->_usersListWidget->setTexts(isDevice ? factsOf(settings, UserQuota) : QStringList());
    _ui->_groupsListWidget->setTexts(isDevice ? factsOf(settings, GroupQuota) : QStringList());
    connectChangeDataWidgets();
}

void GeneralWidget::showPassedOver()
{
    const bool hasDevices = !_data.deviceSettings.isEmpty();
    const QStringList lines = _data.params.value(GeneralData::passedOverKey()).toStringList();
    _ui->_passedOverListWidget->setTexts(hasDevices ? QStringList() : lines);
    _ui->_passedOverLabel->setVisible(!hasDevices && !lines.isEmpty());
}

void GeneralWidget::askForReboot()
{
    if (_rebootQuestion)
        return; // still open since an earlier read
    // Not exec(): the page may go while the question stands.
    _rebootQuestion = new QMessageBox(QMessageBox::Warning, tr("Warning"),
                                      tr("To apply the settings you must reboot system.\nReboot now?"),
                                      QMessageBox::Yes | QMessageBox::No, this);
    _rebootQuestion->setDefaultButton(QMessageBox::No);
    _rebootQuestion->setAttribute(Qt::WA_DeleteOnClose);
    connect(_rebootQuestion, &QDialog::finished, this, [this](int answer) {
        if (answer == QMessageBox::Yes)
            rebootSystem();
    });
    _rebootQuestion->open();
}
