// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <crontabreader.h>
#include <sandbox.h>

#include <QFileInfo>
#include <QSignalSpy>
#include <QtTest>

#include <sys/stat.h>
#include <unistd.h>

namespace
{
const QString table = QStringLiteral("/etc/cron.d/warnquota");
const QByteArray head = "# Cron job for quota notifications\n# Dont edit this file\nPATH=/usr/sbin\n";

CronJob parsed(const char *line)
{
    return CrontabReader::parseJob(QString::fromUtf8(line));
}

QStringList fields(const CronSchedule &schedule)
{
    return {schedule.minute, schedule.hour, schedule.dayOfMonth, schedule.month, schedule.dayOfWeek};
}

QStringList fields(const CronJob &read)
{
    return fields(read.schedule) + QStringList({read.user, read.command, read.comment});
}

QStringList list(std::initializer_list<const char *> texts)
{
    QStringList result;
    for (const char *text : texts)
        result.append(QString::fromLatin1(text));
    return result;
}

CronJob job(std::initializer_list<const char *> schedule, const char *user, const char *command,
            const QString &comment = QString())
{
    const QStringList times = list(schedule);
    return {{times.at(0), times.at(1), times.at(2), times.at(3), times.at(4)},
            QString::fromLatin1(user),
            QString::fromLatin1(command),
            comment};
}

struct stat statusOf(const QString &path)
{
    struct stat status = {};
    lstat(QFile::encodeName(path).constData(), &status);
    return status;
}
} // namespace

/// Cron lines, and the table that they stand in.
class TestCrontabReader : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { _sandbox.reset(); }

    void itsOnlySignalIsTheError();
    void equalJobs();
    void jobLines_data();
    void jobLines();
    void linesThatAreNoJob_data();
    void linesThatAreNoJob();
    void schedules_data();
    void schedules();
    void formatting();
    void aMegabyteInOneLine();

    void readingKeepsJobsOnlyAndTheirOrder();
    void theHeadAloneIsAnEmptyTable();
    void aMissingTableIsOneError();
    void aTableThatIsNoFileIsOneError();
    void writingNoJobs();
    void writingJobs();
    void whatWasWrittenIsReadAgain();
    void aTableThatCannotBeWrittenStays();
    void theTableIsOneThatCronAccepts_data();
    void theTableIsOneThatCronAccepts();
    void aLinkStaysOne();
    void nothingIsLeftBeside();
    void addingTakesNewJobsOnly();
    void addingToAMissingTableIsSilent();
    void removingLeavesWhatTheTableHolds();

private:
    Sandbox _sandbox;
};

void TestCrontabReader::itsOnlySignalIsTheError()
{
    const QMetaObject &meta = CrontabReader::staticMetaObject;
    QCOMPARE(meta.methodCount() - meta.methodOffset(), 1);
    QCOMPARE(meta.method(meta.methodOffset()).methodSignature(), QByteArray("error(QString)"));
    QCOMPARE(meta.propertyCount(), meta.propertyOffset());
}

void TestCrontabReader::equalJobs()
{
    const CronJob one = parsed("*/5 * * * * root warnquota -u#one");
    CronJob other = parsed("*/5 * * * * root warnquota -u#two");
    QVERIFY(one == other);
    other.user = QStringLiteral("daemon");
    QVERIFY(!(one == other));
    other = one;
    other.command += QLatin1Char(' ');
    QVERIFY(!(one == other));
    for (QString CronSchedule::*field : {&CronSchedule::minute, &CronSchedule::hour, &CronSchedule::dayOfMonth,
                                         &CronSchedule::month, &CronSchedule::dayOfWeek}) {
        other = one;
        other.schedule.*field = QStringLiteral(" ") + other.schedule.*field;
        QVERIFY(!(one == other));
    }
}

