// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "sandbox.h"

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QSaveFile>
#include <QStandardPaths>
#include <QtTest>

#include <cerrno>
#include <cstdio>

#include <grp.h>
#include <pwd.h>
#include <sys/quota.h>
#include <sys/stat.h>
#include <unistd.h>

/// The rig itself: what a test of the shipped code may take for granted.
class tst_Sandbox : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { _sandbox.reset(); }

    void etcIsItsOwn();
    void accountsAreItsOwn();
    void filesAreReplacedByRename();
    void filesAreReplacedAtomically();
    void resetLeavesNothingBehind();
    void folderIsEmptyAndWritable();

    void onlyStandInsAreFound();
    void standInPrintsAndExits();
    void standInNotesItsCalls();
    void standInWritesMegabytes_data();
    void standInWritesMegabytes();
    void standInHangs();
    void standInIgnoresTermination();
    void standInSleeps();
    void standInCrashes();
    void standInCannotBeStarted();
    void standInIsNotExecutable();
    void standInReplacesEarlierOne();

private:
    struct Run
    {
        QProcess::ProcessError error = QProcess::UnknownError;
        QProcess::ExitStatus status = QProcess::NormalExit;
        int code = -1;
        QByteArray output;
        QByteArray complaint;
    };
    static Run run(const QString &program, const QStringList &arguments = {});

    Sandbox _sandbox;
};

tst_Sandbox::Run tst_Sandbox::run(const QString &program, const QStringList &arguments)
{
    QProcess process;
    process.start(program, arguments);
    process.waitForFinished();
    return {process.error(), process.exitStatus(), process.exitCode(), process.readAllStandardOutput(),
            process.readAllStandardError()};
}

void tst_Sandbox::etcIsItsOwn()
{
    QVERIFY(QFile::exists(QStringLiteral("/etc/fstab")));
    QVERIFY(!QFileInfo(QStringLiteral("/etc/mtab")).isSymLink());
    QVERIFY(!QFile::exists(QStringLiteral("/etc/hostname")));

    _sandbox.writeEtc(QStringLiteral("cron.d/warnquota"), "a\0b\n");
    QFile file(QStringLiteral("/etc/cron.d/warnquota"));
    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(file.readAll(), QByteArray("a\0b\n"));
    QCOMPARE(_sandbox.readEtc(QStringLiteral("cron.d/warnquota")), QByteArray("a\0b\n"));

    _sandbox.removeEtc(QStringLiteral("cron.d"));
    QVERIFY(!QFile::exists(QStringLiteral("/etc/cron.d")));

    // The rig mounts a file system of its own over /etc: whatever happens to its files happens to none of the machine.
    struct stat root = {};
    struct stat etc = {};
    QCOMPARE(stat("/", &root), 0);
    QCOMPARE(stat("/etc", &etc), 0);
    QVERIFY(root.st_dev != etc.st_dev);
}

void tst_Sandbox::accountsAreItsOwn()
{
    QVERIFY(getpwnam("anna"));
    QCOMPARE(getpwnam("anna")->pw_uid, 1000U);
    QVERIFY(!getpwnam("berta"));
    _sandbox.writeEtc(QStringLiteral("passwd"), "berta:x:1001:1001::/home/berta:/bin/sh\n");
    QVERIFY(getpwnam("berta"));
    _sandbox.writeEtc(QStringLiteral("group"), "staff:x:50:\n");
    QVERIFY(getgrnam("staff"));
}

void tst_Sandbox::filesAreReplacedByRename()
{
    _sandbox.writeEtc(QStringLiteral("fstab"), "old\n");
    _sandbox.writeEtc(QStringLiteral("fstab.new"), "new\n");
    QCOMPARE(std::rename("/etc/fstab.new", "/etc/fstab"), 0);
    QCOMPARE(_sandbox.readEtc(QStringLiteral("fstab")), QByteArray("new\n"));
    QVERIFY(!QFile::exists(QStringLiteral("/etc/fstab.new")));
}

void tst_Sandbox::filesAreReplacedAtomically()
{
    _sandbox.writeEtc(QStringLiteral("fstab"), "old\n");
    QSaveFile file(QStringLiteral("/etc/fstab"));
    file.setDirectWriteFallback(false);
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write("new\n"), 4);
    QCOMPARE(_sandbox.readEtc(QStringLiteral("fstab")), QByteArray("old\n"));
    QVERIFY2(file.commit(), qPrintable(file.errorString()));
    QCOMPARE(_sandbox.readEtc(QStringLiteral("fstab")), QByteArray("new\n"));
}

