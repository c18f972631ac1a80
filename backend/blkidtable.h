// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "textindex.h"

#include <QHash>
#include <QString>
#include <QStringList>
#include <QVector>

#include <optional>

/// One output of "blkid" and the questions asked of it.
///
/// Labels are data: anybody who formats a stick chooses them. One that holds "/", ":", "=" or a quote, of which paths
/// and other keys are made, counts as empty in all that follows, but for a spelling that is that label itself.
///
/// A question costs about the same whatever the number of lines. Belongs to one thread.
class BlkidTable
{
public:
    explicit BlkidTable(const QStringList &lines);

    /// Whether there is nothing to ask: "blkid" could not be run, as even without any device it prints an empty line.
    bool isEmpty() const { return _devices.isEmpty(); }

    /// The path of the device that "/etc/fstab" spells that way; empty when there is none.
    ///
    /// Paths and "UUID=…" are found. "LABEL=…", "PARTLABEL=…" and "PARTUUID=…" are cut at the wrong place, which is
    /// kept: their devices are never switched. The spelling is a regular expression; one that does not compile
    /// matches nothing.
    QString resolve(const QString &spec) const;

    /// The paths of the devices with a quota-capable file system whose line holds the spelling somewhere. The line of
    /// "/dev/sda10" holds "/dev/sda1" too: both are devices of that spelling.
    QStringList quotaDevices(const QString &spec) const;

    /// A device by all that is known of it.
    struct Device
    {
        QString path;
        QString type;      ///< its file system; empty when it has none
        QString firstType; ///< what quotaDevices() takes for it, which can be that of a partition table
        QString uuid;
    };
    /// The device that "mount" would find by that spelling, also by a symbolic link to it or by its label.
    std::optional<Device> find(const QString &spec) const;

private:
    using LineByName = QHash<QString, int>;
    struct Line;
    void add(const Line &line);
    const LineByName &byNode() const;
    std::optional<Device> first(const LineByName &lines, const QString &name) const;

    TextIndex _lines;                      ///< as they were printed, but for the labels
    TextIndex _plains;                     ///< without the double quotes, too
    QVector<Device> _devices;              ///< of each line
    QHash<QString, QVector<int>> _byLabel; ///< those labels that are in no text: "LABEL=/home"
    LineByName _byTag;  ///< of the lines with a path the first that has it: "UUID=…", without the double quotes
    LineByName _byPath; ///< the first of that path
    mutable std::optional<LineByName> _byNode;
};
