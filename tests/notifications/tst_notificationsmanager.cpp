// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "machinefiles.h"

#include <notificationsmanager.h>
#include <privatemounts.h>
#include <warnquotacommand.h>

#include <QScopeGuard>
#include <QSignalSpy>
#include <QtTest>

#include <algorithm>
#include <functional>

#include <limits.h>
#include <sys/mount.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace
{
const QString config = QStringLiteral("/etc/warnquota.conf");
const QString quotaTab = QStringLiteral("/etc/quotatab");
const QString adminsFile = QStringLiteral("/etc/quotagrpadmins");

WarnquotaJob jobOf(const char *line)
{
    const QStringList parts = QString::fromLatin1(line).split(QLatin1Char(' '));
    return WarnquotaCommand::parse({{parts.at(0), parts.at(1), parts.at(2), parts.at(3), parts.at(4)},
                                    parts.at(5),
                                    parts.mid(6).join(QLatin1Char(' ')),
                                    QString()});
}

QByteArrayList synced; // the paths that were brought to the disk, in order

struct stat statusOf(const QString &path)
{
    struct stat status = {};
    stat(QFile::encodeName(path).constData(), &status);
    return status;
}
/// Does something while "/var/backups" cannot be written.
void whileNothingCanBeKept(const std::function<void()> &action)
{
    const char *const path = "/var/backups";
    PrivateMounts::mountMemory(path);
    QCOMPARE(mount(nullptr, path, nullptr, MS_REMOUNT | MS_RDONLY, nullptr), 0);
    action();
    QCOMPARE(umount2(path, MNT_DETACH), 0);
}
} // namespace

/// In place of the library's, also for the framework: notes the path and does the same.
// NOLINTNEXTLINE(readability-inconsistent-declaration-parameter-name): its parameter bears a name that is reserved
extern "C" __attribute__((visibility("default"))) int fsync(int descriptor)
{
    char path[PATH_MAX] = {};
    const QByteArray link = "/proc/self/fd/" + QByteArray::number(descriptor);
    if (readlink(link.constData(), path, sizeof path - 1) > 0)
        synced.append(path);
    return static_cast<int>(syscall(SYS_fsync, descriptor));
}

/// What is read of the machine's warnings, what is written, and what stays.
class TestNotificationsManager : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { MachineFiles::reset(_sandbox); }

    void reading();
    void readingTheFilesThatJobsName();
    void aFileIsReadOnce();
    void aMachineThatNeverWarned();
    void jobsOfOtherProgramsAreRunsToo();
    void textsOfAnyBytes_data();
    void textsOfAnyBytes();
    void whatIsNoFileIsNotRead();
    void theDailyRun_data();
    void theDailyRun();

    void writingJobsRewritesTheirCommands();
    void everyFileIsWritten();
    void onlyEditedFilesAreWritten();
    void aMissingFileIsMadeWhenItsTextIsEdited();
    void relativePathsAreNeitherReadNorWritten();
    void whatCannotBeReadIsNotReplaced();
    void linesStayWhileTheyAreNotEdited();
    void writingGoesOnAfterAFailure();
    void anEditedText();
    void whatIsNoTextIsKept_data();
    void whatIsNoTextIsKept();
    void withoutACopyOfItNothingIsWritten();
    void rightsOfAFileStay();
    void aLinkedFileStaysOne();

    void ownTablesNeedNoCopy();
    void aForeignTableIsKept_data();
    void aForeignTableIsKept();
    void eachForeignTableIsKept();
    void theCopyIsOnTheDiskBeforeTheTableGoes();
    void onlyRootReadsTheCopy();
    void whatOthersWroteSinceTheReadIsKept();
    void whatOthersWriteMeanwhileIsKept();
    void savesWithoutEndAreReported();
    void aPathThatOtherProgramsLoseIsSaid_data();
    void aPathThatOtherProgramsLoseIsSaid();
    void withoutACopyNothingIsWritten();
    void theReadTellsWhatWillBeDropped();

private:
    void setConfig(const QByteArray &bytes) { _sandbox.writeEtc(QStringLiteral("warnquota.conf"), bytes); }
    void setTable(const QByteArray &bytes) { _sandbox.writeEtc(MachineFiles::cronTable, bytes); }
    QByteArray table() const { return _sandbox.readEtc(MachineFiles::cronTable); }

    Sandbox _sandbox;
};

