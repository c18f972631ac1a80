// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "walkmachine.h"

#include <taskobserver.h>

#include <QFile>

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <cstdlib>
#include <cstring>

#include <sys/mount.h>

namespace
{
const QStringList allAccounts = {QStringLiteral("root"),  QStringLiteral("anna"),  QStringLiteral("ben"),
                                 QStringLiteral("cleo"),  QStringLiteral("dora"),  QStringLiteral("emil"),
                                 QStringLiteral("fynn"),  QStringLiteral("greta"), QStringLiteral("syslog"),
                                 QStringLiteral("hanna"), QStringLiteral("ida"),   QStringLiteral("jon")};
const QStringList programs = {QStringLiteral("blkid"),   QStringLiteral("mount"),    QStringLiteral("quotacheck"),
                              QStringLiteral("quotaon"), QStringLiteral("quotaoff"), QStringLiteral("modinfo")};
const QByteArray blkidLines = "/dev/sda1: UUID=\"a\" TYPE=\"ext4\"\n/dev/sdb1: UUID=\"b\" TYPE=\"ext4\"\n"
                              "/dev/sdc1: LABEL=\"c\" UUID=\"cc\" TYPE=\"ext4\"\n/dev/sdd1: UUID=\"d\" TYPE=\"ext3\"\n"
                              "/dev/sde1: UUID=\"e\" TYPE=\"swap\"\n";
const char fillerOfEtc[] = "/etc/filler";
const char fillerOfBackups[] = "/var/backups/filler";
constexpr quint32 firstId = 1000;
constexpr quint64 oldLimit = 5000;

/// The folder in memory that takes the place of another, with what was in it, so that it can be full by itself.
void mountOwn(const char *folder, const QString &keptIn)
{
    if (mount("walk", QFile::encodeName(keptIn).constData(), "tmpfs", MS_NOSUID | MS_NODEV, "mode=0755,size=8m") != 0)
        qFatal("mount: %s", std::strerror(errno));
    const QString copy = QStringLiteral("/bin/cp -a %1/. %2").arg(QLatin1String(folder), keptIn);
    if (std::system(qPrintable(copy)) != 0)
        qFatal("%s failed", qPrintable(copy));
    if (mount(QFile::encodeName(keptIn).constData(), folder, nullptr, MS_BIND, nullptr) != 0)
        qFatal("mount: %s", std::strerror(errno));
}

void fill(const char *path)
{
    QFile file(QString::fromLatin1(path));
    if (!file.open(QIODevice::WriteOnly | QIODevice::Unbuffered))
        return; // full already
    const QByteArray bytes(4096, '\n');
    while (file.write(bytes) == bytes.size()) {
    }
}

QByteArrayList linesOf(const QByteArray &table)
{
    QByteArrayList lines;
    for (const QByteArray &line : table.split('\n'))
        if (!line.trimmed().isEmpty() && !line.startsWith('#'))
            lines.append(line);
    return lines;
}

QByteArrayList fieldsOf(const QByteArray &line)
{
    return line.simplified().split(' ');
}

/// The options without the words that switch quotas.
QByteArray otherOptions(const QByteArray &options)
{
    QByteArrayList words = options.split(',');
    words.removeAll("usrquota");
    words.removeAll("grpquota");
    return words.isEmpty() ? QByteArray("defaults") : words.join(',');
}

/// The line with its fields one blank apart and without quota options.
QByteArray bare(const QByteArray &line)
{
    QByteArrayList fields = fieldsOf(line);
    if (fields.size() > 3)
        fields[3] = otherOptions(fields.at(3));
    return fields.join(' ');
}
} // namespace

