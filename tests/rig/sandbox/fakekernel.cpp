// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "fakekernel.h"

#include <QMutexLocker>

#include <array>
#include <atomic>
#include <cerrno>
#include <climits>
#include <cstdarg>
#include <cstring>
#include <utility>

#include <dlfcn.h>
#include <sys/stat.h>
#include <unistd.h>

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

/// The C library's function of that name. No guarded static: its guard may itself use syscall().
template<typename Function>
Function bare(std::atomic<Function> &found, const char *name)
{
    if (found.load() == nullptr)
        found.store(reinterpret_cast<Function>(dlsym(RTLD_NEXT, name)));
    return found.load();
}

std::atomic<long (*)(long, ...)> bareSyscall{nullptr};
std::atomic<int (*)(const char *, struct stat *)> bareStat{nullptr};

constexpr long QuotactlFd = 443;

} // namespace

// A system call has six arguments at the most; those that were not given are not looked at.
// NOLINTNEXTLINE(readability-inconsistent-declaration-parameter-name, cert-dcl50-cpp)
extern "C" __attribute__((visibility("default"))) long syscall(long number, ...) noexcept
{
    std::array<long, 6> arguments = {};
    va_list list;
    va_start(list, number);
    for (long &argument : arguments)
        argument = va_arg(list, long);
    va_end(list);
    if (number != QuotactlFd) {
        return bare(bareSyscall, "syscall")(number, arguments[0], arguments[1], arguments[2], arguments[3],
                                            arguments[4], arguments[5]);
    }
    const int error = FakeKernel::instance().answerByDescriptor(
        static_cast<int>(arguments[1]), static_cast<int>(arguments[0]), static_cast<int>(arguments[2]),
        reinterpret_cast<char *>(arguments[3])); // NOLINT(performance-no-int-to-ptr)
    if (error == 0)
        return 0;
    errno = error;
    return -1;
}

// NOLINTNEXTLINE(readability-inconsistent-declaration-parameter-name)
extern "C" __attribute__((visibility("default"))) int stat(const char *path, struct stat *facts) noexcept
{
    const std::optional<dev_t> number = FakeKernel::instance().deviceNumber(path);
    if (!number) {
        const int result = bare(bareStat, "stat")(path, facts);
        if (result != 0 || !S_ISBLK(facts->st_mode))
            return result;
        errno = ENOENT; // a disk of the machine that the test runs on, which is none of the sandbox's
        return -1;
    }
    *facts = {};
    facts->st_mode = S_IFBLK;
    facts->st_rdev = *number;
    return 0;
}

namespace
{

// In what quotactl() takes as a command, the low byte is the type.
constexpr int commandShift = SUBCMDSHIFT;
constexpr int typeMask = SUBCMDMASK;

int commandOf(int commandAndType)
{
    return static_cast<int>(static_cast<unsigned>(commandAndType) >> commandShift);
}

int typeOf(int commandAndType)
{
    return commandAndType & typeMask;
}

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

void FakeKernel::change(const QByteArray &device, int type, const std::function<void(State &)> &how)
{
    const QMutexLocker locker(&_mutex);
    how(_devices[device][type]);
}

QList<FakeKernel::Call> FakeKernel::calls() const
{
    const QMutexLocker locker(&_mutex);
    return _calls;
}

dqblk FakeKernel::lastSet() const
{
    const QMutexLocker locker(&_mutex);
    return _lastSet;
}

void FakeKernel::reset()
{
    const QMutexLocker locker(&_mutex);
    _devices.clear();
    _folders.clear();
    _descriptorFailure = 0;
    _calls.clear();
}

void FakeKernel::mount(const QByteArray &device, const QByteArray &folder)
{
    const QMutexLocker locker(&_mutex);
    _folders[device] = folder;
}

std::optional<dev_t> FakeKernel::deviceNumber(const QByteArray &path) const
{
    QByteArray folder;
    {
        const QMutexLocker locker(&_mutex);
        folder = _folders.value(path);
    }
    struct stat facts = {};
    if (folder.isEmpty() || bare(bareStat, "stat")(folder.constData(), &facts) != 0)
        return std::nullopt;
    return facts.st_dev;
}

int FakeKernel::answerByDescriptor(int commandAndType, int descriptor, int id, char *address)
{
    if (_descriptorFailure != 0)
        return _descriptorFailure;
    std::array<char, PATH_MAX> folder = {};
    if (readlink(("/proc/self/fd/" + QByteArray::number(descriptor)).constData(), folder.data(), folder.size() - 1) < 0)
        return EBADF;
    const QMutexLocker locker(&_mutex);
    const QByteArray device = _folders.key(folder.data());
    return device.isEmpty()
               ? ENOSYS
               : answer({commandOf(commandAndType), typeOf(commandAndType), device, id, true, {}}, address);
}

int FakeKernel::answer(int commandAndType, const char *device, int id, char *address)
{
    const QMutexLocker locker(&_mutex);
    const int command = commandOf(commandAndType);
    const QByteArray quotaFile = command == Q_QUOTAON || command == Q_QUOTAOFF ? address : nullptr;
    return answer({command, typeOf(commandAndType), device, id, false, quotaFile}, address);
}

int FakeKernel::answer(const Call &call, char *address)
{
    _calls.append(call);
    if (call.command == Q_SETQUOTA)
        _lastSet = take<dqblk>(address);
    if (call.type != USRQUOTA && call.type != GRPQUOTA) {
        return EINVAL;
    }
    const auto kinds = _devices.find(call.device);
    if (kinds == _devices.end()) {
        return ENOENT;
    }
    const auto state = kinds->find(call.type);
    return state == kinds->end() ? ESRCH : answerForState(*state, call.command, call.id, address);
}
