// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "editedelement.h"
#include "madeuprecords.h"

#include <generalwidget.h>
#include <privatemounts.h>
#include <rebootcommand.h>
#include <sandbox.h>

#include <QAbstractButton>
#include <QFile>
#include <QMessageBox>
#include <QtTest>

using namespace MadeUpRecords;

namespace
{
/// Puts a folder over /usr/bin that holds the shell and nothing else: where the console is installed, the command is
/// there, and would do what it is for.
QString replacePrograms(Sandbox &sandbox)
{
    QString folder = sandbox.folder(QStringLiteral("usr-bin"));
    if (!QFile::copy(QStringLiteral("/bin/sh"), folder + QStringLiteral("/sh")))
        qFatal("no shell");
    PrivateMounts::replaceFolder(folder.toStdString(), "/usr/bin");
    return folder;
}

void writeCommand(const QString &folder, const QByteArray &script)
{
    QFile command(folder + QStringLiteral("/zel-wmfunc"));
    QVERIFY(command.open(QIODevice::WriteOnly));
    command.write("#!/bin/sh\n" + script);
    QVERIFY(command.setPermissions(command.permissions() | QFile::ExeOwner));
}

/// The command, which hands its call on to a stand-in.
void provideCommand(const QString &folder)
{
    writeCommand(folder, "exec " + qgetenv("PATH") + "/zel-wmfunc \"$@\"\n");
}

/// A command that notes its call, works until it is let go, and notes its end.
class SlowCommand
{
public:
    SlowCommand(const QString &programs, const QString &folder)
        : _notes(folder)
    {
        for (const char *name : {"called", "go", "done"})
            QFile::remove(file(name));
        const QByteArray path = QFile::encodeName(folder) + '/';
        writeCommand(programs, "echo called >>" + path + "called\nuntil [ -e " + path + "go ]; do :; done\n: >" + path +
                                   "done\n");
    }
    int calls() const
    {
        QFile called(file("called"));
        return called.open(QIODevice::ReadOnly) ? called.readAll().count('\n') : 0;
    }
    void letGo() const { QVERIFY(QFile(file("go")).open(QIODevice::WriteOnly)); }
    bool isDone() const { return QFile::exists(file("done")); }

private:
    QString file(const char *name) const { return _notes + QLatin1Char('/') + QLatin1String(name); }

    QString _notes;
};
} // namespace

/// The command that asks the desktop to reboot: whether it runs, in which environment, and for how long.
class TestRebootQuestion : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void withoutTheCommandNothingHappens();
    void yesRunsTheCommand_data();
    void yesRunsTheCommand();
    void noDoesNot();
    void thePageWaitsForNothing();
    void twoAtOnceAreOne();

private:
    void answer(QMessageBox::StandardButton button);
    QList<StandInCall> calls() const { return _sandbox.calls(QStringLiteral("zel-wmfunc")).mid(_callsBefore); }

    Sandbox _sandbox;
    QString _programs = replacePrograms(_sandbox);
    int _callsBefore = 0;
};

/// No test counts on the one before it: the command is not there, and the calls are counted from now on.
void TestRebootQuestion::init()
{
    QFile::remove(_programs + QStringLiteral("/zel-wmfunc"));
    _callsBefore = _sandbox.calls(QStringLiteral("zel-wmfunc")).size();
    qputenv("SUDO_UID", "1000");
    qputenv("KRA_MARK", "kept");
}

void TestRebootQuestion::answer(QMessageBox::StandardButton button)
{
    RecordingModule module;
    EditedElement element(QStringLiteral("QuotaGeneralElement"), &module);
    GeneralWidget widget(&module, &everybodyMay);
    widget.setElement(&element);
    widget.show();
    GeneralData record;
    record.deviceSettings.insert(QStringLiteral("/dev/vda1"), device(kind(true, false, true, true), KindSettings()));
    widget.afterSuccessfulRead(&element, &record);
    QTRY_VERIFY(widget.findChild<QMessageBox *>());
    widget.findChild<QMessageBox *>()->button(button)->click();
    QTRY_VERIFY(!widget.findChild<QMessageBox *>());
}

void TestRebootQuestion::withoutTheCommandNothingHappens()
{
    QVERIFY(!QFile::exists(QStringLiteral("/usr/bin/zel-wmfunc")));
    answer(QMessageBox::Yes);
    RebootCommand command;
    command.run();
    QTRY_VERIFY(!command.isRunning());
    QVERIFY(calls().isEmpty());
    _sandbox.standIn(QStringLiteral("zel-wmfunc"));
    provideCommand(_programs);
    command.run(); // the one that could not start holds nothing up
    QTRY_COMPARE(calls().size(), 1);
}

void TestRebootQuestion::yesRunsTheCommand_data()
{
    QTest::addColumn<QByteArray>("asker");
    QTest::addColumn<QByteArray>("folder");
    QTest::newRow("raised by a user") << QByteArray("1000") << QByteArray("/run/user/1000");
    QTest::newRow("not raised") << QByteArray() << QByteArray("/run/user/");
}

void TestRebootQuestion::yesRunsTheCommand()
{
    QFETCH(QByteArray, asker);
    QFETCH(QByteArray, folder);
    if (asker.isEmpty())
        qunsetenv("SUDO_UID");
    else
        qputenv("SUDO_UID", asker);
    _sandbox.standIn(QStringLiteral("zel-wmfunc")).exits(1); // how it ends makes no difference
    provideCommand(_programs);
    answer(QMessageBox::Yes);
    QTRY_COMPARE(calls().size(), 1);
    QCOMPARE(calls().first().arguments, QByteArrayList({"ZELWM_REBOOT"}));
    QCOMPARE(calls().first().environment.value("XDG_RUNTIME_DIR"), folder);
    QCOMPARE(calls().first().environment.value("KRA_MARK"), QByteArray("kept"));
}

void TestRebootQuestion::noDoesNot()
{
    _sandbox.standIn(QStringLiteral("zel-wmfunc"));
    provideCommand(_programs);
    answer(QMessageBox::No);
    answer(QMessageBox::Yes); // which would have come second
    QTRY_VERIFY(!calls().isEmpty());
    QCOMPARE(calls().size(), 1);
}

/// Nor does the end of the page end the command: it takes its time, and then does what it is for.
void TestRebootQuestion::thePageWaitsForNothing()
{
    const SlowCommand command(_programs, _sandbox.folder(QStringLiteral("notes")));
    answer(QMessageBox::Yes); // returns while the command waits for what comes only now
    QTRY_COMPARE(command.calls(), 1);
    QVERIFY(!command.isDone());
    command.letGo();
    QTRY_VERIFY(command.isDone());
}

void TestRebootQuestion::twoAtOnceAreOne()
{
    const SlowCommand slow(_programs, _sandbox.folder(QStringLiteral("notes")));
    RebootCommand command;
    command.run();
    QTRY_COMPARE(slow.calls(), 1);
    command.run();
    slow.letGo();
    QTRY_VERIFY(slow.isDone());
    QTRY_VERIFY(!command.isRunning());
    QCOMPARE(slow.calls(), 1);
    command.run();
    QTRY_COMPARE(slow.calls(), 2);
    QTRY_VERIFY(!command.isRunning());
}

KRA_SANDBOX_MAIN(TestRebootQuestion)
#include "tst_rebootquestion.moc"
