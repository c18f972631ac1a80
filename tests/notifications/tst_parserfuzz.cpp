// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <crontabreader.h>
#include <warnquotacommand.h>
#include <wholefile.h>

#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <QtTest>

#include <random>

namespace
{
/// How many changed lines each parser is fed, each with a known start of the random numbers and an unknown one.
constexpr int count = 20000;

using Random = std::mt19937;
using Property = bool (*)(const QByteArray &line);

/// What the unknown start is when a run is to come again.
const char *const seedVariable = "KRA_SEED";

int below(Random &random, int bound)
{
    return std::uniform_int_distribution<int>(0, bound - 1)(random);
}

QByteArrayList corpus(const QString &name)
{
    QByteArrayList lines;
    const QDir folder(QStringLiteral("corpus/") + name);
    const QStringList fileNames = folder.entryList(QDir::Files);
    for (const QString &fileName : fileNames) {
        QFile file(folder.filePath(fileName));
        if (file.open(QIODevice::ReadOnly))
            lines += file.readAll().split('\n');
    }
    return lines;
}

/// What the grammars look at; a change to one of these reaches further than one to a byte of no meaning.
constexpr char tellingBytes[] = "0123456789*/,-#:=\\%\"' \t\r\v\f\0\x1f\x7f\xc2\xa0\xff@AZ_az[^";
const QByteArray telling(tellingBytes, sizeof tellingBytes - 1);

QByteArray mutated(QByteArray line, const QByteArrayList &seeds, Random &random)
{
    for (int changes = 1 + below(random, 6); changes > 0; --changes) {
        const int at = below(random, line.size() + 1);
        const int length = below(random, 9);
        const QByteArray &other = seeds.at(below(random, seeds.size()));
        switch (below(random, 7)) {
        case 0:
            line.insert(at, telling.at(below(random, telling.size())));
            break;
        case 1:
            line.insert(at, static_cast<char>(below(random, 256)));
            break;
        case 2:
            line.remove(at, length);
            break;
        case 3:
            line.insert(at, line.mid(below(random, line.size() + 1), length)); // doubles a piece
            break;
        case 4:
            line.insert(at, other.mid(below(random, other.size() + 1), length + 4));
            break;
        case 5:
            line = line.left(at) + other.mid(below(random, other.size() + 1));
            break;
        default:
            line.insert(at, QByteArray(below(random, 300), telling.at(below(random, telling.size()))));
        }
    }
    return line.replace('\n', ' ');
}

QString withoutBlanksAtTheEnd(QString text)
{
    while (text.endsWith(QLatin1Char(' ')))
        text.chop(1);
    return text;
}

bool isJob(const CronJob &job)
{
    return !job.schedule.minute.isEmpty();
}

QString fields(const CronJob &job)
{
    return QStringList({job.schedule.minute, job.schedule.hour, job.schedule.dayOfMonth, job.schedule.month,
                        job.schedule.dayOfWeek, job.user, withoutBlanksAtTheEnd(job.command), job.comment})
        .join(QLatin1Char('\n'));
}

/// A line that is a job is the same job when it is written and read again. The blanks that are set before a comment are
/// the command's from then on, and mean nothing in it.
bool jobStays(const QString &line)
{
    const CronJob job = CrontabReader::parseJob(line);
    return !isJob(job) || fields(CrontabReader::parseJob(CrontabReader::formatJob(job))) == fields(job);
}

/// A path in which an option is spelled out is read as that option, and one with the sign of a comment as a comment: no
/// way of writing either would be read as the path. (The latter comes of a command that begins with the sign.)
bool hasUnwritablePath(const WarnquotaJob &job)
{
    static const QRegularExpression option(QStringLiteral("#|--(quota-tab|config|admins-file)="));
    return (job.quotaTab + job.config + job.adminsFile).contains(option);
}

/// The same through the options of warnquota: once built, a command is built again in the same words.
bool runStays(const QString &line)
{
    const CronJob job = CrontabReader::parseJob(line);
    const WarnquotaJob parsed = WarnquotaCommand::parse(job);
    if (!isJob(job) || hasUnwritablePath(parsed))
        return true;
    const CronJob built = WarnquotaCommand::build(parsed);
    const CronJob again = CrontabReader::parseJob(CrontabReader::formatJob(built));
    return isJob(again) && WarnquotaCommand::build(WarnquotaCommand::parse(again)) == built &&
           again.comment == built.comment;
}

bool scheduleStays(const QString &line)
{
    const CronSchedule schedule = CrontabReader::parseSchedule(line);
    return schedule.minute.isEmpty() ||
           CrontabReader::parseSchedule(CrontabReader::formatSchedule(schedule)) == schedule;
}

bool commandStays(const QString &command)
{
    CronJob job;
    job.command = command;
    const WarnquotaJob parsed = WarnquotaCommand::parse(job);
    const bool isWhole = !parsed.config.isEmpty() && !parsed.quotaTab.isEmpty() && !parsed.adminsFile.isEmpty() &&
                         (parsed.users || parsed.groups);
    const WarnquotaJob again = WarnquotaCommand::parse(WarnquotaCommand::build(parsed));
    return isWhole && (hasUnwritablePath(parsed) || WarnquotaCommand::build(again) == WarnquotaCommand::build(parsed));
}
/// A run keeps its bytes while it is not edited, and is written anew as soon as it is.
bool lineStays(const QByteArray &line)
{
    const QList<CronJob> jobs = CrontabReader::jobsIn(line);
    for (const CronJob &job : jobs) {
        WarnquotaJob run = WarnquotaCommand::parse(job);
        if (WarnquotaCommand::line(run) != line)
            return false;
        run.users = !run.users;
        if (WarnquotaCommand::line(run) != CrontabReader::formatJob(WarnquotaCommand::build(run)).toUtf8())
            return false;
    }
    return true;
}

/// Where nothing is said to be lost, the command that is built says what the one that was read said.
bool lossIsSeen(const QByteArray &line)
{
    const QList<CronJob> jobs = CrontabReader::jobsIn(line);
    if (jobs.isEmpty() || WarnquotaCommand::lossOf(jobs.first()) != WarnquotaCommand::Loss::None)
        return true;
    const WarnquotaJob run = WarnquotaCommand::parse(jobs.first());
    const CronJob again = CrontabReader::parseJob(CrontabReader::formatJob(WarnquotaCommand::build(run)));
    const WarnquotaJob runAgain = WarnquotaCommand::parse(again);
    return runAgain.users == run.users && runAgain.groups == run.groups && runAgain.config == run.config &&
           runAgain.quotaTab == run.quotaTab && runAgain.adminsFile == run.adminsFile;
}

/// A property of the text of a line.
template<bool (*stays)(const QString &)>
bool inText(const QByteArray &line)
{
    return stays(WholeFile::text(line));
}
} // namespace
Q_DECLARE_METATYPE(Property)

