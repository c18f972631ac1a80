// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QByteArray>
#include <QList>
#include <QMap>
#include <QMutex>

#include <atomic>
#include <functional>
#include <optional>

#include <sys/quota.h>
#include <sys/types.h>

/// The kernel's side of quotactl() and quotactl_fd(). Linking the sandbox puts its quotactl(), syscall() and stat() in
/// place of the C library's, for the test program and for the libraries it loads.
///
/// A device that no state was set for gives ENOENT; a kind that is not on gives ESRCH, as the kernel does. Setting
/// commands change the state. Any thread.
class FakeKernel
{
public:
    /// One kind (USRQUOTA or GRPQUOTA) on one device.
    struct State
    {
        bool on = true;
        int format = 2; ///< QFMT_VFS_V0, which quotacheck writes unless told otherwise
        dqinfo info = {};
        QMap<quint32, dqblk> records; ///< by uid or gid; an id that is not here reads as all zero
        QMap<int, int> failures;      ///< the errno that a command, such as Q_GETINFO, fails with
    };
    struct Call
    {
        int command = 0; ///< such as Q_GETFMT, without the type
        int type = 0;
        QByteArray device;
        int id = 0;
        bool isByDescriptor = false;
        QByteArray quotaFile; ///< what Q_QUOTAON and Q_QUOTAOFF were given
    };

    static FakeKernel &instance();

    void setState(const QByteArray &device, int type, const State &state);
    State state(const QByteArray &device, int type) const;
    /// Changes a state in one step, while the code under test may be asking or setting.
    void change(const QByteArray &device, int type, const std::function<void(State &)> &how);
    QList<Call> calls() const;
    /// What the last Q_SETQUOTA gave.
    dqblk lastSet() const;
    /// Has the folder be the device's mount point for quotactl_fd(), and for stat() a block device with the folder's
    /// number. Without it a device is none for stat() and is asked by its path.
    void mount(const QByteArray &device, const QByteArray &folder);
    /// The errno of every quotactl_fd(), such as ENOSYS on an older kernel; 0 has it answer.
    void failByDescriptor(int error) { _descriptorFailure = error; }

    /// Forgets all devices and calls.
    void reset();

    /// What stat() is to say of the path, where it is a device that is mounted here.
    std::optional<dev_t> deviceNumber(const QByteArray &path) const;
    /// quotactl_fd() itself; 0 or the errno.
    int answerByDescriptor(int commandAndType, int descriptor, int id, char *address);
    /// quotactl() itself; 0 or the errno.
    int answer(int commandAndType, const char *device, int id, char *address);

private:
    FakeKernel() = default;
    int answer(const Call &call, char *address);

    mutable QMutex _mutex;
    QMap<QByteArray, QMap<int, State>> _devices;
    QMap<QByteArray, QByteArray> _folders; // by device
    std::atomic_int _descriptorFailure{0};
    QList<Call> _calls;
    dqblk _lastSet = {};
};
