// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <blkidtable.h>
#include <fstabrewrite.h>

#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryFile>
#include <QTextCodec>
#include <QtTest>

#include <algorithm>
#include <random>

#include <mntent.h>

namespace
{

const QString Device = QStringLiteral("/dev/sda1");
const QByteArray Spelling = "UUID=a-1";

const BlkidTable &blkid()
{
    static const BlkidTable table({QStringLiteral("/dev/sda1: LABEL=\"home\" UUID=\"a-1\" TYPE=\"ext4\""),
                                   QStringLiteral("/dev/sda10: LABEL=\"other\" UUID=\"a-10\" TYPE=\"ext4\"")});
    return table;
}

FstabRewrite rewrite(const QByteArray &table, const OptionChange &change)
{
    return rewriteFstab(table, Device, change, blkid());
}

FstabRewrite rewrite(const QByteArray &table, const QStringList &options = {QStringLiteral("usrquota")})
{
    return rewrite(table, {OptionChange::Step::Replace, UserQuota, options});
}

const OptionChange AddUser = {OptionChange::Step::Add, UserQuota};
const OptionChange AddGroup = {OptionChange::Step::Add, GroupQuota};
const OptionChange RemoveUser = {OptionChange::Step::Remove, UserQuota};
const OptionChange RemoveGroup = {OptionChange::Step::Remove, GroupQuota};

QString refusal(const char *reason)
{
    return QStringLiteral("File /etc/fstab was not changed: ") + QString::fromUtf8(reason);
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
        for (int own = 1 + below(4) / 3; own > 0; --own)
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
            text += ',' + (below(4) == 0 ? below(2) ? QByteArray("usrquota") : QByteArray("grpquota") : word());
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
    void initTestCase() { QTextCodec::setCodecForLocale(QTextCodec::codecForName("UTF-8")); }
    void commentsAndBlankLinesGo();
    void columnsArePartedByTwoBlanks();
    void theOptionsOfTheDeviceAreReplaced();
    void everyLineOfTheDeviceIsReplaced();
    void everyLineOfTheDeviceChangesItsOwnOptions();
    void whatNeedsNoChangeKeepsItsBytes();
    void linesMayEndWithACarriageReturn();
    void optionsOfAnyLengthStayWhole();
    void journaledOptionsAreNotMixed_data();
    void journaledOptionsAreNotMixed();
    void aLineThatMeansTheDeviceIsNamed_data();
    void aLineThatMeansTheDeviceIsNamed();
    void aKindIsSwitchedWhateverTheOrderOfWords();
    void bindMountsAreNoLinesOfTheDevice_data();
    void bindMountsAreNoLinesOfTheDevice();
    void noDeviceIsNamedByNoLine();
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
    void aNameThatIsNoTextIsNotTheDevice();
    void anyTableReadsTheSameButForTheOption();
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

void TestFstabRewrite::everyLineOfTheDeviceIsReplaced()
{
    QCOMPARE(rewrite("/dev/sda1 / ext4 rw 0 1\nUUID=a-1 /again ext4 ro,noauto 0 0\n").content,
             QByteArray("/dev/sda1  /  ext4  usrquota  0  1\nUUID=a-1  /again  ext4  usrquota  0  0\n"));
}

void TestFstabRewrite::everyLineOfTheDeviceChangesItsOwnOptions()
{
    const QByteArray table = "UUID=a-1 /b ext4 ro 0 0\n/dev/sda10 /o ext4 usrquota 0 0\n"
                             "/dev/sda1 /a ext4 usrquota,rw 0 1\n";
    QCOMPARE(rewrite(table, AddUser).content,
             QByteArray("UUID=a-1  /b  ext4  ro,usrquota  0  0\n/dev/sda10  /o  ext4  usrquota  0  0\n"
                        "/dev/sda1  /a  ext4  usrquota,rw  0  1\n"));
    QCOMPARE(rewrite(table, RemoveUser).content,
             QByteArray("UUID=a-1  /b  ext4  ro  0  0\n/dev/sda10  /o  ext4  usrquota  0  0\n"
                        "/dev/sda1  /a  ext4  rw  0  1\n"));
    QCOMPARE(rewrite("/dev/sda1 / ext4 grpquota,a,grpquota 0 1\nUUID=a-1 /b ext4\n", RemoveGroup).content,
             QByteArray("/dev/sda1  /  ext4  a  0  1\nUUID=a-1  /b  ext4  defaults  0  0\n"));
}

/// Comments, tabs and broken lines among them: the table is not written at all.
void TestFstabRewrite::whatNeedsNoChangeKeepsItsBytes()
{
    const QByteArray table = "# mine\r\n\n/dev/sda1\t/ ext4 rw,usrquota\n/dev/broken\n";
    for (const OptionChange &change : {AddUser, RemoveGroup}) {
        const FstabRewrite result = rewrite(table, change);
        QCOMPARE(result.content, table);
        QCOMPARE(result.refusal, QString());
    }
    QVERIFY(rewrite(table, AddGroup).refusal.startsWith(refusal("its line 4 lacks ")));
}

void TestFstabRewrite::linesMayEndWithACarriageReturn()
{
    QCOMPARE(rewrite("# mine\r\n\r\n/dev/sda1 / ext4 defaults\r\nauto.home /home autofs ignore 0 0\r\n"
                     "/dev/sdb1 /srv ext4 rw 1 2\r\nproc /proc proc\r\n",
                     AddUser)
                 .content,
             QByteArray("/dev/sda1  /  ext4  defaults,usrquota  0  0\nauto.home /home autofs ignore 0 0\n"
                        "/dev/sdb1  /srv  ext4  rw  1  2\nproc  /proc  proc  defaults  0  0\n"));
}

void TestFstabRewrite::optionsOfAnyLengthStayWhole()
{
    QByteArray options = "rw";
    while (options.size() < 200000)
        options += ",x-note=0123456789";
    QCOMPARE(
        rewrite("/dev/sda1 / ext4 " + options + " 0 1\n/dev/sdb1 /srv ext4 " + options + " 0 0\n", AddUser).content,
        "/dev/sda1  /  ext4  " + options + ",usrquota  0  1\n/dev/sdb1  /srv  ext4  " + options + "  0  0\n");
}

void TestFstabRewrite::journaledOptionsAreNotMixed_data()
{
    QTest::addColumn<QByteArray>("options");
    QTest::addColumn<bool>("add");
    QTest::addColumn<int>("kind");
    QTest::addColumn<QString>("refusalText");
    const auto mixed = [](const char *option, const char *word, const char *instead) {
        return refusal("its line 2 for /dev/sda1 has the option %1, beside which the device could not be mounted with "
                       "%2; write %3 there instead and mount the device again, then these quotas can be switched on")
            .arg(QString::fromUtf8(option), QString::fromUtf8(word), QString::fromUtf8(instead));
    };
    const auto stays = [](const char *option) {
        return refusal("its line 2 for /dev/sda1 has the option %1, which brings these quotas back at the next start; "
                       "take it out there, then they can be switched off")
            .arg(QString::fromUtf8(option));
    };
    const QByteArray user = "rw,usrjquota=aquota.user,jqfmt=vfsv1";
    const QByteArray group = "jqfmt=vfsv0,grpjquota=aquota.group";
    QTest::newRow("groups beside users") << user << true << 1
                                         << mixed("usrjquota=aquota.user", "grpquota", "grpjquota=aquota.group");
    QTest::newRow("users beside groups") << group << true << 0
                                         << mixed("jqfmt=vfsv0", "usrquota", "usrjquota=aquota.user");
    QTest::newRow("the format alone") << QByteArray("jqfmt=vfsv1") << true << 0
                                      << mixed("jqfmt=vfsv1", "usrquota", "usrjquota=aquota.user");
    QTest::newRow("no file named") << QByteArray("usrjquota=") << true << 0
                                   << mixed("usrjquota=", "usrquota", "usrjquota=aquota.user");
    QTest::newRow("users are there") << user << true << 0 << QString();
    QTest::newRow("groups are there") << group << true << 1 << QString();
    QTest::newRow("users stay") << user << false << 0 << stays("usrjquota=aquota.user");
    QTest::newRow("groups stay") << group << false << 1 << stays("grpjquota=aquota.group");
    QTest::newRow("groups are not there") << user << false << 1 << QString();
    QTest::newRow("mixed already") << (user + ",grpquota") << true << 1 << QString();
}

/// The kernel refuses to mount both ways of keeping quotas together, and so at the next start.
void TestFstabRewrite::journaledOptionsAreNotMixed()
{
    QFETCH(QByteArray, options);
    QFETCH(bool, add);
    QFETCH(int, kind);
    const QByteArray table = "# disks\n/dev/sda1 / ext4 " + options + " 0 1\n";
    const FstabRewrite result =
        rewrite(table, {add ? OptionChange::Step::Add : OptionChange::Step::Remove, static_cast<QuotaKind>(kind)});
    QTEST(result.refusal, "refusalText");
    QCOMPARE(result.content, result.refusal.isEmpty() ? table : QByteArray());
    QVERIFY(result.matters);
}

void TestFstabRewrite::aLineThatMeansTheDeviceIsNamed_data()
{
    QTest::addColumn<QByteArray>("line");
    QTest::addColumn<QString>("refusalText");
    QTest::addColumn<bool>("mattersForRemoval");
    const QString none = refusal("none of its lines names the device /dev/sda1 by its path or by UUID=");
    const auto spelled = [](const char *spelling) {
        return refusal("its line 2 names the device /dev/sda1 as %1; write UUID=a-1 there, then it can be switched")
            .arg(QString::fromUtf8(spelling));
    };
    QTest::newRow("by label") << QByteArray("LABEL=home / ext4 rw,usrquota 0 1") << spelled("LABEL=home") << true;
    QTest::newRow("by label, without the option")
        << QByteArray("LABEL=home / ext4 rw 0 1") << spelled("LABEL=home") << false;
    QTest::newRow("another label") << QByteArray("LABEL=other / ext4 usrquota 0 1") << none << false;
    QTest::newRow("another path") << QByteArray("/dev/sda10 / ext4 usrquota 0 1") << none << false;
    QTest::newRow("no such label") << QByteArray("LABEL=hom / ext4 usrquota 0 1") << none << false;
}

void TestFstabRewrite::aLineThatMeansTheDeviceIsNamed()
{
    QFETCH(QByteArray, line);
    const QByteArray table = "/dev/sdx1 /x ext4 rw 0 0\n" + line + '\n';
    const FstabRewrite added = rewrite(table, AddUser);
    QTEST(added.refusal, "refusalText");
    QVERIFY(added.matters);
    const FstabRewrite removed = rewrite(table, RemoveUser);
    QTEST(removed.refusal, "refusalText");
    QTEST(removed.matters, "mattersForRemoval");
}

/// "quota" is the kernel's other name for "usrquota", and "noquota" takes back what stands before it. What the change
/// of one word cannot bring about is refused; what it does is so at the next mount.
void TestFstabRewrite::aKindIsSwitchedWhateverTheOrderOfWords()
{
    const auto isOn = [](const QByteArray &options, QuotaKind kind) {
        bool on = false;
        const QByteArrayList words = options.split(',');
        for (const QByteArray &word : words) {
            if (word == (kind == GroupQuota ? "grpquota" : "usrquota") || (kind == UserQuota && word == "quota"))
                on = true;
            else if (word == "noquota")
                on = false;
        }
        return on;
    };
    const QByteArrayList words = {"usrquota", "grpquota", "quota", "noquota", "rw"};
    const int count = words.size();
    int refusals = 0;
    for (int number = 0; number < count * count * count * count; ++number) {
        const QByteArray options = words.at(number % count) + ',' + words.at(number / count % count) + ',' +
                                   words.at(number / count / count % count) + ',' +
                                   words.at(number / count / count / count);
        const QByteArray begin = "/dev/sda1  /  ext4  ";
        const QByteArray table = begin + options + "  0  1\n";
        for (const OptionChange &change : {AddUser, AddGroup, RemoveUser, RemoveGroup}) {
            const bool isAdded = change.step == OptionChange::Step::Add;
            const QByteArray word = change.kind == GroupQuota ? "grpquota" : "usrquota";
            const QuotaKind otherKind = change.kind == GroupQuota ? UserQuota : GroupQuota;
            const FstabRewrite result = rewrite(table, change);
            QByteArrayList wanted = options.split(',');
            if (!isAdded)
                wanted.removeAll(word);
            else if (!wanted.contains(word))
                wanted.append(word);
            const bool isAsWanted = isOn(wanted.join(','), change.kind) == isAdded;
            if (isAsWanted) {
                QCOMPARE(result.refusal, QString());
                const QByteArray column = wanted.isEmpty() ? QByteArray("defaults") : wanted.join(',');
                QCOMPARE(result.content, begin + column + "  0  1\n");
                QCOMPARE(isOn(column, otherKind), isOn(options, otherKind));
            } else {
                ++refusals;
                QCOMPARE(result.refusal, refusal(isAdded ? "its line 1 for /dev/sda1 has the option noquota after %1, "
                                                           "which switches these quotas off at every mount; take "
                                                           "noquota out there, then they can be switched on"
                                                         : "its line 1 for /dev/sda1 has the option quota, which "
                                                           "brings these quotas back at the next start; take it out "
                                                           "there, then they can be switched off")
                                             .replace(QStringLiteral("%1"), QString::fromLatin1(word)));
                QVERIFY(result.matters);
            }
        }
    }
    QVERIFY(refusals > 0);
}

void TestFstabRewrite::noDeviceIsNamedByNoLine()
{
    const QByteArray table = QByteArray("\0/dev/sda1 / ext4 rw 0 1\n", 25) + "/home /srv/home none bind 0 0\n";
    for (const OptionChange &change : {AddUser, RemoveUser})
        QVERIFY(!rewriteFstab(table, QString(), change, BlkidTable({QString()})).refusal.isEmpty());
}

void TestFstabRewrite::bindMountsAreNoLinesOfTheDevice_data()
{
    QTest::addColumn<QByteArray>("line");
    QTest::newRow("type none") << QByteArray("/dev/mapper/home  /mnt/node  none  rw,usrquota  0  0");
    QTest::newRow("bind") << QByteArray("/home  /srv/home  ext4  rw,bind,usrquota  0  0");
    QTest::newRow("rbind") << QByteArray("/home  /srv/home  auto  rbind  0  0");
    QTest::newRow("both") << QByteArray("/home  /srv/home  none  bind  0  0");
    QTest::newRow("a folder by FUSE") << QByteArray("/home  /srv/home  fuse.bindfs  perms=0750,usrquota  0  0");
    QTest::newRow("an encrypted folder") << QByteArray("/home  /srv/home  ecryptfs  rw  0  0");
}

/// What is mounted there is a folder, or the node of a device, whose name may end as that of the device does.
void TestFstabRewrite::bindMountsAreNoLinesOfTheDevice()
{
    QFETCH(QByteArray, line);
    const QString device = QStringLiteral("/dev/mapper/home");
    const BlkidTable disks({QStringLiteral("/dev/mapper/home: UUID=\"a-1\" TYPE=\"ext4\"")});
    const auto changedBy = [&](const QByteArray &table, const OptionChange &change) {
        return rewriteFstab(table, device, change, disks);
    };
    const QByteArray own = "UUID=a-1  /home  ext4  rw";
    QCOMPARE(changedBy(line + '\n' + own + "  0  2\n", AddUser).content, line + '\n' + own + ",usrquota  0  2\n");
    QCOMPARE(changedBy(line + '\n' + own + ",usrquota  0  2\n", RemoveUser).content, line + '\n' + own + "  0  2\n");

    const FstabRewrite alone = changedBy(line + '\n', AddUser);
    QCOMPARE(alone.refusal, refusal("none of its lines names the device /dev/mapper/home by its path or by UUID="));
    const BlkidTable another({QStringLiteral("/dev/sda1: TYPE=\"ext4\"")});
    QCOMPARE(rewriteFstab(line + '\n', device, AddUser, another).refusal, alone.refusal);
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
    QCOMPARE(rewrite("/dev/sda1 / ext4 usrquota 0 1\n/dev/sdb1 /srv ext4\n", QStringList()).content,
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
    const auto text = [](const char *reason) { return refusal(reason); };
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
                              << text("its line 3 contains a NUL byte; take it out there");
    const QString mark = text("it begins with a byte order mark, which mount takes for a part of the first line; save "
                              "it without that mark");
    QTest::newRow("byte order mark before a comment") << "\xef\xbb\xbf" + own << mark;
    QTest::newRow("byte order mark before a line") << "\xef\xbb\xbf/dev/sdb1 /srv ext4 rw 0 0\n" + own << mark;
    QTest::newRow("byte order mark before the line of the device")
        << QByteArray("\xef\xbb\xbf/dev/sda1 / ext4 rw 0 1\n") << mark;
    QTest::newRow("NUL byte in a comment")
        << QByteArray("# \0\n", 4) + own << text("its line 1 contains a NUL byte; take it out there");
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

/// Bytes that are no text in the encoding of the locale would be those of another device as a text.
void TestFstabRewrite::aNameThatIsNoTextIsNotTheDevice()
{
    const QString device = QString::fromUtf8("/dev/mapper/gr\xef\xbf\xbdn"); // what stands for a byte that is none
    const BlkidTable disks({device + QStringLiteral(": TYPE=\"ext4\"")});
    const QByteArray own = device.toUtf8() + "  /  ext4  ";
    const QByteArray other = "/dev/mapper/gr\xfcn  /srv  ext4  rw  0  0\n";
    QCOMPARE(rewriteFstab(own + "rw  0  1\n" + other, device, AddUser, disks).content,
             own + "rw,usrquota  0  1\n" + other);
    QVERIFY(rewriteFstab(other, device, AddUser, disks)
                .refusal.endsWith(device + QStringLiteral(" by its path or by UUID=")));
}

/// Switching each kind on and off, whatever the table: each of its lines mounts as before but for the one option.
void TestFstabRewrite::anyTableReadsTheSameButForTheOption()
{
    constexpr unsigned tables = 3000;
    const unsigned first = qEnvironmentVariableIsSet("KRA_SEED") ? qEnvironmentVariable("KRA_SEED").toUInt() : 1;
    for (unsigned seed = first; seed < first + tables; ++seed) {
        Generator generator(seed);
        QByteArray table = generator.table();
        const QByteArray told = "KRA_SEED=" + QByteArray::number(seed) + '\n' + table;
        const OptionChange change = {generator.below(3) ? OptionChange::Step::Add : OptionChange::Step::Remove,
                                     generator.below(2) ? GroupQuota : UserQuota};
        const QByteArray word = change.kind == GroupQuota ? "grpquota" : "usrquota";
        QVector<Entry> wanted = entriesOf(table);
        bool isChange = false;
        for (Entry &entry : wanted) {
            if (entry.fsName != Spelling && entry.fsName != Device.toLatin1())
                continue;
            QByteArrayList options = entry.opts.isEmpty() ? QByteArrayList() : entry.opts.split(',');
            const bool isThere = options.contains(word);
            const bool isAdded = change.step == OptionChange::Step::Add;
            if (isAdded && !isThere)
                options.append(word);
            else if (!isAdded)
                options.removeAll(word);
            isChange = isChange || isThere != isAdded;
            entry.opts = options.join(',');
        }
        for (Entry &entry : wanted)
            if (entry.opts.isEmpty())
                entry.opts = "defaults";
        if (generator.below(5) == 0) // which change nothing of what is mounted how
            table.replace("\n", "\r\n");

        const FstabRewrite result = rewrite(table, change);
        QVERIFY2(result.refusal.isEmpty(), (result.refusal.toUtf8() + '\n' + told).constData());
        if (!isChange) {
            QVERIFY2(result.content == table, told);
            continue;
        }
        QVERIFY2(entriesOf(result.content) == wanted, told + "became\n" + result.content);

        // What is there by now needs no change, and another kind changes nothing else, down to the bytes.
        QCOMPARE(rewrite(result.content, change).content, result.content);
        const QByteArray again = rewrite(result.content, {OptionChange::Step::Replace, UserQuota, {}}).content;
        for (int i = 0; i < wanted.size(); ++i)
            if (wanted.at(i).fsName != Spelling && wanted.at(i).fsName != Device.toLatin1())
                QVERIFY2(again.split('\n').at(i) == result.content.split('\n').at(i), told);
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