void tst_Sandbox::resetLeavesNothingBehind()
{
    _sandbox.writeEtc(QStringLiteral("fstab"), "/dev/vda1 / ext4 defaults 0 1\n");
    _sandbox.writeEtc(QStringLiteral(".hidden/file"), "text");
    _sandbox.removeEtc(QStringLiteral("mtab"));
    QVERIFY(QFile::link(QStringLiteral("/nonexistent"), QStringLiteral("/etc/dangling")));
    _sandbox.standIn(QStringLiteral("blkid")).prints("text");
    QCOMPARE(run(QStringLiteral("blkid")).output, QByteArray("text"));
    QVERIFY(QFile::exists(_sandbox.folder(QStringLiteral("mnt/a"))));
    _sandbox.kernel().setState("/dev/vda1", USRQUOTA, FakeKernel::State());
    const QString folder = _sandbox.folder(QStringLiteral("mnt"));

    _sandbox.reset();
    QVERIFY(QFile::exists(QStringLiteral("/etc/mtab")));
    QCOMPARE(_sandbox.readEtc(QStringLiteral("fstab")), QByteArray());
    QVERIFY(!QFile::exists(QStringLiteral("/etc/.hidden")));
    QVERIFY(!QFileInfo(QStringLiteral("/etc/dangling")).isSymLink());
    QVERIFY(QFile::exists(QStringLiteral("/etc/ld.so.cache")));
    QVERIFY(_sandbox.calls().isEmpty());
    QVERIFY(QStandardPaths::findExecutable(QStringLiteral("blkid")).isEmpty());
    QVERIFY(!QFile::exists(folder));
    QCOMPARE(quotactl(static_cast<int>(QCMD(Q_GETFMT, USRQUOTA)), "/dev/vda1", 0, nullptr), -1);
    QCOMPARE(errno, ENOENT);
}

void tst_Sandbox::folderIsEmptyAndWritable()
{
    const QString folder = _sandbox.folder(QStringLiteral("mnt/a"));
    QVERIFY(QDir(folder).isEmpty());
    QVERIFY(!folder.contains(QLatin1Char(' ')));
    QFile file(folder + QStringLiteral("/aquota.user"));
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(_sandbox.folder(QStringLiteral("mnt/a")), folder);
    QVERIFY(file.exists());
}

void tst_Sandbox::onlyStandInsAreFound()
{
    for (const char *program : {"sh", "mount", "blkid", "true"}) {
        QVERIFY(QStandardPaths::findExecutable(QString::fromLatin1(program)).isEmpty());
        QCOMPARE(run(QString::fromLatin1(program)).error, QProcess::FailedToStart);
    }
}

void tst_Sandbox::standInPrintsAndExits()
{
    const QByteArray bytes("/dev/vda1: \0\xff\n", 14);
    _sandbox.standIn(QStringLiteral("blkid")).prints(bytes).complains("oh\n").prints("more").exits(6);
    const Run result = run(QStringLiteral("blkid"));
    QCOMPARE(result.output, bytes + "more");
    QCOMPARE(result.complaint, QByteArray("oh\n"));
    QCOMPARE(result.status, QProcess::NormalExit);
    QCOMPARE(result.code, 6);

    _sandbox.standIn(QStringLiteral("modinfo"));
    QCOMPARE(run(QStringLiteral("modinfo")).code, 0);
}

void tst_Sandbox::standInNotesItsCalls()
{
    _sandbox.standIn(QStringLiteral("mount"));
    _sandbox.standIn(QStringLiteral("quotaon"));
    qputenv("LANGUAGE", "de");
    qputenv("LC_ALL", "");
    qunsetenv("LC_MESSAGES");
    run(QStringLiteral("mount"), {QStringLiteral("/dev/vda 1"), QString(), QStringLiteral("-o\nremount")});
    run(QStringLiteral("quotaon"));
    run(QStringLiteral("mount"));

    const QList<StandInCall> calls = _sandbox.calls();
    QCOMPARE(calls.size(), 3);
    QCOMPARE(calls.at(0).program, QStringLiteral("mount"));
    QCOMPARE(calls.at(0).arguments, QByteArrayList({"/dev/vda 1", "", "-o\nremount"}));
    QCOMPARE(calls.at(0).environment.value("LANGUAGE"), QByteArray("de"));
    QVERIFY(calls.at(0).environment.contains("LC_ALL"));
    QVERIFY(!calls.at(0).environment.contains("LC_MESSAGES"));
    QCOMPARE(calls.at(1).program, QStringLiteral("quotaon"));
    QVERIFY(calls.at(1).arguments.isEmpty());
    QCOMPARE(_sandbox.calls(QStringLiteral("mount")).size(), 2);
    QVERIFY(_sandbox.calls(QStringLiteral("blkid")).isEmpty());
}

