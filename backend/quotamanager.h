// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <generaldata.h>
#include <groupdata.h>
#include <quotakind.h>
#include <userdata.h>

#include <QObject>
#include <QString>
#include <QStringList>

#include <functional>
#include <memory>
#include <vector>

class AccountQuotas;
class AccountTable;
class BufferData;
class DeviceTable;
class FstabWriter;
class KindReader;
class LimitsWriter;
class QuotaPrograms;
class QuotaSwitch;
class SettingsWriter;

/// The one entry point to the machine's quotas. Made for the run of one task and used on its thread alone.
///
/// Nothing throws: a failure is a text through error(), and the operation returns false, -1 or an empty value. What is
/// asked of the system's sources is answered from one read of each between two resets, and a source that cannot be read
/// is reported once. A change of "/etc/fstab" looks at the file itself, and has what was read of it before forgotten.
class QuotaManager : public QObject
{
    Q_OBJECT

public:
    /// Records of one kind, in the order of the account file.
    using Accounts = std::vector<std::unique_ptr<AbstractElementData>>;

    explicit QuotaManager(QObject *parent = nullptr);
    ~QuotaManager() override;

    // Devices. A device is named by its path, such as "/dev/sda1".

    /// The device that "/etc/fstab" spells `spec`, by the given lines of "blkid"; empty when none of them tells. Paths
    /// and "UUID=…" resolve, the other keys do not.
    QString resolveDevice(const QString &spec, const QStringList &lines);
    /// One for each entry of "/etc/fstab"; what does not resolve is as the file spells it.
    QStringList fstabDevices();
    /// The devices of "/etc/fstab" with a file system that can carry quotas, in the order of the file. A device can be
    /// listed several times, and "/dev/sda10" along with "/dev/sda1".
    QStringList quotaDevices();
    /// The mount options of the first entry for the device in "/etc/fstab" or "/etc/mtab".
    QStringList deviceOptions(const QString &device, const QString &fileName);
    /// By the spelling of "/etc/mtab", or by the device's number where that calls it by another name ("/dev/root"); an
    /// error when it has no such device.
    QString mountPoint(const QString &device);
    /// The file-system type under which a device is mounted, by any spelling that resolves. Empty, without an error,
    /// when it is not.
    QString mountedType(const QString &device);
    /// Whether the kind's option is configured ("/etc/fstab") or in force ("/etc/mtab").
    bool hasQuotaOption(const QString &device, QuotaKind kind, const QString &fileName);

    // One kind of quota on one device.

    /// Whether the quota file, by its usual name or by that of a mount option, stands in the device's mount point. An
    /// error when the device is not mounted.
    bool quotaFileExists(const QString &device, QuotaKind kind);
    /// What the kernel says. That it is off is no error.
    bool isQuotaOn(const QString &device, QuotaKind kind);
    KindSettings readKindSettings(const QString &device, QuotaKind kind);

    /// The settings of all devices of quotaDevices(), each read once; a failure is reported once for each device.
    GeneralData readGeneral();

    // Switching a kind of quota on a device, step by step. Each returns whether it succeeded.

    /// Adds the kind's option to each line of the device in "/etc/fstab", or removes every copy of it. The file stays
    /// untouched where that changes nothing.
    bool setFstabOption(const QString &device, QuotaKind kind, bool enable);
    /// Replaces the options of each line of "/etc/fstab" that resolves to the device. The file is replaced whole or
    /// stays as it is; see rewriteFstab() for what it keeps and what it refuses.
    bool writeFstab(const QString &device, const QStringList &options);
    /// A mount that fails is a detail, not an error. The caller resets the cache before it looks at "/etc/mtab" again.
    bool remount(const QString &device);
    /// Has the disk's usage counted into a new quota file, which can take minutes. `type` is a QuotaKind; another
    /// number is an error. False only where the program could not be started.
    bool createQuotaFiles(const QString &device, int type);
    /// Starts or stops enforcement. That it was on or off before is no error. Waits half a minute at most.
    bool runQuotaOnOff(const QString &device, QuotaKind kind, bool on);
    /// Sets the grace periods of a kind that is on.
    bool setGrace(const KindSettings &settings, QuotaKind kind);

    /// Switches the kind as the settings' `quotaOn` wishes, or sets the grace periods of one that is on already. Does
    /// all that can be done, reports what could not, and returns true.
    bool applyQuotaSettings(const KindSettings &settings, QuotaKind kind);
    /// Switches on a kind that is off, so that limits can be set. False when it did not come so far.
    bool switchOnDemand(const QString &device, QuotaKind kind);
    /// Applies what was edited (see TouchedSettings): switches a kind whose wish differs from what was read, and sets
    /// the grace periods that do. Without a touched device all of the record counts, in the order of the devices.
    void applyGeneral(const GeneralData &data);

    // Local accounts.

    /// Of the first account with that name; -1 when there is none.
    qint32 userId(const QString &name);
    qint32 groupId(const QString &name);
    /// In the order of the files.
    QStringList userNames();
    QStringList groupNames();

    // Accounts' quotas, on every device of quotaDevices().

    /// One account, by name. Without an account of that name the record names nobody and holds no device, and so it
    /// lacks a device whose question failed: what is not known must not look like no limit.
    UserData readUser(const QString &name);
    GroupData readGroup(const QString &name);
    /// All of them: UserData records, GroupData records. The facts of a device are asked once, and then one question
    /// for each account and device; a failure is reported once for each device.
    Accounts readAllUsers();
    Accounts readAllGroups();
    /// Applies what was edited of an account's limits and times to force (see TouchedQuota): it is put into what the
    /// kernel has now, and a field that was changed there since the read is reported instead. Without a touched device
    /// the limits and the times that are set of the whole record are written. Where the kind is off it is switched on
    /// first when there is a limit, and the device is left alone when there is none. A record reaches the account that
    /// has both its name and its id, and nobody else. False when anything failed; the other devices are applied all the
    /// same.
    bool writeQuotas(const AbstractElementData &account, QuotaKind kind);

    /// Has the reads of all accounts stop when `isCancelled` says so. What they return then is not all.
    void setCancelCheck(std::function<bool()> isCancelled) { _isCancelled = std::move(isCancelled); }

    /// Forgets what was read of the system's sources.
    void resetCache();

Q_SIGNALS:
    void error(const QString &message);
    /// Which program runs now, or how it ended, whether or not that is an error.
    void detail(const QString &text);
    /// How far a read of all accounts is; `unit` is what is counted, in the plural.
    void progress(quint64 done, quint64 total, const QString &unit);

private:
    DeviceSettings readDevice(const QString &device);

    class Signals;

    std::function<bool()> _isCancelled;
    std::unique_ptr<Signals> _signals;
    std::unique_ptr<BufferData> _buffer;
    std::unique_ptr<DeviceTable> _devices;
    std::unique_ptr<AccountTable> _accounts;
    std::unique_ptr<KindReader> _kinds;
    std::unique_ptr<FstabWriter> _fstab;
    std::unique_ptr<QuotaPrograms> _programs;
    std::unique_ptr<QuotaSwitch> _switch;
    std::unique_ptr<SettingsWriter> _settings;
    std::unique_ptr<AccountQuotas> _accountQuotas;
    std::unique_ptr<LimitsWriter> _limits;
};
