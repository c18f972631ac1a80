// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <timeperiod.h>

#include <QtTest>

#include <limits>

class TestTimePeriod : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void defaultIsNoTime();
    void splits_data();
    void splits();
    void joinsPartsThatOverflowIntoTheNext();
    void splittingAndJoiningGivesTheSameCount_data();
    void splittingAndJoiningGivesTheSameCount();
    void wordsAreTranslatedInTheContextOfQObject();
};

void TestTimePeriod::defaultIsNoTime()
{
    const TimePeriod period;
    QCOMPARE(period.toSeconds(), qint64(0));
    QCOMPARE(period.text, QString());
}

void TestTimePeriod::splits_data()
{
    QTest::addColumn<quint32>("count");
    QTest::addColumn<QVector<quint32>>("parts"); // weeks, days, hours, minutes, seconds
    QTest::addColumn<QString>("text");
    const auto row = [](const char *name, quint32 count, const QVector<quint32> &parts, const char *text) {
        QTest::newRow(name) << count << parts << QString::fromLatin1(text);
    };
    row("none", 0, {0, 0, 0, 0, 0}, "");
    row("one of each", 694861, {1, 1, 1, 1, 1}, "1 weeks 1 days 1 hours 1 minutes 1 seconds");
    row("an hour in the plural", 3600, {0, 0, 1, 0, 0}, "1 hours");
    row("a second short of a minute", 59, {0, 0, 0, 0, 59}, "59 seconds");
    row("a second short of a week", 604799, {0, 6, 23, 59, 59}, "6 days 23 hours 59 minutes 59 seconds");
    row("a week", 604800, {1, 0, 0, 0, 0}, "1 weeks");
    row("parts that are 0 are left out", 604801, {1, 0, 0, 0, 1}, "1 weeks 1 seconds");
    row("the longest", std::numeric_limits<quint32>::max(), {7101, 3, 6, 28, 15},
        "7101 weeks 3 days 6 hours 28 minutes 15 seconds");
}

void TestTimePeriod::splits()
{
    QFETCH(quint32, count);
    const TimePeriod period(count);
    QTEST((QVector<quint32>{period.weeks, period.days, period.hours, period.minutes, period.seconds}), "parts");
    QTEST(period.text, "text");
}

void TestTimePeriod::joinsPartsThatOverflowIntoTheNext()
{
    TimePeriod period;
    period.weeks = std::numeric_limits<quint32>::max();
    period.minutes = 61;
    QCOMPARE(period.toSeconds(), qint64(4294967295) * 604800 + 61 * 60);
}

void TestTimePeriod::splittingAndJoiningGivesTheSameCount_data()
{
    QTest::addColumn<quint32>("count");
    quint64 count = 1;
    for (; count < std::numeric_limits<quint32>::max(); count = count * 3 + 7)
        QTest::addRow("%llu", count) << quint32(count);
}

void TestTimePeriod::splittingAndJoiningGivesTheSameCount()
{
    QFETCH(quint32, count);
    QCOMPARE(TimePeriod(count).toSeconds(), qint64(count));
}

void TestTimePeriod::wordsAreTranslatedInTheContextOfQObject()
{
    class Translator : public QTranslator
    {
    public:
        bool isEmpty() const override { return false; }
        QString translate(const char *context, const char *text, const char *, int) const override
        {
            return QLatin1String(context) + QLatin1Char('/') + QLatin1String(text);
        }
    };
    Translator translator;
    QVERIFY(QCoreApplication::installTranslator(&translator));
    const TimePeriod period(2 * 86400);
    QVERIFY(QCoreApplication::removeTranslator(&translator));
    QCOMPARE(period.text, QStringLiteral("2 QObject/days"));
}

QTEST_GUILESS_MAIN(TestTimePeriod)
#include "tst_timeperiod.moc"
