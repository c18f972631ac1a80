// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <quotakind.h>

#include <QObject>
#include <QString>
#include <QStringList>

class BufferData;
class DeviceTable;

/// Changes the mount options of a device in "/etc/fstab". Belongs to the thread of its tables.
class FstabWriter : public QObject
{
    Q_OBJECT

public:
    /// Neither table is owned; both must live longer.
    FstabWriter(BufferData &buffer, DeviceTable &devices, QObject *parent = nullptr);

    /// See QuotaManager for these.
    bool setOption(const QString &device, QuotaKind kind, bool enable);
    bool write(const QString &device, const QStringList &options);

Q_SIGNALS:
    void error(const QString &message);
    /// Why the system did not let the file be changed, and where it is kept as it was before its comments went.
    void detail(const QString &text);

private:
    void keepComments(const QByteArray &table);

    BufferData &_buffer;
    DeviceTable &_devices;
};
