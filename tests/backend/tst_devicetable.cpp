// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <bufferdata.h>
#include <devicetable.h>
#include <quotamanager.h>
#include <sandbox.h>
#include <silentsource.h>

#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QTextCodec>
#include <QtTest>

#include <memory>

namespace
{

QString text(const char *bytes)
{
    return QString::fromUtf8(bytes);
}

const QString Fstab = QStringLiteral("/etc/fstab");
const QString Mtab = QStringLiteral("/etc/mtab");

} // namespace

class TestDeviceTable : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { QTextCodec::setCodecForLocale(QTextCodec::codecForName("UTF-8")); }
    void init();

    void uuidResolvesAndLabelDoesNot();
    void fstabDevicesGivesOneForEachEntry();
    void quotaDevicesAreThoseOfFstabInItsOrder();
    void xfsAndBtrfsAreNeverQuotaDevices();
    void entryWithoutABlkidLineIsNoQuotaDevice();
    void substringsAndRepeatedEntriesRepeatDevices();
    void quotaDeviceIsFoundByAnyKey();
    void optionsAreFoundByAnySpellingThatResolves();
    void optionsAreThoseOfTheFirstEntry();
    void optionsKeepEmptyParts();
    void optionsOfAnUnknownDeviceAreEmpty();
    void optionsOfAnotherFileAreAnError_data();
    void optionsOfAnotherFileAreAnError();
    void mountPointNeedsTheSpellingOfMtab();
    void mountPointOfAnUnmountedDeviceIsAnError();
    void mountPointIsThatOfTheFirstEntry();
    void mountPointDoesNotRunBlkid();
    void mountedTypeTakesAnySpellingThatResolves();
    void mountedTypeOfAnUnmountedDeviceIsEmptyAndNoError();
    void missingMtabIsSaidOnceAndLookUpsAreEmpty();
    void quotaOptionIsAWholeWord_data();
    void quotaOptionIsAWholeWord();
    void optionsInForceAndConfiguredAreApart();
    void patternsInFstabAreHarmless();
    void bytesThatAreNotUtf8AreHarmless();
    void aNameThatIsNoTextIsNoDevice();
    void aByteOrderMarkIsAPartOfTheFirstName();
    void bindMountsAreNotTheDevice();
    void missingColumnsAreHarmless();
    void aThousandDevices();
    void userMadeMountsArePassedOver();
    void journaledQuotasAreInForce_data();
    void journaledQuotasAreInForce();
    void lookUpsAreThoseOfTheStepsOneByOne();
    void saysWhyLinesArePassedOver();
    void saysWhyAPresentDeviceIsPassedOver();
    void blkidMissingPassesEveryLineOver();
    void whoDidNotTellIsKnown();
    void blkidIsRunOnce();
    void resetAsksTheSourcesAgain();

private:
    void fstab(const QByteArray &content) { _sandbox.writeEtc(text("fstab"), content); }
    void mtab(const QByteArray &content) { _sandbox.writeEtc(text("mtab"), content); }
    void blkid(const QByteArray &output) { _sandbox.standIn(text("blkid")).prints(output); }

    Sandbox _sandbox;
    std::unique_ptr<BufferData> _buffer;
    std::unique_ptr<DeviceTable> _table;
    QStringList _errors;
};

void TestDeviceTable::init()
{
    _sandbox.reset();
    _buffer = std::make_unique<BufferData>();
    _table = std::make_unique<DeviceTable>(*_buffer);
    _errors.clear();
    const auto collect = [this](const QString &message) { _errors.append(message); };
    connect(_buffer.get(), &BufferData::error, this, collect);
    connect(_table.get(), &DeviceTable::error, this, collect);
    fstab("UUID=abc / ext4 defaults 0 1\n"
          "/dev/sdb1 /home ext4 defaults,usrquota 0 2\n"
          "LABEL=x /srv ext3 grpquota 0 2\n");
    mtab("/dev/sda1 / ext4 rw,relatime 0 0\n"
         "/dev/sdb1 /home ext4 rw,usrquota,grpquota 0 0\n");
    blkid("/dev/sdc1: LABEL=\"x\" UUID=\"c\" TYPE=\"ext3\"\n"
          "/dev/sdb1: UUID=\"b\" TYPE=\"ext4\"\n"
          "/dev/sda1: UUID=\"abc\" BLOCK_SIZE=\"4096\" TYPE=\"ext4\" PARTUUID=\"p\"\n");
}

