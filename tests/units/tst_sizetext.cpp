// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <sizetext.h>

#include <QRandomGenerator>
#include <QtTest>

#include <limits>

/// Numbers and sizes as people type them.
class TestSizeText : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void numbers_data();
    void numbers();
    void noNumbers_data();
    void noNumbers();
    void space_data();
    void space();
    void noSpace_data();
    void noSpace();
    void files_data();
    void files();
    void noFiles_data();
    void noFiles();
    void exactTexts_data();
    void exactTexts();
    void everyTextIsReadAgainAsTheSame();
    void theLocaleDoesNotMatter();
};

namespace
{
constexpr quint64 KiB = 1024;
constexpr quint64 GiB = KiB * KiB * KiB;
constexpr quint64 TiB = GiB * KiB;
constexpr quint64 Most = std::numeric_limits<quint64>::max();
} // namespace

void TestSizeText::numbers_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<quint64>("whole");
    QTest::addColumn<QString>("decimals");
    const auto row = [](const QString &text, quint64 whole, const char *decimals = "") {
        QTest::newRow(qPrintable(text)) << text << whole << QString::fromLatin1(decimals);
    };
    row(QStringLiteral("0"), 0);
    row(QStringLiteral("007"), 7);
    row(QStringLiteral(" 1500 "), 1500);
    row(QStringLiteral("18446744073709551615"), Most);
    row(QStringLiteral("1.5"), 1, "5");
    row(QStringLiteral("1,5"), 1, "5");
    row(QStringLiteral("1.50"), 1, "5");
    row(QStringLiteral("1.00"), 1);
    row(QStringLiteral("1."), 1);
    row(QStringLiteral(".5"), 0, "5");
    row(QStringLiteral("1.05"), 1, "05");
    row(QStringLiteral("0.125"), 0, "125"); // no thousands begin with a 0
    row(QStringLiteral("0,125"), 0, "125");
    row(QStringLiteral("1234.567"), 1234, "567"); // nor with four digits
    row(QStringLiteral("1.2345"), 1, "2345");
    row(QStringLiteral("1 500"), 1500);
    row(QStringLiteral("1'500"), 1500);
    row(QStringLiteral("1\u00a0500"), 1500);
    row(QStringLiteral("1\u202f500,5"), 1500, "5");
    row(QStringLiteral("1\u2019500"), 1500);
    row(QStringLiteral("1,234,567"), 1234567);
    row(QStringLiteral("1.234.567"), 1234567);
    row(QStringLiteral("1,234.5"), 1234, "5");
    row(QStringLiteral("1.234,5"), 1234, "5");
    row(QStringLiteral("1,234,567.125"), 1234567, "125");
    row(QStringLiteral("\u0661\u0662\u066b\u0665"), 12, "5");
    row(QStringLiteral("\uff15\uff10"), 50);
}

void TestSizeText::numbers()
{
    QFETCH(QString, text);
    const TypedNumber number(text);
    QCOMPARE(number.fault, TypedNumber::NoFault);
    QTEST(number.whole, "whole");
    QTEST(number.decimals, "decimals");
}

void TestSizeText::noNumbers_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("fault");
    const auto row = [](const QString &text, TypedNumber::Fault fault) {
        QTest::newRow(qPrintable(QLatin1Char('\'') + text + QLatin1Char('\''))) << text << int(fault);
    };
    for (const char *text : {"", " ", "\t"})
        row(QString::fromLatin1(text), TypedNumber::Empty);
    for (const char *text :
         {".",     ",",         "-1",          "+1",   "x",     "1x",         "0x10", "1e3", "1..5",     "1.5.5",
          "1,5,5", "12,34,567", "1,234.567,8", "1 50", "1 5 0", "1,2345,678", "nan",  "inf", "1.234.56", "1.234,567.8"})
        row(QString::fromLatin1(text), TypedNumber::NotANumber);
    row(QStringLiteral("\u00bd"), TypedNumber::NotANumber);
    row(QStringLiteral("\u00b2"), TypedNumber::NotANumber); // a digit, but no decimal one
    for (const char *text : {"1.500", "1,500", "999.000", "12,345"})
        row(QString::fromLatin1(text), TypedNumber::Ambiguous);
    for (const char *text : {"18446744073709551616", "99999999999999999999999999"})
        row(QString::fromLatin1(text), TypedNumber::TooLarge);
}

