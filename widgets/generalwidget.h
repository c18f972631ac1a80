// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "connectionlist.h"
#include "graceperiodrow.h"
#include "wheelguard.h"

#include <generaldata.h>
#include <quotakind.h>
#include <vieweditelementwidget.h>

#include <QPair>
#include <QPointer>
#include <QSet>

#include <array>
#include <memory>

class QGroupBox;
class QMessageBox;
namespace Ui
{
class GeneralWidget;
}

/// The editor of the quota settings of whole devices, one device at a time.
class GeneralWidget : public ViewEditElementWidget
{
    Q_OBJECT

public:
    explicit GeneralWidget(Module *module, AccessCheck access, QWidget *parent = nullptr);
    ~GeneralWidget() override;

    /// A record that the element has already is shown without a question: the read that follows asks.
    void setElement(Element *element) override;
    /// Shows a GeneralData, and asks whether to reboot when a quota that is on has not come into force.
    void afterSuccessfulRead(Element *element, ElementData *record) override;
    /// What was read, with the form in place of the shown device. It says which part was touched (see TouchedPart).
    std::unique_ptr<ElementData> exportElementData() const override;
    /// Says first that it can take minutes, where quota files are to be made.
    void applyContentChanges() override;

public Q_SLOTS:
    /// The next read shows this device; the reads after it keep the device that is shown.
    void setDeviceToNextShow(const QString &deviceName);
    /// Marks the content changed. Until the next read the device cannot be switched.
    void changeData();
    void rebootSystem();
    void connectChangeDataWidgets();

protected:
    void resizeEvent(QResizeEvent *event) override;

private:
    /// A kind of quota of a device.
    using DeviceKind = QPair<QString, QuotaKind>;

    static QString graceNote();
    QGroupBox *settingsBox(QuotaKind kind) const;
    KindSettings collected(QuotaKind kind) const;
    bool needsQuotaFiles() const;
    bool warnOfQuotaFiles();
    void lookForWhatIsStillOff();
    QStringList factsOf(const DeviceSettings &settings, QuotaKind kind) const;
    void showDevices();
    void showCurrentDevice();
    void showPassedOver();
    void askForReboot();

    std::unique_ptr<Ui::GeneralWidget> _ui;
    GeneralData _data;                        // as read last
    std::array<GracePeriodRow, 4> _graceRows; // two for the users, two for the groups, the one for space first
    ConnectionList _changeConnections;
    WheelGuard _wheelGuard;
    QString _deviceName;            // to show next; empty for the one that is shown
    QSet<QuotaKind> _touchedKinds;  // of the shown device, as is the next
    QSet<QuotaKind> _touchedGraces; // whose grace periods were edited
    QSet<DeviceKind> _askedOn;      // what was applied and has not been seen to be on since
    QSet<DeviceKind> _stillOff;     // what of it a read has found to be off
    bool _isRead = true;            // whether the record that comes was just read
    QPointer<QMessageBox> _rebootQuestion;
};
