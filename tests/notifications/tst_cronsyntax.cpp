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
}

void TestCronSyntax::refusedField()
{
    QFETCH(CronSyntax::Field, field);
    const CronSchedule schedule = CrontabReader::parseSchedule(QString::fromLatin1(QTest::currentDataTag()));
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

QTEST_GUILESS_MAIN(TestCronSyntax)
#include "tst_cronsyntax.moc"
