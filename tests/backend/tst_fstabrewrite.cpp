// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <fstabrewrite.h>

#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryFile>
#include <QtTest>

#include <algorithm>
#include <random>

#include <mntent.h>

namespace
{

const QString Device = QStringLiteral("/dev/sda1");
const QByteArray Spelling = "UUID=a-1";

QString resolve(const QString &spec)
{
    return spec == QString::fromLatin1(Spelling) || spec == Device ? Device : QString();
}

FstabRewrite rewrite(const QByteArray &table, const QStringList &options = {QStringLiteral("usrquota")})
{
    return rewriteFstab(table, Device, options, &resolve);
}

struct Entry
{
    QByteArray fsName, dir, type, opts;
    int freq, passno;

    bool operator==(const Entry &other) const
    {
        return fsName == other.fsName && dir == other.dir && type == other.type && opts == other.opts &&
               freq == other.freq && passno == other.passno;
    }
};

/// As the system's own reader sees a table: through a file, as everybody reads it.
QVector<Entry> entriesOf(const QByteArray &table)
{
    QTemporaryFile file;
    if (!file.open() || file.write(table) != table.size() || !file.flush())
        qFatal("no temporary file");
    QVector<Entry> entries;
    FILE *reader = setmntent(QFile::encodeName(file.fileName()).constData(), "r");
    while (const mntent *read = getmntent(reader))
        entries.append(
            {read->mnt_fsname, read->mnt_dir, read->mnt_type, read->mnt_opts, read->mnt_freq, read->mnt_passno});
    endmntent(reader);
    return entries;
}

/// What the system's other reader sees, in its own words, and whether it understood every line.
QByteArray findmnt(const QByteArray &table, const QStringList &arguments)
{
    QTemporaryFile file;
    if (!file.open() || file.write(table) != table.size() || !file.flush())
        qFatal("no temporary file");
    QProcess program;
    program.start(QStringLiteral("/usr/bin/findmnt"),
                  QStringList{QStringLiteral("--tab-file"), file.fileName()} + arguments);
    if (!program.waitForFinished())
        qFatal("findmnt did not run");
    return program.readAllStandardOutput() + program.readAllStandardError();
}

/// Tables as people, installers and accidents make them.
class Generator
{
public:
    explicit Generator(unsigned seed)
        : _random(seed)
    {}

    int below(int limit) { return std::uniform_int_distribution<int>(0, limit - 1)(_random); }

    QByteArray table()
    {
        QByteArray text;
        const int before = below(6);
        for (int i = 0; i < before; ++i)
            text += anyLine() + '\n';
        text += line(below(2) == 0 ? Spelling : Device.toLatin1()) + '\n';
        const int after = below(6);
        for (int i = 0; i < after; ++i)
            text += anyLine() + '\n';
        // The last line may lack its line feed, but then not end with blanks: there the library's reader takes the
        // numbers of the line before.
        if (below(4) == 0)
            while (text.endsWith('\n') || text.endsWith(' ') || text.endsWith('\t'))
                text.chop(1);
        return text;
    }

private:
    QByteArray anyLine()
    {
        switch (below(6)) {
        case 0:
            return blanks(0) + '#' + bytes(20) + ' ' + bytes(5);
        case 1:
            return blanks(0);
        case 2:
            return line("LABEL=" + word());
        default:
            return line('/' + word());
        }
    }

    QByteArray line(const QByteArray &fsName)
    {
        QByteArray text = blanks(0) + fsName + blanks(1) + '/' + word() + blanks(1) + word();
        const int columns = below(6);
        if (columns > 0)
            text += blanks(1) + options();
        if (columns > 1)
            text += blanks(1) + QByteArray::number(below(3));
        if (columns > 2)
            text += blanks(1) + QByteArray::number(below(12) - 1);
        if (columns > 4)
            text += blanks(1) + "# " + bytes(8);
        return text + blanks(0);
    }

    QByteArray options()
    {
        QByteArray text = word();
        for (int more = below(4); more > 0; --more)
            text += ',' + (below(4) == 0 ? QByteArray("usrquota") : word());
        return text;
    }

    QByteArray blanks(int least)
    {
        QByteArray text;
        for (int count = least + below(3); count > 0; --count)
            text += below(3) == 0 ? '\t' : ' ';
        return text;
    }

    /// Also what has to be escaped, what looks like a place to be filled in, and bytes that are no text at all.
    QByteArray word()
    {
        static const QByteArrayList pieces = {"a",     "data", "%1",         "%3",       "\\040", "\\011",    "\\012",
                                              "\\134", "\\\\", "\\303\\274", "\xc3\xbc", "\xfc",  "\xe2\x82", "=",
                                              "\"",    "-",    "\\054",      "[",        "$(x)",  "'",        "\\"};
        QByteArray text = "w";
        for (int count = below(4); count > 0; --count)
            text += pieces.at(below(pieces.size()));
        return text;
    }

