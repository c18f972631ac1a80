// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <quotakind.h>
#include <quotamanager.h>
#include <sandbox.h>

#include <QMap>
#include <QObject>
#include <QStringList>

#include <functional>
#include <memory>

/// A machine with the ext4 devices sda1 and sdb1, sdb1 spelled by UUID, on which nothing is switched on. What a program
/// would change, happens when it has ended with the code 0: a remount brings the options of "/etc/fstab" into force,
/// "quotacheck" makes the quota file, "quotaon" and "quotaoff" switch the kernel.
class SwitchedMachine : public QObject
{
    Q_OBJECT

public:
    explicit SwitchedMachine(QObject *parent = nullptr);

    /// Starts from the blank machine again, with a new manager.
    void reset();

    Sandbox &sandbox() { return _sandbox; }
    QuotaManager &manager() { return *_manager; }

    /// Gives both devices these options in both tables, as if they were configured and in force.
    void configure(const QByteArray &options);
    void writeMtab(const QByteArray &options);
    void makeQuotaFile(const QString &device, QuotaKind kind);
    bool hasQuotaFile(const QString &device, QuotaKind kind) const;
    void setOn(const QString &device, QuotaKind kind, bool on);
    bool isOn(const QString &device, QuotaKind kind) const;
    /// Has a program end without any effect. Its stand-in says how.
    void makeUseless(const QString &program) { _effects.remove(program); }

    /// The programs that were started since the reset, "blkid" aside, each with its arguments.
    QStringList programs() const;
    /// The options of a device in "/etc/fstab" now.
    QByteArray configured(const QString &device) const;
    QStringList errors() const { return _errors; }
    QStringList details() const { return _details; }
    /// How often the kernel was asked to set grace periods.
    int graceWrites();

    QString sda = QStringLiteral("/dev/sda1");
    QString sdb = QStringLiteral("/dev/sdb1");

private:
    void follow(const QString &detail);
    QString folderOf(const QString &device) const;

    mutable Sandbox _sandbox; // making sure of a folder changes nothing
    std::unique_ptr<QuotaManager> _manager;
    QMap<QString, std::function<void(const QStringList &arguments)>> _effects;
    QStringList _errors;
    QStringList _details;
};
