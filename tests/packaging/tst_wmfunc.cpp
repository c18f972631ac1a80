// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <sandbox.h>

#include <QProcess>
#include <QtTest>

namespace
{

QString text(const char *bytes)
{
    return QString::fromUtf8(bytes);
}

} // namespace

/// The command that restarts the computer, with a stand-in for what does.
class TestWmFunc : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { _sandbox.reset(); }
    void aRebootIsAskedOfTheSystem();
    void whatTheSystemSaysIsHandedOn();
    void withoutTheSystemsProgramItFails();
    void everythingElseIsRefused_data();
    void everythingElseIsRefused();

private:
    int run(const QStringList &arguments);

    Sandbox _sandbox;
    QString _said;
};

int TestWmFunc::run(const QStringList &arguments)
{
    QProcess process;
    process.start(text(KRA_WMFUNC), arguments);
    if (!process.waitForFinished() || process.exitStatus() != QProcess::NormalExit)
        return -1;
    _said = QString::fromUtf8(process.readAllStandardError());
    return process.exitCode();
}

void TestWmFunc::aRebootIsAskedOfTheSystem()
{
    _sandbox.standIn(text("systemctl"));
    QCOMPARE(run({text("ZELWM_REBOOT")}), 0);
    QCOMPARE(_said, QString());
    const QList<StandInCall> calls = _sandbox.calls();
    QCOMPARE(calls.size(), 1);
    QCOMPARE(calls.first().program, text("systemctl"));
    QCOMPARE(calls.first().arguments, QByteArrayList{"reboot"});
}

void TestWmFunc::whatTheSystemSaysIsHandedOn()
{
    _sandbox.standIn(text("systemctl")).complains("Failed to reboot: Access denied\n").exits(4);
    QCOMPARE(run({text("ZELWM_REBOOT")}), 4);
    QCOMPARE(_said, text("Failed to reboot: Access denied\n"));
}

void TestWmFunc::withoutTheSystemsProgramItFails()
{
    QCOMPARE(run({text("ZELWM_REBOOT")}), 1);
    QCOMPARE(_said, text("zel-wmfunc: cannot run systemctl, which restarts the computer: No such file or directory\n"));
}

void TestWmFunc::everythingElseIsRefused_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QString>("named");
    QTest::newRow("nothing") << QStringList() << QString();
    QTest::newRow("another function") << QStringList{text("ZELWM_SHUTDOWN")} << text("ZELWM_SHUTDOWN");
    QTest::newRow("another case") << QStringList{text("zelwm_reboot")} << text("zelwm_reboot");
    QTest::newRow("more than one") << QStringList{text("ZELWM_REBOOT"), text("now")} << text("now");
    QTest::newRow("a place to fill in") << QStringList{text("%s%n")} << text("%s%n");
}

void TestWmFunc::everythingElseIsRefused()
{
    QFETCH(QStringList, arguments);
    QFETCH(QString, named);
    _sandbox.standIn(text("systemctl"));
    QCOMPARE(run(arguments), 2);
    QCOMPARE(_said, text("zel-wmfunc: cannot do \"%1\". The one thing it does is ZELWM_REBOOT: it restarts the "
                         "computer.\n")
                        .arg(named));
    QCOMPARE(_sandbox.calls().size(), 0);
}

KRA_SANDBOX_MAIN(TestWmFunc)
#include "tst_wmfunc.moc"