    QByteArray bytes(int longest)
    {
        QByteArray text;
        for (int count = below(longest); count > 0; --count) {
            const char byte = static_cast<char>(1 + below(255));
            text += byte == '\n' ? 'n' : byte;
        }
        return text;
    }

    std::mt19937 _random;
};

} // namespace

class TestFstabRewrite : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void commentsAndBlankLinesGo();
    void columnsArePartedByTwoBlanks();
    void theOptionsOfTheDeviceAreReplaced();
    void theFirstLineOfTheDeviceIsTheOne();
    void otherLinesKeepTheirBytes_data();
    void otherLinesKeepTheirBytes();
    void optionsThatWereThereKeepTheirBytes();
    void newOptionsAreEscaped();
    void emptyOptionsAreDefaults();
    void missingNumbersAreZero();
    void linesThatTheReaderSkipsStay();
    void aLineLongerThanAnyBufferStaysWhole();
    void aTableThatIsNotSafeIsRefused_data();
    void aTableThatIsNotSafeIsRefused();
    void anOptionThatCannotBeReadBackIsRefused();
    void anyTableReadsTheSameButForTheOptions();
    void findmntAgrees();
};

void TestFstabRewrite::commentsAndBlankLinesGo()
{
    QCOMPARE(rewrite("# first\n\n  \t\n/dev/sda1 / ext4 rw 0 1\n   # last\n").content,
             QByteArray("/dev/sda1  /  ext4  usrquota  0  1\n"));
}

void TestFstabRewrite::columnsArePartedByTwoBlanks()
{
    QCOMPARE(rewrite(" \t/dev/sda1\t \t/ ext4\trw 0\t1 \nproc /proc proc defaults 0 0").content,
             QByteArray("/dev/sda1  /  ext4  usrquota  0  1\nproc  /proc  proc  defaults  0  0\n"));
}

void TestFstabRewrite::theOptionsOfTheDeviceAreReplaced()
{
    QCOMPARE(rewrite("UUID=a-1 / ext4 errors=remount-ro,grpquota 0 1\n",
                     {QStringLiteral("errors=remount-ro"), QStringLiteral("usrquota")})
                 .content,
             QByteArray("UUID=a-1  /  ext4  errors=remount-ro,usrquota  0  1\n"));
}

/// It is the one whose options the device table tells; the other line's are its own.
void TestFstabRewrite::theFirstLineOfTheDeviceIsTheOne()
{
    QCOMPARE(rewrite("/dev/sda1 / ext4 rw 0 1\nUUID=a-1 /again ext4 ro,noauto 0 0\n").content,
             QByteArray("/dev/sda1  /  ext4  usrquota  0  1\nUUID=a-1  /again  ext4  ro,noauto  0  0\n"));
}

void TestFstabRewrite::otherLinesKeepTheirBytes_data()
{
    QTest::addColumn<QByteArray>("line");
    QTest::newRow("label") << QByteArray("LABEL=a-1  /srv  ext4  usrquota,grpquota  1  2");
    QTest::newRow("blank in octal") << QByteArray("/dev/sdb1  /srv/a\\040b  ext4  rw  0  0");
    QTest::newRow("tab, line feed, backslash") << QByteArray("/dev/sdb1  /s\\011\\012\\134  ext4  rw  0  0");
    QTest::newRow("two backslashes") << QByteArray("/dev/sdb1  /srv\\\\x  ext4  rw  0  0");
    QTest::newRow("octal of other readers") << QByteArray("/dev/sdb1  /gr\\303\\274n\\043  ext4  rw  0  0");
    QTest::newRow("Latin-1") << QByteArray("/dev/sdb1  /gr\xfcn  ext4  rw,comment=\xfc  0  0");
    QTest::newRow("UTF-8") << QByteArray("/dev/sdb1  /gr\xc3\xbcn  ext4  rw  0  0");
    QTest::newRow("places to fill in") << QByteArray("/dev/%1  /%3%4  %2  %5,%99  0  0");
    QTest::newRow("negative number") << QByteArray("/dev/sdb1  /srv  ext4  rw  0  -1");
    QTest::newRow("carriage return in a word") << QByteArray("/dev/sdb1  /srv\rx  ext4  rw  0  0");
}

