// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QByteArray>

/// Makes its owner the only one of our programs that is at a file: a lock on a file of its own, which is made for that
/// and nothing else ever becomes, so that who waits for it can never hold what somebody else has put in its place.
///
/// The kernel gives the lock back when its owner is killed. The file then stays, and the next takes it over.
class FileLock
{
public:
    /// Waits for it, some seconds at most for each that has it before. Where it was not to be had, error() is not 0.
    explicit FileLock(const QByteArray &path);
    FileLock(const FileLock &) = delete;
    FileLock &operator=(const FileLock &) = delete;
    ~FileLock();

    /// The errno of the call that failed; 0 for none. EBUSY: another of our programs kept it.
    int error() const { return _error; }

private:
    bool take();
    bool isInPlace() const;

    QByteArray _path;
    int _descriptor = -1;
    int _error = 0;
};
