// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <abstractelementdata.h>
#include <vieweditelementwidget.h>

#include <memory>
#include <optional>

/// The editor of one account's quota, one device at a time.
class AbstractQuotaWidget : public ViewEditElementWidget
{
    Q_OBJECT

public:
    explicit AbstractQuotaWidget(Module *module, AccessCheck access, QWidget *parent = nullptr);
    ~AbstractQuotaWidget() override;

    /// Until its record comes, nothing of the account before is shown; its device is remembered.
    void setElement(Element *element) override;
    /// Shows an AbstractElementData. Any other record counts as none: the page stays blocked.
    void afterSuccessfulRead(Element *element, ElementData *record) override;
    /// The lists of accounts show what was written as well: those that this account is no row of, and all rows where
    /// quotas were switched on for its limits.
    void afterSuccessfulUpdate() override;
    QString whyInvalid() const override;
    bool isBeingEdited() const override;

public Q_SLOTS:
    /// The next read shows this device; the reads after it keep the device that is shown.
    void setDeviceToNextShow(const QString &deviceName);
    /// Shows what the record says of a device. An unknown one has no limits.
    void currentDeviceChanged(const QString &deviceName);
    /// Marks the content changed. Until the next read the device cannot be switched.
    void changeData();
    /// Makes the general settings of the same computer the current page, at the device that is shown.
    void goToGeneralForm();
    void connectChangeDataWidgets();

protected:
    /// Builds the form into the widget `place` and sets it up: once, in the constructor of the subclass, which brings
    /// the labels for quotas on the device and for quotas of its kind.
    void buildDeviceWidget(QWidget *place, const QString &supportText, const QString &isOnText);
    /// Fills a record for an update: of the account that was read, with the shown device as edited. What was not edited
    /// is exactly what was read. False when the shown device is none of the record's, so that there is nothing to
    /// apply.
    bool exportTo(AbstractElementData &record) const;

    /// That a quota file will be made, where an Apply switches quotas on.
    ApplyWarning warningBeforeApply() const override;
    QWidget *invalidField() const override;

    void changeEvent(QEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    struct Form;

    void showUsedAsText();
    void showRecord();
    void showQuota();
    void showFailures();
    void showNotes();
    void forgetRecord();
    /// Whether the device is asked for but was not answered for by the last read.
    bool isUnknown(const QString &device) const;
    DeviceQuota collectQuota() const;

    std::unique_ptr<Form> _form;
    std::optional<AbstractElementData> _record; // as read last; none before
    QString _device;                            // that is shown, or that is to be shown again
    QString _deviceToShowNext;                  // empty for the same one
};
