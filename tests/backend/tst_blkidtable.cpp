// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <blkidtable.h>
#include <quotamanager.h>

#include <QRandomGenerator>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QtTest>

namespace
{

QString text(const char *bytes)
{
    return QString::fromUtf8(bytes);
}

/// The line with the labels blanked that could be taken for more than a label, found letter by letter.
QString blanked(const QString &line)
{
    QString result = line;
    for (int at = 0; at < result.size(); ++at) {
        int end = at;
        while (end < result.size() &&
               (QStringLiteral("ABCDEFGHIJKLMNOPQRSTUVWXYZ_0123456789").contains(result.at(end)) && end - at >= 0))
            ++end;
        while (at < end && (result.at(at).isDigit() || result.at(at) == QLatin1Char('_')))
            ++at; // a key begins with a letter
        if (at == end || result.mid(end, 2) != QLatin1String("=\""))
            continue;
        int close = end + 2;
        while (close < result.size() && result.at(close) != QLatin1Char('"'))
            close += result.at(close) == QLatin1Char('\\') ? 2 : 1;
        if (close >= result.size())
            continue;
        const QString key = result.mid(at, end - at);
        QString value = result.mid(end + 2, close - end - 2);
        bool isRisky = false;
        for (int i = 0; i < value.size(); ++i) {
            if (value.at(i) == QLatin1Char('\\') && value.mid(i + 1, 1) == QLatin1String("\\"))
                ++i;
            isRisky = isRisky || QStringLiteral("/:=\"'").contains(value.at(i));
        }
        at = close;
        if (key.contains(QLatin1String("LABEL")) && isRisky) {
            result.remove(end + 2, value.size());
            at = end + 2;
        }
    }
    return result;
}

/// The question put step by step to every line, without anything remembered or cut short.
QString resolvedStepByStep(const QString &spec, const QStringList &lines)
{
    for (const QString &printed : lines) {
        const QString line = blanked(printed);
        QString needle;
        if (spec.startsWith(QLatin1Char('/'))) {
            needle = spec + QLatin1Char(':');
        } else {
            for (const char *key : {"UUID", "LABEL", "PARTLABEL", "PARTUUID"}) {
                if (spec.startsWith(QLatin1String(key)))
                    needle =
                        QStringLiteral("%1=\"%2\"")
                            .arg(QLatin1String(key), spec.mid(4).remove(QRegularExpression(QStringLiteral("[\"=]"))));
            }
        }
        if (needle.isEmpty())
            continue;
        const QRegularExpression pattern(needle);
        if (pattern.isValid() && pattern.match(line).hasMatch())
            return QRegularExpression(QStringLiteral("^(.+):")).match(line).captured(1);
    }
    return {};
}

QStringList quotaDevicesStepByStep(const QString &spec, const QStringList &lines)
{
    QStringList devices;
    for (const QString &printed : lines) {
        const QString line = blanked(printed).remove(QLatin1Char('"'));
        if (!line.contains(spec))
            continue;
        const QString type = QRegularExpression(QStringLiteral("TYPE=(\\S+) ?")).match(line).captured(1);
        if (type != QLatin1String("ext2") && type != QLatin1String("ext3") && type != QLatin1String("ext4"))
            continue;
        const QRegularExpressionMatch path = QRegularExpression(QStringLiteral("^(/\\S+): ")).match(line);
        if (path.hasMatch())
            devices.append(path.captured(1));
    }
    return devices;
}

/// Words that put together make spellings and lines of every kind: whole, broken, and full of expression characters.
QString randomText(QRandomGenerator &random, int words)
{
    static const QStringList parts = {
        text("/dev/sda1"), text("/dev/sda10"), text(":"),      text(": "),       text("UUID"), text("LABEL"),
        text("PARTUUID"),  text("PARTLABEL"),  text("="),      text("\""),       text("abc"),  text("a.c"),
        text("["),         text("]"),          text("("),      text(")"),        text("*"),    text("+"),
        text("?"),         text("\\"),         text("^"),      text("$"),        text("|"),    text(" "),
        text("TYPE=ext4"), text(" TYPE=\""),   text("ext2\""), text("SEC_TYPE"), text("é"),    text("/"),
        text("UUID=\""),   text("abc\""),      text("x"),      text("-1_2")};
    QString result;
    for (int i = 0; i < words; ++i)
        result += parts.at(random.bounded(parts.size()));
    return result;
}

QStringList randomLines(QRandomGenerator &random)
{
    QStringList lines;
    const int count = random.bounded(6);
    for (int i = 0; i < count; ++i)
        lines.append(randomText(random, 1 + random.bounded(8)));
    return lines;
}

/// Counts what reaches the log while it lives.
class LogCounter
{
public:
    LogCounter()
    {
        count = 0;
        _previous = qInstallMessageHandler([](QtMsgType, const QMessageLogContext &, const QString &) { ++count; });
    }
    LogCounter(const LogCounter &) = delete;
    LogCounter &operator=(const LogCounter &) = delete;
    ~LogCounter() { qInstallMessageHandler(_previous); }