void TestDeviceTable::uuidResolvesAndLabelDoesNot()
{
    const QStringList lines = _buffer->blkidLines();
    QCOMPARE(_table->resolveDevice(text("UUID=abc"), lines), text("/dev/sda1"));
    QCOMPARE(_table->resolveDevice(text("LABEL=x"), lines), QString());
}

void TestDeviceTable::fstabDevicesGivesOneForEachEntry()
{
    fstab("UUID=abc / ext4 defaults 0 1\nLABEL=x /srv ext3 defaults 0 2\n"
          "/dev/sdb1 /home ext4 defaults 0 2\ntmpfs /tmp tmpfs defaults 0 0\n");
    QCOMPARE(_table->fstabDevices(),
             (QStringList{text("/dev/sda1"), text("LABEL=x"), text("/dev/sdb1"), text("tmpfs")}));
}

void TestDeviceTable::quotaDevicesAreThoseOfFstabInItsOrder()
{
    QCOMPARE(_table->quotaDevices(), (QStringList{text("/dev/sda1"), text("/dev/sdb1"), text("/dev/sdc1")}));
    QCOMPARE(_errors, QStringList());
}

void TestDeviceTable::xfsAndBtrfsAreNeverQuotaDevices()
{
    fstab("/dev/sda1 /a xfs usrquota,grpquota 0 0\n/dev/sdb1 /b btrfs usrquota 0 0\n");
    blkid("/dev/sda1: UUID=\"1\" TYPE=\"xfs\"\n/dev/sdb1: UUID=\"2\" TYPE=\"btrfs\"\n");
    QCOMPARE(_table->quotaDevices(), QStringList());
}

void TestDeviceTable::entryWithoutABlkidLineIsNoQuotaDevice()
{
    fstab("/dev/sdz9 /a ext4 usrquota 0 0\n");
    QCOMPARE(_table->quotaDevices(), QStringList());
}

void TestDeviceTable::substringsAndRepeatedEntriesRepeatDevices()
{
    fstab("/dev/sda1 /a ext4 defaults 0 0\n/dev/sda1 /b ext4 defaults 0 0\n");
    blkid("/dev/sda10: TYPE=\"ext4\"\n/dev/sda1: TYPE=\"ext4\"\n");
    QCOMPARE(_table->quotaDevices(),
             (QStringList{text("/dev/sda10"), text("/dev/sda1"), text("/dev/sda10"), text("/dev/sda1")}));
}

void TestDeviceTable::quotaDeviceIsFoundByAnyKey()
{
    fstab("LABEL=x /a ext3 defaults 0 0\nPARTUUID=p /b ext4 defaults 0 0\nUUID=b /c ext4 defaults 0 0\n");
    QCOMPARE(_table->quotaDevices(), (QStringList{text("/dev/sdc1"), text("/dev/sda1"), text("/dev/sdb1")}));
}

void TestDeviceTable::optionsAreFoundByAnySpellingThatResolves()
{
    QCOMPARE(_table->deviceOptions(text("/dev/sda1"), Fstab), QStringList{text("defaults")});
    QCOMPARE(_table->deviceOptions(text("UUID=abc"), Fstab), QStringList{text("defaults")});
    QCOMPARE(_table->deviceOptions(text("LABEL=x"), Fstab), QStringList{text("grpquota")});
    QCOMPARE(_table->deviceOptions(text("/dev/sdc1"), Fstab), QStringList());
    QCOMPARE(_table->deviceOptions(text("/dev/sdb1"), Mtab),
             (QStringList{text("rw"), text("usrquota"), text("grpquota")}));
}

void TestDeviceTable::optionsAreThoseOfTheFirstEntry()
{
    fstab("UUID=abc / ext4 first 0 1\n/dev/sda1 /again ext4 second 0 1\n");
    QCOMPARE(_table->deviceOptions(text("/dev/sda1"), Fstab), QStringList{text("first")});
}

