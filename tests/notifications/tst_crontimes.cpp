// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "cronclock.h"
#include "editedelement.h"
#include "machinefiles.h"
#include "madeupwarnings.h"

#include <notificationsmanager.h>
#include <notificationswidget.h>

#include <QDateTimeEdit>
#include <QLineEdit>
#include <QRadioButton>
#include <QtTest>

#include <random>

namespace
{
using Random = std::mt19937;

int between(Random &random, int low, int high)
{
    return std::uniform_int_distribution<int>(low, high)(random);
}

/// A field of the expert mode, and the numbers that it is made to mean.
struct Field
{
    QString text;
    std::bitset<60> numbers;
    bool isAny = false;
};

Field randomField(Random &random, int lowest, int highest)
{
    Field field;
    const auto take = [&field](int from, int to, int step) {
        for (int value = from; value <= to; value += step)
            field.numbers.set(static_cast<std::size_t>(value));
    };
    if (between(random, 0, 2) == 0) {
        field.isAny = true;
        const int step = between(random, 1, 7);
        take(lowest, highest, step);
        field.text = step == 1 ? QStringLiteral("*") : QStringLiteral("*/%1").arg(step);
        return field;
    }
    QStringList parts;
    for (int count = between(random, 1, 3); count > 0; --count) {
        const int from = between(random, lowest, highest);
        const int to = between(random, from, highest);
        const int step = between(random, 1, 5);
        switch (between(random, 0, 2)) {
        case 0:
            take(from, from, 1);
            parts += QString::number(from);
            break;
        case 1:
            take(from, to, 1);
            parts += QStringLiteral("%1-%2").arg(from).arg(to);
            break;
        default:
            take(from, to, step);
            parts += QStringLiteral("%1-%2/%3").arg(from).arg(to).arg(step);
        }
    }
    field.text = parts.join(QLatin1Char(','));
    return field;
}

/// Looks for a minute of a leap year at which cron does one thing and another is wanted.
template<class Wanted>
QString firstDifference(const CronClock &clock, const Wanted &wanted)
{
    for (QDate date(2028, 1, 1); date.year() == 2028; date = date.addDays(1)) {
        Minute now = {0, 0, date.day(), date.month(), date.dayOfWeek() % 7};
        for (now.hour = 0; now.hour < 24; ++now.hour)
            for (now.minute = 0; now.minute < 60; ++now.minute)
                if (clock.runsAt(now) != wanted(now))
                    return date.toString(Qt::ISODate) + QStringLiteral(" %1:%2").arg(now.hour).arg(now.minute);
    }
    return {};
}
} // namespace

/// When the machine's cron runs what was chosen in the editor: the line in the file, read as cron's manual tells it.
class TestCronTimes : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void theClockKnowsTheManual_data();
    void theClockKnowsTheManual();
    void theClockRefusesWhatTheManualDoes_data();
    void theClockRefusesWhatTheManualDoes();
    void chosenTimes_data();
    void chosenTimes();
    void expertLines_data();
    void expertLines();

private:
    void choose(const char *mode) { _widget->findChild<QRadioButton *>(QLatin1String(mode))->click(); }
    /// The line that the file holds once the page is applied.
    QString appliedLine();

    Sandbox _sandbox;
    std::unique_ptr<RecordingModule> _module;
    std::unique_ptr<Element> _element;
    std::unique_ptr<NotificationsWidget> _widget;
};

void TestCronTimes::init()
{
    MachineFiles::reset(_sandbox);
    _module = std::make_unique<RecordingModule>();
    _element = std::make_unique<EditedElement>(QStringLiteral("QuotaNotificationsElement"), _module.get());
    _widget = std::make_unique<NotificationsWidget>(_module.get(), &everybodyMay);
    _widget->setElement(_element.get());
    NotificationsData data = MadeUpWarnings::record({QStringLiteral("0 8 * * 1 root warnquota -u")});
    _widget->afterSuccessfulRead(_element.get(), &data);
}

void TestCronTimes::cleanup()
{
    _widget.reset();
    _element.reset();
    _module.reset();
}

QString TestCronTimes::appliedLine()
{
    const std::unique_ptr<ElementData> data = _widget->exportElementData();
    NotificationsManager().write(dynamic_cast<const NotificationsData &>(*data));
    QByteArray table = _sandbox.readEtc(MachineFiles::cronTable);
    if (!table.startsWith(MachineFiles::tableHead) || !table.endsWith('\n'))
        return {};
    table.remove(0, MachineFiles::tableHead.size());
    table.chop(1);
    return QString::fromUtf8(table);
}

/// The examples of the manual, and its rule for the two fields of the day.
void TestCronTimes::theClockKnowsTheManual_data()
{
    QTest::addColumn<QString>("fields");
    QTest::addColumn<QDateTime>("time");
    QTest::addColumn<bool>("runs");
    const auto row = [](const char *fields, const char *time, bool runs) {
        QTest::addRow("%s at %s", fields, time)
            << QString::fromLatin1(fields) << QDateTime::fromString(QString::fromLatin1(time), Qt::ISODate) << runs;
    };
    row("5 0 * * *", "2026-11-21T00:05", true);
    row("5 0 * * *", "2026-11-21T00:04", false);
    row("15 14 1 * *", "2026-12-01T14:15", true);
    row("15 14 1 * *", "2026-12-02T14:15", false);
    row("0 22 * * 1-5", "2026-11-20T22:00", true); // a Friday
    row("0 22 * * 1-5", "2026-11-21T22:00", false);
    row("23 0-23/2 * * *", "2026-11-21T22:23", true);
    row("23 0-23/2 * * *", "2026-11-21T21:23", false);
    row("5 4 * * sun", "2026-11-22T04:05", true);
    row("5 4 * * 7", "2026-11-22T04:05", true);
    row("5 4 * * 0", "2026-11-22T04:05", true);
    row("0 0 1 FEB *", "2027-02-01T00:00", true);
    row("30 4 1,15 * 5", "2026-11-15T04:30", true); // a Sunday
    row("30 4 1,15 * 5", "2026-11-20T04:30", true); // a Friday
    row("30 4 1,15 * 5", "2026-11-21T04:30", false);
    row("30 4 */2 * 5", "2026-11-20T04:30", false); // a Friday whose day is even
    row("30 4 */2 * 5", "2026-11-27T04:30", true);
}