    static inline int count = 0;

private:
    QtMessageHandler _previous;
};

} // namespace

class TestBlkidTable : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void resolves_data();
    void resolves();
    void patternThatDoesNotCompileMatchesNothingAndPrintsNothing();
    void firstMatchingLineWins();
    void resolvesByTheGivenLinesOnly();
    void findsQuotaDevices_data();
    void findsQuotaDevices();
    void deviceIsFoundOnEveryLineThatHoldsItsSpelling();
    void answersAreThoseOfTheStepsOneByOne();
    void labelsAreNoPartOfAnotherDevice();
    void findsWhatMountWouldFind();
    void findsTheFirstOfTwo();
};

void TestBlkidTable::resolves_data()
{
    QTest::addColumn<QString>("spec");
    QTest::addColumn<QString>("line");
    QTest::addColumn<QString>("path");
    const auto row = [](const char *name, const char *spec, const char *line, const char *path) {
        QTest::newRow(name) << text(spec) << text(line) << text(path);
    };
    const char *line = R"(/dev/sda1: LABEL="x" UUID="abc" BLOCK_SIZE="4096" TYPE="ext4" PARTLABEL="p" PARTUUID="u-1")";
    row("a path", "/dev/sda1", line, "/dev/sda1");
    row("a path that is not there", "/dev/sda2", line, "");
    row("a path is not found by its beginning", "/dev/sda", line, "");
    row("a path is found by its end", "/sda1", line, "/dev/sda1");
    row("a UUID", "UUID=abc", line, "/dev/sda1");
    row("a UUID in double quotes", "UUID=\"abc\"", line, "/dev/sda1");
    row("a UUID in another case", "UUID=ABC", line, "");
    row("a part of a UUID", "UUID=ab", line, "");
    row("a UUID that is the end of another key's value", "UUID=u-1", line, "/dev/sda1");
    row("a LABEL resolves to nothing", "LABEL=x", line, "");
    row("a PARTLABEL resolves to nothing", "PARTLABEL=p", line, "");
    row("a PARTUUID resolves to nothing", "PARTUUID=u-1", line, "");
    row("a LABEL is cut behind its fourth letter", "LABEL=x", R"(/dev/sda1: LABEL="Lx")", "/dev/sda1");
    row("no device at all", "tmpfs", line, "");
    row("an empty spelling", "", line, "");
    row("a key alone", "UUID", R"(/dev/sda1: UUID="")", "/dev/sda1");
    row("expression characters are an expression", "/dev/sd.1", line, "/dev/sda1");
    row("an expression for any line", "/.*", line, "/dev/sda1");
    row("an alternative", "UUID=x|abc", line, "/dev/sda1");
    row("a mapped device with a dot", "/dev/mapper/vg.a-home", R"(/dev/mapper/vg.a-home: UUID="1")",
        "/dev/mapper/vg.a-home");
    row("letters beyond ASCII", "/dev/mapper/größe", R"(/dev/mapper/größe: UUID="1")", "/dev/mapper/größe");
    row("a colon in a label", "UUID=abc", R"(/dev/sda1: LABEL="a:b" UUID="abc")", "/dev/sda1");
    row("a colon in another value reaches into the path", "UUID=abc", R"(/dev/sda1: X="a:b" UUID="abc")",
        R"(/dev/sda1: X="a)");
    row("a label that is another's path", "/dev/vda1", R"(/dev/sda1: LABEL="/dev/vda1:" UUID="abc")", "");
    row("a label that is another's UUID", "UUID=v", R"(/dev/sda1: LABEL="x\" UUID=\"v" UUID="abc")", "");
    row("a name of a partition that is another's UUID", "UUID=v", R"(/dev/sda1: PARTLABEL="UUID=\"v\"")", "");
    row("a label that ends with a backslash", "UUID=abc", R"(/dev/sda1: LABEL="a:\\" UUID="abc")", "/dev/sda1");
    row("a label of a boot sector", "/dev/vda1", R"(/dev/sda1: LABEL_FATBOOT="/dev/vda1:" UUID="abc")", "");
    row("a label within a label", "UUID=v", R"(/dev/sda1: LABEL="LABEL=\"x\" UUID=\"v\"" TYPE="ext4")", "");
    row("a line without a path", "UUID=abc", R"(UUID="abc")", "");
}