void TestNotificationsManager::reading()
{
    setTable(MachineFiles::tableHead + "0 0 * * * root warnquota\n30 4 1 * * root warnquota -g # groups\n");
    NotificationsManager manager;
    const QSignalSpy errors(&manager, &NotificationsManager::error);
    const std::unique_ptr<NotificationsData> data = manager.read();
    QVERIFY(errors.isEmpty());
    QCOMPARE(data->jobs.size(), 2);
    QVERIFY(data->jobs.at(0).users && !data->jobs.at(0).groups);
    QVERIFY(!data->jobs.at(1).users && data->jobs.at(1).groups);
    QCOMPARE(data->jobs.at(1).job.comment, QStringLiteral(" groups"));
    QCOMPARE(data->files.keys(), QStringList({adminsFile, quotaTab, config}));
    QCOMPARE(data->files.value(config), QStringLiteral("MAIL_CMD = \"/usr/sbin/sendmail -t\"\n"));
    QCOMPARE(data->files.value(quotaTab), QStringLiteral("/dev/vda: the disk\n"));
    QCOMPARE(data->files.value(adminsFile), QStringLiteral("staff: anna\n"));
}

void TestNotificationsManager::readingTheFilesThatJobsName()
{
    _sandbox.writeEtc(QStringLiteral("w.conf"), "other\n");
    setTable("0 0 * * * root warnquota -g -c /etc/w.conf\n");
    NotificationsManager manager;
    const std::unique_ptr<NotificationsData> data = manager.read();
    QCOMPARE(data->files.value(QStringLiteral("/etc/w.conf")), QStringLiteral("other\n"));
    QCOMPARE(data->files.size(), 4);
}

void TestNotificationsManager::aFileIsReadOnce()
{
    setTable("0 0 * * * root warnquota -c /etc/none\n0 1 * * * root warnquota -c /etc/none\n");
    NotificationsManager manager;
    const QSignalSpy errors(&manager, &NotificationsManager::error);
    manager.read();
    QCOMPARE(errors.size(), 1);
    QCOMPARE(errors.first().first().toString(), QStringLiteral("Can'n open /etc/none file"));
}

void TestNotificationsManager::aMachineThatNeverWarned()
{
    _sandbox.removeEtc(QStringLiteral("cron.d"));
    NotificationsManager manager;
    const QSignalSpy errors(&manager, &NotificationsManager::error);
    const std::unique_ptr<NotificationsData> data = manager.read();
    QCOMPARE(errors.size(), 1);
    QCOMPARE(errors.first().first().toString(), QStringLiteral("Can'n open /etc/cron.d/warnquota file"));
    QVERIFY(data->jobs.isEmpty());
    QCOMPARE(data->files.size(), 3);
    QVERIFY(data->notes.isTableMissing && data->notes.isCronMissing);
    QVERIFY(QDir().mkdir(QStringLiteral("/etc/cron.d")));
    QVERIFY(manager.read()->notes.isTableMissing);
    QVERIFY(!manager.read()->notes.isCronMissing);
    setTable(QByteArray());
    QVERIFY(!manager.read()->notes.isTableMissing);
}

void TestNotificationsManager::jobsOfOtherProgramsAreRunsToo()
{
    setTable("5 4 * * * daemon /usr/bin/other --verbose\n");
    NotificationsManager manager;
    const std::unique_ptr<NotificationsData> data = manager.read();
    QCOMPARE(data->jobs.size(), 1);
    QVERIFY(data->jobs.first().users);
    manager.write(*data);
    QCOMPARE(table(), QByteArray("5 4 * * * daemon /usr/bin/other --verbose\n"));
    data->jobs.first().groups = true;
    manager.write(*data);
    QCOMPARE(table(), MachineFiles::tableHead + "5 4 * * * daemon warnquota -u -g\n");
}

void TestNotificationsManager::textsOfAnyBytes_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("none") << QByteArray("");
    QTest::newRow("not UTF-8") << QByteArray("gr\xfc\xdf dich\n\xff\xfe");
    QTest::newRow("with a mark of the byte order") << QByteArray("\xef\xbb\xbf text\n");
    QTest::newRow("lines of another system") << QByteArray("one\r\ntwo\r\n");
    QTest::newRow("no line end at the end") << QByteArray("one\ntwo");
    QTest::newRow("no-break spaces") << QByteArray("a\xc2\xa0"
                                                   "b\xe2\x80\xaf"
                                                   "c\xe2\x80\xa8"
                                                   "d\n");
    QTest::newRow("NUL") << QByteArray("a\0b\0", 4);
    QTest::newRow("a megabyte") << QByteArray(1024 * 1024, 'x');
}

