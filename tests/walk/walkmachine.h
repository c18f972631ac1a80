// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <sandbox.h>

#include <QMap>
#include <QObject>
#include <QStringList>

#include <random>

struct TaskReport;

/// The machine of a walk: four devices, spelled in different ways, a dozen accounts, and everything that changes on a
/// machine behind a console's back. What its programs would do happens when they have ended, as the task list says.
class WalkMachine : public QObject
{
    Q_OBJECT

public:
    explicit WalkMachine(std::mt19937 &random);
    ~WalkMachine() override;

    /// One change from outside at random. Says in words which.
    QString change();
    /// Mends everything that change() broke; what is only different stays so.
    void mend();

    /// What is wrong with the mount table: it has other lines than at first, or differs in more than the quota options.
    QStringList tableProblems() const;

    /// The id of an account, whether it is there now or not.
    static quint32 accountId(const QString &name);
    static QStringList devices();

    /// The program whose ending this detail of a task is about does what it does.
    void follow(quint64 task, const QString &detail);

private:
    using Change = QString (WalkMachine::*)();

    int below(int limit);
    QString pick(const QStringList &texts);

    QString changeLimit();
    QString changeGrace();
    QString switchKind();
    QString failKernel();
    QString addOrRemoveAccount();
    QString addOrRemoveGroup();
    QString breakProgram();
    QString makeEtcReadOnly();
    QString fillEtc();
    QString fillBackups();
    QString writeCronTable();
    QString mendAll();

    void writeAccounts();
    void writeMounts();
    void standIn(const QString &program);
    static bool isTrue(int result, const char *call);

    std::mt19937 &_random;
    Sandbox _sandbox;
    QStringList _users;
    QStringList _groups;
    QMap<QString, QByteArray> _mountOptions; // by device, as in force
    QByteArrayList _table;                   // the lines of the mount table at first, comments aside
    bool _isReadOnly = false;
};
