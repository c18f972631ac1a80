// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <kindsettings.h>
#include <quotakind.h>

#include <QObject>
#include <QString>
#include <QStringList>

#include <functional>

class DeviceTable;
class FstabWriter;
class KindReader;
class QuotaPrograms;
struct FstabEdit;
struct ProgramStep;
struct QuotaFile;

/// Strings the single steps together that switch a kind of quota on a device. Belongs to the thread of what it uses.
///
/// A device is not switched by half: where "/etc/fstab" cannot be made to say the same after the next start, that is an
/// error before any program switches anything on; and a text where switching off finds it out when they are off. An
/// option that a mounted file system refuses does not stay in "/etc/fstab": it would refuse it at the next start as
/// well. One for a device that is not mounted stays, as nothing has refused it.
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
    /// Takes the option of a kind that is off out of "/etc/fstab".
    void takeOption(const QString &device, QuotaKind kind);

Q_SIGNALS:
    void error(const QString &message);
    /// What an administrator has to know though all went well.
    void detail(const QString &text);

private:
    void switchOff(const QString &device, QuotaKind kind);
    bool tryToSwitchOn(const QString &device, QuotaKind kind, QStringList &complaints);
    bool switchOnWithFile(const QString &device, QuotaKind kind, const FstabEdit &edit, QStringList &complaints);
    void tellOldCounts(const QString &device, QuotaKind kind, const QuotaFile &file);
    ProgramStep remount(const QString &device, QuotaKind kind, const FstabEdit &edit);
    void explainFailedRemount(const QString &device, QuotaKind kind, const FstabEdit &edit, const QString &complaint);
    bool isMountedWithOption(const QString &device, QuotaKind kind);

    Tools _tools;
};
