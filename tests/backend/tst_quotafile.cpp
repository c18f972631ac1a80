// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <quotamanager.h>
#include <sandbox.h>

#include <QTextCodec>
#include <QtTest>

#include <sys/stat.h>

namespace
{

const QString Sda = QStringLiteral("/dev/sda1");

QString text(const char *bytes)
{
    return QString::fromUtf8(bytes);
}

} // namespace

/// Which file in which folder is taken for the quota file of a device.
class TestQuotaFile : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { QTextCodec::setCodecForLocale(QTextCodec::codecForName("UTF-8")); }
    void init();

    void aMountPointThatIsNoTextKeepsItsBytes();
    void theNameOfAnOptionInForceCounts_data();
    void theNameOfAnOptionInForceCounts();
    void aDeviceOfAnotherNameIsKnownByItsNumber();
    void onlyFileSystemsWithQuotasAreKnownByTheirNumber();

private:
    void mounted(const QByteArray &name, const QByteArray &folder, const QByteArray &options = "rw",
                 const QByteArray &type = "ext4");
    static void makeFile(const QByteArray &path);

    Sandbox _sandbox;
    QByteArray _folder;
    QStringList _errors;
    std::unique_ptr<QuotaManager> _manager;
};

void TestQuotaFile::init()
{
    _sandbox.reset();
    _errors.clear();
    _folder = QFile::encodeName(_sandbox.folder(text("a")));
    _sandbox.writeEtc(text("fstab"), "/dev/sda1 /a ext4 rw 0 0\n");
    _sandbox.standIn(text("blkid")).prints("/dev/sda1: TYPE=\"ext4\"\n");
    for (const QuotaKind kind : {UserQuota, GroupQuota}) {
        FakeKernel::State state;
        state.on = false;
        _sandbox.kernel().setState("/dev/sda1", kind, state);
    }
    _manager = std::make_unique<QuotaManager>();
    connect(_manager.get(), &QuotaManager::error, this, [this](const QString &message) { _errors.append(message); });
}

void TestQuotaFile::mounted(const QByteArray &name, const QByteArray &folder, const QByteArray &options,
                            const QByteArray &type)
{
    _sandbox.writeEtc(text("mtab"), name + ' ' + folder + ' ' + type + ' ' + options + " 0 0\n");
}

void TestQuotaFile::makeFile(const QByteArray &path)
{
    QVERIFY(mknod(path.constData(), S_IFREG | 0600, 0) == 0);
}

/// A folder beside it is called as the text of its name is.
void TestQuotaFile::aMountPointThatIsNoTextKeepsItsBytes()
{
    const QByteArray folder = _folder + "/gr\xfcn";
    const QByteArray other = _folder + "/gr\xef\xbf\xbdn";
    QVERIFY(mkdir(folder.constData(), 0755) == 0 && mkdir(other.constData(), 0755) == 0);
    makeFile(folder + "/aquota.user");
    makeFile(other + "/aquota.group");
    mounted("/dev/sda1", folder);
    _sandbox.kernel().mount("/dev/sda1", folder);
    QVERIFY(_manager->quotaFileExists(Sda, UserQuota));
    QVERIFY(!_manager->quotaFileExists(Sda, GroupQuota));
    QVERIFY(_manager->readGeneral().deviceSettings.value(Sda).size > 0);
    QCOMPARE(_errors, QStringList());
    for (const char *name : {"/aquota.user", ""})
        QVERIFY(remove((folder + name).constData()) == 0);
}

void TestQuotaFile::theNameOfAnOptionInForceCounts_data()
{
    QTest::addColumn<QByteArray>("options");
    QTest::addColumn<QString>("user");
    QTest::addColumn<QString>("group");
    QTest::newRow("none") << QByteArray("rw") << text("aquota.user") << text("aquota.group");
    QTest::newRow("usual") << QByteArray("usrquota,grpquota") << text("aquota.user") << text("aquota.group");
    QTest::newRow("journaled") << QByteArray("usrjquota=u,jqfmt=vfsv1,grpjquota=g.2") << text("u") << text("g.2");
    QTest::newRow("one kind") << QByteArray("jqfmt=vfsv0,grpjquota=quota.group") << text("aquota.user")
                              << text("quota.group");
    QTest::newRow("no file named") << QByteArray("usrjquota=") << text("aquota.user") << text("aquota.group");
}

void TestQuotaFile::theNameOfAnOptionInForceCounts()
{
    QFETCH(QByteArray, options);
    QFETCH(QString, user);
    QFETCH(QString, group);
    mounted("/dev/sda1", _folder + '/', options);
    for (const QuotaKind kind : {UserQuota, GroupQuota}) {
        const QString name = kind == GroupQuota ? group : user;
        QVERIFY(!_manager->readKindSettings(Sda, kind).fileExists);
        makeFile(_folder + '/' + name.toUtf8());
        const KindSettings settings = _manager->readKindSettings(Sda, kind);
        QVERIFY(settings.fileExists);
        QCOMPARE(settings.fileName, name);
    }
    QCOMPARE(_errors, QStringList());
}

/// The kernel names the device "/dev/root" that it mounted by itself.
void TestQuotaFile::aDeviceOfAnotherNameIsKnownByItsNumber()
{
    makeFile(_folder + "/aquota.user");
    mounted("/dev/root", _folder, "rw,usrquota");
    const auto verifyUnknown = [this] {
        _manager->resetCache();
        QCOMPARE(_manager->mountPoint(Sda), QString());
        QCOMPARE(_manager->mountedType(Sda), QString());
        QCOMPARE(_manager->deviceOptions(Sda, text("/etc/mtab")), QStringList());
        QCOMPARE(_errors, QStringList{text("Device /dev/sda1 not mounted")});
        _errors.clear();
    };
    verifyUnknown(); // there is no such device
    _sandbox.kernel().mount("/dev/sda1", "/proc");
    verifyUnknown(); // there is, but what is mounted is another

    _sandbox.kernel().mount("/dev/sda1", _folder);
    _manager->resetCache();
    QCOMPARE(_manager->mountPoint(Sda), QString::fromUtf8(_folder));
    QCOMPARE(_manager->mountedType(Sda), text("ext4"));
    QVERIFY(_manager->hasQuotaOption(Sda, UserQuota, text("/etc/mtab")));
    QVERIFY(!_manager->hasQuotaOption(Sda, UserQuota, text("/etc/fstab")));
    QVERIFY(_manager->quotaFileExists(Sda, UserQuota));
    QCOMPARE(_errors, QStringList());
}

void TestQuotaFile::onlyFileSystemsWithQuotasAreKnownByTheirNumber()
{
    _sandbox.kernel().mount("/dev/sda1", _folder);
    for (const char *type : {"xfs", "none", "fuse", "fuse.ext4"}) {
        mounted("/dev/root", _folder, "rw", type);
        _manager->resetCache();
        QCOMPARE(_manager->mountPoint(Sda), QString());
    }
    mounted("UUID=a", _folder); // which the kernel never writes
    _manager->resetCache();
    QCOMPARE(_manager->mountPoint(Sda), QString());
}

KRA_SANDBOX_MAIN(TestQuotaFile)

#include "tst_quotafile.moc"
