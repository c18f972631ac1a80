// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "machinefiles.h"

#include <crontabreader.h>
#include <notificationsmanager.h>

#include <QSignalSpy>
#include <QtTest>

namespace
{
/// A table of the corpus. Asked for before the test goes to another folder.
QString path(const char *table)
{
    return QDir(QStringLiteral("corpus/tables")).absoluteFilePath(QString::fromLatin1(table));
}

QByteArray contents(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// Works in another folder for a while.
class InFolder
{
public:
    explicit InFolder(const QString &folder) { QDir::setCurrent(folder); }
    ~InFolder() { QDir::setCurrent(_before); }
    Q_DISABLE_COPY_MOVE(InFolder)

private:
    QString _before = QDir::currentPath();
};

QString fields(const CronJob &job)
{
    const CronSchedule &when = job.schedule;
    return QStringList({when.minute, when.hour, when.dayOfMonth, when.month, when.dayOfWeek, job.user, job.command})
        .join(QLatin1Char('|'));
}
} // namespace

/// The cron tables of other people's packages, in the place of the own one: how they are read, and what becomes of them
/// when the jobs are applied.
class TestForeignTables : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { MachineFiles::reset(_sandbox); }
    void reading_data();
    void reading();
    void everyTableIsLookedAt();
    void replacing_data();
    void replacing();

private:
    Sandbox _sandbox;
};

void TestForeignTables::reading_data()
{
    QTest::addColumn<QStringList>("jobs");
    const auto row = [](const char *table, const QStringList &jobs) { QTest::newRow(table) << jobs; };
    row("anacron",
        {QStringLiteral("30|7-23|*|*|*|root|[ -x /etc/init.d/anacron ] && if [ ! -d /run/systemd/system ]; then "
                        "/usr/sbin/invoke-rc.d anacron start >/dev/null; fi")});
    row("awstats", {}); // its user has a "-" in the name
    row("certbot",
        {QStringLiteral("0|*/12|*|*|*|root|test -x /usr/bin/certbot -a \\! -d /run/systemd/system && perl -e "
                        "'sleep int(rand(43200))' && certbot -q renew --no-random-sleep-on-renew")});
    row("mailman3-web", {});
    row("php",
        {QStringLiteral("09,39|*|*|*|*|root|[ -x /usr/lib/php/sessionclean ] && if [ ! -d /run/systemd/system ]; "
                        "then /usr/lib/php/sessionclean; fi")});
    row("sysstat", {QStringLiteral("5-55/10|*|*|*|*|root|command -v debian-sa1 > /dev/null && debian-sa1 1 1"),
                    QStringLiteral("59|23|*|*|*|root|command -v debian-sa1 > /dev/null && debian-sa1 60 2")});
}

void TestForeignTables::reading()
{
    QFETCH(QStringList, jobs);
    CrontabReader reader;
    const QSignalSpy errors(&reader, &CrontabReader::error);
    QStringList read;
    const QList<CronJob> found = reader.readJobs(path(QTest::currentDataTag()));
    for (const CronJob &job : found) {
        read += fields(job);
        QVERIFY(job.comment.isEmpty());
    }
    QCOMPARE(read, jobs);
    QVERIFY(errors.isEmpty());
}

void TestForeignTables::everyTableIsLookedAt()
{
    QCOMPARE(QDir(QStringLiteral("corpus/tables")).entryList(QDir::Files, QDir::Name).join(QLatin1Char(' ')),
             QStringLiteral("anacron awstats certbot mailman3-web php sysstat"));
}

void TestForeignTables::replacing_data()
{
    QTest::addColumn<QByteArray>("written"); // below the head
    QTest::addColumn<QStringList>("unread");
    const auto row = [](const char *table, const QByteArray &written, const QStringList &unread = {}) {
        QTest::newRow(table) << written << unread;
    };
    row("anacron", "30 7-23 * * * root warnquota -u\n");
    row("awstats", "");
    // The options of other programs in the line are taken for those of warnquota.
    row("certbot", "0 */12 * * * root warnquota -u --admins-file=\\! --quota-tab=renew\n",
        {QStringLiteral("Can'n open renew file"), QStringLiteral("Can'n open \\! file")});
    row("mailman3-web", "");
    row("php", "09,39 * * * * root warnquota -u\n");
    row("sysstat", "5-55/10 * * * * root warnquota -u\n59 23 * * * root warnquota -u\n");
}

/// Not one of their lines is written again as it was: all are told before, and the table is kept, away from cron.
void TestForeignTables::replacing()
{
    QFETCH(QByteArray, written);
    QFETCH(QStringList, unread);
    const QByteArray foreign = contents(path(QTest::currentDataTag()));
    _sandbox.writeEtc(MachineFiles::cronTable, foreign);
    const InFolder folder(_sandbox.folder(QStringLiteral("somewhere"))); // paths may be relative
    NotificationsManager manager;
    const QSignalSpy details(&manager, &NotificationsManager::detail);
    QStringList errors;
    connect(&manager, &NotificationsManager::error, this, [&errors](const QString &text) { errors += text; });

    const std::unique_ptr<NotificationsData> data = manager.read();
    QStringList lines = QString::fromUtf8(foreign).split(QLatin1Char('\n'));
    lines.removeAll(QString());
    QCOMPARE(data->params.value(NotificationsData::droppedLinesKey()).toStringList(), lines);
    QCOMPARE(errors, unread);
    QVERIFY(Sandbox::backups().isEmpty());

    manager.write(*data);
    QCOMPARE(_sandbox.readEtc(MachineFiles::cronTable), MachineFiles::tableHead + written);
    QCOMPARE(Sandbox::backupContents(), QByteArrayList({foreign}));
    QCOMPARE(QDir(QStringLiteral("/etc/cron.d")).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot),
             QStringList(QStringLiteral("warnquota")));
    QCOMPARE(details.size(), 1);
    QVERIFY(details.first().first().toString().contains(
        Sandbox::backups().filePath(Sandbox::backups().entryList().first())));
    QCOMPARE(errors, unread); // and no more

    // What stands there now is all the own.
    QVERIFY(!manager.read()->params.contains(NotificationsData::droppedLinesKey()));
}

KRA_SANDBOX_MAIN(TestForeignTables)
#include "tst_foreigntables.moc"
