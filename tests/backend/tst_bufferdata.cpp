// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <bufferdata.h>
#include <sandbox.h>

#include <QDir>
#include <QSignalSpy>
#include <QTextCodec>
#include <QtTest>

#include <sys/stat.h>

namespace
{

QString text(const char *bytes)
{
    return QString::fromUtf8(bytes);
}

QStringList texts(const QSignalSpy &spy)
{
    QStringList all;
    for (const QList<QVariant> &arguments : spy)
        all.append(arguments.first().toString());
    return all;
}

} // namespace

class TestBufferData : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void mountEntryHasAllFields();
    void commentsAndBlankLinesAreNoEntries();
    void blanksAreDecoded();
    void missingColumnsAreEmpty();
    void lastLineNeedsNoLineFeed();
    void bytesThatAreNotUtf8SpoilOnlyTheirField();
    void aVeryLongLineIsReadWhole();
    void aThousandLinesAreReadInOrder();
    void emptyTableHasNoEntries();
    void missingTableIsReportedOnce_data();
    void missingTableIsReportedOnce();
    void anyFileOfTheFormatCanBeRead();

    void userHasAllFields();
    void groupHasAllFields();
    void groupWithoutMembersHasAnEmptyList();
    void accountsAreNotFiltered();
    void idsUseTheWholeRange();
    void aFieldIsTheAccountsOwn();
    void textsComeInTheLocalEncoding();
    void aPipeInPlaceOfASourceIsReported();
    void noDescriptorStaysOpen();
    void linesMayEndWithACarriageReturn();
    void accountsWithoutFieldsHaveEmptyTexts();
    void brokenAccountLinesAreNoAccounts();
    void missingAccountFileIsReportedOnce_data();
    void missingAccountFileIsReportedOnce();

    void aFolderInPlaceOfASourceIsReported();
    void everySourceIsReadOnce();
    void resetReadsEverySourceAgain();
    void resetReportsAgain();

private:
    Sandbox _sandbox;
};

void TestBufferData::init()
{
    _sandbox.reset();
    QTextCodec::setCodecForLocale(QTextCodec::codecForName("UTF-8"));
}

void TestBufferData::mountEntryHasAllFields()
{
    _sandbox.writeEtc(text("fstab"), "/dev/sda1 /home ext4 defaults,usrquota 1 2\n");
    BufferData buffer;
    const QVector<MountEntry> entries = buffer.fstabEntries();
    QCOMPARE(entries.size(), 1);
    const MountEntry &entry = entries.first();
    QCOMPARE(entry.fsName, text("/dev/sda1"));
    QCOMPARE(entry.dir, text("/home"));
    QCOMPARE(entry.type, text("ext4"));
    QCOMPARE(entry.opts, text("defaults,usrquota"));
    QCOMPARE(entry.freq, 1);
    QCOMPARE(entry.passno, 2);
}

void TestBufferData::commentsAndBlankLinesAreNoEntries()
{
    _sandbox.writeEtc(text("fstab"), "# a comment\n\n   \t \n  # another\nUUID=1 / ext4 defaults 0 1\n\n");
    BufferData buffer;
    QCOMPARE(buffer.fstabEntries().size(), 1);
    QCOMPARE(buffer.fstabEntries().first().fsName, text("UUID=1"));
}

void TestBufferData::blanksAreDecoded()
{
    _sandbox.writeEtc(text("mtab"), "/dev/sda1 /my\\040own\\011disk ext4 rw,x=a\\134b 0 0\n");
    BufferData buffer;
    QCOMPARE(buffer.mtabEntries().first().dir, text("/my own\tdisk"));
    QCOMPARE(buffer.mtabEntries().first().opts, text("rw,x=a\\b"));
}

void TestBufferData::missingColumnsAreEmpty()
{
    _sandbox.writeEtc(text("fstab"), "/dev/sda1 /a ext4 ro\n/dev/sdb1 /b\n/dev/sdc1\n/dev/sdd1 /d ext4 rw x y\n");
    BufferData buffer;
    const QVector<MountEntry> entries = buffer.fstabEntries();
    QCOMPARE(entries.size(), 4);
    QCOMPARE(entries.at(0).opts, text("ro"));
    QCOMPARE(entries.at(0).freq, 0);
    QCOMPARE(entries.at(0).passno, 0);
    QCOMPARE(entries.at(1).dir, text("/b"));
    QCOMPARE(entries.at(1).type, QString());
    QCOMPARE(entries.at(2).fsName, text("/dev/sdc1"));
    QCOMPARE(entries.at(2).dir, QString());
    QCOMPARE(entries.at(3).fsName, text("/dev/sdd1"));
}