void TestNotificationsManager::textsOfAnyBytes()
{
    QFETCH(QByteArray, bytes);
    setConfig(bytes);
    const struct stat before = statusOf(config);
    NotificationsManager manager;
    const QSignalSpy errors(&manager, &NotificationsManager::error);
    const std::unique_ptr<NotificationsData> data = manager.read();
    manager.write(*data);
    QVERIFY(errors.isEmpty());
    QCOMPARE(_sandbox.readEtc(QStringLiteral("warnquota.conf")), bytes);
    QCOMPARE(statusOf(config).st_ino, before.st_ino); // it was not even replaced by its like
}

void TestNotificationsManager::whatIsNoFileIsNotRead()
{
    const QString pipe = QStringLiteral("/etc/pipe");
    QCOMPARE(mkfifo(QFile::encodeName(pipe).constData(), 0600), 0);
    for (const QString &path : {pipe, QStringLiteral("/dev/zero"), QStringLiteral("/etc")}) {
        NotificationsManager manager;
        const QSignalSpy errors(&manager, &NotificationsManager::error);
        QCOMPARE(manager.readFile(path), QString());
        QCOMPARE(errors.last().first().toString(), QStringLiteral("Can'n open %1 file").arg(path));
        QVERIFY(manager.writeFile(path, QString())); // as it was shown
        QCOMPARE(errors.size(), 1);
        QVERIFY(!manager.writeFile(path, QStringLiteral("text")));
        QCOMPARE(errors.last().first().toString(), QStringLiteral("Can'n create %1 file").arg(path));
        QVERIFY(!QFileInfo(path).isFile());
    }
}

void TestNotificationsManager::theDailyRun_data()
{
    QTest::addColumn<QByteArray>("settings");
    QTest::addColumn<bool>("isOn");
    const auto row = [](const char *settings, bool isOn) { QTest::newRow(settings) << QByteArray(settings) << isOn; };
    row("run_warnquota=true\n", true);
    row("# comment\nrun_warnquota=\"true\"\nRPCRQUOTADOPTS=\n", true);
    row("  export run_warnquota='true' # daily", true);
    row("run_warnquota=true; other=1", true);
    row("run_warnquota=\n", false);
    row("#run_warnquota=true\n", false);
    row("run_warnquota=\"false\"\n", false);
    row("run_warnquota=true#not a comment\n", false);
    row("run_warnquota=True\n", false);
    row("run_warnquota=true\nrun_warnquota=no\n", false);
    row("run_warnquota=no\nrun_warnquota=true\n", true);
    row("rerun_warnquota=true\n", false);
}

void TestNotificationsManager::theDailyRun()
{
    QFETCH(QByteArray, settings);
    QFETCH(bool, isOn);
    NotificationsManager manager;
    QCOMPARE(manager.read()->notes.hasDailyRun, false);
    _sandbox.writeEtc(QStringLiteral("default/quota"), settings);
    QCOMPARE(manager.read()->notes.hasDailyRun, isOn);
}

void TestNotificationsManager::writingJobsRewritesTheirCommands()
{
    NotificationsManager manager;
    QVERIFY(manager.writeCronJobs({jobOf("0 0 * * * root warnquota"), jobOf("1 2 3 * * root warnquota -ug -c /c")}));
    QCOMPARE(table(), MachineFiles::tableHead + "0 0 * * * root warnquota -u\n"
                                                "1 2 3 * * root warnquota -u -g --config=/c\n");
}

void TestNotificationsManager::everyFileIsWritten()
{
    NotificationsData data;
    data.files = {{config, QStringLiteral("a")}, {quotaTab, QStringLiteral("b")}};
    NotificationsManager().write(data);
    QCOMPARE(table(), MachineFiles::tableHead);
    QCOMPARE(_sandbox.readEtc(QStringLiteral("warnquota.conf")), QByteArray("a"));
    QCOMPARE(_sandbox.readEtc(QStringLiteral("quotatab")), QByteArray("b"));
    QCOMPARE(_sandbox.readEtc(QStringLiteral("quotagrpadmins")), QByteArray("staff: anna\n"));
}

void TestNotificationsManager::onlyEditedFilesAreWritten()
{
    NotificationsManager manager;
    const std::unique_ptr<NotificationsData> data = manager.read();
    setConfig("somebody else's newer text\n");
    data->files[quotaTab] = QStringLiteral("edited\n");
    manager.write(*data);
    QCOMPARE(_sandbox.readEtc(QStringLiteral("warnquota.conf")), QByteArray("somebody else's newer text\n"));
    QCOMPARE(_sandbox.readEtc(QStringLiteral("quotatab")), QByteArray("edited\n"));
}

