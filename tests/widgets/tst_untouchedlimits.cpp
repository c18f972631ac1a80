// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "editedelement.h"
#include "limitform.h"
#include "madeupaccounts.h"

#include <userwidget.h>

#include <QCheckBox>
#include <QComboBox>
#include <QDateTimeEdit>
#include <QDoubleSpinBox>
#include <QLineEdit>
#include <QRandomGenerator>
#include <QtTest>

#include <ctime>
#include <tuple>

using namespace LimitForm;
using namespace MadeUpAccounts;

/// What nobody touched goes back to the byte and to the second, whatever the form can show of it.
class TestUntouchedLimits : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void randomRecords_data();
    void randomRecords();
    void momentsAroundTheChangesOfTheClock_data();
    void momentsAroundTheChangesOfTheClock();
    void editsAroundTheChangesOfTheClock_data();
    void editsAroundTheChangesOfTheClock();
    void anHourThatTheClockLeavesOutIsRefused();
};

namespace
{
/// One field of the form: how it is edited, and what of a record it stands for.
struct Field
{
    const char *name;
    QString (*inRecord)(const DeviceQuota &quota);
    void (*edit)(const QWidget &form, QRandomGenerator &random);
};

QString sizeText(const MemorySize &size)
{
    return QStringLiteral("%1 bytes, %2 of unit %3").arg(size.bytes).arg(size.value, 0, 'g', 17).arg(size.unit);
}

QString momentText(const QDateTime &moment)
{
    return moment.isValid() ? QString::number(moment.toMSecsSinceEpoch()) : QStringLiteral("none");
}

const Field fields[] = {
    {"soft blocks", [](const DeviceQuota &quota) { return sizeText(quota.softBlockLimit); }, &editSize<SoftBlocks>},
    {"hard blocks", [](const DeviceQuota &quota) { return sizeText(quota.hardBlockLimit); }, &editSize<HardBlocks>},
    {"soft files", [](const DeviceQuota &quota) { return QString::number(quota.softInodeLimit); },
     &editCount<SoftInodes>},
    {"hard files", [](const DeviceQuota &quota) { return QString::number(quota.hardInodeLimit); },
     &editCount<HardInodes>},
    {"blocks time", [](const DeviceQuota &quota) { return momentText(quota.blocksTimeToForce); },
     &editMoment<BlocksTime>},
    {"files time", [](const DeviceQuota &quota) { return momentText(quota.inodesTimeToForce); },
     &editMoment<InodesTime>},
};

/// Of every order of magnitude, whole blocks as the kernel counts them; often none.
quint64 randomBytes(QRandomGenerator &random)
{
    switch (random.bounded(6)) {
    case 0:
        return 0;
    case 1:
        return 100 * GiB;
    case 2:
        return 1234567 * KiB;
    default:
        return (random.generate64() >> random.bounded(14, 60)) * KiB;
    }
}

quint64 randomCount(QRandomGenerator &random)
{
    return random.bounded(4) == 0 ? 0 : random.generate64() >> random.bounded(1, 63);
}

QDateTime randomMoment(QRandomGenerator &random)
{
    if (random.bounded(3) == 0)
        return {};
    // Weeks around the end of summer time, to the second.
    return QDateTime::fromSecsSinceEpoch(1792890000 + random.bounded(-3000000, 3000000));
}

DeviceQuota randomQuota(QRandomGenerator &random)
{
    DeviceQuota quota = limits(randomBytes(random), randomBytes(random), randomCount(random), randomCount(random));
    quota.usedBlocks = size(randomBytes(random));
    quota.usedInodes = randomCount(random);
    quota.blocksTimeToForce = randomMoment(random);
    quota.inodesTimeToForce = randomMoment(random);
    return quota;
}

void useZone(const QByteArray &zone)
{
    qputenv("TZ", zone);
    tzset();
}

// In Berlin summer time ended on 2026-10-25 at 03:00, which was 01:00 UTC, and begins on 2027-03-28 at 02:00.
qint64 endOfSummerTime()
{
    return QDateTime(QDate(2026, 10, 25), QTime(1, 0), Qt::UTC).toSecsSinceEpoch();
}

qint64 beginOfSummerTime()
{
    return QDateTime(QDate(2027, 3, 28), QTime(1, 0), Qt::UTC).toSecsSinceEpoch();
}

DeviceQuota exported(const UserWidget &widget, const QString &device)
{
    const std::unique_ptr<ElementData> record = widget.exportElementData();
    return dynamic_cast<const UserData &>(*record).deviceQuotas.value(device);
}
} // namespace

void TestUntouchedLimits::init()
{
    useZone("Europe/Berlin");
}

void TestUntouchedLimits::randomRecords_data()
{
    QTest::addColumn<quint32>("seed");
    for (quint32 seed = 1; seed <= 40; ++seed)
        QTest::addRow("seed %u", seed) << seed;
}

