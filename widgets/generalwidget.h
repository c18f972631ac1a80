// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "rebootcommand.h"

#include <generaldata.h>
#include <quotakind.h>
#include <vieweditelementwidget.h>
#include <wheelguard.h>

#include <QPair>
#include <QPointer>
#include <QSet>

#include <array>
#include <memory>

class KindForm;
class QMessageBox;
namespace Ui
{
class GeneralWidget;
}

/// The editor of the quota settings of whole devices, one device at a time.
///
/// Edited is what differs from what was read: a kind that was switched on and off again by hand is applied as little as
/// a grace period that nobody touched.
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
    /// Notes what the next read should find switched on. The lists of accounts show what is on, too.
    void afterSuccessfulUpdate() override;
    /// What was read, with the form in place of the shown device, and with what was read of that.
    std::unique_ptr<ElementData> exportElementData() const override;

public Q_SLOTS:
    /// The next read shows this device; the reads after it keep the device that is shown.
    void setDeviceToNextShow(const QString &deviceName);
    /// Marks the content changed. Until the next read the device cannot be switched.
    void changeData();
    void rebootSystem();
    void connectChangeDataWidgets();

protected:
    /// Quota files take long to make.
    ApplyWarning warningBeforeApply() const override;
    void hideEvent(QHideEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void showEvent(QShowEvent *event) override;

private:
    /// A kind of quota of a device.
    using DeviceKind = QPair<QString, QuotaKind>;

    QString shownDevice() const;
    void lookForWhatIsStillOff();
    void showDevices();
    void showCurrentDevice();
    QStringList factsOf(const DeviceSettings &settings, QuotaKind kind) const;
    void showPassedOver();
    void askForReboot();
    void answerReboot(int answer);
    void dropRebootQuestion();

    std::unique_ptr<Ui::GeneralWidget> _ui;
    std::array<KindForm *, 2> _kindForms; // owned as children
    GeneralData _data;                    // as read last
    WheelGuard _wheelGuard;
    QString _deviceName;                   // to show next; empty for the one that is shown
    QSet<DeviceKind> _askedOn;             // what was applied and has not been seen to be on since
    QSet<DeviceKind> _stillOff;            // what of it a read has found to be off
    bool _isRebootDue = false;             // by the last read, and not answered since
    QPointer<QMessageBox> _rebootQuestion; // the window's, while this page is shown
    RebootCommand _rebootCommand;
};