void TestNotificationsManager::aMissingFileIsMadeWhenItsTextIsEdited()
{
    QVERIFY(QFile::remove(quotaTab));
    setTable("0 0 * * * root warnquota -c /etc/none/w.conf\n");
    const QString withoutFolder = QStringLiteral("/etc/none/w.conf");
    NotificationsManager manager;
    const std::unique_ptr<NotificationsData> data = manager.read();
    QCOMPARE(data->notes.missingFiles, QStringList({quotaTab, withoutFolder}));
    QCOMPARE(data->notes.filesWithoutFolder, QStringList(withoutFolder));
    const QSignalSpy errors(&manager, &NotificationsManager::error);
    data->files[config] = QStringLiteral("edited");
    manager.write(*data);
    QVERIFY(!QFileInfo::exists(quotaTab));
    QVERIFY(errors.isEmpty()); // the folder that is missing is in nobody's way

    data->files[quotaTab] = QStringLiteral("edited");
    data->files[withoutFolder] = QStringLiteral("edited");
    manager.write(*data);
    QCOMPARE(_sandbox.readEtc(QStringLiteral("quotatab")), QByteArray("edited"));
    QCOMPARE(errors.size(), 1);
    QCOMPARE(errors.first().first().toString(), QStringLiteral("Can'n create /etc/none/w.conf file"));
}

/// Where they lead to is for cron to say, whatever folder the console works in.
void TestNotificationsManager::relativePathsAreNeitherReadNorWritten()
{
    const QString before = QDir::currentPath();
    const auto goBack = qScopeGuard([&before] { QDir::setCurrent(before); });
    QVERIFY(QDir::setCurrent(QStringLiteral("/etc")));
    setTable("0 0 * * * root warnquota -c rel.conf -q ~/tab -a $HOME/admins\n");
    _sandbox.writeEtc(QStringLiteral("rel.conf"), "what stands here\n");
    NotificationsManager manager;
    QSignalSpy errors(&manager, &NotificationsManager::error);
    const std::unique_ptr<NotificationsData> data = manager.read();
    QCOMPARE(data->files.value(QStringLiteral("rel.conf")), QString());
    QCOMPARE(errors.size(), 3);
    QCOMPARE(errors.at(1).first().toString(), QStringLiteral("Can'n open rel.conf file"));
    QCOMPARE(data->notes.missingFiles, QStringList());

    errors.clear();
    manager.write(*data);
    QCOMPARE(errors.size(), 0);
    data->files[QStringLiteral("rel.conf")] = QStringLiteral("edited");
    data->files[QStringLiteral("~/tab")] = QStringLiteral("edited");
    manager.write(*data);
    QCOMPARE(errors.size(), 2);
    QCOMPARE(errors.first().first().toString(), QStringLiteral("Can'n create rel.conf file"));
    QCOMPARE(_sandbox.readEtc(QStringLiteral("rel.conf")), QByteArray("what stands here\n"));
    QVERIFY(!QFileInfo::exists(QStringLiteral("/etc/~")));
}

/// An error of the disk, say: nobody has seen what would be replaced.
void TestNotificationsManager::whatCannotBeReadIsNotReplaced()
{
    const QString memory = QStringLiteral("/proc/self/mem"); // a regular file, whose first page gives an error
    for (const QString &path : {config, QStringLiteral("/etc/cron.d/warnquota")}) {
        QVERIFY(QFile::remove(path));
        QVERIFY(QFile::link(memory, path));
    }
    NotificationsManager manager;
    const QSignalSpy errors(&manager, &NotificationsManager::error);
    QVERIFY(!manager.writeCronJobs({}));
    QVERIFY(!manager.writeFile(config, QStringLiteral("x")));
    QCOMPARE(errors.size(), 2);
    QVERIFY(errors.first().first().toString().endsWith(QStringLiteral("what it holds cannot be read.")));
    QCOMPARE(errors.last().first().toString().section(QLatin1Char(' '), 0, 0), config);
}

