// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <accountfile.h>

#include <QRandomGenerator>
#include <QTextCodec>
#include <QtTest>

/// The names and ids alone, beside what the library makes of the same bytes.
class TestAccountFile : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void namesAndIdsAreThoseOfTheLibrary_data();
    void namesAndIdsAreThoseOfTheLibrary();
    void namesAndIdsOfRandomFilesAreThoseOfTheLibrary();
    void aFileWithoutBytesHasNoAccounts();
};

namespace
{

QStringList told(const QVector<AccountId> &accounts)
{
    QStringList all;
    for (const AccountId &account : accounts)
        all.append(QStringLiteral("%1=%2").arg(account.name).arg(account.id));
    return all;
}

QStringList usersOfTheLibrary(const QByteArray &bytes)
{
    QStringList all;
    for (const PasswdEntry &entry : AccountFile::users(bytes))
        all.append(QStringLiteral("%1=%2").arg(entry.name).arg(entry.uid));
    return all;
}

QStringList groupsOfTheLibrary(const QByteArray &bytes)
{
    QStringList all;
    for (const GroupEntry &entry : AccountFile::groups(bytes))
        all.append(QStringLiteral("%1=%2").arg(entry.name).arg(entry.gid));
    return all;
}

/// What account lines are made of, and what breaks them.
QByteArray randomBytes(QRandomGenerator &random)
{
    static const QVector<QByteArray> pieces = {
        "anna",
        "x",
        ":",
        "::",
        ":1000:",
        ":x:1000:100:",
        "0",
        "007",
        "4294967295",
        "4294967296",
        "-1",
        "+1",
        "1000 ",
        " 1000",
        "0x10",
        "\n",
        "\n",
        "\n",
        "+",
        "-",
        "#",
        " ",
        "\t",
        "\v",
        "\r",
        ",",
        "a,b",
        "gr\xc3\xbc",
        "\xff",
        QByteArray("\0", 1),
        ":x:1:1::/:/bin/sh\n",
        ":*:50:zoe,anna\n",
        "99999999999999999999",
    };
    QByteArray bytes;
    for (int i = random.bounded(40); i > 0; --i)
        bytes += pieces.at(random.bounded(pieces.size()));
    return bytes;
}

} // namespace

void TestAccountFile::initTestCase()
{
    QTextCodec::setCodecForLocale(QTextCodec::codecForName("UTF-8"));
}

void TestAccountFile::namesAndIdsAreThoseOfTheLibrary_data()
{
    QTest::addColumn<QByteArray>("line");
    QTest::addColumn<int>("users");
    QTest::newRow("as nearly all are") << QByteArray("anna:x:1000:100:Anna,,,:/home/anna:/bin/sh") << 1;
    QTest::newRow("the last id") << QByteArray("anna:x:4294967295:4294967295::/:/bin/sh") << 1;
    QTest::newRow("an id beyond") << QByteArray("anna:x:4294967296:1::/:/bin/sh") << 0;
    QTest::newRow("a name of other letters") << QByteArray("gr\xc3\xbc\xc3\x9f"
                                                           "e:x:1:1::/:/bin/sh")
                                             << 1;
    QTest::newRow("no name") << QByteArray(":x:1:1::/:/bin/sh") << 1;
    QTest::newRow("blanks before the name") << QByteArray(" \tanna:x:1:1::/:/bin/sh") << 1;
    QTest::newRow("a comment") << QByteArray("#anna:x:1:1::/:/bin/sh") << 0;
    QTest::newRow("blank") << QByteArray("  ") << 0;
    QTest::newRow("no number") << QByteArray("anna:x:a:1::/:/bin/sh") << 0;
    QTest::newRow("a number with a tail") << QByteArray("anna:x:1a:1::/:/bin/sh") << 0;
    QTest::newRow("a number with a sign") << QByteArray("anna:x:-1:1::/:/bin/sh") << 0;
    QTest::newRow("ends with the numbers") << QByteArray("anna:x:1:1") << 1;
    QTest::newRow("of another service") << QByteArray("+anna") << 1;
    QTest::newRow("of another service, with fields") << QByteArray("+anna:x:5:6:::") << 1;
    QTest::newRow("a zero byte") << QByteArray("an\0na:x:1:1::/:/bin/sh", 22) << 0;
    QTest::newRow("a zero byte behind the numbers") << QByteArray("anna:x:1:1:\0:/:/bin/sh", 22) << 1;
}

void TestAccountFile::namesAndIdsAreThoseOfTheLibrary()
{
    QFETCH(QByteArray, line);
    QFETCH(int, users);
    for (const QByteArray &bytes : {line, line + '\n', "a:x:1:1::/:/bin/sh\n" + line + "\nb:x:2:2::/:/bin/sh\n"}) {
        QCOMPARE(told(AccountFile::userIds(bytes)), usersOfTheLibrary(bytes));
        QCOMPARE(told(AccountFile::groupIds(bytes)), groupsOfTheLibrary(bytes));
    }
    QCOMPARE(AccountFile::userIds(line).size(), users);
}

void TestAccountFile::namesAndIdsOfRandomFilesAreThoseOfTheLibrary()
{
    bool isGiven = false;
    const int given = qEnvironmentVariableIntValue("KRA_SEED", &isGiven);
    const quint32 seed = isGiven ? static_cast<quint32>(given) : QRandomGenerator::system()->generate() >> 1;
    qInfo("KRA_SEED=%u", seed);
    QRandomGenerator random(seed);
    int accounts = 0;
    for (int round = 0; round < 20000; ++round) {
        const QByteArray bytes = randomBytes(random);
        const QStringList users = usersOfTheLibrary(bytes);
        const QStringList groups = groupsOfTheLibrary(bytes);
        QCOMPARE(told(AccountFile::userIds(bytes)), users);
        QCOMPARE(told(AccountFile::groupIds(bytes)), groups);
        accounts += users.size();
    }
    QVERIFY(accounts > 1000);
}

void TestAccountFile::aFileWithoutBytesHasNoAccounts()
{
    QVERIFY(AccountFile::userIds({}).isEmpty());
    QVERIFY(AccountFile::users({}).isEmpty());
    QVERIFY(AccountFile::groupIds({}).isEmpty());
    QVERIFY(AccountFile::groups({}).isEmpty());
}

QTEST_GUILESS_MAIN(TestAccountFile)
#include "tst_accountfile.moc"