WalkMachine::WalkMachine(std::mt19937 &random)
    : _random(random)
    , _users(allAccounts)
    , _groups(allAccounts)
{
    mountOwn("/etc", _sandbox.folder(QStringLiteral("ownEtc")));
    mountOwn("/var/backups", _sandbox.folder(QStringLiteral("ownBackups")));
    QByteArray table = "# /etc/fstab: the disks of this machine\n";
    const auto add = [this, &table](const QByteArray &spec, const QString &device, const QByteArray &options) {
        const QByteArray folder = _sandbox.folder(device.mid(int(std::strlen("/dev/")))).toUtf8();
        table += spec + '\t' + folder + "  ext4 " + options + " 0 2\n";
        _mountOptions.insert(device, options);
    };
    add("/dev/sda1", QStringLiteral("/dev/sda1"), "rw,usrquota,grpquota");
    add("UUID=b", QStringLiteral("/dev/sdb1"), "defaults");
    table += "# swap comes last\nproc /proc proc nosuid 0 0\n";
    add("LABEL=c", QStringLiteral("/dev/sdc1"), "noatime,usrquota");
    add("/dev/sdd1", QStringLiteral("/dev/sdd1"), "rw,errors=remount-ro,grpquota");
    table += "UUID=e none swap sw 0 0\n";
    _sandbox.writeEtc(QStringLiteral("fstab"), table);
    _table = linesOf(table);
    QFile::remove(QStringLiteral("/etc/mtab"));
    const QString mounts = _sandbox.folder(QStringLiteral("proc")) + QStringLiteral("/mounts");
    if (!QFile::link(mounts, QStringLiteral("/etc/mtab")))
        qFatal("no /etc/mtab");
    writeMounts();
    writeAccounts();

    for (const QString &program : programs)
        standIn(program);
    for (const QString &device : devices()) {
        for (const int kind : {USRQUOTA, GRPQUOTA}) {
            FakeKernel::State state;
            state.on = _mountOptions.value(device).contains(kind == USRQUOTA ? "usrquota" : "grpquota");
            state.info.dqi_bgrace = 7 * 24 * 3600;
            state.info.dqi_igrace = 90061;
            for (const QString &account : allAccounts) {
                dqblk record = {};
                record.dqb_bsoftlimit = oldLimit + accountId(account);
                record.dqb_bhardlimit = 2 * oldLimit;
                record.dqb_curspace = 4096;
                record.dqb_curinodes = 3;
                state.records.insert(accountId(account), record);
            }
            _sandbox.kernel().setState(device.toUtf8(), kind, state);
        }
    }
    connect(TaskObserver::instance(), &TaskObserver::taskDetail, this, &WalkMachine::follow);
}

WalkMachine::~WalkMachine()
{
    mend();
}

QStringList WalkMachine::devices()
{
    return {QStringLiteral("/dev/sda1"), QStringLiteral("/dev/sdb1"), QStringLiteral("/dev/sdc1"),
            QStringLiteral("/dev/sdd1")};
}

quint32 WalkMachine::accountId(const QString &name)
{
    const int at = allAccounts.indexOf(name);
    return at <= 0 ? 0 : firstId + static_cast<quint32>(at);
}

int WalkMachine::below(int limit)
{
    return std::uniform_int_distribution<int>(0, limit - 1)(_random);
}

QString WalkMachine::pick(const QStringList &texts)
{
    return texts.at(below(texts.size()));
}

QString WalkMachine::change()
{
    static constexpr Change changes[] = {
        &WalkMachine::changeLimit,      &WalkMachine::changeLimit,
        &WalkMachine::changeLimit,      &WalkMachine::changeGrace,
        &WalkMachine::switchKind,       &WalkMachine::failKernel,
        &WalkMachine::breakProgram,     &WalkMachine::addOrRemoveAccount,
        &WalkMachine::addOrRemoveGroup, &WalkMachine::breakProgram,
        &WalkMachine::makeEtcReadOnly,  &WalkMachine::fillEtc,
        &WalkMachine::fillBackups,      &WalkMachine::writeCronTable,
        &WalkMachine::mendAll,          &WalkMachine::mendAll,
        &WalkMachine::mendAll,          &WalkMachine::mendAll,
    };
    return (this->*changes[below(int(std::size(changes)))])();
}

QString WalkMachine::changeLimit()
{
    const QString device = pick(devices());
    const int kind = below(2) ? GRPQUOTA : USRQUOTA;
    const QString account = pick(allAccounts);
    const int which = below(4);
    const auto limit = static_cast<quint64>(below(4)) * static_cast<quint64>(below(100000));
    _sandbox.kernel().change(device.toUtf8(), kind, [=](FakeKernel::State &state) {
        dqblk &record = state.records[accountId(account)];
        uint64_t *const limits[] = {&record.dqb_bsoftlimit, &record.dqb_bhardlimit, &record.dqb_isoftlimit,
                                    &record.dqb_ihardlimit};
        *limits[which] = limit;
    });
    return QStringLiteral("limit %1 of %2 on %3 becomes %4").arg(which).arg(account, device).arg(limit);
}

QString WalkMachine::changeGrace()
{
    const QString device = pick(devices());
    const int kind = below(2) ? GRPQUOTA : USRQUOTA;
    const bool isForSpace = below(2) == 1;
    const auto seconds = static_cast<quint64>(below(1000000));
    _sandbox.kernel().change(device.toUtf8(), kind, [=](FakeKernel::State &state) {
        (isForSpace ? state.info.dqi_bgrace : state.info.dqi_igrace) = seconds;
    });
    return QStringLiteral("a grace period of %1 changes").arg(device);
}