void TestCrontabReader::jobLines_data()
{
    QTest::addColumn<QString>("line");
    QTest::addColumn<QStringList>("expected");
    const auto row = [](const char *name, const char *line, std::initializer_list<const char *> expected) {
        QTest::newRow(name) << QString::fromUtf8(line) << list(expected);
    };
    row("leading blanks, a comment", "  0 8 * * 1 root warnquota -u # weekly",
        {"  0", "8", "*", "*", "1", "root", "warnquota -u ", " weekly"});
    row("steps, lists, ranges", "*/5 1,2 1-7 */2 1-5 root x", {"*/5", "1,2", "1-7", "*/2", "1-5", "root", "x", ""});
    row("names in capitals", "0 8 * JAN MON root x", {"0", "8", "*", "JAN", "MON", "root", "x", ""});
    row("all that the class lets through", "-./ :;< =>? @AZ [\\ root x",
        {"-./", ":;<", "=>?", "@AZ", "[\\", "root", "x", ""});
    row("tabs and many blanks", "\t0\t8  *   * \t*\troot\tx  y", {"\t0", "8", "*", "*", "*", "root", "x  y", ""});
    row("an underscore and digits in the user", "0 8 * * * _u5er x", {"0", "8", "*", "*", "*", "_u5er", "x", ""});
    row("many signs before the comment", "0 8 * * * root x ### y", {"0", "8", "*", "*", "*", "root", "x ", " y"});
    row("a sign in the comment", "0 8 * * * root x #a#b", {"0", "8", "*", "*", "*", "root", "x ", "a#b"});
    row("an empty comment", "0 8 * * * root x #", {"0", "8", "*", "*", "*", "root", "x ", ""});
    row("a carriage return", "0 8 * * * root x\r", {"0", "8", "*", "*", "*", "root", "x\r", ""});
}

void TestCrontabReader::jobLines()
{
    QFETCH(QString, line);
    QFETCH(QStringList, expected);
    QCOMPARE(fields(CrontabReader::parseJob(line)), expected);
}

void TestCrontabReader::linesThatAreNoJob_data()
{
    QTest::addColumn<QString>("line");
    for (const char *line : {"", "   ", "# a comment", "PATH=/usr/sbin", "MAILTO=\"\"", "@daily root x",
                             "0 8 * * * web-admin x", "0 8 * * * web.admin x", "0 8 * * * root", "0 8 * * * root ",
                             "0 8 * * root", "0 8 * jan * root x", "0 8 * * mon root x", "0 8 * * * * root x",
                             "x 0 8 * * * root x", "0 8 * * %1 root x", "0 8 * * * ro\xc3\xb6t x"})
        QTest::newRow(*line ? line : "nothing") << QString::fromUtf8(line);
}

void TestCrontabReader::linesThatAreNoJob()
{
    QFETCH(QString, line);
    QCOMPARE(fields(CrontabReader::parseJob(line)).join(QString()), QString());
}

void TestCrontabReader::schedules_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QStringList>("expected");
    const QStringList none = list({"", "", "", "", ""});
    QTest::newRow("plain") << QStringLiteral("0 8 * * 1") << list({"0", "8", "*", "*", "1"});
    QTest::newRow("blanks around") << QStringLiteral("  */5 \t1-2,7 * */3 *  ")
                                   << list({"*/5", "1-2,7", "*", "*/3", "*"});
    QTest::newRow("a name") << QStringLiteral("0 8 * * MON") << none;
    QTest::newRow("four fields") << QStringLiteral("0 8 * *") << none;
    QTest::newRow("six fields") << QStringLiteral("0 8 * * * *") << none;
    QTest::newRow("nothing") << QString() << none;
}

void TestCrontabReader::schedules()
{
    QFETCH(QString, text);
    QFETCH(QStringList, expected);
    QCOMPARE(fields(CrontabReader::parseSchedule(text)), expected);
}

void TestCrontabReader::formatting()
{
    CronJob written = job({"  0", "8", "*", "*", "1"}, "root", "warnquota -u");
    QCOMPARE(CrontabReader::formatSchedule(written.schedule), QStringLiteral("  0 8 * * 1"));
    QCOMPARE(CrontabReader::formatJob(written), QStringLiteral("  0 8 * * 1 root warnquota -u"));
    written.comment = QStringLiteral(" %1 %2");
    QCOMPARE(CrontabReader::formatJob(written), QStringLiteral("  0 8 * * 1 root warnquota -u # %1 %2"));
    written.command = QStringLiteral("warnquota --config=/tmp/%3 %1");
    written.comment.clear();
    QCOMPARE(CrontabReader::formatJob(written), QStringLiteral("  0 8 * * 1 root warnquota --config=/tmp/%3 %1"));
    QCOMPARE(CrontabReader::formatJob(CronJob()), QStringLiteral("      "));
}

void TestCrontabReader::aMegabyteInOneLine()
{
    const QString much(1000000, QLatin1Char('x'));
    const CronJob read = CrontabReader::parseJob(QStringLiteral("0 8 * * * root ") + much + QStringLiteral("#y"));
    QCOMPARE(read.command.size(), much.size());
    QCOMPARE(read.comment, QStringLiteral("y"));
    QVERIFY(CrontabReader::parseJob(QString(1000000, QLatin1Char(' '))).user.isEmpty());
}

