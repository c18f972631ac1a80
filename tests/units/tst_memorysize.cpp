// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <memorysize.h>
#include <memorysizetransfer.h>

#include <QtTest>

#include <cmath>
#include <limits>

namespace
{

constexpr quint64 KiB = 1024;
constexpr quint64 MiB = 1024 * KiB;
constexpr quint64 GiB = 1024 * MiB;

/// Translates the one unit it is asked about and says in which context it was asked.
class OneWordTranslator : public QTranslator
{
public:
    bool isEmpty() const override { return false; }
    QString translate(const char *context, const char *text, const char *, int) const override
    {
        return QByteArray(context) == "MemorySizeTransfer" && QByteArray(text) == "Mb" ? QStringLiteral("Mo")
                                                                                       : QString();
    }
};

} // namespace

class TestMemorySize : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void unitTableIsOrderedAndNamed();
    void unitNameOfNoUnitIsEmpty();
    void unitNamesAreTranslatedInTheirContext();
    void defaultIsNothingInBytes();
    void splits_data();
    void splits();
    void zeroBytesHaveNoText();
    void textsAreInTheGeneralFormat_data();
    void textsAreInTheGeneralFormat();
    void joins_data();
    void joins();
    void joiningIgnoresTheStoredCount();
    void splittingAndJoiningGivesTheSameCount_data();
    void splittingAndJoiningGivesTheSameCount();
};

void TestMemorySize::unitTableIsOrderedAndNamed()
{
    const MemorySizeTransfer transfer;
    QCOMPARE(transfer.units().keys(), (QList<int>{0, 1, 2, 3}));
    QCOMPARE(transfer.units().values(), (QList<QString>{QStringLiteral("Bytes"), QStringLiteral("Kb"),
                                                        QStringLiteral("Mb"), QStringLiteral("Gb")}));
    QCOMPARE(QLatin1String(transfer.metaObject()->className()), QLatin1String("MemorySizeTransfer"));
}

void TestMemorySize::unitNameOfNoUnitIsEmpty()
{
    QCOMPARE(MemorySizeTransfer::unitName(-1), QString());
    QCOMPARE(MemorySizeTransfer::unitName(4), QString());
}

void TestMemorySize::unitNamesAreTranslatedInTheirContext()
{
    OneWordTranslator translator;
    QVERIFY(QCoreApplication::installTranslator(&translator));
    const MemorySize size(MemorySizeTransfer(), 3 * MiB);
    QVERIFY(QCoreApplication::removeTranslator(&translator));
    QCOMPARE(size.unitName, QStringLiteral("Mo"));
    QCOMPARE(size.text, QStringLiteral("3 Mo"));
}

void TestMemorySize::defaultIsNothingInBytes()
{
    const MemorySize size;
    QCOMPARE(size.bytes, quint64(0));
    QCOMPARE(size.value, 0.0);
    QCOMPARE(size.unit, 0);
    QCOMPARE(size.unitName, QStringLiteral("Bytes"));
    QCOMPARE(size.text, QString());
}

void TestMemorySize::splits_data()
{
    QTest::addColumn<quint64>("bytes");
    QTest::addColumn<double>("value");
    QTest::addColumn<int>("unit");
    QTest::addColumn<QString>("text");
    const auto row = [](const char *name, quint64 bytes, double value, int unit, const char *text) {
        QTest::newRow(name) << bytes << value << unit << QString::fromLatin1(text);
    };
    row("one byte", 1, 1.0, 0, "1 Bytes");
    row("1023 bytes stay bytes", 1023, 1023.0, 0, "1023 Bytes");
    row("1024 bytes are a Kb", KiB, 1.0, 1, "1 Kb");
    row("one and a half Kb", 1536, 1.5, 1, "1.5 Kb");
    row("just under a Mb keeps four digits", MiB - 1, 1023.9990234375, 1, "1024 Kb");
    row("a Mb", MiB, 1.0, 2, "1 Mb");
    row("a Gb", GiB, 1.0, 3, "1 Gb");
    row("four significant digits", 1234567, 1234567.0 / double(MiB), 2, "1.177 Mb");
    row("two TiB stay Gb", 2048 * GiB, 2048.0, 3, "2048 Gb");
    row("five TiB stay Gb", 5 * 1024 * GiB, 5120.0, 3, "5120 Gb");
    row("ten thousand Gb turn to the exponent", 10000 * GiB, 10000.0, 3, "1e+04 Gb");
    row("the upper half of the range", quint64(1) << 63, 8589934592.0, 3, "8.59e+09 Gb");
}