QString WalkMachine::switchKind()
{
    const QString device = pick(devices());
    const int kind = below(2) ? GRPQUOTA : USRQUOTA;
    _sandbox.kernel().change(device.toUtf8(), kind, [](FakeKernel::State &state) { state.on = !state.on; });
    return QStringLiteral("kind %1 of %2 is switched").arg(kind).arg(device);
}

QString WalkMachine::failKernel()
{
    static constexpr int commands[] = {Q_GETQUOTA, Q_SETQUOTA, Q_GETFMT, Q_GETINFO, Q_SETINFO};
    static constexpr int failures[] = {EPERM, EIO, ENOSPC, ESRCH, ENOENT};
    const QString device = pick(devices());
    const int kind = below(2) ? GRPQUOTA : USRQUOTA;
    const int command = below(int(std::size(commands)));
    const int failure = failures[below(int(std::size(failures)))];
    _sandbox.kernel().change(device.toUtf8(), kind,
                             [=](FakeKernel::State &state) { state.failures.insert(commands[command], failure); });
    return QStringLiteral("kernel call %1 fails for kind %2 of %3").arg(command).arg(kind).arg(device);
}

QString WalkMachine::addOrRemoveAccount()
{
    const QString &account = allAccounts.at(1 + below(allAccounts.size() - 1));
    if (_isReadOnly || QFile::exists(QLatin1String(fillerOfEtc)))
        return mendAll();
    if (!_users.removeOne(account))
        _users.append(account);
    writeAccounts();
    return QStringLiteral("user %1 comes or goes").arg(account);
}

QString WalkMachine::addOrRemoveGroup()
{
    const QString &account = allAccounts.at(1 + below(allAccounts.size() - 1));
    if (_isReadOnly || QFile::exists(QLatin1String(fillerOfEtc)))
        return mendAll();
    if (!_groups.removeOne(account))
        _groups.append(account);
    writeAccounts();
    return QStringLiteral("group %1 comes or goes").arg(account);
}

QString WalkMachine::breakProgram()
{
    constexpr int shortWhile = 150; // milliseconds
    const QString program = pick(programs.mid(0, programs.size() - 1));
    StandIn stand = _sandbox.standIn(program);
    switch (below(4)) {
    case 0:
        stand.cannotBeStarted();
        return program + QStringLiteral(" cannot be started");
    case 1:
        stand.isNotExecutable();
        return program + QStringLiteral(" may not be run");
    case 2:
        stand.complains("it went wrong\nbadly\n").exits(2);
        return program + QStringLiteral(" fails");
    default:
        stand.sleeps(shortWhile);
        if (program == QLatin1String("blkid"))
            stand.prints(blkidLines);
        return program + QStringLiteral(" takes its time");
    }
}

QString WalkMachine::makeEtcReadOnly()
{
    constexpr unsigned long flags = MS_REMOUNT | MS_BIND | MS_RDONLY | MS_NOSUID | MS_NODEV;
    if (mount(nullptr, "/etc", nullptr, flags, nullptr) != 0)
        return QStringLiteral("/etc stays as it is");
    _isReadOnly = true;
    return QStringLiteral("/etc becomes read-only");
}

QString WalkMachine::fillEtc()
{
    if (!_isReadOnly)
        fill(fillerOfEtc);
    return QStringLiteral("/etc becomes full");
}

QString WalkMachine::fillBackups()
{
    fill(fillerOfBackups);
    return QStringLiteral("/var/backups becomes full");
}

QString WalkMachine::writeCronTable()
{
    if (_isReadOnly || QFile::exists(QLatin1String(fillerOfEtc)))
        return mendAll();
    const QStringList tables = {QString(), QStringLiteral("5 4 * * * root warnquota -u\n"),
                                QStringLiteral("# mine\n*/10 8-17 1 * 1 anna warnquota -g -c /etc/w.conf\n"),
                                QStringLiteral("MAILTO=root\n0 5 * * * root warnquota -u -g\n30 6 1 * * root ls\n")};
    _sandbox.writeEtc(QStringLiteral("cron.d/warnquota"), pick(tables).toUtf8());
    return QStringLiteral("the cron table is another");
}

QString WalkMachine::mendAll()
{
    mend();
    return QStringLiteral("everything works again");
}

