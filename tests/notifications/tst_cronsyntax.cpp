// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <cronsyntax.h>
#include <crontabreader.h>

#include <QtTest>

Q_DECLARE_METATYPE(CronSyntax::Field)

/// The answers are those that "crontab -n" of Debian 12 gave to each of the lines.
class TestCronSyntax : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void refusedField_data();
    void refusedField();
    void everyNumber();
    void everyName();
};

void TestCronSyntax::refusedField_data()
{
    QTest::addColumn<CronSyntax::Field>("field");
    QTest::newRow("* * * * *") << CronSyntax::None;
    QTest::newRow("*/5 0-6/2 1,15 * 1-5") << CronSyntax::None;
    QTest::newRow("60 * * * *") << CronSyntax::Minute;
    QTest::newRow("1,60 * * * *") << CronSyntax::Minute;
    QTest::newRow("0-60 * * * *") << CronSyntax::Minute;
    QTest::newRow("0 24 * * *") << CronSyntax::Hour;
    QTest::newRow("0 0 32 * *") << CronSyntax::DayOfMonth;
    QTest::newRow("0 0 0 * *") << CronSyntax::DayOfMonth;
    QTest::newRow("0 0 * 13 *") << CronSyntax::Month;
    QTest::newRow("0 0 * 0 *") << CronSyntax::Month;
    QTest::newRow("0 0 * * 7") << CronSyntax::None;
    QTest::newRow("0 0 * * 8") << CronSyntax::DayOfWeek;
    QTest::newRow("5/10 * * * *") << CronSyntax::Minute;
    QTest::newRow("*/0 * * * *") << CronSyntax::Minute;
    QTest::newRow("*/99 * * * *") << CronSyntax::None;
    QTest::newRow("0-59/61 * * * *") << CronSyntax::None;
    QTest::newRow("*/5,3 * * * *") << CronSyntax::None;
    QTest::newRow("1-5/ * * * *") << CronSyntax::Minute;
    QTest::newRow("1,, * * * *") << CronSyntax::Minute;
    QTest::newRow("*, * * * *") << CronSyntax::Minute;
    QTest::newRow("1- * * * *") << CronSyntax::Minute;
    QTest::newRow("-5 * * * *") << CronSyntax::Minute;
    QTest::newRow("/5 * * * *") << CronSyntax::Minute;
    QTest::newRow("1/2/3 * * * *") << CronSyntax::Minute;
    QTest::newRow("059 * * * *") << CronSyntax::None;
    QTest::newRow("30-10 * * * *") << CronSyntax::None;
    QTest::newRow("** * * * *") << CronSyntax::None;
    QTest::newRow("1*2 * * * *") << CronSyntax::None;
    QTest::newRow("1-2-3 * * * *") << CronSyntax::None;
    QTest::newRow("0 8 * JAN MON") << CronSyntax::None;
    QTest::newRow("0 8 * JAN-MAR MON-FRI") << CronSyntax::None;
    QTest::newRow("0 8 * DEC SUN,SAT") << CronSyntax::None;
    QTest::newRow("0 8 * 1-MAR MON-7") << CronSyntax::None;
    QTest::newRow("0 8 * * FRI-MON") << CronSyntax::None;
    QTest::newRow("0 8 * * MON-FRI/2") << CronSyntax::None;
    QTest::newRow("0 8 * * MON.") << CronSyntax::None;
    QTest::newRow("0 8 * * MON/2") << CronSyntax::DayOfWeek;
    QTest::newRow("0 8 * * MON-") << CronSyntax::DayOfWeek;
    QTest::newRow("0 8 * * MO") << CronSyntax::DayOfWeek;
    QTest::newRow("0 8 * * MOND") << CronSyntax::DayOfWeek;
    QTest::newRow("0 8 * * 5X") << CronSyntax::DayOfWeek;
    QTest::newRow("0 8 * * JAN") << CronSyntax::DayOfWeek;
    QTest::newRow("0 8 * MON *") << CronSyntax::Month;
    QTest::newRow("0 8 * 0JAN *") << CronSyntax::Month;
    QTest::newRow("0 8 * 13 MON") << CronSyntax::Month;
    QTest::newRow("0 8 JAN * *") << CronSyntax::DayOfMonth;
    QTest::newRow("0 25 * * MON") << CronSyntax::Hour;
    QTest::newRow("0 MON * * *") << CronSyntax::Hour;
    QTest::newRow("*/5X * * * *") << CronSyntax::Minute;
    QTest::newRow("*/X * * * *") << CronSyntax::Minute;
    QTest::newRow("5:3 * * * *") << CronSyntax::None;
    QTest::newRow("0-5/2.3 * * * *") << CronSyntax::None;
    QTest::newRow("@AZ 1 1 1 1") << CronSyntax::Minute;
    QTest::newRow("  0 8 * * MON") << CronSyntax::None;
}

void TestCronSyntax::refusedField()
{
    QFETCH(CronSyntax::Field, field);
    const CronJob job = CrontabReader::parseJob(QLatin1String(QTest::currentDataTag()) + QStringLiteral(" root x"));
    const CronSchedule &schedule = job.schedule;
    QVERIFY(!schedule.minute.isEmpty());
    QCOMPARE(CronSyntax::refusedField(schedule), field);
}

void TestCronSyntax::everyNumber()
{
    const std::pair<int, int> ranges[] = {{0, 59}, {0, 23}, {1, 31}, {1, 12}, {0, 7}};
    for (int field = CronSyntax::Minute; field < CronSyntax::None; ++field) {
        for (int number = 0; number < 100; ++number) {
            QStringList fields = {QStringLiteral("*"), QStringLiteral("*"), QStringLiteral("*"), QStringLiteral("*"),
                                  QStringLiteral("*")};
            fields[field] = QString::number(number);
            const auto &[first, last] = ranges[field];
            const CronSchedule schedule = CrontabReader::parseSchedule(fields.join(QLatin1Char(' ')));
            QCOMPARE(CronSyntax::refusedField(schedule),
                     number >= first && number <= last ? CronSyntax::None : static_cast<CronSyntax::Field>(field));
        }
    }
}

/// A job line holds capitals only; cron itself takes small letters too.
void TestCronSyntax::everyName()
{
    const CronSchedule any = CrontabReader::parseSchedule(QStringLiteral("* * * * *"));
    for (const char *month :
         {"JAN", "FEB", "MAR", "APR", "MAY", "JUN", "JUL", "AUG", "SEP", "OCT", "NOV", "DEC", "jan", "Dec"}) {
        CronSchedule schedule = any;
        schedule.month = QString::fromLatin1(month);
        QCOMPARE(CronSyntax::refusedField(schedule), CronSyntax::None);
        schedule = any;
        schedule.dayOfWeek = QString::fromLatin1(month);
        QCOMPARE(CronSyntax::refusedField(schedule), CronSyntax::DayOfWeek);
    }
    for (const char *day : {"SUN", "MON", "TUE", "WED", "THU", "FRI", "SAT", "sun", "mOn"}) {
        CronSchedule schedule = any;
        schedule.dayOfWeek = QString::fromLatin1(day);
        QCOMPARE(CronSyntax::refusedField(schedule), CronSyntax::None);
        schedule = any;
        schedule.month = QString::fromLatin1(day);
        QCOMPARE(CronSyntax::refusedField(schedule), CronSyntax::Month);
    }
}

QTEST_GUILESS_MAIN(TestCronSyntax)
#include "tst_cronsyntax.moc"
