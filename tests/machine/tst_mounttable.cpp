// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "machinefacts.h"
#include "shell.h"

#include <quotamanager.h>

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QSignalSpy>
#include <QTest>

#include <algorithm>
#include <memory>
#include <vector>

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

using MachineFacts::disk;
using MachineFacts::fstabLine;

namespace
{
const QString tablePath = QStringLiteral("/etc/fstab");

QByteArray table()
{
    QFile file(tablePath);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void writeTable(const QByteArray &content)
{
    QFile file(tablePath);
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
        qFatal("no table");
}

/// The line of a device that the table spells by its path.
QByteArray lineOf(const QString &device)
{
    const QByteArrayList lines = table().split('\n');
    const auto line = std::find_if(lines.begin(), lines.end(), [&device](const QByteArray &each) {
        return each.startsWith(device.toUtf8() + ' ');
    });
    return line == lines.end() ? QByteArray() : *line;
}

bool hasLinkTo(const QDir &folder, const QString &path)
{
    const QFileInfoList links = folder.entryInfoList(QDir::Files | QDir::System | QDir::NoDotAndDotDot);
    return std::any_of(links.begin(), links.end(),
                       [&path](const QFileInfo &link) { return link.symLinkTarget() == path; });
}

/// What an update of one kind on one device reported.
struct Outcome
{
    QStringList errors;
    QStringList details;
};

Outcome switchTo(const QString &device, QuotaKind kind, bool on)
{
    QuotaManager manager;
    Outcome outcome;
    QObject::connect(&manager, &QuotaManager::error, &manager,
                     [&outcome](const QString &text) { outcome.errors.append(text); });
    QObject::connect(&manager, &QuotaManager::detail, &manager,
                     [&outcome](const QString &text) { outcome.details.append(text); });
    KindSettings wish = manager.readKindSettings(device, kind);
    wish.device = device;
    wish.quotaOn = on;
    outcome = {};
    manager.resetCache();
    manager.applyQuotaSettings(wish, kind);
    return outcome;
}

bool isConfigured(const QString &mountPoint, QuotaKind kind)
{
    const QStringList options = fstabLine(qPrintable(mountPoint)).value(3).split(QLatin1Char(','));
    return options.contains(kind == GroupQuota ? QStringLiteral("grpquota") : QStringLiteral("usrquota"));
}

/// As a second process: switches one kind in the table on and off, and looks that it stays where it was put, which
/// nobody else changes. Ends with the number of times that it did not.
int switchAgainAndAgain(const QString &device, QuotaKind kind, int rounds)
{
    const QByteArray option = kind == GroupQuota ? "grpquota" : "usrquota";
    QuotaManager manager; // asks "blkid" once, so that there is little time between two writes
    int losses = 0;
    bool isOn = false;
    for (int round = 0; round < rounds; ++round) {
        losses += lineOf(device).contains(option) != isOn;
        isOn = !isOn || round == rounds - 1;
        losses += !manager.setFstabOption(device, kind, isOn);
    }
    losses += !lineOf(device).contains(option);
    return losses;
}
} // namespace

/// What becomes of a real machine's mount table, and whether the machine still mounts by it.
class TestMountTable : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init() { _before = table(); }
    void cleanup();

    void journaledQuotasStayMountable_data();
    void journaledQuotasStayMountable();
    void aDeviceByAnotherSpellingIsLeftAlone_data();
    void aDeviceByAnotherSpellingIsLeftAlone();
    void twoProcessesSwitchTheKindsOfOneDevice();
    void whatAnEditorSavesMeanwhileStays();
    void commentsStayWhereTheirCopyHasNoRoom();
    void aTableWithCarriageReturnsStaysATable();
    void aVeryLongOptionColumnIsNotCut();

private:
    QByteArray _before;
};

void TestMountTable::initTestCase()
{
    const Shell::Result setUp = Shell::run(QStringLiteral("./table-set-up"));
    QVERIFY2(setUp.exitCode == 0, qPrintable(setUp.errors));
}

void TestMountTable::cleanup()
{
    writeTable(_before);
}