/// Feeds the parsers with lines that are nearly right, and looks for one that changes its meaning on the way.
class TestParserFuzz : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void meaningStays_data();
    void meaningStays();
};

void TestParserFuzz::meaningStays_data()
{
    QTest::addColumn<QString>("seeds");
    QTest::addColumn<Property>("stays");
    QTest::addColumn<quint32>("start");
    bool isGiven = false;
    const auto given = static_cast<quint32>(qEnvironmentVariable(seedVariable).toUInt(&isGiven));
    for (const quint32 start : {1U, isGiven ? given : static_cast<quint32>(std::random_device()())}) {
        const auto row = [start](const char *name, const QString &seeds, Property stays) {
            QTest::addRow("%s from %u", name, start) << seeds << stays << start;
        };
        row("job line", QStringLiteral("joblines"), &inText<&jobStays>);
        row("run of warnquota", QStringLiteral("joblines"), &inText<&runStays>);
        row("run of another program", QStringLiteral("tables"), &inText<&runStays>);
        row("line of a run", QStringLiteral("joblines"), &lineStays);
        row("line of another program", QStringLiteral("tables"), &lineStays);
        row("what is lost", QStringLiteral("joblines"), &lossIsSeen);
        row("schedule", QStringLiteral("schedules"), &inText<&scheduleStays>);
        row("command", QStringLiteral("commands"), &inText<&commandStays>);
    }
}

void TestParserFuzz::meaningStays()
{
    QFETCH(QString, seeds);
    QFETCH(Property, stays);
    QFETCH(quint32, start);

    const QByteArrayList lines = corpus(seeds);
    QVERIFY(lines.size() > 5);
    const auto check = [stays](const QByteArray &line) {
        if (!stays(line))
            QFAIL(("Not the same again, percent-encoded: " + line.toPercentEncoding(" *,/=#")).constData());
    };
    for (const QByteArray &line : lines)
        check(line);
    Random random(start);
    qInfo("%s=%u", seedVariable, start);
    for (int i = 0; i < count && !QTest::currentTestFailed(); ++i)
        check(mutated(lines.at(below(random, lines.size())), lines, random));
}

QTEST_GUILESS_MAIN(TestParserFuzz)
#include "tst_parserfuzz.moc"
