// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <kernelquota.h>
#include <localtimes.h>

#include <QRandomGenerator>
#include <QTimeZone>
#include <QtTest>

#include <limits>

class TestLocalTimes : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void timesAreThoseOfOneConversionEach_data();
    void timesAreThoseOfOneConversionEach();
    void noTimeAndTheLastOne();
};

namespace
{

QByteArray told(const QDateTime &time)
{
    return time.toString(QStringLiteral("dd.MM.yyyy hh:mm:ss t")).toUtf8() + ' ' +
           QByteArray::number(time.toSecsSinceEpoch()) + ' ' + QByteArray::number(time.offsetFromUtc()) +
           (time.isDaylightTime() ? " summer" : " winter") + (time.timeSpec() == Qt::LocalTime ? "" : " not local");
}

/// Of any time, and of the days around those on which the clocks of the zone are changed.
QVector<quint64> someMoments(const QByteArray &zone, QRandomGenerator &random)
{
    constexpr quint64 End = (quint64(1) << 32) + 1000; // beyond what is converted by days
    QVector<quint64> moments;
    for (int i = 0; i < 2000; ++i)
        moments.append(1 + random.generate64() % End);
    const auto changes = QTimeZone(zone).transitions(QDateTime::fromSecsSinceEpoch(5 * 24 * 60 * 60),
                                                     QDateTime::fromSecsSinceEpoch(qint64(End)));
    for (const QTimeZone::OffsetData &change : changes) {
        const auto moment = static_cast<quint64>(change.atUtc.toSecsSinceEpoch());
        moments += {moment - 1, moment, moment + 1};
        for (int i = 0; i < 20; ++i)
            moments.append(moment + random.bounded(6 * 24 * 60 * 60) - 3 * 24 * 60 * 60);
    }
    return moments;
}

/// Whether the clocks show another moment alike, and both or neither as summer time: mktime(3) then takes that which
/// fits what it converted before.
bool isToldTwice(const QTimeZone &zone, quint64 moment)
{
    constexpr int hour = 60 * 60; // no zone of the test puts its clocks back by more
    const auto dataAt = [&zone](qint64 at) { return zone.offsetData(QDateTime::fromSecsSinceEpoch(at, Qt::UTC)); };
    const auto here = dataAt(qint64(moment));
    for (const int step : {-hour, hour}) {
        const int offset = dataAt(qint64(moment) + step).offsetFromUtc;
        const auto there = dataAt(qint64(moment) + here.offsetFromUtc - offset);
        if (offset != here.offsetFromUtc && there.offsetFromUtc == offset &&
            (there.daylightTimeOffset == 0) == (here.daylightTimeOffset == 0))
            return true;
    }
    return false;
}

} // namespace

void TestLocalTimes::timesAreThoseOfOneConversionEach_data()
{
    QTest::addColumn<QByteArray>("zone");
    for (const char *zone : {"UTC", "Europe/Berlin", "Europe/Dublin", "America/New_York", "America/St_Johns",
                             "America/Sao_Paulo", "Australia/Lord_Howe", "Asia/Kathmandu", "Asia/Gaza",
                             "Africa/Casablanca", "Pacific/Apia", "Pacific/Kiritimati"})
        QTest::newRow(zone) << QByteArray(zone);
}

void TestLocalTimes::timesAreThoseOfOneConversionEach()
{
    QFETCH(QByteArray, zone);
    bool isGiven = false;
    const int given = qEnvironmentVariableIntValue("KRA_SEED", &isGiven);
    const quint32 seed = isGiven ? static_cast<quint32>(given) : QRandomGenerator::system()->generate() >> 1;
    qInfo("KRA_SEED=%u", seed);
    QRandomGenerator random(seed);
    qputenv("TZ", zone);
    tzset();
    QVERIFY(QTimeZone(zone).isValid());
    LocalTimes times;
    const QVector<quint64> moments = someMoments(zone, random);
    for (const quint64 moment : moments) {
        if (isToldTwice(QTimeZone(zone), moment))
            continue;
        QCOMPARE(told(times.at(moment)), told(toTime(moment)));
        QCOMPARE(times.at(moment), toTime(moment));
    }
}

void TestLocalTimes::noTimeAndTheLastOne()
{
    LocalTimes times;
    QVERIFY(times.at(0).isNull());
    constexpr quint64 Last = std::numeric_limits<quint64>::max();
    QCOMPARE(times.at(Last), toTime(Last));
}

QTEST_GUILESS_MAIN(TestLocalTimes)
#include "tst_localtimes.moc"
