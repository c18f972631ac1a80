// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "filelock.h"

#include <QByteArray>
#include <QString>

#include <sys/types.h>

/// A file that is being made beside the one that it is to become, by one of our programs at a time.
///
/// It is called ".NAME.kra-new~", and what its maker has locked ".NAME.kra-lock~": mount, cron and run-parts pass over
/// a name that begins with a dot, and over one that ends with a tilde. All our programs use those names for one target,
/// so what a killed process left behind is found, and made anew, by the next.
class NewFile
{
public:
    /// Waits for the lock, some seconds at most. Where it fails, error() is not 0. The umask is taken off the mode.
    NewFile(const QString &folder, const QString &name, mode_t mode);
    NewFile(const NewFile &) = delete;
    NewFile &operator=(const NewFile &) = delete;
    /// Deletes the file unless it was moved, and releases the lock.
    ~NewFile();

    int descriptor() const { return _descriptor; }
    QByteArray path() const { return _path; }
    /// The errno of the call that failed last; 0 for none. EBUSY: another of our programs kept the lock.
    int error() const { return _error; }

    // Each returns false, with error() set, when the system refuses.
    bool write(const QByteArray &content);
    bool sync();
    /// Takes the place of `target` in the same folder, in one step.
    bool replace(const QString &target);
    /// Changes places with `target` in the same folder, in one step. EINVAL: the file system cannot do that. What comes
    /// out has the name of the new file then.
    bool exchange(const QString &target);
    /// Becomes `target` in the same folder unless something has that name, a dangling link among others: EEXIST.
    bool become(const QString &target);
    /// Leaves it there, under another name if that can be had: the next of our programs would take this one for a
    /// leftover. Returns its path.
    QString keep();

private:
    bool check(bool succeeded);

    QString _target;
    QByteArray _path;
    FileLock _lock; // given back when the name is free again
    int _error;
    int _descriptor = -1;
    bool _isMoved = false;
};

/// Best effort: the name leads to the old or the new content whether or not the folder is on the disk already.
void syncFolder(const QString &folder);

/// What the system says of an error number, in the administrator's language.
QString systemText(int error);