void TestDeviceTable::optionsKeepEmptyParts()
{
    fstab("/dev/sda1 / ext4 ,a,,b, 0 1\n");
    QCOMPARE(_table->deviceOptions(text("/dev/sda1"), Fstab),
             (QStringList{QString(), text("a"), QString(), text("b"), QString()}));
}

void TestDeviceTable::optionsOfAnUnknownDeviceAreEmpty()
{
    QCOMPARE(_table->deviceOptions(text("/dev/sdz1"), Fstab), QStringList());
    QCOMPARE(_errors, QStringList());
}

void TestDeviceTable::optionsOfAnotherFileAreAnError_data()
{
    QTest::addColumn<QString>("fileName");
    for (const char *name : {"/proc/mounts", "/etc/fstab ", "fstab", "", "/etc/%1"})
        QTest::newRow(*name ? name : "no name") << text(name);
}

void TestDeviceTable::optionsOfAnotherFileAreAnError()
{
    QFETCH(QString, fileName);
    QCOMPARE(_table->deviceOptions(text("/dev/sda1"), fileName), QStringList());
    QCOMPARE(_errors, QStringList{text("Unknow file name ") + fileName});
    QVERIFY(!_table->hasQuotaOption(text("/dev/sda1"), UserQuota, fileName));
}

void TestDeviceTable::mountPointNeedsTheSpellingOfMtab()
{
    QCOMPARE(_table->mountPoint(text("/dev/sdb1")), text("/home"));
    QCOMPARE(_errors, QStringList());
    QCOMPARE(_table->mountPoint(text("UUID=b")), QString());
    QCOMPARE(_errors, QStringList{text("Device UUID=b not mounted")});
}

void TestDeviceTable::mountPointOfAnUnmountedDeviceIsAnError()
{
    QCOMPARE(_table->mountPoint(text("/dev/sdc1")), QString());
    QCOMPARE(_errors, QStringList{text("Device /dev/sdc1 not mounted")});
}

void TestDeviceTable::mountPointIsThatOfTheFirstEntry()
{
    mtab("/dev/sdb1 /first ext4 rw 0 0\n/dev/sdb1 /second ext4 rw 0 0\n");
    QCOMPARE(_table->mountPoint(text("/dev/sdb1")), text("/first"));
}

void TestDeviceTable::mountPointDoesNotRunBlkid()
{
    _table->mountPoint(text("/dev/sdb1"));
    QVERIFY(_sandbox.calls().isEmpty());
}

void TestDeviceTable::mountedTypeTakesAnySpellingThatResolves()
{
    mtab("UUID=abc / ext4 rw 0 0\n/dev/sdz1 /z xfs rw 0 0\nLABEL=x /srv ext3 rw 0 0\n");
    QCOMPARE(_table->mountedType(text("/dev/sda1")), text("ext4"));
    QCOMPARE(_table->mountedType(text("/dev/sdz1")), text("xfs"));
    QCOMPARE(_table->mountedType(text("LABEL=x")), text("ext3"));
    QCOMPARE(_table->mountedType(text("UUID=abc")), QString());
    QCOMPARE(_errors, QStringList());
}

void TestDeviceTable::mountedTypeOfAnUnmountedDeviceIsEmptyAndNoError()
{
    QCOMPARE(_table->mountedType(text("/dev/sdc1")), QString());
    QCOMPARE(_errors, QStringList());
}

void TestDeviceTable::missingMtabIsSaidOnceAndLookUpsAreEmpty()
{
    _sandbox.removeEtc(text("mtab"));
    QCOMPARE(_table->deviceOptions(text("/dev/sdb1"), Mtab), QStringList());
    QCOMPARE(_table->mountedType(text("/dev/sdb1")), QString());
    QVERIFY(!_table->hasQuotaOption(text("/dev/sdb1"), UserQuota, Mtab));
    QCOMPARE(_errors, QStringList{text("File /etc/mtab can not be open")});
    QCOMPARE(_table->mountPoint(text("/dev/sdb1")), QString());
    QCOMPARE(_errors, (QStringList{text("File /etc/mtab can not be open"), text("Device /dev/sdb1 not mounted")}));
}