void TestCronTimes::theClockKnowsTheManual()
{
    QFETCH(QString, fields);
    QFETCH(QDateTime, time);
    QFETCH(bool, runs);
    const std::optional<CronClock> clock = CronClock::read(fields + QStringLiteral("\troot  some command # why"));
    QVERIFY(clock);
    QCOMPARE(clock->user(), QStringLiteral("root"));
    QCOMPARE(clock->command(), QStringLiteral("some command # why"));
    QCOMPARE(clock->runsAt({time.time().minute(), time.time().hour(), time.date().day(), time.date().month(),
                            time.date().dayOfWeek() % 7}),
             runs);
}

void TestCronTimes::theClockRefusesWhatTheManualDoes_data()
{
    QTest::addColumn<QString>("line");
    for (const char *line :
         {"# a comment", "PATH=/usr/sbin", "@daily root x", "60 * * * * root x", "* 24 * * * root x",
          "* * 0 * * root x", "* * 32 * * root x", "* * * 13 * root x", "* * * * 8 root x", "* * * * x root x",
          "5/2 * * * * root x", "*/0 * * * * root x", "1, * * * * root x", "* * * * * root", "* * * * root x"})
        QTest::newRow(line) << QString::fromLatin1(line);
}

void TestCronTimes::theClockRefusesWhatTheManualDoes()
{
    QFETCH(QString, line);
    QVERIFY(!CronClock::read(line));
}

void TestCronTimes::chosenTimes_data()
{
    QTest::addColumn<quint32>("start");
    for (const quint32 start : {1U, static_cast<quint32>(std::random_device()())})
        QTest::addRow("from %u", start) << start;
}

void TestCronTimes::chosenTimes()
{
    QFETCH(quint32, start);
    Random random(start);
    auto *at = _widget->findChild<QDateTimeEdit *>(QStringLiteral("_atDateTimeEdit"));
    for (int i = 0; i < 20; ++i) {
        const int minute = between(random, 0, 59);
        const int hour = between(random, 0, 23);
        const int day = i < 6 ? 26 + i : between(random, 1, 31); // those that not every month has are all among them
        const QDateTime chosen(QDate(2026, 1, day), QTime(hour, minute), Qt::UTC);

        choose("_monthRadioButton");
        at->setDateTime(chosen);
        std::optional<CronClock> clock = CronClock::read(appliedLine());
        QVERIFY(clock);
        QCOMPARE(clock->user(), QStringLiteral("root"));
        QCOMPARE(clock->command(), QStringLiteral("warnquota -u"));
        QCOMPARE(
            firstDifference(
                *clock, [=](const Minute &now) { return now.day == day && now.hour == hour && now.minute == minute; }),
            QString());

        choose("_dayRadioButton");
        at->setDateTime(chosen);
        clock = CronClock::read(appliedLine());
        QVERIFY(clock);
        QCOMPARE(firstDifference(*clock, [=](const Minute &now) { return now.hour == hour && now.minute == minute; }),
                 QString());

        choose("_hourRadioButton");
        at->setDateTime(chosen);
        clock = CronClock::read(appliedLine());
        QVERIFY(clock);
        QCOMPARE(firstDifference(*clock, [=](const Minute &now) { return now.minute == minute; }), QString());
    }
}

void TestCronTimes::expertLines_data()
{
    chosenTimes_data();
}

void TestCronTimes::expertLines()
{
    QFETCH(quint32, start);
    Random random(start);
    auto *line = _widget->findChild<QLineEdit *>(QStringLiteral("_expertLineEdit"));
    choose("_expertRadioButton");
    for (int i = 0; i < 60; ++i) {
        const Field minute = randomField(random, 0, 59);
        const Field hour = randomField(random, 0, 23);
        const Field day = randomField(random, 1, 31);
        const Field month = randomField(random, 1, 12);
        const Field weekday = randomField(random, 0, 6);
        line->setText(
            QStringList({minute.text, hour.text, day.text, month.text, weekday.text}).join(QStringLiteral("  ")));
        QVERIFY(_widget->isContentValid());
        const QString applied = appliedLine();
        const std::optional<CronClock> clock = CronClock::read(applied);
        QVERIFY2(clock, qPrintable(applied));
        const auto wanted = [&](const Minute &now) {
            const auto names = [](const Field &field, int value) {
                return field.numbers.test(static_cast<std::size_t>(value));
            };
            if (!names(minute, now.minute) || !names(hour, now.hour) || !names(month, now.month))
                return false;
            if (!day.isAny && !weekday.isAny)
                return names(day, now.day) || names(weekday, now.weekday);
            return names(day, now.day) && names(weekday, now.weekday);
        };
        const QString difference = firstDifference(*clock, wanted);
        QVERIFY2(difference.isEmpty(), qPrintable(applied + QStringLiteral(" differs at ") + difference));
    }
}

KRA_SANDBOX_MAIN(TestCronTimes)
#include "tst_crontimes.moc"