void tst_Sandbox::standInWritesMegabytes_data()
{
    QTest::addColumn<bool>("onStandardError");
    QTest::newRow("standard output") << false;
    QTest::newRow("standard error") << true;
}

void tst_Sandbox::standInWritesMegabytes()
{
    QFETCH(bool, onStandardError);
    const QByteArray megabytes(5 << 20, 'x');
    StandIn blkid = _sandbox.standIn(QStringLiteral("blkid"));
    (onStandardError ? blkid.complains(megabytes) : blkid.prints(megabytes)).exits(2);
    const Run result = run(QStringLiteral("blkid"));
    QCOMPARE((onStandardError ? result.complaint : result.output).size(), megabytes.size());
    QCOMPARE(result.code, 2);
}

void tst_Sandbox::standInHangs()
{
    _sandbox.standIn(QStringLiteral("blkid")).prints("x").hangs();
    QProcess process;
    process.start(QStringLiteral("blkid"), QStringList());
    QVERIFY(process.waitForReadyRead());
    QVERIFY(!process.waitForFinished(100));
    process.terminate();
    QVERIFY(process.waitForFinished());
    QCOMPARE(process.exitStatus(), QProcess::CrashExit);
}

void tst_Sandbox::standInIgnoresTermination()
{
    _sandbox.standIn(QStringLiteral("blkid")).ignoresTermination().prints("x").hangs();
    QProcess process;
    process.start(QStringLiteral("blkid"), QStringList());
    QVERIFY(process.waitForReadyRead());
    process.terminate();
    QVERIFY(!process.waitForFinished(100));
    process.kill();
    QVERIFY(process.waitForFinished());
}

void tst_Sandbox::standInSleeps()
{
    _sandbox.standIn(QStringLiteral("blkid")).prints("a").sleeps(50).prints("b").exits(0);
    QElapsedTimer timer;
    timer.start();
    QCOMPARE(run(QStringLiteral("blkid")).output, QByteArray("ab"));
    QVERIFY(timer.elapsed() >= 50);
}

void tst_Sandbox::standInCrashes()
{
    _sandbox.standIn(QStringLiteral("blkid")).prints("half a li").crashes();
    const Run result = run(QStringLiteral("blkid"));
    QCOMPARE(result.status, QProcess::CrashExit);
    QCOMPARE(result.output, QByteArray("half a li"));
}

void tst_Sandbox::standInCannotBeStarted()
{
    _sandbox.standIn(QStringLiteral("blkid")).cannotBeStarted();
    QVERIFY(!QStandardPaths::findExecutable(QStringLiteral("blkid")).isEmpty());
    QCOMPARE(run(QStringLiteral("blkid")).error, QProcess::FailedToStart);
    QVERIFY(_sandbox.calls().isEmpty());
}

void tst_Sandbox::standInIsNotExecutable()
{
    _sandbox.standIn(QStringLiteral("blkid")).isNotExecutable();
    QVERIFY(QStandardPaths::findExecutable(QStringLiteral("blkid")).isEmpty());
    QCOMPARE(run(QStringLiteral("blkid")).error, QProcess::FailedToStart);
}

void tst_Sandbox::standInReplacesEarlierOne()
{
    _sandbox.standIn(QStringLiteral("blkid")).prints("old").exits(1);
    _sandbox.standIn(QStringLiteral("blkid")).cannotBeStarted();
    _sandbox.standIn(QStringLiteral("blkid")).prints("new");
    const Run result = run(QStringLiteral("blkid"));
    QCOMPARE(result.output, QByteArray("new"));
    QCOMPARE(result.code, 0);
}

KRA_SANDBOX_MAIN(tst_Sandbox)

#include "tst_sandbox.moc"