void TestDeviceTable::quotaOptionIsAWholeWord_data()
{
    QTest::addColumn<QByteArray>("options");
    QTest::addColumn<bool>("user");
    QTest::addColumn<bool>("group");
    QTest::newRow("both") << QByteArray("rw,usrquota,grpquota") << true << true;
    QTest::newRow("user") << QByteArray("usrquota,rw") << true << false;
    QTest::newRow("group") << QByteArray("rw,grpquota") << false << true;
    QTest::newRow("neither") << QByteArray("rw,quota") << false << false;
    QTest::newRow("journaled") << QByteArray("usrjquota=aquota.user") << false << false;
    QTest::newRow("longer words") << QByteArray("usrquotas,xgrpquota") << false << false;
    QTest::newRow("another case") << QByteArray("USRQUOTA") << false << false;
}

void TestDeviceTable::quotaOptionIsAWholeWord()
{
    QFETCH(QByteArray, options);
    fstab("/dev/sda1 / ext4 " + options + " 0 0\n");
    QTEST(_table->hasQuotaOption(text("/dev/sda1"), UserQuota, Fstab), "user");
    QTEST(_table->hasQuotaOption(text("/dev/sda1"), GroupQuota, Fstab), "group");
}

void TestDeviceTable::optionsInForceAndConfiguredAreApart()
{
    QVERIFY(!_table->hasQuotaOption(text("/dev/sdb1"), GroupQuota, Fstab));
    QVERIFY(_table->hasQuotaOption(text("/dev/sdb1"), GroupQuota, Mtab));
}

void TestDeviceTable::patternsInFstabAreHarmless()
{
    fstab("/dev/sd[a /a ext4 defaults 0 0\nUUID=(((( /b ext4 defaults 0 0\n/dev/sd.1 /c ext4 any 0 0\n"
          "UUID=* /d ext4 defaults 0 0\n/dev/\\134 /e ext4 defaults 0 0\n");
    QCOMPARE(_table->fstabDevices(), (QStringList{text("/dev/sd[a"), text("UUID=(((("), text("/dev/sdc1"),
                                                  text("/dev/sdc1"), text("/dev/\\")}));
    QCOMPARE(_table->deviceOptions(text("/dev/sdc1"), Fstab), QStringList{text("any")});
    QCOMPARE(_table->quotaDevices(), QStringList());
}

void TestDeviceTable::bytesThatAreNotUtf8AreHarmless()
{
    fstab("/dev/\xff\xfe /a ext4 x 0 0\nUUID=\xe4 /b ext4 y 0 0\nUUID=b /c ext4 z 0 0\n");
    blkid("/dev/sdx1: LABEL=\"\xff\" UUID=\"x\" TYPE=\"ext4\"\n/dev/sdb1: UUID=\"b\" TYPE=\"ext4\"\n");
    QCOMPARE(_table->fstabDevices().size(), 3);
    QCOMPARE(_table->fstabDevices().at(2), text("/dev/sdb1"));
    QCOMPARE(_table->deviceOptions(text("/dev/sdb1"), Fstab), QStringList{text("z")});
    QVERIFY(_table->quotaDevices().contains(text("/dev/sdb1")));
}

