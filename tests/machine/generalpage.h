// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "consolepage.h"
#include "counted.h"

#include <quotakind.h>

#include <array>

class QGroupBox;
class QSpinBox;

/// Uses the page "Quota management" as an administrator does, and says what it shows.
class GeneralPage : public ConsolePage
{
    Q_OBJECT

public:
    using Grace = std::array<int, 4>; ///< weeks, days, hours, minutes

    explicit GeneralPage(RealConsole &console);

    QStringList devices() const;
    /// Chooses the device with the arrow keys. False where it is not listed or cannot be chosen now.
    bool choose(const QString &device);
    QString filesystem() const;

    bool canSwitch(QuotaKind kind) const;
    bool isOn(QuotaKind kind) const;
    /// Presses the box, if it is not so already. False where it stays as it was.
    bool setOn(QuotaKind kind, bool on);

    qint64 graceSeconds(QuotaKind kind, Counted counted) const;
    /// Types into the four boxes. False where they are not enabled or do not take it.
    bool setGrace(QuotaKind kind, Counted counted, const Grace &grace);

    /// The lines that say what the system says of a kind, and of the device.
    QStringList facts(QuotaKind kind) const;
    QStringList deviceFacts() const;

    /// From now on answers the question about a reboot with "Yes".
    void allowReboot() { boxes().prefer(QMessageBox::Yes); }

private:
    QGroupBox *settings(QuotaKind kind) const;
    std::array<QSpinBox *, 4> spinBoxes(QuotaKind kind, Counted counted) const;
    QStringList texts(const QString &list) const;
};