void TestBufferData::lastLineNeedsNoLineFeed()
{
    _sandbox.writeEtc(text("fstab"), "/dev/sda1 /a ext4 ro 0 0");
    BufferData buffer;
    QCOMPARE(buffer.fstabEntries().size(), 1);
    QCOMPARE(buffer.fstabEntries().first().opts, text("ro"));
}

void TestBufferData::bytesThatAreNotUtf8SpoilOnlyTheirField()
{
    _sandbox.writeEtc(text("fstab"), "/dev/sda1 /gr\xf6\xdf"
                                     "e ext4 usrquota 0 0\n/dev/sdb1 /größe ext4 ro 0 0\n");
    BufferData buffer;
    const QVector<MountEntry> entries = buffer.fstabEntries();
    QCOMPARE(entries.size(), 2);
    QCOMPARE(entries.at(0).fsName, text("/dev/sda1"));
    QVERIFY(entries.at(0).dir.startsWith(text("/gr")));
    QCOMPARE(entries.at(0).opts, text("usrquota"));
    QCOMPARE(entries.at(1).dir, text("/größe"));
}

void TestBufferData::aVeryLongLineIsReadWhole()
{
    QByteArray layers = "lowerdir=";
    while (layers.size() < 100000)
        layers += "/var/lib/layers/0123456789:";
    _sandbox.writeEtc(text("mtab"), "overlay / overlay " + layers + ",usrquota 0 0\n/dev/sda1 /a ext4 rw 0 0\n");
    BufferData buffer;
    const QVector<MountEntry> entries = buffer.mtabEntries();
    QCOMPARE(entries.size(), 2);
    QVERIFY(entries.at(0).opts.endsWith(text(",usrquota")));
    QCOMPARE(entries.at(1).dir, text("/a"));
}

void TestBufferData::aThousandLinesAreReadInOrder()
{
    QByteArray table;
    for (int i = 0; i < 1000; ++i)
        table += "/dev/sd" + QByteArray::number(i) + " /mnt/" + QByteArray::number(i) + " ext4 defaults 0 0\n";
    _sandbox.writeEtc(text("fstab"), table);
    BufferData buffer;
    const QVector<MountEntry> entries = buffer.fstabEntries();
    QCOMPARE(entries.size(), 1000);
    QCOMPARE(entries.at(0).fsName, text("/dev/sd0"));
    QCOMPARE(entries.at(999).dir, text("/mnt/999"));
}

void TestBufferData::emptyTableHasNoEntries()
{
    _sandbox.writeEtc(text("fstab"), "");
    BufferData buffer;
    const QSignalSpy errors(&buffer, &BufferData::error);
    QVERIFY(buffer.fstabEntries().isEmpty());
    QVERIFY(errors.isEmpty());
}

void TestBufferData::missingTableIsReportedOnce_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("fstab") << text("fstab");
    QTest::newRow("mtab") << text("mtab");
}

void TestBufferData::missingTableIsReportedOnce()
{
    QFETCH(QString, name);
    _sandbox.removeEtc(name);
    BufferData buffer;
    const QSignalSpy errors(&buffer, &BufferData::error);
    for (int i = 0; i < 3; ++i)
        QVERIFY((name == text("fstab") ? buffer.fstabEntries() : buffer.mtabEntries()).isEmpty());
    QCOMPARE(texts(errors), QStringList{text("File /etc/%1 can not be open").arg(name)});
}

void TestBufferData::anyFileOfTheFormatCanBeRead()
{
    _sandbox.writeEtc(text("other"), "/dev/sda1 /a ext4 ro 0 0\n");
    BufferData buffer;
    const QSignalSpy errors(&buffer, &BufferData::error);
    QCOMPARE(buffer.readMountFile(text("/etc/other")).size(), 1);
    QVERIFY(buffer.readMountFile(text("/etc/%1 not there")).isEmpty());
    QCOMPARE(texts(errors), QStringList{text("File /etc/%1 not there can not be open")});
}

void TestBufferData::userHasAllFields()
{
    _sandbox.writeEtc(text("passwd"), "anna:x:1000:1001:Anna Größe,,,:/home/anna:/bin/bash\n");
    BufferData buffer;
    const QVector<PasswdEntry> entries = buffer.passwdEntries();
    QCOMPARE(entries.size(), 1);
    const PasswdEntry &entry = entries.first();
    QCOMPARE(entry.name, text("anna"));
    QCOMPARE(entry.password, text("x"));
    QCOMPARE(entry.uid, quint32(1000));
    QCOMPARE(entry.gid, quint32(1001));
    QCOMPARE(entry.gecos, text("Anna Größe,,,"));
    QCOMPARE(entry.home, text("/home/anna"));
    QCOMPARE(entry.shell, text("/bin/bash"));
}