/// U+FFFD is what stands in a text for a byte that is none.
void TestDeviceTable::aNameThatIsNoTextIsNoDevice()
{
    const QString device = text("/dev/mapper/gr\xef\xbf\xbdn");
    const QByteArray lines = "/dev/mapper/gr\xfcn /a ext4 usrquota 0 0\n";
    fstab(lines + "UUID=b /b ext4 rw 0 0\n");
    mtab(lines);
    blkid("/dev/mapper/gr\xfcn: UUID=\"c\" TYPE=\"ext4\"\n/dev/sdb1: UUID=\"b\" TYPE=\"ext4\"\n");
    QStringList details;
    connect(_table.get(), &DeviceTable::detail, this, [&details](const QString &detail) { details.append(detail); });
    QCOMPARE(_table->quotaDevices(), QStringList{text("/dev/sdb1")});
    QCOMPARE(details, QStringList{device + text(": the name of this device is not valid in the character encoding of "
                                                "this system, so it is left out")});
    QCOMPARE(_table->fstabDevices(), QStringList({device, text("/dev/sdb1")}));
    for (const QString &file : {Fstab, Mtab})
        QCOMPARE(_table->deviceOptions(device, file), QStringList());
    QCOMPARE(_table->mountedType(device), QString());
    QCOMPARE(_errors, QStringList());
    QCOMPARE(_table->mountPoint(device), QString());
    QCOMPARE(_errors, QStringList{text("Device %1 not mounted").arg(device)});
    QCOMPARE(_table->passedOver(), QStringList{device + text(" on /a: its name is not valid in the character encoding "
                                                             "of this system")});
}

/// As for "mount", which finds no such device.
void TestDeviceTable::aByteOrderMarkIsAPartOfTheFirstName()
{
    fstab("\xef\xbb\xbf/dev/sda1 / ext4 usrquota 0 1\n");
    QCOMPARE(_table->quotaDevices(), QStringList());
    QVERIFY(!_table->hasQuotaOption(text("/dev/sda1"), UserQuota, Fstab));
    QCOMPARE(_table->passedOver(), QStringList{QChar(QChar::ByteOrderMark) +
                                               text("/dev/sda1 on /: a byte order mark stands before it, which mount "
                                                    "takes for a part of the name")});
}

/// Their first column is a folder, or a node, and may be what the name of a device ends with.
void TestDeviceTable::bindMountsAreNotTheDevice()
{
    const QString device = text("/dev/mapper/home");
    const QByteArray lines = "/home /srv/a none usrquota,bind 0 0\n"
                             "/dev/mapper/home /srv/b ext4 grpquota,rbind 0 0\n";
    fstab(lines + "UUID=h /home ext4 rw 0 2\n");
    mtab(lines + "/dev/mapper/home /home ext4 ro 0 0\n");
    blkid("/dev/mapper/home: UUID=\"h\" TYPE=\"ext4\"\n");
    QCOMPARE(_table->deviceOptions(device, Fstab), QStringList{text("rw")});
    QCOMPARE(_table->deviceOptions(device, Mtab), QStringList{text("ro")});
    QCOMPARE(_table->deviceOptions(text("/home"), Mtab), QStringList());
    QCOMPARE(_table->mountPoint(device), text("/home"));
    QCOMPARE(_table->mountedType(device), text("ext4"));
    QCOMPARE(_table->fstabDevices(), QStringList({device, device, device})); // one for each line
}

void TestDeviceTable::missingColumnsAreHarmless()
{
    fstab("/dev/sda1\n/dev/sdb1 /b\nUUID=c /c ext3\n");
    QCOMPARE(_table->quotaDevices(), (QStringList{text("/dev/sda1"), text("/dev/sdb1"), text("/dev/sdc1")}));
    QCOMPARE(_table->deviceOptions(text("/dev/sda1"), Fstab), QStringList{QString()});
    QVERIFY(!_table->hasQuotaOption(text("/dev/sdc1"), UserQuota, Fstab));
}

void TestDeviceTable::aThousandDevices()
{
    QByteArray table;
    QByteArray mounts;
    QByteArray lines;
    for (int i = 0; i < 1000; ++i) {
        const QByteArray number = QByteArray::number(i).rightJustified(4, '0');
        table +=
            (i % 2 ? "UUID=id-" : "/dev/disk") + number + " /mnt/" + number + " ext4 usrquota,n=" + number + " 0 0\n";
        mounts += "/dev/disk" + number + " /mnt/" + number + " ext4 rw 0 0\n";
        lines.prepend("/dev/disk" + number + ": UUID=\"id-" + number + "\" TYPE=\"ext4\"\n");
    }
    fstab(table);
    mtab(mounts);
    blkid(lines);
    const QStringList devices = _table->quotaDevices();
    QCOMPARE(devices.size(), 1000);
    QCOMPARE(devices, _table->fstabDevices());
    for (int i = 0; i < devices.size(); ++i) {
        const QString number = QString::number(i).rightJustified(4, QLatin1Char('0'));
        QCOMPARE(devices.at(i), text("/dev/disk") + number);
        QCOMPARE(_table->deviceOptions(devices.at(i), Fstab), (QStringList{text("usrquota"), text("n=") + number}));
        QCOMPARE(_table->mountPoint(devices.at(i)), text("/mnt/") + number);
        QCOMPARE(_table->mountedType(devices.at(i)), text("ext4"));
    }
    QCOMPARE(_table->passedOver(), QStringList());
}