void TestSizeText::noNumbers()
{
    QFETCH(QString, text);
    const TypedNumber number(text);
    QVERIFY(!number.isValid());
    QTEST(int(number.fault), "fault");
}

void TestSizeText::space_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<quint64>("bytes");
    const auto row = [](const char *text, quint64 bytes) { QTest::newRow(text) << QString::fromLatin1(text) << bytes; };
    row("0", 0);
    row("500", 500);
    row("500 B", 500);
    row("500 bytes", 500);
    row("1 byte", 1);
    row("500M", 500 * KiB * KiB);
    row("500 m", 500 * KiB * KiB);
    row("50 GB", 50 * GiB);
    row("50 Gb", 50 * GiB);
    row("50GiB", 50 * GiB);
    row("  50   gib  ", 50 * GiB);
    row("1.5 TiB", TiB + TiB / 2);
    row("1,5 TB", TiB + TiB / 2);
    row("1 K", KiB);
    row("1 KB", KiB);
    row("1 KiB", KiB);
    row("1 P", TiB * KiB);
    row("1 EB", TiB * KiB * KiB);
    row("15.99 EiB", Q_UINT64_C(18435214858663483146)); // 1599 * 2^60 / 100
    row("0.1 KB", 102);
    row("0.001 KB", 1);
    row("0.0009 KB", 0);
    row("1.1 GB", Q_UINT64_C(1181116006));
    row("0.3333333333333333333333333333 EB", Q_UINT64_C(384307168202282324));
    row("8388607.9999990234375 TB", Q_UINT64_C(9223372036853702066));
    row("9007199254740991 KB", Q_UINT64_C(9223372036854774784)); // a double would still hold this
    row("9223372036854775807", Q_UINT64_C(9223372036854775807)); // but not this
    row("18014398509481983 KB", Most - 1023);
    row("1 500 MB", 1500 * KiB * KiB);
    row("53,687,091,200 bytes", 50 * GiB);
}

void TestSizeText::space()
{
    QFETCH(QString, text);
    const SizeText size = SizeText::ofSpace(text);
    QCOMPARE(int(size.fault()), int(TypedNumber::NoFault));
    QVERIFY(size.isValid());
    QTEST(size.amount(), "bytes");
}

void TestSizeText::noSpace_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("fault");
    const auto row = [](const char *text, TypedNumber::Fault fault) {
        QTest::newRow(text) << QString::fromLatin1(text) << int(fault);
    };
    row("", TypedNumber::Empty);
    row("GB", TypedNumber::Empty);
    row("-1 GB", TypedNumber::NotANumber);
    row("1 G B", TypedNumber::NotANumber);
    row("1 GB 2", TypedNumber::NotANumber);
    row("one GB", TypedNumber::NotANumber);
    row("1.500 GB", TypedNumber::Ambiguous);
    for (const char *text : {"1 Q", "1 X", "1 GBit", "1 GiBi", "1 ib", "1 Zb", "1 mbyte", "1 kk"})
        row(text, TypedNumber::UnknownUnit);
    for (const char *text : {"16 EB", "18446744073709551616", "18014398509481984 KB"})
        row(text, TypedNumber::TooLarge);
}

void TestSizeText::noSpace()
{
    QFETCH(QString, text);
    const SizeText size = SizeText::ofSpace(text);
    QVERIFY(!size.isValid());
    QTEST(int(size.fault()), "fault");
    QCOMPARE(size.amount(), quint64(0));
}

void TestSizeText::files_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<quint64>("count");
    const auto row = [](const char *text, quint64 count) { QTest::newRow(text) << QString::fromLatin1(text) << count; };
    row("0", 0);
    row("12", 12);
    row("5000000000", Q_UINT64_C(5000000000));
    row("5,000,000,000", Q_UINT64_C(5000000000));
    row("10k", 10000);
    row("10 K", 10000);
    row("2.5M", 2500000);
    row("9223372036854775807", Q_UINT64_C(9223372036854775807));
}