void TestMountTable::journaledQuotasStayMountable_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<int>("kind");
    for (const char *name : {"users", "groups", "both"}) {
        QTest::addRow("%s, users", name) << QString::fromLatin1(name) << int(UserQuota);
        QTest::addRow("%s, groups", name) << QString::fromLatin1(name) << int(GroupQuota);
    }
}

/// Every switch that the page offers, and the one for a first limit: the line mounts afresh after each.
void TestMountTable::journaledQuotasStayMountable()
{
    QFETCH(QString, name);
    QFETCH(int, kind);
    const auto quotaKind = static_cast<QuotaKind>(kind);
    const QString device = disk(qPrintable(name));
    const QString place = QStringLiteral("/srv/") + name;
    const bool isJournaled =
        name == QLatin1String("both") || (name == QLatin1String("users")) == (quotaKind == UserQuota);
    const QString mountAfresh = QStringLiteral("umount %1 && mount %1").arg(place);

    const Outcome on = switchTo(device, quotaKind, true);
    if (!isJournaled)
        QVERIFY2(on.errors.join(QLatin1Char('\n')).contains(QLatin1String("jquota")),
                 qPrintable(on.errors.join(QLatin1Char('\n'))));
    QVERIFY2(Shell::succeeds(mountAfresh), table().constData());

    QuotaManager manager;
    manager.switchOnDemand(device, quotaKind);
    QVERIFY2(Shell::succeeds(mountAfresh), table().constData());

    switchTo(device, quotaKind, false);
    QVERIFY2(Shell::succeeds(mountAfresh), table().constData());
}

void TestMountTable::aDeviceByAnotherSpellingIsLeftAlone_data()
{
    QTest::addColumn<QString>("device");
    QTest::addColumn<QString>("place");
    QTest::newRow("LABEL=") << disk("label") << QStringLiteral("/srv/label");
    QTest::newRow("PARTUUID=") << disk("part") + QLatin1Char('1') << QStringLiteral("/srv/part");
}

/// No line is known to be its own: the table stays, no program runs but "blkid", and the text says so, whichever way it
/// is to go.
void TestMountTable::aDeviceByAnotherSpellingIsLeftAlone()
{
    QFETCH(QString, device);
    QFETCH(QString, place);
    const QString isOn = QStringLiteral("quotaon --print-state --user %1 | grep --quiet 'is on'").arg(place);
    QVERIFY(Shell::run(isOn).exitCode == 0);
    for (const bool on : {false, true}) {
        const Outcome outcome = switchTo(device, on ? GroupQuota : UserQuota, on); // users are on already
        QVERIFY2(outcome.errors.join(QLatin1Char('\n')).contains(device),
                 qPrintable(outcome.errors.join(QLatin1Char('\n'))));
        QCOMPARE(outcome.details, QStringList{QStringLiteral("blkid: exit code 0")});
        QCOMPARE(table(), _before);
        QVERIFY(Shell::run(isOn).exitCode == 0);
    }
}

void TestMountTable::twoProcessesSwitchTheKindsOfOneDevice()
{
    const QString device = disk("plain");
    std::vector<std::unique_ptr<QProcess>> processes;
    for (const QuotaKind kind : {UserQuota, GroupQuota}) {
        processes.push_back(std::make_unique<QProcess>());
        processes.back()->setProcessChannelMode(QProcess::ForwardedChannels);
        processes.back()->start(QCoreApplication::applicationFilePath(),
                                {QStringLiteral("--switch"), device, QString::number(kind), QStringLiteral("200")});
    }
    for (const auto &process : processes) {
        QVERIFY(process->waitForFinished(-1));
        QCOMPARE(process->exitStatus(), QProcess::NormalExit);
        QCOMPARE(process->exitCode(), 0);
    }
    QVERIFY(isConfigured(QStringLiteral("/srv/plain"), UserQuota));
    QVERIFY(isConfigured(QStringLiteral("/srv/plain"), GroupQuota));
    QVERIFY(Shell::succeeds(QStringLiteral("umount /srv/plain && mount /srv/plain && findmnt --verify")));
}