/// An ordinary user may mount a file system of an own program, under any name.
void TestDeviceTable::userMadeMountsArePassedOver()
{
    mtab("/dev/sdb1 /tmp/mine fuse rw,usrquota 0 0\n"
         "/dev/sdb1 /tmp/mine fuse.ext4 rw,usrquota 0 0\n"
         "/dev/sdb1 /tmp/mine fuseblk rw,usrquota 0 0\n"
         "/dev/sda1 / ext4 rw 0 0\n");
    QVERIFY(!_table->isMounted(text("/dev/sdb1")));
    QCOMPARE(_table->mountPoint(text("/dev/sdb1")), QString());
    QCOMPARE(_errors, QStringList{text("Device /dev/sdb1 not mounted")});
    QCOMPARE(_table->mountedType(text("/dev/sdb1")), QString());
    QVERIFY(!_table->hasQuotaOption(text("/dev/sdb1"), UserQuota, Mtab));

    _buffer->resetCache();
    mtab("/dev/sdb1 /tmp/mine fuse.x rw,usrquota 0 0\n/dev/sdb1 /home ext4 rw,grpquota 0 0\n");
    QCOMPARE(_table->mountPoint(text("/dev/sdb1")), text("/home"));
    QCOMPARE(_table->mountedType(text("/dev/sdb1")), text("ext4"));
    QVERIFY(!_table->hasQuotaOption(text("/dev/sdb1"), UserQuota, Mtab));
    QVERIFY(_table->hasQuotaOption(text("/dev/sdb1"), GroupQuota, Mtab));
    QVERIFY(_table->isMounted(text("/dev/sdb1")));
}

void TestDeviceTable::journaledQuotasAreInForce_data()
{
    QTest::addColumn<QByteArray>("options");
    QTest::addColumn<bool>("user");
    QTest::addColumn<bool>("group");
    QTest::newRow("user") << QByteArray("rw,usrjquota=aquota.user,jqfmt=vfsv1") << true << false;
    QTest::newRow("group") << QByteArray("rw,jqfmt=vfsv0,grpjquota=aquota.group") << false << true;
    QTest::newRow("both") << QByteArray("grpjquota=g,usrjquota=u") << true << true;
    QTest::newRow("format alone") << QByteArray("rw,jqfmt=vfsv1") << false << false;
    QTest::newRow("without a file") << QByteArray("rw,usrjquota=,grpjquota=") << false << false;
    QTest::newRow("another word") << QByteArray("xusrjquota=a") << false << false;
}

/// The kernel then never shows "usrquota", so no start would bring it into force.
void TestDeviceTable::journaledQuotasAreInForce()
{
    QFETCH(QByteArray, options);
    mtab("/dev/sdb1 /home ext4 " + options + " 0 0\n");
    QTEST(_table->hasQuotaOption(text("/dev/sdb1"), UserQuota, Mtab), "user");
    QTEST(_table->hasQuotaOption(text("/dev/sdb1"), GroupQuota, Mtab), "group");
}

