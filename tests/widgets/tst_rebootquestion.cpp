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

/// The command, which hands its call on to a stand-in.
void provideCommand(const QString &folder)
{
    const QString standIn = QFile::decodeName(qgetenv("PATH")) + QStringLiteral("/zel-wmfunc");
    QFile command(folder + QStringLiteral("/zel-wmfunc"));
    QVERIFY(command.open(QIODevice::WriteOnly));
    command.write("#!/bin/sh\nexec " + QFile::encodeName(standIn) + " \"$@\"\n");
    QVERIFY(command.setPermissions(command.permissions() | QFile::ExeOwner));
}
} // namespace

/// The command that asks the desktop to reboot: whether it runs, and in which environment.
class TestRebootQuestion : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void theRuntimeFolderIsThatOfWhoRaisedTheRights();
    void withoutTheCommandNothingHappens();
    void yesRunsTheCommand();
    void noDoesNot();

private:
    void answer(QMessageBox::StandardButton button);

    Sandbox _sandbox;
    QString _programs = replacePrograms(_sandbox);
};

void TestRebootQuestion::init()
{
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
    auto *question = widget.findChild<QMessageBox *>();
    QVERIFY(question);
    question->button(button)->click();
    QTRY_VERIFY(!widget.findChild<QMessageBox *>());
}

void TestRebootQuestion::theRuntimeFolderIsThatOfWhoRaisedTheRights()
{
    const QString name = QStringLiteral("XDG_RUNTIME_DIR");
    QCOMPARE(RebootCommand::environment().value(name), QStringLiteral("/run/user/1000"));
    qunsetenv("SUDO_UID");
    QCOMPARE(RebootCommand::environment().value(name), QStringLiteral("/run/user/"));
}

void TestRebootQuestion::withoutTheCommandNothingHappens()
{
    QVERIFY(!QFile::exists(QStringLiteral("/usr/bin/zel-wmfunc")));
    answer(QMessageBox::Yes);
    QVERIFY(_sandbox.calls().isEmpty());
}

void TestRebootQuestion::yesRunsTheCommand()
{
    _sandbox.standIn(QStringLiteral("zel-wmfunc")).exits(1); // how it ends makes no difference
    provideCommand(_programs);
    answer(QMessageBox::Yes);
    const QList<StandInCall> calls = _sandbox.calls(QStringLiteral("zel-wmfunc"));
    QCOMPARE(calls.size(), 1);
    QCOMPARE(calls.first().arguments, QByteArrayList({"ZELWM_REBOOT"}));
    QCOMPARE(calls.first().environment.value("XDG_RUNTIME_DIR"), QByteArray("/run/user/1000"));
    QCOMPARE(calls.first().environment.value("KRA_MARK"), QByteArray("kept"));
}

void TestRebootQuestion::noDoesNot()
{
    const int before = _sandbox.calls().size();
    answer(QMessageBox::No);
    QCOMPARE(_sandbox.calls().size(), before);
}

KRA_SANDBOX_MAIN(TestRebootQuestion)
#include "tst_rebootquestion.moc"
