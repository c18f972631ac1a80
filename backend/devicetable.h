// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "blkidtable.h"
#include "mounttable.h"

#include <quotakind.h>

#include <QHash>
#include <QObject>
#include <QString>
#include <QStringList>

#include <optional>

class BufferData;

/// Which devices there are, how the mount tables spell them, where they are mounted and with which options.
/// Answers from the sources of a BufferData, follows when that forgets them, and belongs to its thread.
///
/// Lines of "/etc/mtab" whose type begins with "fuse" are passed over: anybody can make them, with any name. A device
/// that is mounted under a name of its own ("/dev/root") is known by its number.
class DeviceTable : public QObject
{
    Q_OBJECT

public:
    /// `buffer` is not owned and must live longer.
    explicit DeviceTable(BufferData &buffer, QObject *parent = nullptr);

    /// See QuotaManager for these.
    QString resolveDevice(const QString &spec, const QStringList &lines) const;
    QStringList fstabDevices();
    QStringList quotaDevices();
    QStringList deviceOptions(const QString &device, const QString &fileName);
    QString mountPoint(const QString &device);
    QString mountedType(const QString &device);
    bool hasQuotaOption(const QString &device, QuotaKind kind, const QString &fileName);

    /// One text for each line of "/etc/fstab" that quotaDevices() has no device from, saying why.
    QStringList passedOver();

    /// The source that did not tell which devices there are, "blkid" or "/etc/fstab"; empty where both did.
    QString silentSource();

    /// What "blkid" says. Can take a minute when it is first asked for.
    const BlkidTable &blkid();
    /// The line of "/etc/mtab" that mountPoint() is from; none, which is an error, when the device is not mounted.
    std::optional<MountEntry> mountedLine(const QString &device);
    /// The same, without an error.
    bool isMounted(const QString &device);

Q_SIGNALS:
    void error(const QString &message);
    /// Which devices are left out, and why.
    void detail(const QString &text);

private:
    QStringList readableOnes(QStringList lines);
    QString passedOverText(const MountEntry &entry);
    const MountTable &fstab();
    const MountTable &mtab();
    std::optional<MountEntry> lineInMtab(const QString &device);
    std::optional<MountEntry> lineByNumber(const QString &device);

    BufferData &_buffer;
    std::optional<BlkidTable> _blkid;
    std::optional<MountTable> _fstab;
    std::optional<MountTable> _mtab;
    std::optional<QHash<QString, MountEntry>> _mtabByName;
    std::optional<QHash<quint64, MountEntry>> _mtabByNumber;
};
