// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QMap>
#include <QSet>
#include <QString>
#include <QStringList>

/// What stands in the fake kernel, value by value, and which of it an applied page may change.
class LimitLedger
{
public:
    /// One kind (USRQUOTA or GRPQUOTA) of a device.
    struct Place
    {
        QString device;
        int kind = 0;
    };
    enum class Field
    {
        SoftSpace,
        HardSpace,
        SoftFiles,
        HardFiles,
        SpaceTime,
        FilesTime
    };
    enum class Grace
    {
        Space,
        Files
    };

    /// Takes everything as it is now for known, as after a change from outside.
    void note() { _known = present(); }

    void allow(const Place &place, quint32 account, Field field);
    void allow(const Place &place, Grace grace);

    /// What has changed since note() although it was not allowed; afterwards all is noted and nothing allowed.
    QStringList takeSurprises();

private:
    using Values = QMap<QString, quint64>; // by device, kind, account and field in words

    static Values present();

    Values _known;
    QSet<QString> _allowed;
};
