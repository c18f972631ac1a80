// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "generalpage.h"
#include "machinefacts.h"
#include "ordinarywrite.h"
#include "realconsole.h"
#include "resultstable.h"
#include "shell.h"

#include <startup.h>

#include <QApplication>
#include <QFile>
#include <QTest>
#include <QTimer>

#include <sys/stat.h>

using MachineFacts::disk;
using MachineFacts::fstabLine;
using OrdinaryWrite::isExceeded;

namespace
{

/// What becomes of it when somebody without rights of his own writes 3 MiB there.
Shell::Result writeAs(const char *name, const QString &folder)
{
    const QString account = QString::fromLatin1(name);
    const QString file = QStringLiteral("%1/by-%2").arg(folder, account);
    Shell::Result writing = OrdinaryWrite::append(account, file, 3 * 1024);
    QFile::remove(file);
    return writing;
}

bool isFree(const Shell::Result &writing)
{
    return writing.exitCode == 0;
}

QByteArray contents(const char *path)
{
    QFile file(QString::fromLatin1(path));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace

/// The steps that both boots take.
class TestSwitching : public QObject
{
    Q_OBJECT

protected:
    void openConsole();
    GeneralPage &page() { return *_page; }
    GeneralPage::Applied apply(const char *title, const QString &device);
    /// Ticks or unticks one kind and applies it.
    GeneralPage::Applied switchTo(const char *title, const QString &device, QuotaKind kind, bool on);
    bool saysItIsStillOff(QuotaKind kind) const;

private:
    std::unique_ptr<RealConsole> _console;
    std::unique_ptr<GeneralPage> _page;
};

void TestSwitching::openConsole()
{
    _console = std::make_unique<RealConsole>();
    _page = std::make_unique<GeneralPage>(*_console);
    QVERIFY(_page->open());
}

GeneralPage::Applied TestSwitching::apply(const char *title, const QString &device)
{
    const GeneralPage::Applied applied = page().apply();
    ResultsTable::add(QString::fromLatin1(title), device, applied);
    // What failed stays on the page until it is reverted.
    if (!applied.succeeded && !(_console->click(QStringLiteral("revertAction")) && _console->driver().settle()))
        QTest::qFail("after a failure there is nothing to revert", __FILE__, __LINE__);
    return applied;
}

GeneralPage::Applied TestSwitching::switchTo(const char *title, const QString &device, QuotaKind kind, bool on)
{
    if (page().choose(device) && page().setOn(kind, on))
        return apply(title, device);
    GeneralPage::Applied refused;
    refused.message = QStringLiteral("The page does not let this be switched.");
    return refused;
}

bool TestSwitching::saysItIsStillOff(QuotaKind kind) const
{
    return _page->facts(kind).join(QLatin1Char('\n')).contains(QLatin1String("but it is still off"));
}

/// Switching on, and what gets in its way.
class TestBeforeReboot : public TestSwitching
{
    Q_OBJECT

public:
    /// Goes down through Debian's init, which ends this program and starts it again after the boot: by way of the
    /// page's question and of the program that an installed console has for it. Returns only where that failed.
    int reboot();

private Q_SLOTS:
    void initTestCase();
    void usersOfADeviceByPath();
    void groupsBesideThem();
    void limitsStopWrites();
    void gracePeriods();
    void bothKindsOfADeviceByUuid();
    void aDeviceThatIsNotMountedKeepsItsOptions();
    void aDeviceThatIsNotMounted();
    void aDeviceMountedReadOnly();
    void aStaleQuotaFile();
    void quotasThatAreOnAlready();
    void quotasThatCameOnMeanwhile();
    void aFileSystemThatKeepsItsQuotasItself();
    void aHundredThousandFiles();
    void theRootFileSystem();
    void theTableIsSound();
};

void TestBeforeReboot::initTestCase()
{
    ResultsTable::begin();
    const Shell::Result setUp = Shell::run(QStringLiteral("./switching-set-up"));
    QVERIFY2(setUp.exitCode == 0, qPrintable(setUp.errors));
    openConsole();
}

void TestBeforeReboot::usersOfADeviceByPath()
{
    const QString path = disk("path");
    const GeneralPage::Applied applied = switchTo("a device by path, users", path, UserQuota, true);
    QVERIFY2(applied.succeeded, qPrintable(applied.message));
    QVERIFY2(applied.boxes.join(QString()).contains(QLatin1String("quota configuration files will be created")),
             qPrintable(applied.boxes.join(QLatin1Char('\n'))));

    const MachineFacts::Device facts = MachineFacts::device(path);
    QVERIFY(facts.user.configured);
    QVERIFY(facts.user.inForce);
    QVERIFY(facts.user.hasFile);
    QVERIFY(facts.user.on);
    QVERIFY(!facts.group.configured);
    QVERIFY(!facts.group.hasFile);
    QVERIFY(!facts.group.on);
    QVERIFY(page().isOn(UserQuota));
    QVERIFY(!page().isOn(GroupQuota));
}

void TestBeforeReboot::groupsBesideThem()
{
    const QString path = disk("path");
    const GeneralPage::Applied applied = switchTo("... then groups", path, GroupQuota, true);
    QVERIFY2(applied.succeeded, qPrintable(applied.message));
    const MachineFacts::Device facts = MachineFacts::device(path);
    QVERIFY(facts.user.configured && facts.user.inForce && facts.user.on);
    QVERIFY(facts.group.configured && facts.group.inForce && facts.group.hasFile && facts.group.on);
}

void TestBeforeReboot::limitsStopWrites()
{
    const QString folder = QStringLiteral("/srv/path");
    QVERIFY(isFree(writeAs("anna", folder)));
    QCOMPARE(Shell::run(QStringLiteral("setquota --user anna 0 1024 0 0 /srv/path")).exitCode, 0);
    const Shell::Result writing = writeAs("anna", folder);
    QVERIFY2(isExceeded(writing), qPrintable(writing.errors));

    QVERIFY(isFree(writeAs("ben", folder)));
    QCOMPARE(Shell::run(QStringLiteral("setquota --group ben 0 1024 0 0 /srv/path")).exitCode, 0);
    QVERIFY(isExceeded(writeAs("ben", folder)));
}

void TestBeforeReboot::gracePeriods()
{
    const QString path = disk("path");
    QVERIFY(page().choose(path));
    QVERIFY(page().setGrace(UserQuota, Counted::Space, {0, 3, 0, 0}));
    QVERIFY(page().setGrace(UserQuota, Counted::Files, {0, 0, 5, 30}));
    QVERIFY(page().setGrace(GroupQuota, Counted::Space, {2, 0, 0, 0}));
    QVERIFY(page().setGrace(GroupQuota, Counted::Files, {0, 1, 2, 0}));
    const GeneralPage::Applied applied = apply("... then four grace periods", path);
    QVERIFY2(applied.succeeded, qPrintable(applied.message));

    // As repquota reads them.
    const MachineFacts::Device facts = MachineFacts::device(path);
    QCOMPARE(facts.user.blockGrace, qint64(3 * 86400));
    QCOMPARE(facts.user.inodeGrace, qint64(5 * 3600 + 30 * 60));
    QCOMPARE(facts.group.blockGrace, qint64(14 * 86400));
    QCOMPARE(facts.group.inodeGrace, qint64(26 * 3600));
    QCOMPARE(page().graceSeconds(UserQuota, Counted::Files), facts.user.inodeGrace);
    QVERIFY(facts.user.on && facts.group.on);
}

void TestBeforeReboot::bothKindsOfADeviceByUuid()
{
    const QString uuid = disk("uuid");
    const QString spec = fstabLine("/srv/uuid").value(0);
    QVERIFY(page().choose(uuid));
    QVERIFY(page().setOn(UserQuota, true));
    QVERIFY(page().setOn(GroupQuota, true));
    const GeneralPage::Applied applied = apply("a device by UUID=, users and groups at once", uuid);
    QVERIFY2(applied.succeeded, qPrintable(applied.message));

    const MachineFacts::Device facts = MachineFacts::device(uuid);
    QVERIFY(facts.user.configured && facts.user.inForce && facts.user.hasFile && facts.user.on);
    QVERIFY(facts.group.configured && facts.group.inForce && facts.group.hasFile && facts.group.on);
    QCOMPARE(fstabLine("/srv/uuid"),
             QStringList({spec, QStringLiteral("/srv/uuid"), QStringLiteral("ext4"),
                          QStringLiteral("noatime,usrquota,grpquota"), QStringLiteral("0"), QStringLiteral("2")}));
    // The device before it stayed as it was.
    const MachineFacts::Device first = MachineFacts::device(disk("path"));
    QVERIFY(first.user.on && first.group.on);
    QCOMPARE(first.user.blockGrace, qint64(3 * 86400));
}

/// It is configured and cannot be on. What was applied to others took nothing of that away.
void TestBeforeReboot::aDeviceThatIsNotMountedKeepsItsOptions()
{
    QCOMPARE(fstabLine("/srv/away").value(3), QStringLiteral("noauto,usrquota,grpquota"));
    QCOMPARE(fstabLine("/srv/frozen").value(3), QStringLiteral("ro"));
}

void TestBeforeReboot::aDeviceThatIsNotMounted()
{
    const QString away = disk("away");
    const GeneralPage::Applied applied = switchTo("a device that is not mounted", away, UserQuota, true);
    const QString details = applied.details.join(QLatin1Char('\n'));
    QVERIFY2(details.contains(QLatin1String("mount point not mounted or bad option")), qPrintable(details));
    QCOMPARE(fstabLine("/srv/away").value(3), QStringLiteral("noauto,usrquota,grpquota"));
    QVERIFY(!MachineFacts::device(away).user.on);
    QVERIFY(!page().isOn(UserQuota));
    QVERIFY(!applied.succeeded);
    QVERIFY2(applied.message.contains(QStringLiteral("Device %1 not mounted").arg(away)), qPrintable(applied.message));
    QVERIFY(!saysItIsStillOff(GroupQuota));
}

void TestBeforeReboot::aDeviceMountedReadOnly()
{
    const QString frozen = disk("frozen");
    const GeneralPage::Applied applied = switchTo("a device mounted read-only", frozen, UserQuota, true);
    const MachineFacts::Device facts = MachineFacts::device(frozen);
    QVERIFY(facts.user.configured);
    QVERIFY(!facts.user.hasFile);
    QVERIFY(!facts.user.on);
    QVERIFY(!page().isOn(UserQuota));
    QVERIFY(Shell::run(QStringLiteral("findmnt --noheadings --output OPTIONS /srv/frozen"))
                .output.startsWith(QLatin1String("ro")));
    const QString details = applied.details.join(QLatin1Char('\n'));
    QVERIFY2(details.contains(QLatin1String("Read-only file system")), qPrintable(details));
    QVERIFY(!applied.succeeded || saysItIsStillOff(UserQuota));
}

void TestBeforeReboot::aStaleQuotaFile()
{
    const QString stale = disk("stale");
    const GeneralPage::Applied applied = switchTo("a quota file of 0 bytes", stale, UserQuota, true);
    QVERIFY(!applied.succeeded);
    QVERIFY2(applied.message.contains(QLatin1String("quotaon")), qPrintable(applied.message));
    QVERIFY(MachineFacts::device(stale).user.configured);
    QVERIFY(!MachineFacts::device(stale).user.on);
    QVERIFY(!page().isOn(UserQuota));
    ResultsTable::add(QStringLiteral("... quotacheck there"), QStringLiteral("quotacheck -um %1").arg(stale));

    // What the administrator then does.
    QVERIFY(QFile::remove(QStringLiteral("/srv/stale/aquota.user")));
    QVERIFY(page().refresh());
    const GeneralPage::Applied again = switchTo("... removed, and again", stale, UserQuota, true);
    QVERIFY2(again.succeeded, qPrintable(again.message));
    QVERIFY(MachineFacts::device(stale).user.on);
}

/// On, but only until the next boot. A grace period is applied without the option that nobody asked for.
void TestBeforeReboot::quotasThatAreOnAlready()
{
    const QString already = disk("already");
    QVERIFY(page().choose(already));
    QVERIFY(page().isOn(UserQuota));
    QVERIFY(!MachineFacts::device(already).user.configured);
    QVERIFY(page().setGrace(UserQuota, Counted::Space, {0, 4, 0, 0}));
    const GeneralPage::Applied applied = apply("quotas that are on already, not in fstab", already);
    QVERIFY2(applied.succeeded, qPrintable(applied.message));
    const MachineFacts::Device facts = MachineFacts::device(already);
    QVERIFY(!facts.user.configured);
    QVERIFY(facts.user.on);
    QCOMPARE(facts.user.blockGrace, qint64(4 * 86400));
    ResultsTable::add(QStringLiteral("... quotaon there"), QStringLiteral("quotaon -u %1").arg(already));
    ResultsTable::add(QStringLiteral("... quotacheck there"), QStringLiteral("quotacheck -um %1").arg(already));
}

/// The page still shows them off when they are asked on.
void TestBeforeReboot::quotasThatCameOnMeanwhile()
{
    const QString already = disk("already");
    QCOMPARE(Shell::run(QStringLiteral("quotaoff --user /srv/already")).exitCode, 0);
    QVERIFY(page().refresh());
    QVERIFY(page().choose(already));
    QVERIFY(!page().isOn(UserQuota));
    QCOMPARE(Shell::run(QStringLiteral("quotaon --user /srv/already")).exitCode, 0);
    const GeneralPage::Applied applied = switchTo("quotas that came on meanwhile", already, UserQuota, true);
    QVERIFY2(applied.succeeded, qPrintable(applied.message));
    const MachineFacts::Device facts = MachineFacts::device(already);
    QVERIFY(facts.user.on);
    QCOMPARE(facts.user.blockGrace, qint64(4 * 86400)); // as it was: nobody edited it on the page
    QVERIFY(page().isOn(UserQuota));
}

void TestBeforeReboot::aFileSystemThatKeepsItsQuotasItself()
{
    const QString feature = disk("feature");
    QVERIFY(page().choose(feature));
    QVERIFY(page().isOn(UserQuota));
    QVERIFY(!page().canSwitch(UserQuota));
    QVERIFY(!page().canSwitch(GroupQuota));
    QVERIFY(page().facts(UserQuota).join(QLatin1Char('\n')).contains(QLatin1String("limits stop nobody")));
    const QString title = QStringLiteral("ext4's own quotas");
    ResultsTable::add(title, QStringLiteral("quotacheck -um %1").arg(feature));
    ResultsTable::add(title, QStringLiteral("quotaon -u %1").arg(feature));
}

void TestBeforeReboot::aHundredThousandFiles()
{
    const QString many = disk("many");
    constexpr int folders = 100;
    constexpr int files = 1000;
    for (int i = 0; i < folders; ++i) {
        const QString folder = QStringLiteral("/srv/many/%1").arg(i);
        QVERIFY(QDir().mkdir(folder));
        // One call each: it takes the emulated machine long enough.
        for (int j = 0; j < files; ++j)
            QCOMPARE(mknod(qPrintable(QStringLiteral("%1/%2").arg(folder).arg(j)), S_IFREG | 0644, 0), 0);
    }
    const GeneralPage::Applied applied = switchTo("a file system with 100,000 files", many, UserQuota, true);
    QVERIFY2(applied.succeeded, qPrintable(applied.message));
    qInfo("switched on in %lld ms", applied.milliseconds);
    QVERIFY(MachineFacts::device(many).user.on);
    // Nothing was missed: the files, their folders, the root folder, lost+found and the quota file.
    const QString counted = Shell::run(QStringLiteral("repquota --no-names --user /srv/many | awk '$1 == \"#0\" "
                                                      "{ print $6 }'"))
                                .output.trimmed();
    QVERIFY2(counted.toInt() >= folders * files + folders, qPrintable(counted));
}

void TestBeforeReboot::theRootFileSystem()
{
    const QString root = disk("kra-root");
    QCOMPARE(MachineFacts::device(root).mountPoint, QStringLiteral("/"));
    QVERIFY(page().choose(root));
    QVERIFY(page().setOn(UserQuota, true));
    QVERIFY(page().setOn(GroupQuota, true));
    const GeneralPage::Applied applied = apply("the root file system, users and groups", root);
    QVERIFY2(applied.succeeded, qPrintable(applied.message));
    const MachineFacts::Device facts = MachineFacts::device(root);
    QVERIFY(facts.user.configured && facts.user.inForce && facts.user.hasFile && facts.user.on);
    QVERIFY(facts.group.configured && facts.group.inForce && facts.group.hasFile && facts.group.on);
    QVERIFY(QFile::exists(QStringLiteral("/aquota.user")));
    QCOMPARE(fstabLine("/").value(3), QStringLiteral("errors=remount-ro,usrquota,grpquota"));
}

void TestBeforeReboot::theTableIsSound()
{
    const Shell::Result verified = Shell::run(QStringLiteral("findmnt --verify --tab-file /etc/fstab"));
    QVERIFY2(verified.exitCode == 0, qPrintable(verified.output + verified.errors));
    QCOMPARE(fstabLine("/srv/away").value(3), QStringLiteral("noauto,usrquota,grpquota"));
    QCOMPARE(fstabLine("/srv/scratch").value(3), QStringLiteral("size=1M"));
}

int TestBeforeReboot::reboot()
{
    // A table of mounts that is a file, as it once was, and has fallen behind: quotas are on there without the option.
    const Shell::Result prepared =
        Shell::run(QStringLiteral("set -e\n"
                                  "install %1/zel-wmfunc /usr/bin\n"
                                  "sed '/ .srv.already /s/,usrquota//' /proc/self/mounts >/etc/mtab.new\n"
                                  "mv /etc/mtab.new /etc/mtab")
                       .arg(QCoreApplication::applicationDirPath()));
    if (prepared.exitCode != 0) {
        qCritical("%s", qPrintable(prepared.errors));
        return 1;
    }
    page().allowReboot();
    page().refresh();
    // The question stands beside the page, and is answered in the event loop; the machine goes down from within.
    QTimer::singleShot(120000, qApp, &QCoreApplication::quit);
    QCoreApplication::exec();
    qCritical("the machine did not reboot; asked was: %s", qPrintable(page().takeBoxes().join(QLatin1Char('\n'))));
    return 1;
}

/// What lasts, and switching off.
class TestAfterReboot : public TestSwitching
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { openConsole(); }
    void quotasAreInForce();
    void limitsStillStopWrites();
    void oneKindIsSwitchedOff();
    void andOnAgain();
};

void TestAfterReboot::quotasAreInForce()
{
    for (const char *name : {"path", "uuid", "kra-root"}) {
        const MachineFacts::Device facts = MachineFacts::device(disk(name));
        QVERIFY2(facts.user.inForce && facts.user.on, name);
        QVERIFY2(facts.group.inForce && facts.group.on, name);
        QVERIFY(page().choose(disk(name)));
        QVERIFY(page().isOn(UserQuota) && page().isOn(GroupQuota));
    }
    for (const char *name : {"many", "already", "stale"})
        QVERIFY2(MachineFacts::device(disk(name)).user.on, name);
    const MachineFacts::Device path = MachineFacts::device(disk("path"));
    QCOMPARE(path.user.blockGrace, qint64(3 * 86400));
    QCOMPARE(path.group.inodeGrace, qint64(26 * 3600));
    ResultsTable::add(QStringLiteral("the reboot: Debian's quotaon.service"),
                      QStringLiteral("journalctl --boot --unit quotaon.service --output cat"));
}

void TestAfterReboot::limitsStillStopWrites()
{
    const QString folder = QStringLiteral("/srv/path");
    QVERIFY(isExceeded(writeAs("anna", folder)));
    QVERIFY(isExceeded(writeAs("ben", folder)));
}

void TestAfterReboot::oneKindIsSwitchedOff()
{
    const QString path = disk("path");
    const QByteArray before = contents("/etc/fstab");
    const GeneralPage::Applied applied = switchTo("users switched off", path, UserQuota, false);
    QVERIFY2(applied.succeeded, qPrintable(applied.message));
    QCOMPARE(applied.boxes, QStringList());

    const MachineFacts::Device facts = MachineFacts::device(path);
    QVERIFY(!facts.user.on);
    QVERIFY(!facts.user.configured);
    QVERIFY(facts.group.on && facts.group.configured);
    QCOMPARE(facts.group.blockGrace, qint64(14 * 86400));
    QCOMPARE(contents("/etc/fstab"), QByteArray(before).replace("defaults,usrquota,grpquota", "defaults,grpquota"));
    QVERIFY(!page().isOn(UserQuota));
    QVERIFY(page().isOn(GroupQuota));

    const QString folder = QStringLiteral("/srv/path");
    QVERIFY(isFree(writeAs("anna", folder)));
    QVERIFY(isExceeded(writeAs("ben", folder)));
    const MachineFacts::Device other = MachineFacts::device(disk("uuid"));
    QVERIFY(other.user.on && other.group.on);
}

/// The quota file is there, with the limits in it.
void TestAfterReboot::andOnAgain()
{
    const GeneralPage::Applied applied = switchTo("... and on again", disk("path"), UserQuota, true);
    QVERIFY2(applied.succeeded, qPrintable(applied.message));
    QCOMPARE(applied.boxes, QStringList());
    QVERIFY(MachineFacts::device(disk("path")).user.on);
    QVERIFY(isExceeded(writeAs("anna", QStringLiteral("/srv/path"))));
}

int main(int argc, char *argv[])
{
    const QByteArray boot = qgetenv("KRA_BOOT");
    const QByteArray results = qgetenv("KRA_RESULTS");
    Startup::prepareProcess();
    qputenv("KRA_RESULTS", results); // which a console has no use for
    QApplication application(argc, argv);
    if (boot == "1") {
        TestBeforeReboot test;
        const int failures = QTest::qExec(&test, argc, argv);
        return failures > 0 ? failures : test.reboot();
    }
    TestAfterReboot test;
    return QTest::qExec(&test, argc, argv);
}
#include "tst_switching.moc"
