// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QByteArray>
#include <QList>
#include <QMap>
#include <QMutex>

#include <sys/quota.h>

/// The kernel's side of quotactl(). Linking the sandbox puts its quotactl() in place of the C library's, for the test
/// program and for the libraries it loads.
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
    };

    static FakeKernel &instance();

    void setState(const QByteArray &device, int type, const State &state);
    State state(const QByteArray &device, int type) const;
    QList<Call> calls() const;
    /// Forgets all devices and calls.
    void reset();

    /// quotactl() itself; 0 or the errno.
    int answer(int commandAndType, const char *device, int id, char *address);

private:
    FakeKernel() = default;

    mutable QMutex _mutex;
    QMap<QByteArray, QMap<int, State>> _devices;
    QList<Call> _calls;
};
