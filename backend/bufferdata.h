// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "groupentry.h"
#include "mountentry.h"
#include "passwdentry.h"

#include <QByteArray>
#include <QObject>
#include <QString>
#include <QStringList>
#include <QVector>

#include <optional>

struct MountFile;

/// The system's own tables, each read when it is first asked for and then kept until resetCache().
///
/// A source that cannot be read gives one error text and then counts as read, with the entries that came before. Texts
/// come in the local 8-bit encoding. Belongs to the thread that made it.
class BufferData : public QObject
{
    Q_OBJECT

public:
    explicit BufferData(QObject *parent = nullptr);

    QVector<MountEntry> fstabEntries();
    /// Whether that is all of them.
    bool isFstabWhole();
    QVector<MountEntry> mtabEntries();
    /// What "blkid" printed, line by line; the last line is the empty one after the last line feed. Can take a minute.
    QStringList blkidLines();
    /// The bytes of the account files, for those who need less than all fields of all entries (see AccountFile).
    QByteArray passwdFile();
    QByteArray groupFile();
    /// The accounts of the local files alone, in their order; other name services are not asked.
    QVector<PasswdEntry> passwdEntries();
    QVector<GroupEntry> groupEntries();

    /// Reads any file of the format of "/etc/fstab", and keeps nothing. Comments and blank lines are no entries.
    QVector<MountEntry> readMountFile(const QString &path);

    /// Forgets everything, so that the next question reads its source again.
    void resetCache();
    /// Forgets "/etc/fstab" alone, after it was written.
    void forgetFstab();

Q_SIGNALS:
    /// A source could not be read.
    void error(const QString &message);
    /// How a program ended, whether or not that is an error, or the system's reason why a table could not be read.
    void detail(const QString &text);
    /// What was read is read again with the next question; so whatever was derived from it is out of date.
    void forgotten();

private:
    QVector<MountEntry> entriesOf(const MountFile &file, const QString &path);
    QStringList readBlkid();
    QByteArray readAccountFile(const QString &path);

    std::optional<QVector<MountEntry>> _fstab;
    bool _isFstabWhole = false; ///< of what was read last
    std::optional<QVector<MountEntry>> _mtab;
    std::optional<QStringList> _blkid;
    std::optional<QByteArray> _passwd;
    std::optional<QByteArray> _group;
    std::optional<QVector<PasswdEntry>> _passwdEntries;
    std::optional<QVector<GroupEntry>> _groupEntries;
};
