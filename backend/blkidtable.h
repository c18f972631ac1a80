// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QHash>
#include <QString>
#include <QStringList>
#include <QVector>

/// One output of "blkid" and the questions asked of it. Every answer is worked out once.
class BlkidTable
{
public:
    explicit BlkidTable(QStringList lines);

    const QStringList &lines() const { return _lines; }

    /// The path of the device that "/etc/fstab" spells that way; empty when there is none.
    ///
    /// Paths and "UUID=…" are found. "LABEL=…", "PARTLABEL=…" and "PARTUUID=…" are cut at the wrong place, which is
    /// kept: their devices are never switched. The spelling is a regular expression; one that does not compile
    /// matches nothing.
    QString resolve(const QString &spec);

    /// The paths of the devices with a quota-capable file system whose line holds the spelling somewhere. The line of
    /// "/dev/sda10" holds "/dev/sda1" too: both are devices of that spelling.
    QStringList quotaDevices(const QString &spec);

    /// The file system on the first line that holds the spelling; empty when no line does or it names none.
    QString filesystemType(const QString &spec);

private:
    struct Device
    {
        QString line; ///< without the double quotes
        QString type; ///< what stands behind the first "TYPE="
        QString path; ///< empty for a line that does not begin with a path
        bool canCarryQuotas = false;
    };
    const QVector<Device> &devices();

    QStringList _lines;
    QVector<Device> _devices;                // one for each line, once they were asked for
    QHash<QString, QString> _pathsByPattern; // what was resolved, by what was looked for
    QHash<QString, QStringList> _quotaDevicesBySpec;
};
