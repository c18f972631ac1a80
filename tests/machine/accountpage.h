// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "consolepage.h"
#include "counted.h"

#include <quotakind.h>

#include <QDateTime>

class QCheckBox;
class QDateTimeEdit;

/// Uses the editor of an account's limits as an administrator does, on either of the two ways to it, and says what it
/// shows.
class AccountPage : public ConsolePage
{
    Q_OBJECT

public:
    enum class Bound
    {
        Soft,
        Hard
    };
    enum class Way
    {
        List, ///< a double click in the list of all users or all groups
        Tab   ///< the tab on the console's own page of the user or the group
    };

    using ConsolePage::ConsolePage;

    /// Opens an account's limits on a device. False where there is no such account, or where its page does not come.
    bool openAccount(Way way, QuotaKind kind, const QString &account, const QString &device);
    /// How many tabs of the page in front are this editor.
    int tabs() const;

    QStringList devices() const;
    QString device() const;
    /// Chooses the device with the arrow keys. False where it is not listed or cannot be chosen now.
    bool choose(const QString &device);
    /// Whether it says that the kind of quota is on for the device.
    bool saysQuotaIsOn() const;

    quint64 used(Counted counted) const;
    /// In bytes, or in files; 0 for none.
    quint64 limit(Counted counted, Bound bound) const;
    /// Ticks the box, chooses the unit, types the number. False where the form does not take it.
    bool setSpaceLimit(Bound bound, int number, const QString &unit);
    bool setFilesLimit(Bound bound, int number);
    bool clearLimit(Counted counted, Bound bound);

    /// Invalid where none is shown.
    QDateTime timeToForce(Counted counted) const;
    /// Brings the time to the same day of the year before. False where there is none to bring.
    bool forceYearBefore(Counted counted);

private:
    bool bringTabToFront();
    QCheckBox *checkBox(Counted counted, Bound bound) const;
    QDateTimeEdit *timeEdit(Counted counted) const;
};