void TestUntouchedLimits::randomRecords()
{
    QFETCH(quint32, seed);
    QRandomGenerator random(seed);
    RecordingModule module;
    EditedElement element(QStringLiteral("QuotaUserElement"), &module);
    UserWidget widget(&module, &everybodyMay);
    widget.setElement(&element);
    widget.show();
    QVERIFY(QTest::qWaitForWindowExposed(&widget));
    auto *devices = formWidget<QComboBox>(widget, "_devicesComboBox");

    for (int read = 0; read < 25; ++read) {
        QMap<QString, DeviceQuota> quotas;
        for (int device = 0; device < 4; ++device)
            quotas.insert(QStringLiteral("/dev/vd%1").arg(device), randomQuota(random));
        UserData record = account(quotas);
        widget.afterSuccessfulRead(&element, &record);
        for (int look = random.bounded(4); look > 0; --look)
            devices->setCurrentIndex(random.bounded(devices->count()));
        const QString shown = devices->currentText();
        QVERIFY(!widget.isContentChanged());

        const Field &edited = fields[random.bounded(int(std::size(fields)))];
        const QString before = edited.inRecord(record.deviceQuotas.value(shown));
        edited.edit(widget, random);
        const bool isEdited = widget.isContentChanged(); // a time that does not run cannot be edited

        const std::unique_ptr<ElementData> result = widget.exportElementData();
        const auto &account = dynamic_cast<const UserData &>(*result);
        for (auto quota = record.deviceQuotas.cbegin(); quota != record.deviceQuotas.cend(); ++quota) {
            const DeviceQuota &back = account.deviceQuotas[quota.key()];
            for (const Field &field : fields)
                if (quota.key() != shown || &field != &edited || !isEdited)
                    QVERIFY2(field.inRecord(back) == field.inRecord(*quota),
                             qPrintable(QStringLiteral("%1 of %2 was %3 and is %4")
                                            .arg(QLatin1String(field.name), quota.key(), field.inRecord(*quota),
                                                 field.inRecord(back))));
            for (const MemorySize &size : {back.softBlockLimit, back.hardBlockLimit})
                QCOMPARE(size.bytes, size.toBytes());
        }
        if (isEdited)
            QVERIFY(edited.inRecord(account.deviceQuotas[shown]) != before);
    }
}

void TestUntouchedLimits::momentsAroundTheChangesOfTheClock_data()
{
    QTest::addColumn<QByteArray>("zone");
    QTest::addColumn<qint64>("second");
    // On Lord Howe Island it is half an hour, at 15:00 and 15:30 of the other day's UTC; India has no summer time.
    const std::tuple<QByteArray, qint64, qint64, qint64> changes[] = {
        {"Europe/Berlin", endOfSummerTime(), beginOfSummerTime(), 3600},
        {"America/New_York", QDateTime(QDate(2026, 11, 1), QTime(6, 0), Qt::UTC).toSecsSinceEpoch(),
         QDateTime(QDate(2027, 3, 14), QTime(7, 0), Qt::UTC).toSecsSinceEpoch(), 3600},
        {"Australia/Lord_Howe", QDateTime(QDate(2027, 4, 3), QTime(15, 0), Qt::UTC).toSecsSinceEpoch(),
         QDateTime(QDate(2026, 10, 3), QTime(15, 30), Qt::UTC).toSecsSinceEpoch(), 1800},
        {"Asia/Kolkata", endOfSummerTime(), beginOfSummerTime(), 3600},
    };
    for (const auto &[zone, end, begin, shift] : changes) {
        const auto row = [name = zone](const char *moment, qint64 second) {
            QTest::addRow("%s: %s", name.constData(), moment) << name << second;
        };
        row("the first of two equal times", end - shift / 2 + 5);
        row("the second", end + shift / 2 + 5);
        row("the last second of summer time", end - 1);
        row("the first after summer time", end);
        row("the last second of winter time", begin - 1);
        row("the first of summer time", begin);
        row("long past", 1000000);
    }
}

