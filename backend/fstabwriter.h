// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "fstabrewrite.h"

#include <quotakind.h>

#include <QByteArray>
#include <QObject>
#include <QString>
#include <QStringList>

class BufferData;
class DeviceTable;

/// What became of a wish to change "/etc/fstab".
struct FstabEdit
{
    bool isDone = false; ///< also when nothing had to change; what failed otherwise was reported
    QByteArray before;
    QByteArray after; ///< the same as `before` unless the file was written

    bool hasWritten() const { return before != after; }
};

/// Changes the mount options of a device in "/etc/fstab". Belongs to the thread of its tables.
///
/// The file is read for each change, and replaced only while it still holds what was read: what somebody else saves
/// meanwhile is kept, and the change is made anew on that.
class FstabWriter : public QObject
{
    Q_OBJECT

public:
    /// Neither table is owned; both must live longer.
    FstabWriter(BufferData &buffer, DeviceTable &devices, QObject *parent = nullptr);

    /// Adds a kind's option to each line of the device, or removes it.
    FstabEdit setOption(const QString &device, QuotaKind kind, bool enable);
    /// See QuotaManager.
    bool write(const QString &device, const QStringList &options);
    /// Takes an option out again that setOption() has just added. False when it is still there, which was reported.
    bool takeBack(const FstabEdit &edit, const QString &device, QuotaKind kind);

    /// Why setOption() would be refused, with `matters` as there; no refusal when it would not be. Changes nothing.
    FstabRewrite preview(const QString &device, QuotaKind kind, bool enable);

Q_SIGNALS:
    void error(const QString &message);
    /// Why the system did not let the file be changed, and where it is kept as it was before its comments went.
    void detail(const QString &text);

private:
    FstabEdit change(const QString &device, const OptionChange &change);
    bool keepComments(const QByteArray &table);

    BufferData &_buffer;
    DeviceTable &_devices;
};
