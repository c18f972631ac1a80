// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "fakekernel.h"

#include <QMutexLocker>

#include <cerrno>
#include <cstring>
#include <utility>

// The C library's declaration says that it never throws; so must the definition that takes its place.
// NOLINTNEXTLINE(readability-inconsistent-declaration-parameter-name): its parameters bear names that are reserved
extern "C" __attribute__((visibility("default"))) int quotactl(int command, const char *device, int id,
                                                               char *address) noexcept
{
    const int error = FakeKernel::instance().answer(command, device, id, address);
    if (error == 0) {
        return 0;
    }
    errno = error;
    return -1;
}

namespace
{

// In what quotactl() takes as a command, the low byte is the type.
constexpr int commandShift = SUBCMDSHIFT;
constexpr int typeMask = SUBCMDMASK;

// The fields of a record that are taken over are those that its dqb_valid names.
void setLimits(dqblk &record, const dqblk &given)
{
    if ((given.dqb_valid & QIF_BLIMITS) != 0) {
        record.dqb_bhardlimit = given.dqb_bhardlimit;
        record.dqb_bsoftlimit = given.dqb_bsoftlimit;
    }
    if ((given.dqb_valid & QIF_ILIMITS) != 0) {
        record.dqb_ihardlimit = given.dqb_ihardlimit;
        record.dqb_isoftlimit = given.dqb_isoftlimit;
    }
    if ((given.dqb_valid & QIF_SPACE) != 0) {
        record.dqb_curspace = given.dqb_curspace;
    }
    if ((given.dqb_valid & QIF_INODES) != 0) {
        record.dqb_curinodes = given.dqb_curinodes;
    }
    if ((given.dqb_valid & QIF_BTIME) != 0) {
        record.dqb_btime = given.dqb_btime;
    }
    if ((given.dqb_valid & QIF_ITIME) != 0) {
        record.dqb_itime = given.dqb_itime;
    }
}

void setInfo(dqinfo &info, const dqinfo &given)
{
    if ((given.dqi_valid & IIF_BGRACE) != 0) {
        info.dqi_bgrace = given.dqi_bgrace;
    }
    if ((given.dqi_valid & IIF_IGRACE) != 0) {
        info.dqi_igrace = given.dqi_igrace;
    }
    if ((given.dqi_valid & IIF_FLAGS) != 0) {
        info.dqi_flags = given.dqi_flags;
    }
}

template<typename Record>
void give(char *address, const Record &record)
{
    std::memcpy(address, &record, sizeof record);
}

template<typename Record>
Record take(const char *address)
{
    Record record;
    std::memcpy(&record, address, sizeof record);
    return record;
}

dqblk recordOf(const FakeKernel::State &state, int id)
{
    dqblk record = state.records.value(static_cast<quint32>(id));
    record.dqb_valid = QIF_ALL;
    return record;
}

int answerForState(FakeKernel::State &state, int command, int id, char *address)
{
    const int failure = state.failures.value(command);
    if (failure != 0) {
        return failure;
    }
    if (command == Q_QUOTAON) {
        return std::exchange(state.on, true) ? EBUSY : 0;
    }
    if (!state.on) {
        return ESRCH;
    }
    const bool isForAccount = command == Q_GETQUOTA || command == Q_SETQUOTA;
    if (isForAccount && id == -1) {
        return EINVAL;
    }
    switch (command) {
    case Q_QUOTAOFF:
        state.on = false;
        return 0;
    case Q_GETFMT:
        give(address, state.format);
        return 0;
    case Q_GETINFO:
        give(address, state.info);
        return 0;
    case Q_SETINFO:
        setInfo(state.info, take<dqinfo>(address));
        return 0;
    case Q_GETQUOTA:
        give(address, recordOf(state, id));
        return 0;
    case Q_SETQUOTA:
        setLimits(state.records[static_cast<quint32>(id)], take<dqblk>(address));
        return 0;
    default:
        return EINVAL;
    }
}

} // namespace

FakeKernel &FakeKernel::instance()
{
    static FakeKernel kernel;
    return kernel;
}

void FakeKernel::setState(const QByteArray &device, int type, const State &state)
{
    const QMutexLocker locker(&_mutex);
    _devices[device][type] = state;
}

FakeKernel::State FakeKernel::state(const QByteArray &device, int type) const
{
    const QMutexLocker locker(&_mutex);
    return _devices.value(device).value(type);
}

QList<FakeKernel::Call> FakeKernel::calls() const
{
    const QMutexLocker locker(&_mutex);
    return _calls;
}

void FakeKernel::reset()
{
    const QMutexLocker locker(&_mutex);
    _devices.clear();
    _calls.clear();
}

int FakeKernel::answer(int commandAndType, const char *device, int id, char *address)
{
    const QMutexLocker locker(&_mutex);
    const int type = commandAndType & typeMask;
    const int command = static_cast<int>(static_cast<unsigned>(commandAndType) >> commandShift);
    _calls.append({command, type, device, id});
    if (type != USRQUOTA && type != GRPQUOTA) {
        return EINVAL;
    }
    const auto kinds = _devices.find(device);
    if (kinds == _devices.end()) {
        return ENOENT;
    }
    const auto state = kinds->find(type);
    return state == kinds->end() ? ESRCH : answerForState(*state, command, id, address);
}