/// A run that was not edited keeps its line, however much more than the page that says; so does a table of such runs.
void TestNotificationsManager::linesStayWhileTheyAreNotEdited()
{
    const QByteArrayList lines = {
        "0 5 * * * someone warnquota -c /home/someone/w.conf",
        "*/5 * * * * root /usr/bin/clean \t # gr\xfc\xdf\r",
        "  0  08\t* * MON root /usr/local/sbin/warnquota   -g",
        "0 1 * * * root warnquota -c /a -c /b",
        "0 2 * * * root warnquota -c \"/etc/a b.conf\"",
        "0 3 * * * root warnquota -c -g",
        "0 4 * * * root warnquota -c /etc/w#1.conf",
        "0 6 * * * root warnquota",
    };
    const QByteArray foreign = "PATH=/usr/sbin\n" + lines.join('\n') + "\n";
    setTable(foreign);
    const struct stat before = statusOf(QStringLiteral("/etc/cron.d/warnquota"));
    NotificationsManager manager;
    std::unique_ptr<NotificationsData> data = manager.read();
    data->files[config] = QStringLiteral("edited");
    std::reverse(data->jobs.begin(), data->jobs.end()); // the page has an order of its own
    manager.write(*data);
    QCOMPARE(table(), foreign);
    QCOMPARE(statusOf(QStringLiteral("/etc/cron.d/warnquota")).st_ino, before.st_ino);
    QCOMPARE(_sandbox.readEtc(QStringLiteral("warnquota.conf")), QByteArray("edited"));

    data = manager.read();
    data->jobs.last().groups = true;
    manager.write(*data);
    QCOMPARE(table(), MachineFiles::tableHead + lines.mid(0, 7).join('\n') + "\n0 6 * * * root warnquota -u -g\n");
    QVERIFY(Sandbox::backups().isEmpty()); // nothing was lost

    data = manager.read();
    data->jobs.first().groups = true;
    data->jobs.first().job.user = QStringLiteral("root");
    manager.write(*data);
    QCOMPARE(table(), MachineFiles::tableHead + "0 5 * * * root warnquota -u -g --config=/home/someone/w.conf\n" +
                          lines.mid(1, 6).join('\n') + "\n0 6 * * * root warnquota -u -g\n");
    QCOMPARE(Sandbox::backups().entryList().size(), 1);
}

void TestNotificationsManager::writingGoesOnAfterAFailure()
{
    _sandbox.removeEtc(QStringLiteral("cron.d"));
    NotificationsData data;
    data.files = {{QStringLiteral("/etc/a/none"), QStringLiteral("x")}, {config, QStringLiteral("x")}};
    NotificationsManager manager;
    const QSignalSpy errors(&manager, &NotificationsManager::error);
    const QSignalSpy details(&manager, &NotificationsManager::detail);
    manager.write(data);
    QCOMPARE(errors.size(), 2);
    QCOMPARE(errors.at(0).first().toString(), QStringLiteral("Can'n create /etc/cron.d/warnquota file"));
    QCOMPARE(errors.at(1).first().toString(), QStringLiteral("Can'n create /etc/a/none file"));
    QCOMPARE(details.size(), 2); // what the system had against it
    QCOMPARE(details.at(0).first().toString(), QStringLiteral("/etc/cron.d/warnquota: No such file or directory"));
    QCOMPARE(details.at(1).first().toString(), QStringLiteral("/etc/a/none: No such file or directory"));
    QCOMPARE(_sandbox.readEtc(QStringLiteral("warnquota.conf")), QByteArray("x"));
}

void TestNotificationsManager::anEditedText()
{
    NotificationsManager manager;
    const QString text = QString::fromUtf8("gr\xc3\xbc\xc3\x9f\xc2\xa0"
                                           "dich\r\n\xf0\x9f\x93\xa8");
    QVERIFY(manager.writeFile(config, text));
    QCOMPARE(_sandbox.readEtc(QStringLiteral("warnquota.conf")), text.toUtf8());
    QCOMPARE(manager.readFile(config), text);
}

void TestNotificationsManager::whatIsNoTextIsKept_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<bool>("kept");
    const auto row = [](const char *name, const QByteArray &bytes, bool kept) { QTest::newRow(name) << bytes << kept; };
    row("another encoding", "gr\xfc\xdf dich\n", true);
    row("a character cut short", "gr\xc3", true);
    row("a mark of the byte order", "\xef\xbb\xbf text\n", true);
    row("text",
        "gr\xc3\xbc\xc3\x9f\xc2\xa0"
        "dich\n",
        false);
    row("lines of another system", "one\r\ntwo\r\n", false);
    row("NUL", QByteArray("a\0b", 3), false);
    row("nothing", "", false);
}