void TestFstabRewrite::otherLinesKeepTheirBytes()
{
    QFETCH(QByteArray, line);
    const FstabRewrite result = rewrite("/dev/sda1 / ext4 rw 0 1\n" + line + '\n');
    QCOMPARE(result.refusal, QString());
    QCOMPARE(result.content, "/dev/sda1  /  ext4  usrquota  0  1\n" + line + '\n');
}

void TestFstabRewrite::optionsThatWereThereKeepTheirBytes()
{
    const QByteArray latin = "x-name=\xfc\\040b";
    const QStringList options{QString::fromLocal8Bit("x-name=\xfc b"), QStringLiteral("ro"),
                              QStringLiteral("usrquota")};
    QCOMPARE(rewrite("/dev/sda1 / ext4 " + latin + ",ro 0 1\n", options).content,
             "/dev/sda1  /  ext4  " + latin + ",ro,usrquota  0  1\n");
}

void TestFstabRewrite::newOptionsAreEscaped()
{
    QCOMPARE(rewrite("/dev/sda1 / ext4 rw 0 1\n", {QStringLiteral("x-a=1 2\t3\n4\\5")}).content,
             QByteArray("/dev/sda1  /  ext4  x-a=1\\0402\\0113\\0124\\1345  0  1\n"));
}

void TestFstabRewrite::emptyOptionsAreDefaults()
{
    QCOMPARE(rewrite("/dev/sda1 / ext4 usrquota 0 1\n/dev/sdb1 /srv ext4\n", {}).content,
             QByteArray("/dev/sda1  /  ext4  defaults  0  1\n/dev/sdb1  /srv  ext4  defaults  0  0\n"));
}

void TestFstabRewrite::missingNumbersAreZero()
{
    QCOMPARE(rewrite("/dev/sda1 / ext4 rw\n/dev/sdb1 /srv ext4 rw 1\n/dev/sdc1 /x ext4 rw # why\n").content,
             QByteArray("/dev/sda1  /  ext4  usrquota  0  0\n/dev/sdb1  /srv  ext4  rw  1  0\n"
                        "/dev/sdc1  /x  ext4  rw  0  0\n"));
}

/// The library keeps automounters' lines with "ignore" to itself; mounting them is others' business.
void TestFstabRewrite::linesThatTheReaderSkipsStay()
{
    const QByteArray skipped = "auto.home /home autofs ignore,rw 0 0\n";
    QCOMPARE(entriesOf(skipped).size(), 0);
    QCOMPARE(rewrite(skipped + "/dev/sda1 / ext4 rw 0 1\n").content, skipped + "/dev/sda1  /  ext4  usrquota  0  1\n");
}

void TestFstabRewrite::aLineLongerThanAnyBufferStaysWhole()
{
    const QByteArray longPath(200000, 'x');
    QCOMPARE(rewrite("/dev/sda1 / ext4 rw 0 1\n/dev/sdb1 /" + longPath + " ext4 rw 0 0\n").content,
             "/dev/sda1  /  ext4  usrquota  0  1\n/dev/sdb1  /" + longPath + "  ext4  rw  0  0\n");
}

void TestFstabRewrite::aTableThatIsNotSafeIsRefused_data()
{
    const auto text = [](const char *reason) {
        return QStringLiteral("File /etc/fstab was not changed: ") + QLatin1String(reason);
    };
    QTest::addColumn<QByteArray>("table");
    QTest::addColumn<QString>("refusal");
    const QByteArray own = "# a comment\n/dev/sda1 / ext4 rw 0 1\n";
    QTest::newRow("no mount point") << own + "/dev/sdb1\n"
                                    << text("its line 3 lacks a mount point or a file system type: /dev/sdb1");
    QTest::newRow("no type") << own + "\n/dev/sdb1 /srv\n"
                             << text("its line 4 lacks a mount point or a file system type: /dev/sdb1 /srv");
    QTest::newRow("no line of the device")
        << QByteArray("LABEL=x / ext4 rw 0 1\n/dev/sda10 /srv ext4 rw 0 0\n")
        << text("none of its lines names the device /dev/sda1 by its path or by UUID=");
    QTest::newRow("only a comment") << QByteArray("#/dev/sda1 / ext4 rw 0 1\n")
                                    << text("none of its lines names the device /dev/sda1 by its path or by UUID=");
    QTest::newRow("empty") << QByteArray()
                           << text("none of its lines names the device /dev/sda1 by its path or by UUID=");
    QTest::newRow("NUL byte") << own + QByteArray("/dev/sdb1 /s\0v ext4 rw 0 0\nproc /proc proc rw 0 0\n", 49)
                              << text("it contains a NUL byte");
}

void TestFstabRewrite::aTableThatIsNotSafeIsRefused()
{
    QFETCH(QByteArray, table);
    QFETCH(QString, refusal);
    const FstabRewrite result = rewrite(table);
    QCOMPARE(result.refusal, refusal);
    QCOMPARE(result.content, QByteArray());
}

