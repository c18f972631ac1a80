// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "machinefiles.h"

#include <crontabreader.h>
#include <notificationsmanager.h>
#include <warnquotacommand.h>

#include <QSignalSpy>
#include <QtTest>

#include <random>

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
    void randomTables_data();
    void randomTables();

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

/// While no run is edited nothing is written. When all are, the table is kept before, away from cron.
void TestForeignTables::replacing()
{
    QFETCH(QByteArray, written);
    QFETCH(QStringList, unread);
    const QByteArray foreign = contents(path(QTest::currentDataTag()));
    _sandbox.writeEtc(MachineFiles::cronTable, foreign);
    NotificationsManager manager;
    const QSignalSpy details(&manager, &NotificationsManager::detail);
    QStringList errors;
    connect(&manager, &NotificationsManager::error, this, [&errors](const QString &text) { errors += text; });

    const std::unique_ptr<NotificationsData> data = manager.read();
    QStringList lines = QString::fromUtf8(foreign).split(QLatin1Char('\n'));
    lines.removeAll(QString());
    for (const WarnquotaJob &run : data->jobs)
        QVERIFY(lines.removeOne(QString::fromUtf8(run.job.asRead)));
    QCOMPARE(data->notes.droppedLines, lines);
    QCOMPARE(errors, unread);
    manager.write(*data);
    QCOMPARE(_sandbox.readEtc(MachineFiles::cronTable), foreign);
    QVERIFY(Sandbox::backups().isEmpty());

    for (WarnquotaJob &run : data->jobs)
        run.job.asRead.clear(); // as it would be written anew
    QVERIFY(manager.writeCronJobs(data->jobs));
    QCOMPARE(_sandbox.readEtc(MachineFiles::cronTable), MachineFiles::tableHead + written);
    QCOMPARE(Sandbox::backupContents(), QByteArrayList({foreign}));
    QCOMPARE(QDir(QStringLiteral("/etc/cron.d")).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot),
             QStringList(QStringLiteral("warnquota")));
    QCOMPARE(details.size(), 1);
    QVERIFY(details.first().first().toString().contains(
        Sandbox::backups().filePath(Sandbox::backups().entryList().first())));
    QCOMPARE(errors, unread); // and no more

    // What stands there now is all the own.
    QVERIFY(manager.read()->notes.droppedLines.isEmpty());
}

void TestForeignTables::randomTables_data()
{
    QTest::addColumn<quint32>("seed");
    bool isGiven = false;
    const uint given = qEnvironmentVariable("KRA_SEED").toUInt(&isGiven);
    for (const uint seed : {1U, isGiven ? given : std::random_device()()})
        QTest::addRow("KRA_SEED=%u", seed) << static_cast<quint32>(seed);
}

/// Read and applied unedited a table keeps its bytes; with one run edited, all other runs keep their lines.
void TestForeignTables::randomTables()
{
    QFETCH(quint32, seed);
    qInfo("KRA_SEED=%u", seed);
    std::mt19937 random(seed);
    const auto oneOf = [&random](const QByteArrayList &pieces) {
        return pieces.at(std::uniform_int_distribution<int>(0, pieces.size() - 1)(random));
    };
    const QByteArrayList times = {"0 8 * * 1",         "  */5 *\t* * *", "30 4 31 * *",
                                  "0 8 * JAN MON-FRI", "0 25 * * MON",   "0 08 * * *"};
    const QByteArrayList users = {"root", "root", "root", "anna", "web_1", "web-admin"};
    const QByteArrayList programs = {"warnquota", "/usr/sbin/warnquota", "warnquota\t-u", "/usr/bin/clean",
                                     "test -x /a && warnquota"};
    const QByteArrayList options = {"",
                                    " -u",
                                    " -g",
                                    "  -ug",
                                    " -c /etc/a",
                                    " -c /etc/b",
                                    " --config=\"/etc/a b\"",
                                    " -q ~/q",
                                    " --admins-file=rel",
                                    " -c -g",
                                    " -c /etc/w#1",
                                    " # why",
                                    "\r",
                                    " # gr\xfc\xdf",
                                    " %",
                                    " -s"};
    for (int i = 0; i < 60; ++i) {
        QByteArrayList lines;
        for (int count = std::uniform_int_distribution<int>(1, 12)(random); count > 0; --count)
            lines += oneOf(times) + ' ' + oneOf(users) + ' ' + oneOf(programs) + oneOf(options) + oneOf(options);
        const QByteArray foreign =
            oneOf({"", "# a note\n", "MAILTO=anna\n\n"}) + lines.join('\n') + oneOf({"", "\n", "\n\n"});
        _sandbox.writeEtc(MachineFiles::cronTable, foreign);
        NotificationsManager manager;
        const std::unique_ptr<NotificationsData> data = manager.read();
        manager.write(*data);
        QCOMPARE(_sandbox.readEtc(MachineFiles::cronTable), foreign);
        if (data->jobs.isEmpty())
            continue;

        QByteArrayList expected;
        for (const WarnquotaJob &run : qAsConst(data->jobs))
            expected += run.job.asRead;
        const int edited = std::uniform_int_distribution<int>(0, data->jobs.size() - 1)(random);
        data->jobs[edited].job.schedule.minute = QStringLiteral("59");
        expected[edited] = CrontabReader::formatJob(WarnquotaCommand::build(data->jobs.at(edited))).toUtf8();
        manager.write(*data);
        QCOMPARE(_sandbox.readEtc(MachineFiles::cronTable), MachineFiles::tableHead + expected.join('\n') + '\n');
    }
}

KRA_SANDBOX_MAIN(TestForeignTables)
#include "tst_foreigntables.moc"
