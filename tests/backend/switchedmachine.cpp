// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "switchedmachine.h"

#include <QFile>
#include <QFileInfo>

namespace
{

QString text(const char *bytes)
{
    return QString::fromUtf8(bytes);
}

QuotaKind kindOf(const QString &argument)
{
    return argument.startsWith(text("-g")) ? GroupQuota : UserQuota;
}

} // namespace

SwitchedMachine::SwitchedMachine(QObject *parent)
    : QObject(parent)
{}

void SwitchedMachine::reset()
{
    _sandbox.reset();
    _sandbox.standIn(text("blkid"))
        .prints("/dev/sda1: UUID=\"a\" TYPE=\"ext4\"\n/dev/sdb1: UUID=\"b\" TYPE=\"ext4\"\n");
    for (const char *program : {"mount", "quotacheck", "quotaon", "quotaoff"})
        _sandbox.standIn(text(program));
    configure("rw");
    for (const QString &device : {sda, sdb})
        for (const QuotaKind kind : {UserQuota, GroupQuota})
            setOn(device, kind, false);

    _effects.clear();
    _effects.insert(text("mount"), [this](const QStringList & /*arguments*/) { writeMtab(configured(sda)); });
    _effects.insert(text("quotacheck"),
                    [this](const QStringList &arguments) { makeQuotaFile(arguments.at(1), kindOf(arguments.at(0))); });
    _effects.insert(text("quotaon"),
                    [this](const QStringList &arguments) { setOn(arguments.at(1), kindOf(arguments.at(0)), true); });
    _effects.insert(text("quotaoff"),
                    [this](const QStringList &arguments) { setOn(arguments.at(1), kindOf(arguments.at(0)), false); });

    _errors.clear();
    _details.clear();
    _manager = std::make_unique<QuotaManager>();
    connect(_manager.get(), &QuotaManager::error, this, [this](const QString &message) { _errors.append(message); });
    connect(_manager.get(), &QuotaManager::detail, this, &SwitchedMachine::follow);
}

void SwitchedMachine::configure(const QByteArray &options)
{
    _sandbox.writeEtc(text("fstab"), "/dev/sda1 " + folderOf(sda).toUtf8() + " ext4 " + options + " 0 2\n" + "UUID=b " +
                                         folderOf(sdb).toUtf8() + " ext4 " + options + " 0 2\n");
    writeMtab(options);
}

void SwitchedMachine::writeMtab(const QByteArray &options)
{
    _sandbox.writeEtc(text("mtab"), "/dev/sda1 " + folderOf(sda).toUtf8() + " ext4 " + options + " 0 0\n" +
                                        "/dev/sdb1 " + folderOf(sdb).toUtf8() + " ext4 " + options + " 0 0\n");
}

QString SwitchedMachine::folderOf(const QString &device) const
{
    return _sandbox.folder(QFileInfo(device).fileName());
}

void SwitchedMachine::makeQuotaFile(const QString &device, QuotaKind kind)
{
    QFile file(folderOf(device) + (kind == GroupQuota ? text("/aquota.group") : text("/aquota.user")));
    if (!file.open(QIODevice::WriteOnly))
        qFatal("no quota file");
}

bool SwitchedMachine::hasQuotaFile(const QString &device, QuotaKind kind) const
{
    return QFile::exists(folderOf(device) + (kind == GroupQuota ? text("/aquota.group") : text("/aquota.user")));
}

void SwitchedMachine::setOn(const QString &device, QuotaKind kind, bool on)
{
    FakeKernel::State state = _sandbox.kernel().state(device.toUtf8(), kind);
    state.on = on;
    _sandbox.kernel().setState(device.toUtf8(), kind, state);
}

bool SwitchedMachine::isOn(const QString &device, QuotaKind kind) const
{
    return FakeKernel::instance().state(device.toUtf8(), kind).on;
}

QStringList SwitchedMachine::programs() const
{
    QStringList programs;
    const QList<StandInCall> calls = _sandbox.calls();
    for (const StandInCall &call : calls)
        if (call.program != text("blkid"))
            programs.append(call.program + QLatin1Char(' ') + QString::fromUtf8(call.arguments.join(' ')));
    return programs;
}

QByteArray SwitchedMachine::configured(const QString &device) const
{
    const QByteArrayList lines = _sandbox.readEtc(text("fstab")).split('\n');
    return lines.at(device == sda ? 0 : 1).simplified().split(' ').value(3);
}

int SwitchedMachine::graceWrites()
{
    int writes = 0;
    const QList<FakeKernel::Call> calls = _sandbox.kernel().calls();
    for (const FakeKernel::Call &call : calls)
        writes += call.command == Q_SETINFO ? 1 : 0;
    return writes;
}

/// "mount /dev/sda1 -o remount: exit code 0" and, maybe, what it complained of on further lines. What fails has no
/// effect.
void SwitchedMachine::follow(const QString &detail)
{
    _details.append(detail);
    if (!detail.section(QLatin1Char('\n'), 0, 0).endsWith(text(": exit code 0")))
        return;
    const QStringList words = detail.section(text(": "), 0, 0).split(QLatin1Char(' '));
    const auto effect = _effects.constFind(words.first());
    if (effect != _effects.constEnd())
        (*effect)(words.mid(1));
}