void TestFstabRewrite::anOptionThatCannotBeReadBackIsRefused()
{
    const FstabRewrite result = rewrite("/dev/sda1 / ext4 rw 0 1\n", {QString(1, QChar(0))});
    QCOMPARE(result.refusal, QStringLiteral("File /etc/fstab was not changed: it would not read the same afterwards"));
    QCOMPARE(result.content, QByteArray());
}

void TestFstabRewrite::anyTableReadsTheSameButForTheOptions()
{
    constexpr unsigned tables = 3000;
    for (unsigned seed = 1; seed <= tables; ++seed) {
        const QByteArray table = Generator(seed).table();
        QVector<Entry> wanted = entriesOf(table);
        const auto own = std::find_if(wanted.begin(), wanted.end(), [](const Entry &entry) {
            return !resolve(QString::fromLocal8Bit(entry.fsName)).isEmpty();
        });
        QVERIFY(own != wanted.end());
        const bool hasOptions = !own->opts.isEmpty();
        for (Entry &entry : wanted)
            if (entry.opts.isEmpty())
                entry.opts = "defaults";
        QStringList options;
        if (hasOptions)
            options = QString::fromLocal8Bit(own->opts).split(QLatin1Char(','));
        options.append(QStringLiteral("grpquota"));
        own->opts = hasOptions ? own->opts + ",grpquota" : "grpquota";

        const FstabRewrite added = rewrite(table, options);
        QVERIFY2(added.refusal.isEmpty(), (added.refusal.toUtf8() + '\n' + table).constData());
        QVERIFY2(entriesOf(added.content) == wanted, table + "became\n" + added.content);

        // Another pass with the option taken out again changes nothing else, down to the bytes.
        options.removeLast();
        const FstabRewrite removed = rewrite(added.content, options);
        const QByteArray expected =
            QByteArray(added.content).replace(hasOptions ? ",grpquota" : "grpquota", hasOptions ? "" : "defaults");
        QCOMPARE(removed.content, expected);
    }
}

/// It reads tables by rules of its own, and warns of what it does not understand.
void TestFstabRewrite::findmntAgrees()
{
    const QStringList list{QStringLiteral("--noheadings"), QStringLiteral("--raw"), QStringLiteral("--output"),
                           QStringLiteral("SOURCE,TARGET,FSTYPE,OPTIONS,FREQ,PASSNO")};
    const QByteArray table = "# made by hand\n"
                             "proc /proc proc defaults 0 0\n"
                             "\n"
                             "/dev/sda1 /  ext4 errors=remount-ro 0 1 # the root\n"
                             "/dev/sdb1\t/srv/a\\040b\\134c ext4 x-note=\\303\\274,rw 1 2\n"
                             "/dev/sdc1 /srv/gr\xc3\xbcn\\043 ext4\n"
                             "LABEL=%3 /srv/%1 xfs noauto,usrquota 0 0\n"
                             "tmpfs /tmp tmpfs size=1g,mode=1777 0 0\n";
    const QByteArray rewritten =
        rewrite(table, {QStringLiteral("errors=remount-ro"), QStringLiteral("usrquota")}).content;
    QVERIFY(!rewritten.isEmpty());

    const QByteArray before = findmnt(table, list);
    QCOMPARE(before.count('\n'), 6);
    QByteArray wanted = before;
    wanted.replace("errors=remount-ro", "errors=remount-ro,usrquota").replace("# ext4  0 0", "# ext4 defaults 0 0");
    QCOMPARE(findmnt(rewritten, list), wanted);

    const auto parseErrors = [](const QByteArray &text) {
        const QString report = QString::fromUtf8(findmnt(text, {QStringLiteral("--verify")}));
        const QRegularExpressionMatch count =
            QRegularExpression(QStringLiteral("(\\d+) parse errors|(Success)")).match(report);
        return count.hasMatch() ? count.captured(1).toInt() : -1;
    };
    QCOMPARE(parseErrors(table), 0);
    QCOMPARE(parseErrors(rewritten), 0);
    constexpr unsigned tables = 40;
    for (unsigned seed = 1; seed <= tables; ++seed) {
        const QByteArray made = Generator(seed).table();
        const int errors = parseErrors(made);
        QVERIFY2(errors >= 0, made);
        const QByteArray after = rewrite(made).content;
        QVERIFY2(parseErrors(after) <= errors, made + "became\n" + after);
    }
}

QTEST_GUILESS_MAIN(TestFstabRewrite)

#include "tst_fstabrewrite.moc"