/// The three look-ups differ: options by spelling or device, the mount point by spelling, the type by device.
void TestDeviceTable::lookUpsAreThoseOfTheStepsOneByOne()
{
    const QByteArrayList spellings = {"/dev/sda1", "/dev/sdb1", "/dev/sdc1", "UUID=abc",
                                      "UUID=b",    "LABEL=x",   "tmpfs",     "UUID=none"};
    QRandomGenerator random(7);
    for (int round = 0; round < 100; ++round) {
        QByteArray lines;
        const int count = random.bounded(6);
        for (int i = 0; i < count; ++i)
            lines += spellings.at(random.bounded(spellings.size())) + " /m" + QByteArray::number(i) + " t" +
                     QByteArray::number(i) + " o" + QByteArray::number(i) + " 0 0\n";
        fstab(lines);
        mtab(lines);
        _buffer->resetCache();
        const QVector<MountEntry> entries = _buffer->mtabEntries();
        for (const QByteArray &name : spellings) {
            const QString device = QString::fromLatin1(name);
            QStringList options;
            QString dir;
            QString type;
            for (auto entry = entries.crbegin(); entry != entries.crend(); ++entry) {
                const QString path = _table->resolveDevice(entry->fsName, _buffer->blkidLines());
                if (entry->fsName == device || path == device)
                    options = QStringList{entry->opts};
                if (entry->fsName == device)
                    dir = entry->dir;
                if ((path.isEmpty() ? entry->fsName : path) == device)
                    type = entry->type;
            }
            QCOMPARE(_table->deviceOptions(device, Mtab), options);
            QCOMPARE(_table->deviceOptions(device, Fstab), options);
            QCOMPARE(_table->mountPoint(device), dir);
            QCOMPARE(_table->mountedType(device), type);
        }
    }
}

void TestDeviceTable::saysWhyLinesArePassedOver()
{
    fstab("/dev/sda1 / ext4 defaults 0 1\n"
          "UUID=gone /gone ext4 defaults 0 2\n"
          "LABEL=gone /lost auto defaults 0 2\n"
          "/dev/sdx1 /data xfs defaults 0 2\n"
          "UUID=swap none swap sw 0 0\n"
          "proc /proc proc defaults 0 0\n"
          "tmpfs /tmp tmpfs defaults 0 0\n"
          "server:/export /net nfs4 defaults 0 0\n"
          "/dev/sdy1\n");
    blkid("/dev/sda1: UUID=\"abc\" TYPE=\"ext4\"\n"
          "/dev/sdx1: UUID=\"x\" TYPE=\"xfs\"\n"
          "/dev/sds1: UUID=\"swap\" TYPE=\"swap\"\n");
    QCOMPARE(_table->passedOver(), (QStringList{
                                       text("UUID=gone on /gone: blkid finds no such device"),
                                       text("LABEL=gone on /lost: blkid finds no such device"),
                                       text("/dev/sdx1 on /data: xfs, not ext2, ext3 or ext4"),
                                       text("UUID=swap: swap, not ext2, ext3 or ext4"),
                                       text("proc on /proc: proc, not ext2, ext3 or ext4"),
                                       text("tmpfs on /tmp: tmpfs, not ext2, ext3 or ext4"),
                                       text("server:/export on /net: nfs4, not ext2, ext3 or ext4"),
                                       text("/dev/sdy1: blkid finds no such device"),
                                   }));
}

/// It is there, but not in the way in which it has to be spelled or marked.
void TestDeviceTable::saysWhyAPresentDeviceIsPassedOver()
{
    QTemporaryDir folder(text("/dev/shm/kra-XXXXXX"));
    const QString disk = folder.filePath(text("dm-0"));
    const QString name = folder.filePath(text("vg-home"));
    QFile file(disk);
    QVERIFY(file.open(QIODevice::WriteOnly) && QFile::link(disk, name));
    fstab("UUID=\"u9\" /quoted ext4 defaults 0 1\n" + name.toUtf8() + " /linked auto defaults 0 2\n" +
          "/dev/sdp1 /disklabel ext4 defaults 0 2\n/dev/sda1 /short ext4 defaults 0 2\n"
          "/dev/sde1 /empty ext4 defaults 0 2\nUUID=\"h\" /xfs ext4 defaults 0 2\n");
    blkid("/dev/sdq1: UUID=\"u9\" TYPE=\"ext4\"\n" + disk.toUtf8() + ": TYPE=\"ext4\"\n" +
          "/dev/sdp1: PTTYPE=\"dos\" UUID=\"p\" TYPE=\"ext3\"\n/dev/sda10: TYPE=\"swap\"\n"
          "/dev/sde1: PARTUUID=\"e\"\n/dev/sdh1: UUID=\"h\" TYPE=\"xfs\"\n");
    QCOMPARE(_table->passedOver(),
             (QStringList{
                 text("UUID=\"u9\" on /quoted: blkid lists it as /dev/sdq1; write that or UUID=u9 into the line"),
                 text("%1 on /linked: blkid lists it as %2; write that into the line").arg(name, disk),
                 text("/dev/sdp1 on /disklabel: blkid finds dos on it, and ext3 only after that"),
                 text("/dev/sda1 on /short: blkid finds no such device"),
                 text("/dev/sde1 on /empty: blkid finds no file system on it"),
                 text("UUID=\"h\" on /xfs: xfs, not ext2, ext3 or ext4"),
             }));
}

