// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "formhelpers.h"
#include "graceperiodrow.h"

#include <devicesettings.h>
#include <quotakind.h>

#include <QObject>

#include <array>

class QCheckBox;
class QGroupBox;
class TextListWidget;

/// The half of the general page that edits one kind of quota of the shown device. User-interface thread only.
class KindForm : public QObject
{
    Q_OBJECT

public:
    /// None of them is owned.
    struct Widgets
    {
        QGroupBox *settings;   ///< checked: the kind is to be on
        QGroupBox *graces;     ///< holds the grace periods
        QCheckBox *takeOption; ///< checked: the option of a kind that is off is to leave the table of file systems
        TextListWidget *facts;
    };

    /// The rows of the grace periods: for space, then for files.
    KindForm(QuotaKind kind, const Widgets &widgets, const std::array<GracePeriodRow, 2> &graces, QObject *parent);

    /// What the title of the grace periods says while the kind is off.
    static QString graceNote();

    QuotaKind kind() const { return _kind; }
    const std::array<GracePeriodRow, 2> &graces() const { return _graceRows; }

    /// Shows a device that was read. Of one that is not there any more nothing can be edited.
    void show(const DeviceSettings &device, bool isPresent, const QStringList &facts);
    /// The wish and the grace periods, unedited ones exactly as read; nothing else.
    KindSettings collect(const QString &device) const;
    bool isToBeOn() const;
    bool isToLoseItsOption() const;
    /// Whether applying the form makes the kind's quota file.
    bool makesQuotaFile() const;

    /// Emits edited() at each change of a widget from now on.
    void watch();
    void stopWatching();

Q_SIGNALS:
    void edited();

private:
    void followWish();

    const QuotaKind _kind;
    const Widgets _widgets;
    std::array<GracePeriodRow, 2> _graceRows;
    KindSettings _read;
    ConnectionList _connections;
};

/// A kind's half of a device's settings.
const KindSettings &kindSettings(const DeviceSettings &device, QuotaKind kind);
