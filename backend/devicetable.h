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
/// Answers from the sources of a BufferData, and belongs to its thread.
class DeviceTable : public QObject
{
    Q_OBJECT

public:
    /// `buffer` is not owned and must live longer.
    explicit DeviceTable(BufferData &buffer, QObject *parent = nullptr);

    /// See QuotaManager for these.
    QString resolveDevice(const QString &spec, const QStringList &lines);
    QStringList fstabDevices();
    QStringList quotaDevices();
    QStringList deviceOptions(const QString &device, const QString &fileName);
    QString mountPoint(const QString &device);
    QString mountedType(const QString &device);
    bool hasQuotaOption(const QString &device, QuotaKind kind, const QString &fileName);

    /// One text for each line of "/etc/fstab" that quotaDevices() has no device from, saying why.
    QStringList passedOver();

    /// To be called after the buffer's cache was reset.
    void reset();
    /// Has "/etc/fstab" read again, here and in the buffer; to be called after it was written.
    void forgetFstab();

Q_SIGNALS:
    void error(const QString &message);

private:
    static QString passedOverText(const MountEntry &entry, const QString &foundType);
    BlkidTable &blkidTable(const QStringList &lines);
    const MountTable &fstab();
    const MountTable &mtab();
    const QHash<QString, QString> &mountPoints();

    BufferData &_buffer;
    std::optional<BlkidTable> _blkid; // of the lines that were asked about last
    std::optional<MountTable> _fstab;
    std::optional<MountTable> _mtab;
    std::optional<QHash<QString, QString>> _mountPoints;
};