void WalkMachine::mend()
{
    constexpr unsigned long flags = MS_REMOUNT | MS_BIND | MS_NOSUID | MS_NODEV;
    if (_isReadOnly && mount(nullptr, "/etc", nullptr, flags, nullptr) != 0)
        qFatal("remount: %s", std::strerror(errno));
    _isReadOnly = false;
    QFile::remove(QLatin1String(fillerOfEtc));
    QFile::remove(QLatin1String(fillerOfBackups));
    for (const QString &program : programs)
        standIn(program);
    for (const QString &device : devices())
        for (const int kind : {USRQUOTA, GRPQUOTA})
            _sandbox.kernel().change(device.toUtf8(), kind, [](FakeKernel::State &state) { state.failures.clear(); });
}

void WalkMachine::standIn(const QString &program)
{
    StandIn stand = _sandbox.standIn(program);
    if (program == QLatin1String("blkid"))
        stand.prints(blkidLines);
}

void WalkMachine::writeAccounts()
{
    QByteArray users;
    QByteArray groups;
    for (const QString &name : qAsConst(_users)) {
        const QByteArray id = QByteArray::number(accountId(name));
        users += name.toUtf8() + ":x:" + id + ':' + id + ":" + name.toUtf8() + ":/home/" + name.toUtf8() + ":/bin/sh\n";
    }
    for (const QString &name : qAsConst(_groups))
        groups += name.toUtf8() + ":x:" + QByteArray::number(accountId(name)) + ":\n";
    _sandbox.writeEtc(QStringLiteral("passwd"), users);
    _sandbox.writeEtc(QStringLiteral("group"), groups);
}

void WalkMachine::writeMounts()
{
    QByteArray lines = "proc /proc proc rw,nosuid 0 0\n";
    for (auto each = _mountOptions.cbegin(); each != _mountOptions.cend(); ++each) {
        const QString folder = _sandbox.folder(each.key().mid(int(std::strlen("/dev/"))));
        lines += each.key().toUtf8() + ' ' + folder.toUtf8() + " ext4 " + each.value() + " 0 0\n";
    }
    QFile file(_sandbox.folder(QStringLiteral("proc")) + QStringLiteral("/mounts"));
    if (!file.open(QIODevice::WriteOnly) || file.write(lines) != lines.size())
        qFatal("no mounts");
}

void WalkMachine::follow(quint64 /*task*/, const QString &detail)
{
    const QStringList words = detail.section(QStringLiteral(": "), 0, 0).split(QLatin1Char(' '));
    const QString program = words.constFirst();
    if (!detail.endsWith(QLatin1String("exit code 0")) || !programs.contains(program))
        return;
    const QStringList known = devices();
    const auto device =
        std::find_if(known.begin(), known.end(), [&words](const QString &each) { return words.contains(each); });
    if (device == known.end())
        return;
    const int kind = words.value(1).startsWith(QLatin1String("-g")) ? GRPQUOTA : USRQUOTA;
    if (program == QLatin1String("mount")) {
        const QByteArrayList lines = linesOf(_sandbox.readEtc(QStringLiteral("fstab")));
        const int line =
            QByteArrayList({"/dev/sda1", "/dev/sdb1", "proc", "/dev/sdc1", "/dev/sdd1"}).indexOf(device->toUtf8());
        _mountOptions[*device] = fieldsOf(lines.value(line)).value(3);
        writeMounts();
    } else if (program == QLatin1String("quotacheck")) {
        const QString folder = _sandbox.folder(device->mid(int(std::strlen("/dev/"))));
        QFile(folder + QLatin1String(kind == GRPQUOTA ? "/aquota.group" : "/aquota.user")).open(QIODevice::WriteOnly);
    } else if (program != QLatin1String("blkid")) {
        const bool isOn = program == QLatin1String("quotaon");
        _sandbox.kernel().change(device->toUtf8(), kind, [isOn](FakeKernel::State &state) { state.on = isOn; });
    }
}

QStringList WalkMachine::tableProblems() const
{
    QStringList problems;
    const QByteArrayList lines = linesOf(_sandbox.readEtc(QStringLiteral("fstab")));
    for (int i = 0; i < std::max(lines.size(), _table.size()); ++i)
        if (bare(lines.value(i)) != bare(_table.value(i)))
            problems.append(QStringLiteral("/etc/fstab: \"%1\" became \"%2\"")
                                .arg(QString::fromUtf8(_table.value(i)), QString::fromUtf8(lines.value(i))));
    return problems;
}