void TestBufferData::groupHasAllFields()
{
    _sandbox.writeEtc(text("group"), "staff:*:50:zoe,anna,root\n");
    BufferData buffer;
    const QVector<GroupEntry> entries = buffer.groupEntries();
    QCOMPARE(entries.size(), 1);
    QCOMPARE(entries.first().name, text("staff"));
    QCOMPARE(entries.first().password, text("*"));
    QCOMPARE(entries.first().gid, quint32(50));
    QCOMPARE(entries.first().members, (QStringList{text("zoe"), text("anna"), text("root")}));
}

void TestBufferData::groupWithoutMembersHasAnEmptyList()
{
    _sandbox.writeEtc(text("group"), "staff:x:50:\n");
    BufferData buffer;
    QCOMPARE(buffer.groupEntries().size(), 1);
    QCOMPARE(buffer.groupEntries().first().members, QStringList());
}

void TestBufferData::accountsAreNotFiltered()
{
    _sandbox.writeEtc(text("passwd"), "root:x:0:0::/root:/bin/sh\nnobody:x:65534:65534::/:/bin/false\n"
                                      "anna:x:1000:1000::/home/anna:/bin/sh\n");
    BufferData buffer;
    QStringList names;
    for (const PasswdEntry &entry : buffer.passwdEntries())
        names.append(entry.name);
    QCOMPARE(names, (QStringList{text("root"), text("nobody"), text("anna")}));
}

void TestBufferData::idsUseTheWholeRange()
{
    _sandbox.writeEtc(text("passwd"), "big:x:4294967294:4294967293::/:/bin/sh\n");
    BufferData buffer;
    QCOMPARE(buffer.passwdEntries().first().uid, quint32(4294967294));
    QCOMPARE(buffer.passwdEntries().first().gid, quint32(4294967293));
}

/// What most accounts have alike is not taken over from the account before by one that has it otherwise.
void TestBufferData::aFieldIsTheAccountsOwn()
{
    _sandbox.writeEtc(text("passwd"), "a:x:1:1::/:/bin/sh\nb:x:2:2::/:/bin/sh\nc:*:3:3::/:\nd::4:4::/:/bin/sh-größe\n"
                                      "e:x:5:5::/:/bin/sh-gr\n");
    _sandbox.writeEtc(text("group"), "a:x:1:\nb:x:2:\nc:*:3:\n");
    BufferData buffer;
    QStringList fields;
    for (const PasswdEntry &entry : buffer.passwdEntries())
        fields.append(entry.name + QLatin1Char('|') + entry.password + QLatin1Char('|') + entry.shell);
    QCOMPARE(fields, (QStringList{text("a|x|/bin/sh"), text("b|x|/bin/sh"), text("c|*|"), text("d||/bin/sh-größe"),
                                  text("e|x|/bin/sh-gr")}));
    QStringList passwords;
    for (const GroupEntry &entry : buffer.groupEntries())
        passwords.append(entry.password);
    QCOMPARE(passwords, (QStringList{text("x"), text("x"), text("*")}));
}

/// Not as any other: the same bytes are another text in each.
void TestBufferData::textsComeInTheLocalEncoding()
{
    const QByteArray latin = "gr\xfc\xdf";
    const QByteArray utf8 = QStringLiteral("grüß").toUtf8();
    _sandbox.writeEtc(text("passwd"), "a:" + utf8 + ":1:1:" + utf8 + ":/:" + utf8 + "\nb:" + latin + ":2:2:" + latin +
                                          ":/" + latin + ":" + latin + "\n");
    _sandbox.writeEtc(text("group"), latin + ":" + utf8 + ":1:" + latin + "\nb:" + latin + ":2:\n");
    _sandbox.writeEtc(text("fstab"), latin + " /" + latin + " " + latin + " " + latin + " 0 0\n");
    _sandbox.standIn(text("blkid")).prints("/dev/" + latin + ": TYPE=\"ext4\"\n");
    for (const char *codec : {"ISO-8859-1", "KOI8-R", "UTF-8"}) {
        QTextCodec::setCodecForLocale(QTextCodec::codecForName(codec));
        const auto decoded = [](const QByteArray &bytes) { return QString::fromLocal8Bit(bytes); };
        BufferData buffer;
        const PasswdEntry first = buffer.passwdEntries().at(0);
        QCOMPARE((QStringList{first.password, first.gecos, first.shell}),
                 (QStringList{decoded(utf8), decoded(utf8), decoded(utf8)}));
        const PasswdEntry second = buffer.passwdEntries().at(1);
        QCOMPARE((QStringList{second.password, second.gecos, second.home, second.shell}),
                 (QStringList{decoded(latin), decoded(latin), decoded("/" + latin), decoded(latin)}));
        const GroupEntry group = buffer.groupEntries().at(0);
        QCOMPARE((QStringList{group.name, group.password, group.members.value(0)}),
                 (QStringList{decoded(latin), decoded(utf8), decoded(latin)}));
        QCOMPARE(buffer.groupEntries().at(1).password, decoded(latin));
        const MountEntry mount = buffer.fstabEntries().at(0);
        QCOMPARE((QStringList{mount.fsName, mount.dir, mount.type, mount.opts}),
                 (QStringList{decoded(latin), decoded("/" + latin), decoded(latin), decoded(latin)}));
        QCOMPARE(buffer.blkidLines().first(), decoded("/dev/" + latin + ": TYPE=\"ext4\""));
    }
}