/// A second process of ours has read the table and waits for its turn to write it. What an editor saves then is no less
/// than what it read.
void TestMountTable::whatAnEditorSavesMeanwhileStays()
{
    const QByteArray turn = "/etc/.fstab.kra-lock~";
    const int held = open(turn.constData(), O_RDWR | O_CREAT | O_CLOEXEC, 0600);
    QVERIFY(held >= 0 && flock(held, LOCK_EX) == 0);
    QProcess ours;
    ours.setProcessChannelMode(QProcess::ForwardedChannels);
    ours.start(QCoreApplication::applicationFilePath(),
               {QStringLiteral("--switch"), disk("plain"), QString::number(UserQuota), QStringLiteral("1")});
    QVERIFY(ours.waitForStarted());
    const QDir openFiles(QStringLiteral("/proc/%1/fd").arg(ours.processId()));
    QTRY_VERIFY_WITH_TIMEOUT(hasLinkTo(openFiles, QString::fromLatin1(turn)), 60000);

    const QByteArray saved = "tmpfs /srv/saved tmpfs noauto 0 0\n";
    writeTable(_before + saved);
    QCOMPARE(unlink(turn.constData()), 0);
    close(held);
    QVERIFY(ours.waitForFinished(-1));
    QCOMPARE(ours.exitCode(), 0);
    QVERIFY(lineOf(disk("plain")).contains("usrquota"));
    QVERIFY2(table().simplified().contains(saved.simplified()), table().constData());
}

void TestMountTable::commentsStayWhereTheirCopyHasNoRoom()
{
    const QByteArray commented = "# what this disk is for\n" + _before;
    writeTable(commented);
    QVERIFY(Shell::succeeds(QStringLiteral("mkdir -p /var/backups && mount -t tmpfs -o size=4k none /var/backups &&"
                                           "{ cat /dev/zero >/var/backups/filler 2>/dev/null || true; }")));
    const Outcome outcome = switchTo(disk("plain"), UserQuota, true);
    QVERIFY(Shell::succeeds(QStringLiteral("umount /var/backups")));
    QCOMPARE(table(), commented);
    QVERIFY2(outcome.errors.join(QLatin1Char('\n')).contains(QLatin1String("/var/backups")),
             qPrintable(outcome.errors.join(QLatin1Char('\n'))));

    // With room for it, it is written, and the copy is there.
    switchTo(disk("plain"), UserQuota, true);
    QVERIFY(isConfigured(QStringLiteral("/srv/plain"), UserQuota));
    const QDir backups(QStringLiteral("/var/backups"));
    bool isKept = false;
    const QStringList names = backups.entryList(QDir::Files);
    for (const QString &name : names) {
        QFile copy(backups.filePath(name));
        isKept = isKept || (copy.open(QIODevice::ReadOnly) && copy.readAll() == commented);
    }
    QVERIFY(isKept);
}

/// As an editor of another system leaves it, with the two numbers left out.
void TestMountTable::aTableWithCarriageReturnsStaysATable()
{
    const QByteArray line = disk("plain").toUtf8() + " /srv/plain ext4 defaults";
    writeTable(line + "\r\n");
    const Outcome outcome = switchTo(disk("plain"), UserQuota, true);
    if (table() == line + "\r\n")
        QVERIFY(!outcome.errors.isEmpty());
    else
        QVERIFY2(table().contains("defaults,usrquota") && !table().contains("\r,"), table().constData());
}

void TestMountTable::aVeryLongOptionColumnIsNotCut()
{
    // What begins with "x-" is for programs; the kernel never sees it.
    const QByteArray options = "noatime,x-note=" + QByteArray(100000, 'n') + ",x-last";
    const QByteArray line = disk("plain").toUtf8() + " /srv/plain ext4 " + options;
    writeTable(line + " 0 2\n");
    const Outcome outcome = switchTo(disk("plain"), GroupQuota, true);
    if (table() == line + " 0 2\n")
        QVERIFY(!outcome.errors.isEmpty());
    else
        QVERIFY(table().simplified().contains(options + ",grpquota 0 2"));
    QVERIFY(Shell::succeeds(QStringLiteral("umount /srv/plain && mount /srv/plain")));
}

int main(int argc, char *argv[])
{
    QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.value(1) == QLatin1String("--switch"))
        return switchAgainAndAgain(arguments.value(2), static_cast<QuotaKind>(arguments.value(3).toInt()),
                                   arguments.value(4).toInt());
    TestMountTable test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_mounttable.moc"