void TestMemorySize::splits()
{
    QFETCH(quint64, bytes);
    QFETCH(int, unit);
    const MemorySize size(MemorySizeTransfer(), bytes);
    QCOMPARE(size.bytes, bytes);
    QTEST(size.value, "value");
    QTEST(size.unit, "unit");
    QCOMPARE(size.unitName, MemorySizeTransfer::unitName(unit));
    QTEST(size.text, "text");
}

void TestMemorySize::zeroBytesHaveNoText()
{
    const MemorySize size(MemorySizeTransfer(), 0);
    QCOMPARE(size.value, 0.0);
    QCOMPARE(size.unit, 0);
    QCOMPARE(size.unitName, QStringLiteral("Bytes"));
    QCOMPARE(size.text, QString());
}

void TestMemorySize::textsAreInTheGeneralFormat_data()
{
    QTest::addColumn<quint64>("first");
    QTest::addColumn<quint64>("step");
    QTest::newRow("every count of bytes and all of Kb to 64 Kb") << quint64(1) << quint64(1);
    // Steps of a sixteenth of a unit, less and more: many a text is halfway between two of four digits.
    for (const quint64 unit : {KiB, MiB, GiB}) {
        for (const quint64 first : {unit, unit - 1, unit + 1})
            QTest::addRow("from %llu", first) << first << unit / 16;
    }
    QTest::newRow("where four digits end") << 9990 * GiB << GiB / 1024;
    for (int bit = 11; bit < 64; ++bit)
        QTest::addRow("around 2^%d", bit)
            << (quint64(1) << bit) - 32768 * (quint64(1) << (bit - 11) / 2) << (quint64(1) << (bit - 11) / 2);
}

/// The text is made in a shorter way than by QString::number(), which says what it is to be.
void TestMemorySize::textsAreInTheGeneralFormat()
{
    QFETCH(const quint64, first);
    QFETCH(const quint64, step);
    const MemorySizeTransfer units;
    quint64 bytes = first;
    for (int i = 0; i < 65536; ++i, bytes += step) {
        const MemorySize size(units, bytes);
        const QString number = QString::number(size.value, 'g', 4);
        if (bytes != 0 && size.text != QStringLiteral("%1 %2").arg(number, size.unitName))
            QFAIL(qPrintable(QStringLiteral("%1 bytes: %2").arg(bytes).arg(size.text)));
    }
}

void TestMemorySize::joins_data()
{
    QTest::addColumn<double>("value");
    QTest::addColumn<int>("unit");
    QTest::addColumn<quint64>("bytes");
    QTest::newRow("bytes") << 7.0 << 0 << quint64(7);
    QTest::newRow("one and a half Kb") << 1.5 << 1 << quint64(1536);
    QTest::newRow("a fraction of a byte is dropped") << 0.0001 << 1 << quint64(0);
    QTest::newRow("truncated, not rounded") << 1.9999 << 0 << quint64(1);
    QTest::newRow("Mb") << 2.5 << 2 << quint64(2621440);
    QTest::newRow("Gb") << 5120.0 << 3 << 5120 * GiB;
    QTest::newRow("the upper half of the range") << 8589934592.0 << 3 << (quint64(1) << 63);
    QTest::newRow("more than 64 bits") << 1e30 << 3 << std::numeric_limits<quint64>::max();
    QTest::newRow("below zero") << -1.0 << 1 << quint64(0);
    QTest::newRow("no number") << std::nan("") << 1 << quint64(0);
    QTest::newRow("a unit past the last") << 1.0 << 4 << quint64(0);
    QTest::newRow("a unit before the first") << 1.0 << -1 << quint64(0);
}

void TestMemorySize::joins()
{
    MemorySize size;
    QFETCH(double, value);
    size.value = value;
    QFETCH(int, unit);
    size.unit = unit;
    QTEST(size.toBytes(), "bytes");
}

void TestMemorySize::joiningIgnoresTheStoredCount()
{
    MemorySize size(MemorySizeTransfer(), 10 * KiB);
    size.value = 2.0;
    QCOMPARE(size.toBytes(), 2 * KiB);
}

void TestMemorySize::splittingAndJoiningGivesTheSameCount_data()
{
    QTest::addColumn<quint64>("bytes");
    // Up to 53 bits a double holds every whole number, and changing the unit moves its exponent only.
    for (int bit = 0; bit <= 53; ++bit) {
        const quint64 power = quint64(1) << bit;
        QTest::addRow("2^%d", bit) << power;
        QTest::addRow("2^%d - 1", bit) << power - 1;
    }
}

void TestMemorySize::splittingAndJoiningGivesTheSameCount()
{
    QFETCH(quint64, bytes);
    QCOMPARE(MemorySize(MemorySizeTransfer(), bytes).toBytes(), bytes);
}

QTEST_GUILESS_MAIN(TestMemorySize)
#include "tst_memorysize.moc"