/// It is not waited for: nobody may ever write to it.
void TestBufferData::aPipeInPlaceOfASourceIsReported()
{
    for (const char *name : {"fstab", "mtab", "passwd", "group"}) {
        _sandbox.removeEtc(text(name));
        QCOMPARE(mkfifo((QByteArray("/etc/") + name).constData(), 0644), 0);
    }
    BufferData buffer;
    const QSignalSpy errors(&buffer, &BufferData::error);
    QVERIFY(buffer.fstabEntries().isEmpty());
    QVERIFY(buffer.mtabEntries().isEmpty());
    QVERIFY(buffer.passwdEntries().isEmpty());
    QVERIFY(buffer.groupEntries().isEmpty());
    QCOMPARE(texts(errors),
             (QStringList{text("File /etc/fstab can not be open"), text("File /etc/mtab can not be open"),
                          text("File /etc/passwd can not be open"), text("File /etc/group can not be open")}));
}

void TestBufferData::noDescriptorStaysOpen()
{
    const auto open = [] { return QDir(text("/proc/self/fd")).entryList(QDir::AllEntries | QDir::System).size(); };
    _sandbox.standIn(text("blkid")).prints("/dev/sda1: TYPE=\"ext4\"\n");
    BufferData buffer;
    const auto readAll = [&buffer] {
        buffer.resetCache();
        buffer.fstabEntries();
        buffer.mtabEntries();
        buffer.passwdEntries();
        buffer.groupEntries();
        buffer.blkidLines();
        buffer.readMountFile(text("/etc/not there"));
        buffer.readMountFile(text("/etc"));
    };
    readAll();
    const int before = open();
    readAll();
    QCOMPARE(open(), before);
}

/// As a table that was edited on another system does; "mount" takes it as it is meant.
void TestBufferData::linesMayEndWithACarriageReturn()
{
    _sandbox.writeEtc(text("fstab"), "# disks\r\n\r\n/dev/sda1 /a ext4 rw,usrquota\r\n/dev/sdb1 /b ext4 ro 1 2\r\n");
    BufferData buffer;
    const QVector<MountEntry> entries = buffer.fstabEntries();
    QCOMPARE(entries.size(), 2);
    QCOMPARE(entries.at(0).opts, text("rw,usrquota"));
    QCOMPARE(entries.at(0).passno, 0);
    QCOMPARE(entries.at(1).passno, 2);
}

/// As another name service has them appended to the local accounts; the C library hands out null pointers.
void TestBufferData::accountsWithoutFieldsHaveEmptyTexts()
{
    _sandbox.writeEtc(text("passwd"), "anna:x:1000:1000::/home/anna:/bin/sh\n+otto\n");
    _sandbox.writeEtc(text("group"), "staff:x:50:\n+others\n");
    BufferData buffer;
    QCOMPARE(buffer.passwdEntries().size(), 2);
    QCOMPARE(buffer.passwdEntries().last().name, text("+otto"));
    QVERIFY(buffer.passwdEntries().last().password.isEmpty());
    QVERIFY(buffer.passwdEntries().last().shell.isEmpty());
    QCOMPARE(buffer.groupEntries().size(), 2);
    QCOMPARE(buffer.groupEntries().last().name, text("+others"));
    QVERIFY(buffer.groupEntries().last().password.isEmpty());
}

void TestBufferData::brokenAccountLinesAreNoAccounts()
{
    _sandbox.writeEtc(text("passwd"), "no colon\n\nroot:x:notanumber:0::/root:/bin/sh\n"
                                      "anna:x:1000:1000::/home/anna:/bin/sh");
    BufferData buffer;
    QCOMPARE(buffer.passwdEntries().size(), 1);
    QCOMPARE(buffer.passwdEntries().first().name, text("anna"));
}