/// Of what is edited the rest is written as it was shown, which is not what these bytes were.
void TestNotificationsManager::whatIsNoTextIsKept()
{
    QFETCH(QByteArray, bytes);
    QFETCH(bool, kept);
    setConfig(bytes);
    NotificationsManager manager;
    const QSignalSpy details(&manager, &NotificationsManager::detail);
    QVERIFY(manager.writeFile(config, manager.readFile(config) + QStringLiteral("more\n")));
    QVERIFY(_sandbox.readEtc(QStringLiteral("warnquota.conf")).endsWith("more\n"));
    QCOMPARE(Sandbox::backupContents(), kept ? QByteArrayList({bytes}) : QByteArrayList());
    QCOMPARE(details.size(), kept ? 1 : 0);
    if (kept) {
        const QString copy = Sandbox::backups().filePath(Sandbox::backups().entryList().constFirst());
        QVERIFY(details.first().first().toString().contains(config));
        QVERIFY(details.first().first().toString().contains(copy));
    }
}

void TestNotificationsManager::withoutACopyOfItNothingIsWritten()
{
    setConfig("gr\xfc\xdf dich\n");
    NotificationsManager manager;
    const QSignalSpy errors(&manager, &NotificationsManager::error);
    bool written = true;
    whileNothingCanBeKept([&] { written = manager.writeFile(config, QStringLiteral("text")); });
    QVERIFY(!written);
    QCOMPARE(errors.size(), 1);
    QVERIFY(errors.first().first().toString().contains(config));
    QCOMPARE(_sandbox.readEtc(QStringLiteral("warnquota.conf")), QByteArray("gr\xfc\xdf dich\n"));
}

void TestNotificationsManager::rightsOfAFileStay()
{
    const QByteArray path = QFile::encodeName(config);
    // Another group is not to be had in a user namespace of one user's own.
    const bool hasOthers = chown(path.constData(), 1, 1) == 0;
    QCOMPARE(chmod(path.constData(), 0640), 0);
    const mode_t before = umask(0077);
    const bool written = NotificationsManager().writeFile(config, QStringLiteral("edited"));
    umask(before);
    QVERIFY(written);
    const struct stat status = statusOf(config);
    QCOMPARE(status.st_mode & 07777U, 0640U);
    QCOMPARE(status.st_uid, hasOthers ? 1U : 0U);
    QCOMPARE(status.st_gid, hasOthers ? 1U : 0U);
}

void TestNotificationsManager::aLinkedFileStaysOne()
{
    QVERIFY(QFile::rename(config, QStringLiteral("/etc/real.conf")));
    QVERIFY(QFile::link(QStringLiteral("real.conf"), config));
    QVERIFY(NotificationsManager().writeFile(config, QStringLiteral("edited")));
    QVERIFY(QFileInfo(config).isSymLink());
    QCOMPARE(_sandbox.readEtc(QStringLiteral("real.conf")), QByteArray("edited"));
}

void TestNotificationsManager::ownTablesNeedNoCopy()
{
    NotificationsManager manager;
    const QSignalSpy details(&manager, &NotificationsManager::detail);
    for (const char *line : {"", "\n", "0 8 * * 1 root warnquota -ug\n", "0 8 * * 1 root warnquota # why\n"}) {
        setTable(MachineFiles::tableHead + line);
        QVERIFY(manager.read()->notes.droppedLines.isEmpty());
        QVERIFY(manager.writeCronJobs({}));
    }
    _sandbox.removeEtc(MachineFiles::cronTable);
    QVERIFY(manager.writeCronJobs({}));
    QCOMPARE(Sandbox::backups().entryList(), QStringList());
    QVERIFY(details.isEmpty());
}

void TestNotificationsManager::aForeignTableIsKept_data()
{
    QTest::addColumn<QByteArray>("line");
    for (const char *line : {"# somebody's note", "MAILTO=anna", "@daily root warnquota", "0 8 * * mon root warnquota",
                             "0 8 * * 1 web-admin warnquota", "0 8 * * 1 root /usr/local/bin/clean",
                             "0 8 * * 1 root warnquota -u | mail anna", "0 8 * * 1 root warnquota # gr\xfc\xdf",
                             "0 8 * * 1 anna warnquota -u", "0 8 * * 1 root /usr/local/sbin/warnquota -u",
                             "0 8 * * 1 root warnquota -c /a -c /b", "0 8 * * 1 root warnquota -c /etc/w#1.conf"})
        QTest::newRow(line) << QByteArray(line);
}

