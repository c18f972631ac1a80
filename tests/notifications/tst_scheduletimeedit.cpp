// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <schedulechoice.h>
#include <scheduletimeedit.h>

#include <QtTest>

#include <ctime>

/// Days and times, typed and stepped.
class TestScheduleTimeEdit : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup() { _edit.reset(); }
    void everyDayCanBeTyped();
    void aDayOfNoMonthCannot_data();
    void aDayOfNoMonthCannot();
    void everyDayCanBeStepped();
    void timesWithoutADay();
    void summerTimeMovesNothing();

private:
    void type(const QString &keys)
    {
        for (const QChar key : keys)
            QTest::keyClick(_edit.get(), key.toLatin1());
    }

    std::unique_ptr<ScheduleTimeEdit> _edit;
};

void TestScheduleTimeEdit::init()
{
    _edit = std::make_unique<ScheduleTimeEdit>();
    _edit->showSections(QStringLiteral("dd HH:mm"));
    _edit->setDateTime(QDateTime(ScheduleChoice::dateOfDay(1, QDate::currentDate()), QTime(8, 5), Qt::UTC));
    _edit->show();
    _edit->activateWindow();
    _edit->setFocus();
    QVERIFY(QTest::qWaitForWindowActive(_edit.get()));
}

void TestScheduleTimeEdit::everyDayCanBeTyped()
{
    // Starting in a month without the 29th, as February is, and in the current one.
    for (const QDate &before : {QDate(2027, 2, 14), ScheduleChoice::dateOfDay(14, QDate::currentDate())}) {
        for (int day = 1; day <= 31; ++day) {
            _edit->setDate(before);
            _edit->setSelectedSection(QDateTimeEdit::DaySection);
            type(QStringLiteral("%1").arg(day, 2, 10, QLatin1Char('0')));
            QTest::keyClick(_edit.get(), Qt::Key_Return);
            QCOMPARE(_edit->date(), ScheduleChoice::dateOfDay(day, QDate::currentDate()));
            QCOMPARE(_edit->time(), QTime(8, 5));
            QCOMPARE(_edit->text(), QStringLiteral("%1 08:05").arg(day, 2, 10, QLatin1Char('0')));
        }
    }
}

void TestScheduleTimeEdit::aDayOfNoMonthCannot_data()
{
    QTest::addColumn<QString>("keys");
    QTest::newRow("the 32nd") << QStringLiteral("32");
    QTest::newRow("the 0th") << QStringLiteral("00");
    QTest::newRow("letters") << QStringLiteral("xy");
}

void TestScheduleTimeEdit::aDayOfNoMonthCannot()
{
    QFETCH(QString, keys);
    _edit->setSelectedSection(QDateTimeEdit::DaySection);
    type(keys);
    QTest::keyClick(_edit.get(), Qt::Key_Return);
    QVERIFY(_edit->hasAcceptableInput());
    QVERIFY(_edit->date().day() >= 1 && _edit->date().day() <= 31);
    QCOMPARE(_edit->time(), QTime(8, 5));
}

void TestScheduleTimeEdit::everyDayCanBeStepped()
{
    _edit->setSelectedSection(QDateTimeEdit::DaySection);
    for (int day = 2; day <= 31; ++day) {
        QTest::keyClick(_edit.get(), Qt::Key_Up);
        QCOMPARE(_edit->date().day(), day);
    }
    QTest::keyClick(_edit.get(), Qt::Key_Up);
    QCOMPARE(_edit->date().day(), 31);
    for (int day = 30; day >= 1; --day) {
        QTest::keyClick(_edit.get(), Qt::Key_Down);
        QCOMPARE(_edit->date().day(), day);
    }
    QTest::keyClick(_edit.get(), Qt::Key_PageUp);
    QCOMPARE(_edit->date().day(), 11);
    QTest::keyClick(_edit.get(), Qt::Key_Down);
    QTest::keyClick(_edit.get(), Qt::Key_Down);
    QTest::keyClick(_edit.get(), Qt::Key_PageDown);
    QCOMPARE(_edit->date().day(), 1);
    QCOMPARE(_edit->time(), QTime(8, 5));
}

void TestScheduleTimeEdit::timesWithoutADay()
{
    _edit->setDate(ScheduleChoice::dateOfDay(31, QDate::currentDate()));
    const QDate date = _edit->date();
    _edit->showSections(QStringLiteral("HH:mm"));
    _edit->setSelectedSection(QDateTimeEdit::HourSection);
    type(QStringLiteral("2359"));
    QTest::keyClick(_edit.get(), Qt::Key_Return);
    QCOMPARE(_edit->time(), QTime(23, 59));
    QTest::keyClick(_edit.get(), Qt::Key_Up);
    _edit->showSections(QStringLiteral("mm"));
    _edit->setSelectedSection(QDateTimeEdit::MinuteSection);
    type(QStringLiteral("07"));
    QTest::keyClick(_edit.get(), Qt::Key_Return);
    QCOMPARE(_edit->time(), QTime(23, 7));
    QCOMPARE(_edit->date(), date);
    _edit->showSections(QStringLiteral("dd HH:mm"));
    QCOMPARE(_edit->text(), QStringLiteral("31 23:07"));
    _edit->setDate(date.addDays(-1));
    QCOMPARE(_edit->text(), QStringLiteral("30 23:07"));
}

void TestScheduleTimeEdit::summerTimeMovesNothing()
{
    // Two o'clock and a half, on a day on which no clock of Berlin shows it.
    qputenv("TZ", "Europe/Berlin");
    tzset();
    const QDateTime gap(QDate(2026, 3, 29), QTime(2, 30), Qt::UTC);
    _edit->setDateTime(gap);
    const QDateTime shown = _edit->dateTime();
    const QString text = _edit->text();
    qunsetenv("TZ");
    tzset();
    QCOMPARE(shown, gap);
    QCOMPARE(text, QStringLiteral("29 02:30"));
}

QTEST_MAIN(TestScheduleTimeEdit)
#include "tst_scheduletimeedit.moc"