void TestBufferData::missingAccountFileIsReportedOnce_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("passwd") << text("passwd");
    QTest::newRow("group") << text("group");
}

void TestBufferData::missingAccountFileIsReportedOnce()
{
    QFETCH(QString, name);
    _sandbox.removeEtc(name);
    BufferData buffer;
    const QSignalSpy errors(&buffer, &BufferData::error);
    for (int i = 0; i < 2; ++i)
        QVERIFY(name == text("passwd") ? buffer.passwdEntries().isEmpty() : buffer.groupEntries().isEmpty());
    QCOMPARE(texts(errors), QStringList{text("File /etc/%1 can not be open").arg(name)});
}

/// Such a source can be opened, but not be read.
void TestBufferData::aFolderInPlaceOfASourceIsReported()
{
    for (const char *name : {"fstab", "mtab", "passwd", "group"}) {
        _sandbox.removeEtc(text(name));
        QVERIFY(QDir().mkdir(text("/etc/") + text(name)));
    }
    BufferData buffer;
    const QSignalSpy errors(&buffer, &BufferData::error);
    QVERIFY(buffer.fstabEntries().isEmpty());
    QVERIFY(buffer.mtabEntries().isEmpty());
    QVERIFY(buffer.passwdEntries().isEmpty());
    QVERIFY(buffer.groupEntries().isEmpty());
    QCOMPARE(texts(errors),
             (QStringList{text("File /etc/fstab can not be open"), text("File /etc/mtab can not be open"),
                          text("File /etc/passwd can not be open"), text("File /etc/group can not be open")}));
    for (const char *name : {"fstab", "mtab", "passwd", "group"})
        _sandbox.removeEtc(text(name));
}

void TestBufferData::everySourceIsReadOnce()
{
    _sandbox.standIn(text("blkid"));
    _sandbox.writeEtc(text("fstab"), "/dev/sda1 / ext4 defaults 0 1\n");
    BufferData buffer;
    const QSignalSpy errors(&buffer, &BufferData::error);
    const int users = buffer.passwdEntries().size();
    const int groups = buffer.groupEntries().size();
    buffer.fstabEntries();
    buffer.mtabEntries();
    buffer.blkidLines();
    for (const char *name : {"fstab", "mtab", "passwd", "group"})
        _sandbox.removeEtc(text(name));
    QCOMPARE(buffer.fstabEntries().size(), 1);
    QCOMPARE(buffer.mtabEntries().size(), 0);
    QCOMPARE(buffer.passwdEntries().size(), users);
    QCOMPARE(buffer.groupEntries().size(), groups);
    buffer.blkidLines();
    QCOMPARE(_sandbox.calls().size(), 1);
    QVERIFY(errors.isEmpty());
}

void TestBufferData::resetReadsEverySourceAgain()
{
    _sandbox.standIn(text("blkid"));
    BufferData buffer;
    buffer.fstabEntries();
    buffer.mtabEntries();
    buffer.blkidLines();
    buffer.passwdEntries();
    buffer.groupEntries();

    _sandbox.writeEtc(text("fstab"), "/dev/sda1 / ext4 defaults 0 1\n");
    _sandbox.writeEtc(text("mtab"), "/dev/sda1 / ext4 rw 0 0\n/dev/sdb1 /b ext4 rw 0 0\n");
    _sandbox.writeEtc(text("passwd"), "only:x:1:1::/:/bin/sh\n");
    _sandbox.writeEtc(text("group"), "only:x:1:\n");
    _sandbox.standIn(text("blkid")).prints("one line");
    buffer.resetCache();

    QCOMPARE(buffer.fstabEntries().size(), 1);
    QCOMPARE(buffer.mtabEntries().size(), 2);
    QCOMPARE(buffer.passwdEntries().size(), 1);
    QCOMPARE(buffer.groupEntries().size(), 1);
    QCOMPARE(buffer.blkidLines(), QStringList{text("one line")});
    QCOMPARE(_sandbox.calls().size(), 2);
}

void TestBufferData::resetReportsAgain()
{
    _sandbox.removeEtc(text("mtab"));
    BufferData buffer;
    const QSignalSpy errors(&buffer, &BufferData::error);
    buffer.mtabEntries();
    buffer.resetCache();
    buffer.mtabEntries();
    QCOMPARE(errors.size(), 2);
}

KRA_SANDBOX_MAIN(TestBufferData)
#include "tst_bufferdata.moc"