void TestUntouchedLimits::momentsAroundTheChangesOfTheClock()
{
    QFETCH(QByteArray, zone);
    QFETCH(qint64, second);
    useZone(zone);
    for (const Qt::TimeSpec spec : {Qt::LocalTime, Qt::UTC}) {
        RecordingModule module;
        EditedElement element(QStringLiteral("QuotaUserElement"), &module);
        UserWidget widget(&module, &everybodyMay);
        widget.setElement(&element);
        widget.show();
        widget.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&widget));
        const QString device = QStringLiteral("/dev/a");
        DeviceQuota quota = limits(GiB, 2 * GiB, 3, 4);
        quota.blocksTimeToForce = QDateTime::fromSecsSinceEpoch(second, spec);
        UserData record = account({{device, quota}});
        widget.afterSuccessfulRead(&element, &record);

        auto *edit = formWidget<QDateTimeEdit>(widget, "_blocksDateTimeEdit");
        QCOMPARE(edit->text(), QDateTime::fromSecsSinceEpoch(second).toString(QStringLiteral("dd.MM.yyyy hh:mm")));
        // Looked at with the keyboard, and left.
        edit->setFocus();
        for (const Qt::Key key : {Qt::Key_Home, Qt::Key_Right, Qt::Key_End})
            QTest::keyClick(edit, key);
        formWidget<QWidget>(widget, "_devicesComboBox")->setFocus();
        QVERIFY(!widget.isContentChanged());
        QCOMPARE(exported(widget, device).blocksTimeToForce.toSecsSinceEpoch(), second);

        // Another field is edited, which reads nothing from the clock either.
        formWidget<QSpinBox>(widget, "_softLimitInodesSpinBox")->setValue(9);
        QCOMPARE(exported(widget, device).blocksTimeToForce.toSecsSinceEpoch(), second);
        // Edited and taken back.
        edit->setFocus();
        QTest::keyClick(edit, Qt::Key_Up);
        QVERIFY(exported(widget, device).blocksTimeToForce.toSecsSinceEpoch() != second);
        QTest::keyClick(edit, Qt::Key_Down);
        QCOMPARE(exported(widget, device).blocksTimeToForce.toSecsSinceEpoch(), second);
    }
}

void TestUntouchedLimits::editsAroundTheChangesOfTheClock_data()
{
    QTest::addColumn<qint64>("second");
    QTest::addColumn<QDateTimeEdit::Section>("section");
    QTest::addColumn<int>("steps");
    QTest::addColumn<qint64>("edited");
    const auto minute = QDateTimeEdit::MinuteSection;
    const auto month = QDateTimeEdit::MonthSection;
    const qint64 end = endOfSummerTime();
    const qint64 begin = beginOfSummerTime();
    QTest::newRow("a minute in the first of two equal hours") << end - 1795 << minute << 1 << end - 1735;
    QTest::newRow("a minute in the second") << end + 1805 << minute << 1 << end + 1865;
    // The wall clock shows the same.
    QTest::newRow("a month into winter") << end - 86400 << month << 1 << end - 86400 + 31 * 86400 + 3600;
    QTest::newRow("a month into summer") << begin - 86400 << month << 1 << begin - 86400 + 31 * 86400 - 3600;
}

void TestUntouchedLimits::editsAroundTheChangesOfTheClock()
{
    QFETCH(qint64, second);
    QFETCH(QDateTimeEdit::Section, section);
    QFETCH(int, steps);
    QFETCH(qint64, edited);
    RecordingModule module;
    EditedElement element(QStringLiteral("QuotaUserElement"), &module);
    UserWidget widget(&module, &everybodyMay);
    widget.setElement(&element);
    const QString device = QStringLiteral("/dev/a");
    DeviceQuota quota = limits(GiB, 2 * GiB, 3, 4);
    quota.inodesTimeToForce = QDateTime::fromSecsSinceEpoch(second);
    UserData record = account({{device, quota}});
    widget.afterSuccessfulRead(&element, &record);

    auto *edit = formWidget<QDateTimeEdit>(widget, "_inodesDateTimeEdit");
    edit->setCurrentSection(section);
    edit->stepBy(steps);
    QVERIFY(widget.isContentChanged());
    const QDateTime back = exported(widget, device).inodesTimeToForce;
    QVERIFY2(back.isValid(), "a time that runs is not to be dropped");
    QCOMPARE(back.toSecsSinceEpoch(), edited);
}

void TestUntouchedLimits::anHourThatTheClockLeavesOutIsRefused()
{
    RecordingModule module;
    EditedElement element(QStringLiteral("QuotaUserElement"), &module);
    UserWidget widget(&module, &everybodyMay);
    widget.setElement(&element);
    widget.show();
    widget.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&widget));
    const QString device = QStringLiteral("/dev/a");
    const qint64 second = beginOfSummerTime() - 1795; // 01:30:05
    DeviceQuota quota = limits(GiB, 2 * GiB, 3, 4);
    quota.inodesTimeToForce = QDateTime::fromSecsSinceEpoch(second);
    UserData record = account({{device, quota}});
    widget.afterSuccessfulRead(&element, &record);

    auto *edit = formWidget<QDateTimeEdit>(widget, "_inodesDateTimeEdit");
    edit->setFocus();
    edit->setSelectedSection(QDateTimeEdit::HourSection);
    QTest::keyClicks(edit, QStringLiteral("02"));
    QCOMPARE(edit->text(), QStringLiteral("28.03.2027 02:30"));
    QVERIFY(!widget.isContentValid());
    QTest::keyClick(edit, Qt::Key_Return);
    QCOMPARE(edit->text(), QStringLiteral("28.03.2027 01:30"));
    QVERIFY(widget.isContentValid());
    QCOMPARE(exported(widget, device).inodesTimeToForce.toSecsSinceEpoch(), second);
}

QTEST_MAIN(TestUntouchedLimits)
#include "tst_untouchedlimits.moc"