void TestDeviceTable::blkidMissingPassesEveryLineOver()
{
    _sandbox.reset();
    fstab("/dev/sda1 / ext4 defaults 0 1\nUUID=b /b ext4 defaults 0 1\n");
    QCOMPARE(_table->quotaDevices(), QStringList());
    QCOMPARE(_table->passedOver(), (QStringList{text("/dev/sda1 on /: blkid could not be asked for it"),
                                                text("UUID=b on /b: blkid could not be asked for it")}));
    QCOMPARE(_errors, QStringList{text("Process blkid can not started")});
}

void TestDeviceTable::blkidIsRunOnce()
{
    _table->quotaDevices();
    _table->fstabDevices();
    _table->deviceOptions(text("/dev/sda1"), Fstab);
    _table->deviceOptions(text("/dev/sda1"), Mtab);
    _table->mountedType(text("/dev/sda1"));
    _table->passedOver();
    QCOMPARE(_sandbox.calls().size(), 1);
}

void TestDeviceTable::resetAsksTheSourcesAgain()
{
    QCOMPARE(_table->deviceOptions(text("/dev/sda1"), Mtab), (QStringList{text("rw"), text("relatime")}));
    mtab("/dev/sda1 / ext4 rw,usrquota 0 0\n");
    QCOMPARE(_table->deviceOptions(text("/dev/sda1"), Mtab), (QStringList{text("rw"), text("relatime")}));
    QCOMPARE(_table->quotaDevices().size(), 3);
    blkid("/dev/sda1: UUID=\"abc\" TYPE=\"ext4\"\n");
    _buffer->resetCache();
    QCOMPARE(_table->deviceOptions(text("/dev/sda1"), Mtab), (QStringList{text("rw"), text("usrquota")}));
    QCOMPARE(_table->mountPoint(text("/dev/sda1")), text("/"));
    QCOMPARE(_table->quotaDevices(), QStringList{text("/dev/sda1")});
    QCOMPARE(_sandbox.calls().size(), 2);
}

/// Without them no device is listed, and that is not for want of one.
void TestDeviceTable::whoDidNotTellIsKnown()
{
    QCOMPARE(_table->silentSource(), QString());
    _sandbox.writeEtc(text("fstab"), {});
    _buffer->resetCache();
    QCOMPARE(_table->silentSource(), QString());

    QVERIFY(QFile::remove(text("/etc/fstab")));
    _buffer->resetCache();
    QCOMPARE(_table->silentSource(), text("/etc/fstab"));
    QVERIFY(_table->quotaDevices().isEmpty());

    QuotaManager manager;
    QCOMPARE(manager.readGeneral().params.value(silentSourceKey()).toString(), text("/etc/fstab"));
    QCOMPARE(manager.readUser(text("root")).params.value(silentSourceKey()).toString(), text("/etc/fstab"));

    _sandbox.writeEtc(text("fstab"), "/dev/sda1 / ext4 defaults 0 1\n");
    _sandbox.standIn(text("blkid")).cannotBeStarted();
    _buffer->resetCache();
    QCOMPARE(_table->silentSource(), text("blkid"));

    _sandbox.standIn(text("blkid")).crashes();
    _buffer->resetCache();
    QCOMPARE(_table->silentSource(), text("blkid"));
}

KRA_SANDBOX_MAIN(TestDeviceTable)
#include "tst_devicetable.moc"