void TestBlkidTable::resolves()
{
    QFETCH(QString, spec);
    QFETCH(QString, line);
    QuotaManager manager;
    QTEST(manager.resolveDevice(spec, {QString(), line, QString()}), "path");
}

void TestBlkidTable::patternThatDoesNotCompileMatchesNothingAndPrintsNothing()
{
    const QStringList lines = {text("/dev/sd[a: UUID=\"(\""), text("/dev/sda1: UUID=\"abc\"")};
    QuotaManager manager;
    const LogCounter log;
    QCOMPARE(manager.resolveDevice(text("/dev/sd[a"), lines), QString());
    QCOMPARE(manager.resolveDevice(text("UUID=("), lines), QString());
    QCOMPARE(manager.resolveDevice(text("UUID=(?"), lines), QString());
    QCOMPARE(log.count, 0);
}

void TestBlkidTable::firstMatchingLineWins()
{
    const BlkidTable table({text("/dev/sdb1: UUID=\"abc\""), text("/dev/sdc1: UUID=\"abc\"")});
    QCOMPARE(table.resolve(text("UUID=abc")), text("/dev/sdb1"));
}

void TestBlkidTable::resolvesByTheGivenLinesOnly()
{
    const QString spec = text("UUID=abc");
    const QStringList before = {text("/dev/sdb1: UUID=\"abc\"")};
    const QStringList after = {text("/dev/sdc1: UUID=\"abc\"")};
    QuotaManager manager;
    QCOMPARE(manager.resolveDevice(spec, before), text("/dev/sdb1"));
    QCOMPARE(manager.resolveDevice(spec, after), text("/dev/sdc1"));
    QCOMPARE(manager.resolveDevice(spec, before), text("/dev/sdb1"));
    QCOMPARE(manager.resolveDevice(spec, {}), QString());
}