void TestSizeText::files()
{
    QFETCH(QString, text);
    const SizeText count = SizeText::ofFiles(text);
    QVERIFY(count.isValid());
    QTEST(count.amount(), "count");
}

void TestSizeText::noFiles_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("fault");
    const auto row = [](const char *text, TypedNumber::Fault fault) {
        QTest::newRow(text) << QString::fromLatin1(text) << int(fault);
    };
    row("", TypedNumber::Empty);
    row("1.000", TypedNumber::Ambiguous);
    row("1 GB", TypedNumber::UnknownUnit);
    row("1 kb", TypedNumber::UnknownUnit);
    row("1 files", TypedNumber::UnknownUnit);
    row("-1", TypedNumber::NotANumber);
    row("18446744073710 M", TypedNumber::TooLarge);
    row("2.7", TypedNumber::NotWhole);
    row("0.5", TypedNumber::NotWhole);
    row("1.2345 k", TypedNumber::NotWhole);
    row("1.00000051 M", TypedNumber::NotWhole);
    row("1.5000000000000000001 k", TypedNumber::NotWhole);
}

void TestSizeText::noFiles()
{
    QFETCH(QString, text);
    const SizeText count = SizeText::ofFiles(text);
    QVERIFY(!count.isValid());
    QTEST(int(count.fault()), "fault");
}

void TestSizeText::exactTexts_data()
{
    QTest::addColumn<quint64>("bytes");
    QTest::newRow("0 B") << quint64(0);
    QTest::newRow("1 B") << quint64(1);
    QTest::newRow("1500 B") << quint64(1500);
    QTest::newRow("1 KB") << KiB;
    QTest::newRow("1536 KB") << 1536 * KiB;
    QTest::newRow("50 GB") << 50 * GiB;
    QTest::newRow("100 TB") << 100 * TiB;
    QTest::newRow("15 EB") << 15 * TiB * KiB * KiB;
    QTest::newRow("9007199254740991 KB") << Q_UINT64_C(9223372036854774784);
    QTest::newRow("18446744073709551615 B") << Most;
}

void TestSizeText::exactTexts()
{
    QFETCH(quint64, bytes);
    QCOMPARE(SizeText::ofBytes(bytes), QString::fromLatin1(QTest::currentDataTag()));
}

void TestSizeText::everyTextIsReadAgainAsTheSame()
{
    bool isGiven = false;
    const auto given = qEnvironmentVariableIntValue("KRA_SEED", &isGiven);
    const quint32 seed = isGiven ? static_cast<quint32>(given) : QRandomGenerator::global()->generate();
    qInfo("KRA_SEED=%u", seed);
    QRandomGenerator random(seed);
    for (int i = 0; i < 2000; ++i) {
        const quint64 bytes = random.generate64() >> random.bounded(64) << random.bounded(32);
        const SizeText again = SizeText::ofSpace(SizeText::ofBytes(bytes));
        QVERIFY(again.isValid());
        QCOMPARE(again.amount(), bytes);
    }
}

void TestSizeText::theLocaleDoesNotMatter()
{
    const QLocale before;
    for (const char *language : {"C", "en_US", "de_DE", "fr_FR", "ar_EG"}) {
        QLocale::setDefault(QLocale(QString::fromLatin1(language)));
        QCOMPARE(SizeText::ofSpace(QStringLiteral("1,5 GB")).amount(), GiB + GiB / 2);
        QCOMPARE(SizeText::ofSpace(QStringLiteral("1.5 GB")).amount(), GiB + GiB / 2);
        QCOMPARE(SizeText::ofBytes(1500 * GiB), QStringLiteral("1500 GB"));
    }
    QLocale::setDefault(before);
}

QTEST_GUILESS_MAIN(TestSizeText)
#include "tst_sizetext.moc"