void TestNotificationsManager::aForeignTableIsKept()
{
    QFETCH(QByteArray, line);
    const QByteArray foreign = "0 7 * * * root warnquota -g\n" + line + "\n\n";
    setTable(foreign);
    NotificationsManager manager;
    const QSignalSpy details(&manager, &NotificationsManager::detail);
    QVERIFY(manager.writeCronJobs({}));
    QCOMPARE(table(), MachineFiles::tableHead);
    QCOMPARE(Sandbox::backupContents(), QByteArrayList({foreign}));
    QCOMPARE(details.size(), 1);
    QVERIFY(details.first().first().toString().contains(
        Sandbox::backups().filePath(Sandbox::backups().entryList().first())));

    QVERIFY(manager.writeCronJobs({})); // what is there now is all understood
    QCOMPARE(Sandbox::backups().entryList().size(), 1);
    QCOMPARE(details.size(), 1);
}

void TestNotificationsManager::eachForeignTableIsKept()
{
    NotificationsManager manager;
    const QByteArrayList tables = {"# one\n", "# two\n", "# three\n"};
    for (const QByteArray &foreign : tables) {
        setTable(foreign);
        QVERIFY(manager.writeCronJobs({}));
    }
    QByteArrayList kept = Sandbox::backupContents();
    std::sort(kept.begin(), kept.end());
    QCOMPARE(kept, QByteArrayList({"# one\n", "# three\n", "# two\n"}));
}

void TestNotificationsManager::theCopyIsOnTheDiskBeforeTheTableGoes()
{
    setTable("# one\n");
    synced.clear();
    QVERIFY(NotificationsManager().writeCronJobs({}));
    const auto firstIn = [](const char *folder) {
        const auto found = std::find_if(synced.cbegin(), synced.cend(),
                                        [folder](const QByteArray &path) { return path.startsWith(folder); });
        return std::distance(synced.cbegin(), found);
    };
    QVERIFY(firstIn("/etc/cron.d/") < synced.size());
    QVERIFY(firstIn("/var/backups/") < firstIn("/etc/cron.d/"));
    QVERIFY(synced.contains("/var/backups"));
    QVERIFY(synced.indexOf("/var/backups") < firstIn("/etc/cron.d/"));
}

void TestNotificationsManager::onlyRootReadsTheCopy()
{
    setTable("PASSWORD=secret\n");
    QCOMPARE(chmod("/etc/cron.d/warnquota", S_IRUSR | S_IWUSR), 0);
    QVERIFY(NotificationsManager().writeCronJobs({}));
    const QFileInfoList copies = Sandbox::backups().entryInfoList();
    QCOMPARE(copies.size(), 1);
    const struct stat copy = statusOf(copies.first().filePath());
    QCOMPARE(copy.st_mode & ALLPERMS, mode_t(S_IRUSR | S_IWUSR));
    QCOMPARE(copy.st_uid, uid_t(0));
}

void TestNotificationsManager::whatOthersWroteSinceTheReadIsKept()
{
    const QByteArray added = MachineFiles::tableHead + "0 7 * * * root warnquota -g\n";
    const QByteArray edited = "# by somebody else\n";
    NotificationsManager manager;
    const QSignalSpy details(&manager, &NotificationsManager::detail);
    const std::unique_ptr<NotificationsData> data = manager.read();
    setTable(added);
    _sandbox.writeEtc(QStringLiteral("quotatab"), edited);
    data->jobs = {jobOf("0 9 * * 1 root warnquota")};
    data->files[quotaTab] = QStringLiteral("# here\n");
    data->files[config] = QStringLiteral("# nobody else\n");

    manager.write(*data);
    QCOMPARE(table(), MachineFiles::tableHead + "0 9 * * 1 root warnquota -u\n");
    QCOMPARE(_sandbox.readEtc(QStringLiteral("quotatab")), QByteArray("# here\n"));
    QCOMPARE(Sandbox::backupContents(), QByteArrayList({edited, added})); // by their names
    QCOMPARE(details.size(), 2);
    QVERIFY(details.first().first().toString().contains(QStringLiteral("/var/backups/warnquota.")));
    QVERIFY(details.last().first().toString().contains(QStringLiteral("/var/backups/quotatab.")));

    manager.write(*manager.read()); // of what nobody else touched there is no copy
    QCOMPARE(details.size(), 2);
}