void TestCrontabReader::readingKeepsJobsOnlyAndTheirOrder()
{
    _sandbox.writeEtc(
        QStringLiteral("cron.d/warnquota"),
        "# a comment\nMAILTO=root\n\n2 * * * * root warnquota -g\n\n1 * * * * daemon other\n@daily root x\n"
        "3 * * * * root last");
    CrontabReader reader;
    const QSignalSpy errors(&reader, &CrontabReader::error);
    const QList<CronJob> jobs = reader.readJobs(table);
    QCOMPARE(jobs.size(), 3);
    QCOMPARE(jobs.at(0).schedule.minute, QStringLiteral("2"));
    QCOMPARE(jobs.at(1).user, QStringLiteral("daemon"));
    QCOMPARE(jobs.at(2).command, QStringLiteral("last"));
    QCOMPARE(jobs.at(1).asRead, QByteArray("1 * * * * daemon other"));
    QVERIFY(errors.isEmpty());
}

void TestCrontabReader::theHeadAloneIsAnEmptyTable()
{
    _sandbox.writeEtc(QStringLiteral("cron.d/warnquota"), head);
    CrontabReader reader;
    const QSignalSpy errors(&reader, &CrontabReader::error);
    QVERIFY(reader.readJobs(table).isEmpty());
    QVERIFY(errors.isEmpty());
}

void TestCrontabReader::aMissingTableIsOneError()
{
    CrontabReader reader;
    const QSignalSpy errors(&reader, &CrontabReader::error);
    QVERIFY(reader.readJobs(table).isEmpty());
    QCOMPARE(errors.size(), 1);
    QCOMPARE(errors.first().first().toString(), QStringLiteral("Can'n open /etc/cron.d/warnquota file"));
}

void TestCrontabReader::aTableThatIsNoFileIsOneError()
{
    const QString pipe = _sandbox.folder(QStringLiteral("a")) + QStringLiteral("/pipe");
    QCOMPARE(mkfifo(QFile::encodeName(pipe).constData(), 0600), 0);
    for (const QString &path : {_sandbox.folder(QStringLiteral("a")), pipe}) {
        CrontabReader reader;
        const QSignalSpy errors(&reader, &CrontabReader::error);
        QVERIFY(reader.readJobs(path).isEmpty()); // and does not wait for the pipe's other end
        QCOMPARE(errors.size(), 1);
        QVERIFY(!reader.writeJobs(path, {}));
        QCOMPARE(errors.last().first().toString(), QStringLiteral("Can'n create %1 file").arg(path));
        QVERIFY(!QFileInfo(path).isFile());
    }
}

void TestCrontabReader::writingNoJobs()
{
    _sandbox.writeEtc(QStringLiteral("cron.d/warnquota"),
                      "something longer than what is written in its place\n" + head);
    CrontabReader reader;
    QVERIFY(reader.writeJobs(table, {}));
    QCOMPARE(_sandbox.readEtc(QStringLiteral("cron.d/warnquota")), head);
}

void TestCrontabReader::writingJobs()
{
    _sandbox.writeEtc(QStringLiteral("cron.d/warnquota"), "");
    CrontabReader reader;
    const CronJob named = job({"0", "8", "*", "*", "1"}, "root", "warnquota -u", QString::fromUtf8(" f\xc3\xbcr alle"));
    const CronJob plain = job({"*/5", "*", "*", "*", "*"}, "root", "warnquota -g");
    QVERIFY(reader.writeJobs(table, {named, plain}));
    QCOMPARE(_sandbox.readEtc(QStringLiteral("cron.d/warnquota")),
             head + "0 8 * * 1 root warnquota -u # f\xc3\xbcr alle\n*/5 * * * * root warnquota -g\n");
}

void TestCrontabReader::whatWasWrittenIsReadAgain()
{
    _sandbox.writeEtc(QStringLiteral("cron.d/warnquota"), "");
    CrontabReader reader;
    QList<CronJob> jobs;
    for (int i = 59; i >= 0; --i)
        jobs.append(job({qPrintable(QString::number(i)), "*/2", "1-7", "*", "*"}, "root", "warnquota -u"));
    QVERIFY(reader.writeJobs(table, jobs));
    QCOMPARE(reader.readJobs(table), jobs);
}

