// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <textindex.h>

#include <QRandomGenerator>
#include <QtTest>

namespace
{

QString text(const char *bytes)
{
    return QString::fromUtf8(bytes);
}

/// Few letters, so that words are found often, within each other and at the very end.
QString randomText(QRandomGenerator &random, int most)
{
    QString result;
    for (int length = random.bounded(most + 1); length > 0; --length)
        result += QStringLiteral("aab/é").at(random.bounded(5));
    return result;
}

QVector<int> holdingOneByOne(const QStringList &texts, const QString &word)
{
    QVector<int> found;
    for (int i = 0; i < texts.size(); ++i) {
        if (texts.at(i).contains(word))
            found.append(i);
    }
    return found;
}

QStringList deviceLines(int count)
{
    QStringList lines;
    for (int i = count - 1; i >= 0; --i)
        lines.append(
            QStringLiteral("/dev/mapper/vg.data-lv%1: UUID=\"%1\" TYPE=\"ext4\"").arg(i, 4, 10, QLatin1Char('0')));
    return lines;
}

} // namespace

class TestTextIndex : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void answersAreThoseOfASearchInEachText();
    void allTextsHoldTheEmptyWord();
    void aTextThatHoldsAWordTwiceIsNamedOnce();
    void theRarestWordLeavesTheFewestTexts();
    void longWordsAndOneLetterOverAndOver();
};

void TestTextIndex::answersAreThoseOfASearchInEachText()
{
    bool isGiven = false;
    const int given = qEnvironmentVariableIntValue("KRA_SEED", &isGiven);
    const quint32 seed = isGiven ? static_cast<quint32>(given) : QRandomGenerator::system()->generate() >> 1;
    qInfo("KRA_SEED=%u", seed);
    QRandomGenerator random(seed);
    for (int round = 0; round < 300; ++round) {
        QStringList texts;
        for (int i = random.bounded(8); i > 0; --i)
            texts.append(randomText(random, 12));
        const TextIndex index(texts);
        for (int question = 0; question < 20; ++question) {
            const QString word = randomText(random, 4);
            QCOMPARE(index.holding(word), holdingOneByOne(texts, word));
            const QString other = randomText(random, 4);
            const QVector<int> rarest = index.holdingRarest({word, other});
            for (const int place : holdingOneByOne(texts, word)) {
                if (texts.at(place).contains(other))
                    QVERIFY2(rarest.contains(place), qPrintable(word + QLatin1Char(' ') + other));
            }
        }
    }
}

void TestTextIndex::allTextsHoldTheEmptyWord()
{
    const TextIndex index({text("a"), QString(), text("b")});
    QCOMPARE(index.holding(QString()), (QVector<int>{0, 1, 2}));
    QCOMPARE(index.holdingRarest({}), (QVector<int>{0, 1, 2}));
    QCOMPARE(index.holdingRarest({QString(), text("b")}), QVector<int>{2});
    QCOMPARE(TextIndex().holding(text("a")), QVector<int>());
}

void TestTextIndex::aTextThatHoldsAWordTwiceIsNamedOnce()
{
    const TextIndex index({text("sda1 sda10"), text("sdb1"), text("sda1")});
    QCOMPARE(index.holding(text("sda1")), (QVector<int>{0, 2}));
}

/// Of a thousand lines that are nearly alike a question looks at one.
void TestTextIndex::theRarestWordLeavesTheFewestTexts()
{
    const TextIndex index(deviceLines(1000));
    QCOMPARE(index.holdingRarest({text("/dev/mapper/vg"), text("data-lv0007:")}), QVector<int>{992});
    QCOMPARE(index.holdingRarest({text("data-lv0007:"), text("/dev/mapper/vg")}), QVector<int>{992});
    QCOMPARE(index.holding(text("UUID=\"0999\"")), QVector<int>{0});
}

void TestTextIndex::longWordsAndOneLetterOverAndOver()
{
    const auto slashes = [](int count) { return QString(count, QLatin1Char('/')); };
    const QStringList texts = {slashes(100'000), slashes(200) + QLatin1Char('a'), slashes(199) + QLatin1Char('b'),
                               slashes(64)};
    const TextIndex index(texts);
    for (const int count : {1, 63, 64, 65, 199, 200, 201}) {
        for (const QString &word :
             {slashes(count), slashes(count) + QLatin1Char('a'), slashes(count) + QLatin1Char('b')})
            QCOMPARE(index.holding(word), holdingOneByOne(texts, word));
    }
}

QTEST_GUILESS_MAIN(TestTextIndex)
#include "tst_textindex.moc"
