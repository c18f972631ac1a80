// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "kindform.h"

#include "wholelistwidget.h"

#include <QCheckBox>
#include <QCoreApplication>
#include <QGroupBox>

const KindSettings &kindSettings(const DeviceSettings &device, QuotaKind kind)
{
    return kind == GroupQuota ? device.groupSettings : device.userSettings;
}

KindForm::KindForm(QuotaKind kind, const Widgets &widgets, const std::array<GracePeriodRow, 2> &graces, QObject *parent)
    : QObject(parent)
    , _kind(kind)
    , _widgets(widgets)
    , _graceRows(graces)
{
    connect(_widgets.settings, &QGroupBox::toggled, this, &KindForm::followWish);
}

QString KindForm::graceNote()
{
    return QCoreApplication::translate("GeneralWidget", "*settings will be available after quotas are enabled");
}

void KindForm::show(const DeviceSettings &device, bool isPresent, const QStringList &facts)
{
    _read = kindSettings(device, _kind);
    const bool isSwitched = isPresent && !device.features.contains(DeviceSettings::quotaFeature());
    // A group's grace periods can be set only once its option is in force; a user's as soon as the kind is on.
    _widgets.graces->setEnabled(_kind == GroupQuota ? _read.optionInForce : _read.quotaOn);
    _widgets.takeOption->setChecked(false);
    _widgets.takeOption->setVisible(isSwitched && _read.optionConfigured && !_read.quotaOn);
    _widgets.settings->setEnabled(isSwitched);
    _widgets.settings->setChecked(true); // forces a change below, which enables or disables its children
    _widgets.settings->setChecked(_read.quotaOn);
    followWish();
    _graceRows[0].show(_read.blockGrace);
    _graceRows[1].show(_read.inodeGrace);
    _widgets.facts->setTexts(facts);
}

KindSettings KindForm::collect(const QString &device) const
{
    KindSettings settings;
    settings.device = device;
    settings.quotaOn = isToBeOn();
    settings.blockGrace = _graceRows[0].period();
    settings.inodeGrace = _graceRows[1].period();
    return settings;
}

bool KindForm::isToBeOn() const
{
    return _widgets.settings->isChecked();
}

bool KindForm::isToLoseItsOption() const
{
    return _widgets.takeOption->isChecked();
}

bool KindForm::makesQuotaFile() const
{
    return isToBeOn() && !_read.quotaOn && !_read.fileExists;
}

void KindForm::watch()
{
    _connections += connect(_widgets.settings, &QGroupBox::toggled, this, &KindForm::edited);
    _connections += connect(_widgets.takeOption, &QCheckBox::toggled, this, &KindForm::edited);
    for (const GracePeriodRow &row : _graceRows)
        for (const CountSpinBox *spinBox : row.spinBoxes()) {
            _connections += connect(spinBox, qOverload<int>(&QSpinBox::valueChanged), this, &KindForm::edited);
            _connections += connect(spinBox->line(), &QLineEdit::textEdited, this, &KindForm::edited);
        }
}

void KindForm::stopWatching()
{
    _connections.cut();
}

/// A kind that is to be on keeps its option; and where its grace periods can be typed already, they are set later.
void KindForm::followWish()
{
    _widgets.takeOption->setEnabled(!isToBeOn());
    if (isToBeOn())
        _widgets.takeOption->setChecked(false);
    const bool waits = isToBeOn() && _widgets.graces->isEnabledTo(_widgets.settings);
    _widgets.graces->setTitle(_read.quotaOn ? QString() : waits ? tr("*set as soon as quotas are on") : graceNote());
}
