// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <crontabreader.h>
#include <schedulechoice.h>

#include <QtTest>

namespace
{
using Mode = ScheduleChoice::Mode;

const QDate november(2026, 11, 21);

/// As the file's reader would give it, which knows more than the expert mode.
CronSchedule schedule(const QString &line)
{
    return CrontabReader::parseJob(line + QStringLiteral(" root warnquota")).schedule;
}
} // namespace
Q_DECLARE_METATYPE(ScheduleChoice::Mode)

/// Which mode shows a schedule, with which time, and which schedule a mode and a time are.
class TestScheduleChoice : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void showing_data();
    void showing();
    void everyTimeOfEveryDay();
    void aDayThatTheMonthLacks_data();
    void aDayThatTheMonthLacks();
    void noModeIsAlways();
    void aLineThatDoesNotFitIsNoSchedule();
    void onlyWhatIsShownIsCompared();
};

void TestScheduleChoice::showing_data()
{
    QTest::addColumn<QString>("line");
    QTest::addColumn<Mode>("mode");
    QTest::addColumn<QDateTime>("at");
    const auto row = [](const char *line, Mode mode, int day = 1, int hour = 0, int minute = 0) {
        QTest::newRow(line) << QString::fromLatin1(line) << mode
                            << QDateTime(QDate(2026, 11, day), QTime(hour, minute), Qt::UTC);
    };
    row("5 8 15 * *", Mode::Monthly, 15, 8, 5);
    row("59 23 1 * *", Mode::Monthly, 1, 23, 59);
    row("0 08 30 * *", Mode::Monthly, 30, 8, 0);
    row("30 4 * * *", Mode::Daily, 1, 4, 30);
    row("0 00 * * *", Mode::Daily, 1, 0, 0);
    row("7 * * * *", Mode::Hourly, 1, 0, 7);
    row("59 * * * *", Mode::Hourly, 1, 0, 59);
    row("* * * * *", Mode::Expert);
    row("*/5 * * * *", Mode::Expert);
    row("0 */2 * * *", Mode::Expert);
    row("05 8 * * *", Mode::Expert); // the minute of the simple modes has no leading zero
    row("05 * * * *", Mode::Expert);
    row("60 * * * *", Mode::Expert);
    row("0 24 * * *", Mode::Expert);
    row("0 8 32 * *", Mode::Expert);
    row("0 8 0 * *", Mode::Expert);
    row("0 8 05 * *", Mode::Expert);
    row("0 8 1 1 *", Mode::Expert);
    row("0 8 * * 1", Mode::Expert);
    row("0 8 * * MON", Mode::Expert);
    row("  30 4 * * *", Mode::Expert); // leading blanks belong to the minute
}

void TestScheduleChoice::showing()
{
    QFETCH(QString, line);
    QFETCH(Mode, mode);
    QFETCH(QDateTime, at);
    const ScheduleChoice choice = ScheduleChoice::of(schedule(line), november);
    QCOMPARE(choice.mode, mode);
    QCOMPARE(choice.at, at);
    QCOMPARE(choice.at.timeSpec(), Qt::UTC);
    QCOMPARE(choice.line, line);
}

void TestScheduleChoice::everyTimeOfEveryDay()
{
    for (int day = 1; day <= 31; ++day) {
        for (int hour = 0; hour < 24; ++hour) {
            for (const int minute : {0, 1, 9, 10, 30, 59}) {
                const QString line = QStringLiteral("%1 %2 %3 * *").arg(minute).arg(hour).arg(day);
                const ScheduleChoice choice = ScheduleChoice::of(schedule(line), november);
                QCOMPARE(choice.mode, Mode::Monthly);
                QCOMPARE(CrontabReader::formatSchedule(choice.schedule()), line);
            }
        }
    }
    for (int minute = 0; minute < 60; ++minute) {
        const QString line = QStringLiteral("%1 * * * *").arg(minute);
        QCOMPARE(CrontabReader::formatSchedule(ScheduleChoice::of(schedule(line), november).schedule()), line);
    }
}

void TestScheduleChoice::aDayThatTheMonthLacks_data()
{
    QTest::addColumn<int>("day");
    QTest::addColumn<QDate>("today");
    QTest::addColumn<QDate>("shown");
    QTest::newRow("the 31st in November") << 31 << november << QDate(2026, 12, 31);
    QTest::newRow("the 31st in December") << 31 << QDate(2026, 12, 31) << QDate(2026, 12, 31);
    QTest::newRow("the 29th in February") << 29 << QDate(2027, 2, 1) << QDate(2027, 3, 29);
    QTest::newRow("the 29th in a leap February") << 29 << QDate(2028, 2, 29) << QDate(2028, 2, 29);
    QTest::newRow("the 30th in January") << 30 << QDate(2027, 1, 31) << QDate(2027, 1, 30);
    QTest::newRow("the 1st") << 1 << november << QDate(2026, 11, 1);
}

void TestScheduleChoice::aDayThatTheMonthLacks()
{
    QFETCH(int, day);
    QFETCH(QDate, today);
    QFETCH(QDate, shown);
    QCOMPARE(ScheduleChoice::dateOfDay(day, today), shown);
    const QString line = QStringLiteral("0 8 %1 * *").arg(day);
    const ScheduleChoice choice = ScheduleChoice::of(schedule(line), today);
    QCOMPARE(choice.at.date(), shown);
    QCOMPARE(CrontabReader::formatSchedule(choice.schedule()), line);
}

void TestScheduleChoice::noModeIsAlways()
{
    QCOMPARE(CrontabReader::formatSchedule(ScheduleChoice().schedule()), QStringLiteral("* * * * *"));
}

void TestScheduleChoice::aLineThatDoesNotFitIsNoSchedule()
{
    ScheduleChoice choice;
    choice.mode = Mode::Expert;
    choice.line = QStringLiteral("0 8 * * MON");
    QVERIFY(choice.schedule() == CronSchedule());
    choice.line = QStringLiteral(" 0  8 * * 1 ");
    QVERIFY(choice.schedule() == schedule(QStringLiteral("0 8 * * 1")));
}

void TestScheduleChoice::onlyWhatIsShownIsCompared()
{
    const ScheduleChoice shown = ScheduleChoice::of(schedule(QStringLiteral("30 4 * * *")), november);
    ScheduleChoice other = shown;
    other.at = other.at.addDays(3);
    other.line.clear();
    QVERIFY(other == shown);
    other.mode = Mode::Monthly;
    QVERIFY(!(other == shown));
    other = shown;
    other.at = other.at.addSecs(60);
    QVERIFY(!(other == shown));
    other = ScheduleChoice::of(schedule(QStringLiteral("0 8 * * MON")), november);
    ScheduleChoice edited = other;
    edited.line = QStringLiteral("0 8 * * TUE"); // no schedule either, and yet another one
    QVERIFY(!(edited == other));
}

QTEST_GUILESS_MAIN(TestScheduleChoice)
#include "tst_schedulechoice.moc"
