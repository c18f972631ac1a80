// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "localcomputer.h"

#include <appexception.h>
#include <moduletree.h>
#include <pluginloader.h>
#include <process.h>

#include <QApplication>
#include <QtTest>

#include <functional>
#include <stdexcept>

namespace
{
std::function<void()> runProgram;
QStringList asked;
} // namespace

/// In place of the framework's, for the libraries that this program loads.
Q_DECL_EXPORT void Process::simpleStart(const QString &program, const QStringList &arguments, bool wait)
{
    asked += QStringLiteral("%1 %2 %3").arg(program, arguments.join(QLatin1Char(' '))).arg(wait);
    runProgram();
}

/// What the plug-in makes of a question for the kernel's quota format that fails in one way or another.
class TestValidity : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void anAnswer();
    void aProgramThatFails();
    void anythingElse();

private:
    static PluginRecord load();
};

PluginRecord TestValidity::load()
{
    asked.clear();
    LocalComputer localComputer;
    ModuleTree tree;
    tree.addModule(&localComputer);
    PluginLoader loader(tree);
    loader.loadFile(QStringLiteral(KRA_QUOTA_PLUGIN));
    return loader.records().front();
}

void TestValidity::anAnswer()
{
    runProgram = [] {};
    QCOMPARE(load().state, PluginRecord::State::Attached);
    QCOMPARE(asked, QStringList{QStringLiteral("modinfo quota_v2 1")});
}

void TestValidity::aProgramThatFails()
{
    runProgram = [] { throw AppException(QStringLiteral("modinfo"), 1, QString()); };
    QCOMPARE(load().state, PluginRecord::State::Invalid);
}

/// It is the host that has to say what went wrong: this is no kernel without quotas.
void TestValidity::anythingElse()
{
    runProgram = [] { throw std::runtime_error("out of everything"); };
    const PluginRecord record = load();
    QCOMPARE(record.state, PluginRecord::State::Threw);
    QVERIFY2(record.explanation.contains(QStringLiteral("out of everything")), qPrintable(record.explanation));
}

QTEST_MAIN(TestValidity)
#include "tst_validity.moc"