void TestBlkidTable::findsQuotaDevices_data()
{
    QTest::addColumn<QString>("spec");
    QTest::addColumn<QString>("line");
    QTest::addColumn<QStringList>("devices");
    const auto row = [](const char *name, const char *spec, const char *line, const QStringList &devices) {
        QTest::newRow(name) << text(spec) << text(line) << devices;
    };
    const QStringList sda1 = {text("/dev/sda1")};
    row("ext2", "/dev/sda1", R"(/dev/sda1: UUID="1" TYPE="ext2")", sda1);
    row("ext3", "/dev/sda1", R"(/dev/sda1: UUID="1" TYPE="ext3" PARTUUID="2")", sda1);
    row("ext4", "/dev/sda1", R"(/dev/sda1: UUID="1" TYPE="ext4")", sda1);
    row("xfs", "/dev/sda1", R"(/dev/sda1: UUID="1" TYPE="xfs")", {});
    row("btrfs", "/dev/sda1", R"(/dev/sda1: UUID="1" TYPE="btrfs")", {});
    row("a type in capitals", "/dev/sda1", R"(/dev/sda1: UUID="1" TYPE="EXT4")", {});
    row("a type that only begins so", "/dev/sda1", R"(/dev/sda1: UUID="1" TYPE="ext4dev")", {});
    row("no type", "/dev/sda1", R"(/dev/sda1: UUID="1")", {});
    row("by UUID", "UUID=1", R"(/dev/sda1: UUID="1" TYPE="ext4")", sda1);
    row("by LABEL", "LABEL=home", R"(/dev/sda1: LABEL="home" TYPE="ext4")", sda1);
    row("by PARTUUID", "PARTUUID=2", R"(/dev/sda1: TYPE="ext4" PARTUUID="2")", sda1);
    row("double quotes in the spelling are not found", "UUID=\"1\"", R"(/dev/sda1: UUID="1" TYPE="ext4")", {});
    row("in another case", "/DEV/SDA1", R"(/dev/sda1: TYPE="ext4")", {});
    row("expression characters are letters", "/dev/sd.1", R"(/dev/sda1: TYPE="ext4")", {});
    row("the first TYPE counts, as of SEC_TYPE", "/dev/sda1", R"(/dev/sda1: SEC_TYPE="ext2" TYPE="xfs")", sda1);
    row("the first TYPE counts, as of PTTYPE", "/dev/sda1", R"(/dev/sda1: PTTYPE="dos" TYPE="ext4")", {});
    row("no blank behind the colon", "/dev/sda1", R"(/dev/sda1:TYPE="ext4")", {});
    row("a line that does not begin with a path", "sda1", R"(sda1: TYPE="ext4")", {});
    row("the line of a longer name", "/dev/sda1", R"(/dev/sda10: TYPE="ext4")", {text("/dev/sda10")});
}

void TestBlkidTable::findsQuotaDevices()
{
    QFETCH(QString, spec);
    QFETCH(QString, line);
    const BlkidTable table({line, QString()});
    QTEST(table.quotaDevices(spec), "devices");
}

void TestBlkidTable::deviceIsFoundOnEveryLineThatHoldsItsSpelling()
{
    const BlkidTable table({text("/dev/sda10: TYPE=\"ext4\""), text("/dev/sdb1: TYPE=\"xfs\""),
                            text("/dev/sda1: TYPE=\"ext3\""), text("/dev/sda10: TYPE=\"ext4\"")});
    QCOMPARE(table.quotaDevices(text("/dev/sda1")),
             (QStringList{text("/dev/sda10"), text("/dev/sda1"), text("/dev/sda10")}));
}

/// Anybody who formats a stick chooses its label.
void TestBlkidTable::labelsAreNoPartOfAnotherDevice()
{
    const BlkidTable table({text(R"(/dev/sdz1: LABEL="/dev/vda1: TYPE=ext4" UUID="z" TYPE="vfat")"),
                            text(R"(/dev/sdz2: LABEL="UUID=v" UUID="y" TYPE="ext4" PARTLABEL="UUID=v")"),
                            text(R"(/dev/vda1: LABEL="my:disk" UUID="v" TYPE="ext4")"),
                            text(R"(/dev/vda2: LABEL="/home" UUID="h" TYPE="ext4")")});
    QCOMPARE(table.resolve(text("/dev/vda1")), text("/dev/vda1"));
    QCOMPARE(table.resolve(text("UUID=v")), text("/dev/vda1"));
    QCOMPARE(table.quotaDevices(text("/dev/vda1")), QStringList{text("/dev/vda1")});
    QCOMPARE(table.quotaDevices(text("UUID=v")), QStringList{text("/dev/vda1")});
    QCOMPARE(table.quotaDevices(text("UUID=z")), QStringList());
    // A spelling that is the label itself finds its device all the same.
    QCOMPARE(table.quotaDevices(text("LABEL=/home")), QStringList{text("/dev/vda2")});
    QCOMPARE(table.quotaDevices(text("LABEL=my:disk")), QStringList{text("/dev/vda1")});
    QCOMPARE(table.quotaDevices(text("LABEL=my")), QStringList());
    QCOMPARE(table.resolve(text("LABEL=/home")), QString());
}

