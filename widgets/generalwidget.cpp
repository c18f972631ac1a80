// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "generalwidget.h"

#include "accountlists.h"
#include "kindform.h"
#include "quotafacts.h"
#include "ui_generalwidget.h"

#include <generalelement.h>

#include <QHideEvent>
#include <QMessageBox>
#include <QStyle>

#include <algorithm>
#include <utility>

namespace
{
std::unique_ptr<Ui::GeneralWidget> makeForm(QWidget *widget)
{
    auto form = std::make_unique<Ui::GeneralWidget>();
    form->setupUi(widget);
    return form;
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
{
    setElementType(GeneralElement::typeName());
    using Row = GracePeriodRow;
    const Row userBlocks({_ui->_blocksUsersWeekGraceSpinBox, _ui->_blocksUsersDaysGraceSpinBox,
                          _ui->_blocksUsersHoursSpinBox, _ui->_blocksUsersMinutesSpinBox},
                         tr("Users, space"));
    const Row userInodes({_ui->_inodesUsersWeekGraceSpinBox, _ui->_inodesUsersDaysGraceSpinBox,
                          _ui->_inodesUsersHoursSpinBox, _ui->_inodesUsersMinutesSpinBox},
                         tr("Users, files"));
    const Row groupBlocks({_ui->_blocksGroupsWeekGraceSpinBox, _ui->_blocksGroupsDaysGraceSpinBox,
                           _ui->_blocksGroupsHoursSpinBox, _ui->_blocksGroupsMinutesSpinBox},
                          tr("Groups, space"));
    const Row groupInodes({_ui->_inodesGroupsWeekGraceSpinBox, _ui->_inodesGroupsDaysGraceSpinBox,
                           _ui->_inodesGroupsHoursSpinBox, _ui->_inodesGroupsMinutesSpinBox},
                          tr("Groups, files"));
    _kindForms = {new KindForm(UserQuota,
                               {_ui->_usersSettingsGroupBox, _ui->_usersGracesGroupBox, _ui->_usersTakeOptionCheckBox,
                                _ui->_usersListWidget},
                               {userBlocks, userInodes}, this),
                  new KindForm(GroupQuota,
                               {_ui->_groupsSettingsGroupBox, _ui->_groupsGracesGroupBox,
                                _ui->_groupsTakeOptionCheckBox, _ui->_groupsListWidget},
                               {groupBlocks, groupInodes}, this)};
    for (const KindForm *form : _kindForms)
        for (const Row &row : form->graces())
            for (QSpinBox *spinBox : row.spinBoxes())
                _wheelGuard.guard(spinBox);
    _wheelGuard.guard(_ui->_filesystemsComboBox);
    describeByToolTips(this);
    _ui->_missingRightsLabel->hide();
    _ui->_noDeviceLabel->hide();
    showCurrentDevice();
    showPassedOver();
    connect(_ui->_filesystemsComboBox, &QComboBox::currentTextChanged, this, &GeneralWidget::showCurrentDevice);
    connect(_ui->_passedOverButton, &QToolButton::toggled, this, &GeneralWidget::showPassedOver);
    blockEditWidget(true);
}

GeneralWidget::~GeneralWidget()
{
    delete _rebootQuestion;
}

void GeneralWidget::setElement(Element *element)
{
    const bool isAnother = element != this->element();
    ViewEditElementWidget::setElement(element);
    if (isAnother)
        _isRebootDue = false; // a record that was read before asks nothing
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
    lookForWhatIsStillOff();
    showDevices();
    ViewEditElementWidget::afterSuccessfulRead(element, record);
    _isRebootDue = std::any_of(_data.deviceSettings.cbegin(), _data.deviceSettings.cend(), needsReboot);
    // Later: the host has not finished with the record.
    QMetaObject::invokeMethod(this, &GeneralWidget::askForReboot, Qt::QueuedConnection);
}

void GeneralWidget::afterSuccessfulUpdate()
{
    ViewEditElementWidget::afterSuccessfulUpdate();
    readAccountListsAgain(element());
    const DeviceSettings asRead = _data.deviceSettings.value(shownDevice());
    for (const KindForm *form : _kindForms) {
        const DeviceKind applied(shownDevice(), form->kind());
        if (!form->isToBeOn())
            _askedOn.remove(applied);
        else if (!kindSettings(asRead, form->kind()).quotaOn)
            _askedOn.insert(applied);
    }
}

std::unique_ptr<ElementData> GeneralWidget::exportElementData() const
{
    const QString device = shownDevice();
    auto record = std::make_unique<GeneralData>(_data);
    record->touched = TouchedSettings{device, _data.deviceSettings.value(device)};
    if (!_data.deviceSettings.contains(device))
        return record;
    DeviceSettings settings;
    // As described: the character whose number the label shows, U+0000 for every real type. Nothing reads it.
    settings.filesystemType = QChar(static_cast<ushort>(_ui->_deviceFilesystemLabel->text().toInt()));
    settings.userSettings = _kindForms[UserQuota]->collect(device);
    settings.groupSettings = _kindForms[GroupQuota]->collect(device);
    record->deviceSettings.insert(device, settings);
    for (const KindForm *form : _kindForms)
        if (form->isToLoseItsOption())
            record->touched->optionsToTake.append(form->kind());
    return record;
}

GeneralWidget::ApplyWarning GeneralWidget::warningBeforeApply() const
{
    if (std::none_of(_kindForms.begin(), _kindForms.end(), [](const KindForm *form) { return form->makesQuotaFile(); }))
        return {};
    return {tr("Warning"), tr("In process of inclusion quota configuration files will be created. This process may "
                              "take several minutes.")};
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
    _rebootCommand.run();
}

void GeneralWidget::connectChangeDataWidgets()
{
    for (KindForm *form : _kindForms) {
        form->watch();
        connect(form, &KindForm::edited, this, &GeneralWidget::changeData, Qt::UniqueConnection);
    }
}

void GeneralWidget::hideEvent(QHideEvent *event)
{
    ViewEditElementWidget::hideEvent(event);
    if (!event->spontaneous())
        dropRebootQuestion();
}

void GeneralWidget::resizeEvent(QResizeEvent *event)
{
    ViewEditElementWidget::resizeEvent(event);
    const int margins = 6 * style()->pixelMetric(QStyle::PM_LayoutLeftMargin);
    // Room for the note whether or not it is shown, so that the halves stay where they are from device to device.
    const bool halvesFit = width() >= 2 * (fontMetrics().horizontalAdvance(KindForm::graceNote()) + margins);
    const bool gracesFit = width() >= 2 * _ui->groupBox_3->minimumSizeHint().width() + margins;
    _ui->horizontalLayout_3->setDirection(halvesFit ? QBoxLayout::LeftToRight : QBoxLayout::TopToBottom);
    for (QBoxLayout *graces : {_ui->horizontalLayout, _ui->horizontalLayout_4})
        graces->setDirection(gracesFit && !halvesFit ? QBoxLayout::LeftToRight : QBoxLayout::TopToBottom);
}

void GeneralWidget::showEvent(QShowEvent *event)
{
    ViewEditElementWidget::showEvent(event);
    QMetaObject::invokeMethod(this, &GeneralWidget::askForReboot, Qt::QueuedConnection);
}

QString GeneralWidget::shownDevice() const
{
    return _ui->_filesystemsComboBox->currentText();
}

void GeneralWidget::lookForWhatIsStillOff()
{
    for (auto asked = _askedOn.begin(); asked != _askedOn.end();) {
        const bool isOn = kindSettings(_data.deviceSettings.value(asked->first), asked->second).quotaOn;
        asked = isOn ? _askedOn.erase(asked) : std::next(asked);
    }
    _stillOff = _askedOn;
}

void GeneralWidget::showDevices()
{
    QMap<QString, QString> mountPoints;
    for (auto device = _data.deviceSettings.cbegin(); device != _data.deviceSettings.cend(); ++device)
        mountPoints.insert(device.key(), device->mountPoint);
    const QString toShow = std::exchange(_deviceName, QString());
    _ui->_filesystemsComboBox->setDevices(_data.deviceSettings.keys(), mountPoints,
                                          toShow.isEmpty() ? shownDevice() : toShow);
    _ui->_filesystemsComboBox->setEnabled(true);
    showCurrentDevice();

    const bool hasDevices = !_data.deviceSettings.isEmpty();
    _ui->_missingRightsLabel->setVisible(!isAccessible());
    _ui->_noDeviceLabel->setVisible(!hasDevices);
    const QString silence = QuotaFacts::ofSilentSource(_data);
    _ui->_noDeviceLabel->setText(silence.isEmpty() ? tr("There is no device to set quotas on: no line of /etc/fstab "
                                                        "names a present device with an ext2, ext3 or ext4 file "
                                                        "system.")
                                                   : silence);
    _ui->_usersHalf->setVisible(hasDevices);
    _ui->_groupsHalf->setVisible(hasDevices);
    if (!hasDevices)
        _ui->_passedOverButton->setChecked(true);
    showPassedOver();
}

void GeneralWidget::showCurrentDevice()
{
    for (KindForm *form : _kindForms)
        form->stopWatching();
    const auto found = _data.deviceSettings.constFind(shownDevice());
    const bool isPresent = found != _data.deviceSettings.constEnd();
    const DeviceSettings settings = isPresent ? *found : DeviceSettings();
    _ui->_deviceFilesystemLabel->setText(settings.filesystemType);
    for (KindForm *form : _kindForms)
        form->show(settings, isPresent, isPresent ? factsOf(settings, form->kind()) : QStringList());
    if (isPresent)
        _ui->_deviceFactsListWidget->setTexts(QuotaFacts::ofDevice(settings));
    else
        _ui->_deviceFactsListWidget->setTexts(shownDevice().isEmpty() ? QStringList()
                                                                      : QStringList(QuotaFacts::ofAbsentDevice()));
    connectChangeDataWidgets();
}

QStringList GeneralWidget::factsOf(const DeviceSettings &settings, QuotaKind kind) const
{
    QStringList facts = QuotaFacts::ofKind(settings, kind);
    if (_stillOff.contains({shownDevice(), kind}))
        facts.prepend(tr("It was to be switched on, but it is still off. The details of the task say what happened."));
    return facts;
}

void GeneralWidget::showPassedOver()
{
    const QStringList lines = _data.params.value(GeneralData::passedOverKey()).toStringList();
    QToolButton *button = _ui->_passedOverButton;
    button->setText(tr("Lines of /etc/fstab that were passed over: %1").arg(lines.size()));
    button->setArrowType(button->isChecked() ? Qt::DownArrow : Qt::RightArrow);
    button->setVisible(!lines.isEmpty());
    _ui->_passedOverListWidget->setTexts(button->isChecked() ? lines : QStringList());
}

/// Where the last read found that one is needed. Of a page that nobody sees not before it is shown.
void GeneralWidget::askForReboot()
{
    if (!_isRebootDue || !isVisible())
        return dropRebootQuestion();
    if (_rebootQuestion)
        return; // still open since an earlier read
    // Not exec(): the page may go while the question stands.
    _rebootQuestion = new QMessageBox(QMessageBox::Warning, tr("Warning"),
                                      tr("To apply the settings you must reboot system.\nReboot now?"),
                                      QMessageBox::Yes | QMessageBox::No, window());
    _rebootQuestion->setTextFormat(Qt::PlainText);
    _rebootQuestion->setDefaultButton(QMessageBox::No);
    _rebootQuestion->setAttribute(Qt::WA_DeleteOnClose);
    connect(_rebootQuestion, &QDialog::finished, this, &GeneralWidget::answerReboot);
    _rebootQuestion->open();
}

void GeneralWidget::answerReboot(int answer)
{
    _isRebootDue = false;
    if (answer == QMessageBox::Yes)
        rebootSystem();
}

/// Unanswered.
void GeneralWidget::dropRebootQuestion()
{
    delete _rebootQuestion;
}
