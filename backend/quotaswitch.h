// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <kindsettings.h>
#include <quotakind.h>

#include <QObject>
#include <QString>

#include <functional>

class DeviceTable;
class FstabWriter;
class KindReader;
class QuotaPrograms;

/// Strings the single steps together that switch a kind of quota on a device. Belongs to the thread of what it uses.
class QuotaSwitch : public QObject
{
    Q_OBJECT

public:
    /// What the steps are done with. Nothing is owned; all must live longer.
    struct Tools
    {
        DeviceTable &devices;
        KindReader &kinds;
        FstabWriter &fstab;
        QuotaPrograms &programs;
        std::function<void()> resetCache;
    };
    explicit QuotaSwitch(Tools tools, QObject *parent = nullptr);

    /// What becomes of the grace periods of a kind that is on already.
    enum class Graces
    {
        Set,
        Leave ///< nobody edited them
    };

    /// See QuotaManager for these.
    bool setGrace(const KindSettings &settings, QuotaKind kind);
    bool applySettings(const KindSettings &settings, QuotaKind kind, Graces graces);
    bool switchOnDemand(const QString &device, QuotaKind kind);

Q_SIGNALS:
    void error(const QString &message);

private:
    bool tryToSwitchOn(const QString &device, QuotaKind kind);
    void remount(const QString &device);
    bool isMountedWithOption(const QString &device, QuotaKind kind);

    Tools _tools;
};
