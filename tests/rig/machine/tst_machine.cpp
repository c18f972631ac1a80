// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

namespace
{

struct Outcome
{
    int exitCode = -1;
    QString output;
    QString errors;
};

/// Runs the machine to its end: with these options, and in it this bash script.
Outcome run(const QStringList &options, const QString &script, const QStringList &scriptArguments = {})
{
    QProcess machine;
    machine.start(QFINDTESTDATA("machine"), QStringList{QStringLiteral("run")} + options +
                                                QStringList{QStringLiteral("--"), QStringLiteral("/bin/bash"),
                                                            QStringLiteral("-c"), script, QStringLiteral("bash")} +
                                                scriptArguments);
    if (!machine.waitForFinished(-1) || machine.exitStatus() != QProcess::NormalExit) {
        return {};
    }
    return {machine.exitCode(), QString::fromUtf8(machine.readAllStandardOutput()),
            QString::fromUtf8(machine.readAllStandardError())};
}

QString contents(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

} // namespace

class TestMachine : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void handsBackCodeOutputAndFiles();
    void keepsTheHostAsItWas();
    void hasAnEtcOfItsOwn();
    void enforcesQuotas();
    void tellsAPanicFromAFailure();
    void endsWhenTheTimeIsUp();
    void refusesWhatItDoesNotKnow();
    void survivesARebootInFullMode();
};

void TestMachine::handsBackCodeOutputAndFiles()
{
    const QTemporaryDir results;
    const Outcome outcome =
        run({QStringLiteral("--results"), results.path(), QStringLiteral("--env"), QStringLiteral("GREETING=good day")},
            QStringLiteral("echo \"$GREETING\"; printf '%s|' \"$@\" >&2; pwd >\"$KRA_RESULTS/folder\";"
                           "id -u; exit 7"),
            {QStringLiteral("two words"), QStringLiteral("a\nline"), QString()});
    QCOMPARE(outcome.output, QStringLiteral("good day\n0\n"));
    QCOMPARE(outcome.errors, QStringLiteral("two words|a\nline||"));
    QCOMPARE(outcome.exitCode, 7);
    QCOMPARE(contents(results.filePath(QStringLiteral("folder"))).trimmed(), QDir::currentPath());
}

void TestMachine::keepsTheHostAsItWas()
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("file"));
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("before");
    file.close();
    const Outcome outcome =
        run({}, QStringLiteral("cat \"$1\"; echo after >\"$1\"; cat \"$1\"; rm /etc/passwd; exit 0"), {path});
    QCOMPARE(outcome.output, QStringLiteral("beforeafter\n"));
    QCOMPARE(contents(path), QStringLiteral("before"));
    QVERIFY(QFile::exists(QStringLiteral("/etc/passwd")));
}

void TestMachine::hasAnEtcOfItsOwn()
{
    const Outcome outcome = run({}, QStringLiteral("cut -d: -f3 /etc/passwd | sort -n | tail -n 2; cat /etc/fstab;"
                                                   "hostname; readlink /etc/mtab; modinfo -F name quota_v2"));
    // Debian's basic accounts end with "nobody", and no person of the host is among them.
    QCOMPARE(outcome.output, QStringLiteral("42\n65534\nmachine\n../proc/self/mounts\nquota_v2\n"));
    QCOMPARE(outcome.exitCode, 0);
}

void TestMachine::enforcesQuotas()
{
    const Outcome outcome =
        run({QStringLiteral("--disk"), QStringLiteral("blank:16M"), QStringLiteral("--disk"),
             QStringLiteral("data:32M:-b 1024")},
            QStringLiteral("set -e; disk=$(readlink -f /dev/disk/by-id/virtio-data); echo $disk; mkdir /mnt/data;"
                           "mount -o usrquota $disk /mnt/data; chmod 777 /mnt/data; quotacheck -um /mnt/data;"
                           "quotaon -u /mnt/data; setquota -u nobody 0 1024 0 0 /mnt/data;"
                           "setpriv --reuid nobody head -c 2M /dev/zero >/mnt/data/root-may;"
                           "setpriv --reuid nobody bash -c 'head -c 2M /dev/zero >/mnt/data/nobody-may-not'"));
    QCOMPARE(outcome.output, QStringLiteral("/dev/vdb\n"));
    QVERIFY2(outcome.errors.contains(QLatin1String("Disk quota exceeded")), qPrintable(outcome.errors));
    QCOMPARE(outcome.exitCode, 1);
}

void TestMachine::tellsAPanicFromAFailure()
{
    const Outcome outcome = run({}, QStringLiteral("echo 1 >/proc/sys/kernel/sysrq; echo c >/proc/sysrq-trigger"));
    QCOMPARE(outcome.exitCode, 125);
    QVERIFY2(outcome.errors.contains(QLatin1String("ended without a report")), qPrintable(outcome.errors));
}

void TestMachine::endsWhenTheTimeIsUp()
{
    const Outcome outcome =
        run({QStringLiteral("--timeout"), QStringLiteral("40")}, QStringLiteral("echo started; sleep 3600"));
    QCOMPARE(outcome.output, QStringLiteral("started\n"));
    QCOMPARE(outcome.exitCode, 124);
}

void TestMachine::refusesWhatItDoesNotKnow()
{
    const Outcome outcome = run({QStringLiteral("--colour")}, QStringLiteral("true"));
    QVERIFY2(outcome.errors.contains(QLatin1String("unknown option --colour")), qPrintable(outcome.errors));
    QCOMPARE(outcome.exitCode, 125);
}

void TestMachine::survivesARebootInFullMode()
{
    const Outcome outcome = run(
        {QStringLiteral("--init"), QStringLiteral("--disk"), QStringLiteral("data:32M:-b 1024")},
        QStringLiteral(
            "cat /proc/1/comm; findmnt -no FSTYPE /; echo boot $KRA_BOOT; if [ $KRA_BOOT = 1 ]; then mkdir /srv/data;"
            "echo '/dev/vda /srv/data ext4 defaults 0 2' >>/etc/fstab; systemctl daemon-reload;"
            "mount /srv/data; echo kept >/srv/data/file; systemctl reboot; sleep 3600; fi;"
            "grep -c /dev/vda /etc/fstab; cat /srv/data/file; exit 3"));
    QCOMPARE(outcome.output, QStringLiteral("systemd\next4\nboot 1\nsystemd\next4\nboot 2\n1\nkept\n"));
    QCOMPARE(outcome.exitCode, 3);
}

QTEST_GUILESS_MAIN(TestMachine)
#include "tst_machine.moc"