void TestCrontabReader::aTableThatCannotBeWrittenStays()
{
    CrontabReader reader;
    const QSignalSpy errors(&reader, &CrontabReader::error);
    QVERIFY(!reader.writeJobs(table, {})); // there is no folder /etc/cron.d
    QCOMPARE(errors.size(), 1);
    QCOMPARE(errors.first().first().toString(), QStringLiteral("Can'n create /etc/cron.d/warnquota file"));
    QVERIFY(!reader.addJobs(table, {}));
    QVERIFY(!reader.removeJobs(table, {}));
    QCOMPARE(errors.size(), 3);
}

void TestCrontabReader::theTableIsOneThatCronAccepts_data()
{
    QTest::addColumn<int>("mask");
    QTest::addColumn<bool>("existed");
    for (const int mask : {0, 0022, 0077, 0777})
        for (const bool existed : {false, true})
            QTest::addRow("umask %03o, %s", static_cast<unsigned>(mask), existed ? "replaced" : "new")
                << mask << existed;
}

void TestCrontabReader::theTableIsOneThatCronAccepts()
{
    QFETCH(int, mask);
    QFETCH(bool, existed);
    _sandbox.writeEtc(QStringLiteral("cron.d/warnquota"), "");
    if (existed)
        QCOMPARE(chmod(QFile::encodeName(table).constData(), 0666), 0);
    else
        QVERIFY(QFile::remove(table));
    CrontabReader reader;
    const mode_t before = umask(static_cast<mode_t>(mask));
    const bool written = reader.writeJobs(table, {});
    umask(before);
    QVERIFY(written);
    const struct stat status = statusOf(table);
    QVERIFY(S_ISREG(status.st_mode));
    QCOMPARE(status.st_mode & 07777U, 0644U);
    QCOMPARE(status.st_uid, 0U);
    QCOMPARE(status.st_gid, 0U);
    QCOMPARE(_sandbox.readEtc(QStringLiteral("cron.d/warnquota")), head);
}

void TestCrontabReader::aLinkStaysOne()
{
    _sandbox.writeEtc(QStringLiteral("cron.d/readme"), "");
    _sandbox.writeEtc(QStringLiteral("real"), "old\n");
    QVERIFY(QFile::link(QStringLiteral("/etc/real"), QStringLiteral("/etc/between")));
    QVERIFY(QFile::link(QStringLiteral("/etc/between"), table));
    CrontabReader reader;
    QVERIFY(reader.writeJobs(table, {}));
    QVERIFY(S_ISLNK(statusOf(table).st_mode));
    QVERIFY(S_ISLNK(statusOf(QStringLiteral("/etc/between")).st_mode));
    QCOMPARE(_sandbox.readEtc(QStringLiteral("real")), head);
}

void TestCrontabReader::nothingIsLeftBeside()
{
    _sandbox.writeEtc(QStringLiteral("cron.d/warnquota"), "");
    CrontabReader reader;
    QVERIFY(reader.writeJobs(table, {}));
    QCOMPARE(QDir(QStringLiteral("/etc/cron.d")).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot),
             QStringList(QStringLiteral("warnquota")));
}

void TestCrontabReader::addingTakesNewJobsOnly()
{
    _sandbox.writeEtc(QStringLiteral("cron.d/warnquota"), "0 8 * * * root x#old\n");
    CrontabReader reader;
    QVERIFY(reader.addJobs(table, {parsed("0 8 * * * root x#new"), parsed("0 9 * * * root x")}));
    QCOMPARE(_sandbox.readEtc(QStringLiteral("cron.d/warnquota")), head + "0 8 * * * root x #old\n0 9 * * * root x\n");
}

void TestCrontabReader::addingToAMissingTableIsSilent()
{
    _sandbox.writeEtc(QStringLiteral("cron.d/readme"), "");
    CrontabReader reader;
    const QSignalSpy errors(&reader, &CrontabReader::error);
    QVERIFY(reader.addJobs(table, {parsed("0 9 * * * root x")}));
    QVERIFY(errors.isEmpty());
    QCOMPARE(_sandbox.readEtc(QStringLiteral("cron.d/warnquota")), head + "0 9 * * * root x\n");
}

void TestCrontabReader::removingLeavesWhatTheTableHolds()
{
    _sandbox.writeEtc(QStringLiteral("cron.d/warnquota"), "# own words\n0 8 * * * root x\n0 9 * * * root x\n");
    CrontabReader reader;
    QVERIFY(reader.removeJobs(table, {parsed("0 8 * * * root x"), parsed("0 7 * * * root x")}));
    QCOMPARE(_sandbox.readEtc(QStringLiteral("cron.d/warnquota")), head + "0 8 * * * root x\n0 9 * * * root x\n");
}

KRA_SANDBOX_MAIN(TestCrontabReader)
#include "tst_crontabreader.moc"