/// Two apply at once: the one who saved between the other's look at the file and his save loses nothing.
void TestNotificationsManager::whatOthersWriteMeanwhileIsKept()
{
    const QByteArray first = MachineFiles::tableHead + "0 7 * * * root warnquota -g\n";
    const QByteArray second = MachineFiles::tableHead + "0 6 * * * root warnquota -g\n";
    NotificationsManager manager;
    connect(&manager, &NotificationsManager::detail, this, [&](const QString &text) {
        if (text.contains(QStringLiteral("cron.d")) && table() == first)
            setTable(second);
        if (text.contains(quotaTab) && _sandbox.readEtc(QStringLiteral("quotatab")) == "first\n")
            _sandbox.writeEtc(QStringLiteral("quotatab"), "second\n");
    });
    const QSignalSpy errors(&manager, &NotificationsManager::error);
    const std::unique_ptr<NotificationsData> data = manager.read();
    setTable(first);
    _sandbox.writeEtc(QStringLiteral("quotatab"), "first\n");
    data->jobs = {jobOf("0 9 * * 1 root warnquota")};
    data->files[quotaTab] = QStringLiteral("# here\n");
    manager.write(*data);
    QVERIFY(errors.isEmpty());
    QCOMPARE(table(), MachineFiles::tableHead + "0 9 * * 1 root warnquota -u\n");
    QCOMPARE(_sandbox.readEtc(QStringLiteral("quotatab")), QByteArray("# here\n"));
    QByteArrayList kept = Sandbox::backupContents();
    std::sort(kept.begin(), kept.end());
    QCOMPARE(kept, QByteArrayList({second, first, "first\n", "second\n"}));
}

void TestNotificationsManager::savesWithoutEndAreReported()
{
    NotificationsManager manager;
    int saves = 0;
    const auto save = [&] { setTable("# " + QByteArray::number(++saves) + '\n'); };
    connect(&manager, &NotificationsManager::detail, this, save);
    const QSignalSpy errors(&manager, &NotificationsManager::error);
    save();
    QVERIFY(!manager.writeCronJobs({jobOf("0 9 * * 1 root warnquota")}));
    QCOMPARE(table(), "# " + QByteArray::number(saves) + '\n');
    QCOMPARE(errors.size(), 1);
    QCOMPARE(errors.first().first().toString(),
             QStringLiteral("/etc/cron.d/warnquota was left as it is: another program kept changing it; try again when "
                            "that has ended."));
}

void TestNotificationsManager::aPathThatOtherProgramsLoseIsSaid_data()
{
    QTest::addColumn<QByteArray>("above");
    QTest::addColumn<QByteArray>("command");
    QTest::addColumn<bool>("isLost");
    QTest::newRow("of another program") << QByteArray() << QByteArray("clean --all") << true;
    QTest::newRow("another path") << QByteArray("PATH=/usr/bin\n") << QByteArray("clean") << true;
    QTest::newRow("the same path") << QByteArray("PATH=/usr/sbin\n") << QByteArray("clean") << false;
    QTest::newRow("of warnquota") << QByteArray() << QByteArray("warnquota -s") << false;
}

/// Lines that stay run under the path of the new head.
void TestNotificationsManager::aPathThatOtherProgramsLoseIsSaid()
{
    QFETCH(QByteArray, above);
    QFETCH(QByteArray, command);
    QFETCH(bool, isLost);
    const QByteArray other = "0 6 * * * root " + command + '\n';
    const QByteArray before = above + other + "0 8 * * 1 root warnquota\n";
    setTable(before);
    NotificationsManager manager;
    const QSignalSpy details(&manager, &NotificationsManager::detail);
    const std::unique_ptr<NotificationsData> data = manager.read();
    data->jobs.last().groups = true;
    manager.write(*data);
    QCOMPARE(table(), MachineFiles::tableHead + other + "0 8 * * 1 root warnquota -u -g\n");
    QCOMPARE(Sandbox::backupContents(), isLost ? QByteArrayList{before} : QByteArrayList());
    if (isLost && above.isEmpty())
        QVERIFY(details.first().first().toString().contains(QStringLiteral("PATH")));
}

void TestNotificationsManager::withoutACopyNothingIsWritten()
{
    setTable("# one\n");
    NotificationsManager manager;
    const QSignalSpy errors(&manager, &NotificationsManager::error);
    bool written = true;
    whileNothingCanBeKept([&] { written = manager.writeCronJobs({}); });
    QVERIFY(!written);
    QCOMPARE(errors.size(), 1);
    QVERIFY(errors.first().first().toString().contains(QStringLiteral("/var/backups")));
    QCOMPARE(table(), QByteArray("# one\n"));
}

void TestNotificationsManager::theReadTellsWhatWillBeDropped()
{
    setTable("# note\n0 8 * * 1 root warnquota\n@daily root warnquota\n");
    QCOMPARE(NotificationsManager().read()->notes.droppedLines,
             QStringList({QStringLiteral("# note"), QStringLiteral("@daily root warnquota")}));
}

KRA_SANDBOX_MAIN(TestNotificationsManager)
#include "tst_notificationsmanager.moc"