void TestBlkidTable::findsWhatMountWouldFind()
{
    QTemporaryDir folder(text("/dev/shm/kra-XXXXXX"));
    QVERIFY(folder.isValid());
    const QString disk = folder.filePath(text("dm-0"));
    const QString name = folder.filePath(text("vg-home"));
    QFile file(disk);
    QVERIFY(file.open(QIODevice::WriteOnly));
    QVERIFY(QFile::link(disk, name));
    const BlkidTable table({text(R"(/dev/sda10: UUID="10" TYPE="swap")"),
                            text(R"(/dev/sda1: LABEL="a \"b\"" UUID="1" TYPE="ext4" PARTUUID="p")"),
                            disk + text(R"(: UUID="h" PTTYPE="dos" TYPE="ext3")"), text("noise")});
    const auto path = [&table](const QString &spec) {
        const std::optional<BlkidTable::Device> device = table.find(spec);
        return device ? device->path : QString();
    };
    QCOMPARE(path(text("/dev/sda1")), text("/dev/sda1"));
    QCOMPARE(path(text("UUID=\"1\"")), text("/dev/sda1"));
    QCOMPARE(path(text("PARTUUID=p")), text("/dev/sda1"));
    QCOMPARE(path(text("UUID=p")), QString());
    QCOMPARE(path(text("LABEL=a \"b\"")), QString()); // no table of file systems can spell that
    QCOMPARE(path(name), disk);
    QCOMPARE(path(text("/dev/sda")), QString());
    QCOMPARE(path(text("noise")), QString());
    QCOMPARE(table.find(name)->type, text("ext3"));
    QCOMPARE(table.find(name)->firstType, text("dos"));
    QCOMPARE(table.find(name)->uuid, text("h"));
}

void TestBlkidTable::findsTheFirstOfTwo()
{
    const BlkidTable table({text(R"(UUID="1")"), text(R"(/dev/sda1: LABEL="x" UUID="1" TYPE="ext2")"),
                            text(R"(/dev/sda1: LABEL="x" UUID="1" TYPE="ext3")")});
    QCOMPARE(table.find(text("/dev/sda1"))->type, text("ext2"));
    QCOMPARE(table.find(text("UUID=1"))->type, text("ext2"));
    QCOMPARE(table.find(text("LABEL=x"))->type, text("ext2"));
    QVERIFY(!table.find(text("LABEL=")));
    QVERIFY(!table.find(text("UUID")));
}

void TestBlkidTable::answersAreThoseOfTheStepsOneByOne()
{
    QRandomGenerator random(20261121);
    for (int round = 0; round < 3000; ++round) {
        const QStringList lines = randomLines(random);
        const BlkidTable table(lines);
        for (int question = 0; question < 4; ++question) {
            const QString spec = randomText(random, random.bounded(4));
            QCOMPARE(table.resolve(spec), resolvedStepByStep(spec, lines));
            QCOMPARE(table.quotaDevices(spec), quotaDevicesStepByStep(spec, lines));
        }
    }
}

QTEST_GUILESS_MAIN(TestBlkidTable)
#include "tst_blkidtable.moc"
