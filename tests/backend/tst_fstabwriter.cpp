// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "killedchild.h"

#include <quotamanager.h>
#include <sandbox.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QtTest>

#include <array>
#include <cstring>
#include <memory>

#include <sys/mount.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

namespace
{

QString text(const char *bytes)
{
    return QString::fromUtf8(bytes);
}

const QString Sda = QStringLiteral("/dev/sda1");
const QString Sdb = QStringLiteral("/dev/sdb1");
const QString CannotOpen = QStringLiteral("File /etc/fstab can not be open");

const QByteArray Table = "# the disks\n"
                         "/dev/sda1 / ext4 errors=remount-ro 0 1\n"
                         "\n"
                         "UUID=b\t/srv\text4\trw,usrquota,noatime,usrquota 0 2\n"
                         "LABEL=c /label ext4 usrquota 0 2\n";
const QByteArray Rewritten = "/dev/sda1  /  ext4  errors=remount-ro,usrquota  0  1\n"
                             "UUID=b  /srv  ext4  rw,usrquota,noatime,usrquota  0  2\n"
                             "LABEL=c  /label  ext4  usrquota  0  2\n";

QByteArray content(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void write(const QString &path, const QByteArray &bytes)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
        qFatal("%s cannot be written", qPrintable(path));
}

struct stat statusOf(const QString &path)
{
    struct stat status = {};
    if (stat(QFile::encodeName(path).constData(), &status) != 0)
        qFatal("%s: %s", qPrintable(path), std::strerror(errno));
    return status;
}

/// A file system in memory that is there as long as this object.
class Memory
{
public:
    Memory(const QString &folder, const char *options)
        : _folder(QFile::encodeName(folder))
    {
        if (mount("memory", _folder.constData(), "tmpfs", MS_NOSUID | MS_NODEV, options) != 0)
            qFatal("mount: %s", std::strerror(errno));
    }
    Memory(const Memory &) = delete;
    Memory &operator=(const Memory &) = delete;
    ~Memory() { umount2(_folder.constData(), MNT_DETACH); }

    void makeReadOnly() const
    {
        constexpr auto flags = MS_REMOUNT | MS_RDONLY | MS_NOSUID | MS_NODEV;
        if (mount("memory", _folder.constData(), "tmpfs", flags, nullptr) != 0)
            qFatal("remount: %s", std::strerror(errno));
    }

    /// Leaves not a byte.
    void fill() const
    {
        QFile file(QFile::decodeName(_folder) + text("/filler"));
        if (!file.open(QIODevice::WriteOnly | QIODevice::Unbuffered))
            qFatal("no filler");
        while (file.write(QByteArray(512, 'x')) > 0) {
        }
    }

private:
    QByteArray _folder;
};

} // namespace

/// "/etc/fstab" as a file: what is written when, and what becomes of it when something goes wrong.
class TestFstabWriter : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void enablingAppendsTheOption();
    void enablingWhatIsThereLeavesTheFileUntouched();
    void disablingRemovesEveryCopy();
    void disablingWhatIsNotThereLeavesTheFileUntouched();
    void disablingTheOnlyOptionLeavesDefaults();
    void enablingInAnEmptyColumn();
    void oneKindAfterTheOther();
    void whatWasEditedSinceTheReadStays();
    void optionsAreWrittenAsGiven();
    void aDeviceWithoutALineIsRefused();
    void withoutBlkidNothingIsChanged();
    void everyLineOfTheDeviceIsChanged();
    void anUnsafeTableIsRefused();

    void ownerModeAndAttributesStay();
    void aSymbolicLinkStaysOne();
    void nothingIsLeftBeside();
    void commentsAreKeptInACopy();
    void whereNoCopyCanBeMadeTheCommentsStay();

    void aMissingFileIsReported();
    void aPipeInItsPlaceIsReported();
    void aFolderInItsPlaceIsReported();
    void aReadOnlyFolderIsReported();
    void aFullDiskLeavesTheOldFile();
    void aKilledWriterLeavesTheOldOrTheNewFile();

    void aSaveAtAnyMomentIsKept_data();
    void aSaveAtAnyMomentIsKept();
    void savesWithoutEndAreReported();
    void twoWritersBothSucceed();
    void twoWritersSwitchAgainAndAgain();

private:
    QString moveTo(const QString &folder);

    Sandbox _sandbox;
    std::unique_ptr<QuotaManager> _manager;
    QStringList _errors;
    QStringList _details;
};

void TestFstabWriter::init()
{
    _sandbox.reset();
    _sandbox.writeEtc(text("fstab"), Table);
    _sandbox.standIn(text("blkid"))
        .prints("/dev/sda1: UUID=\"a\" TYPE=\"ext4\"\n/dev/sdb1: UUID=\"b\" TYPE=\"ext4\"\n"
                "/dev/sdc1: LABEL=\"c\" UUID=\"c\" TYPE=\"ext4\"\n");
    _errors.clear();
    _details.clear();
    _manager = std::make_unique<QuotaManager>();
    connect(_manager.get(), &QuotaManager::error, this, [this](const QString &message) { _errors.append(message); });
    connect(_manager.get(), &QuotaManager::detail, this, [this](const QString &line) {
        if (!line.startsWith(text("blkid")) && !line.startsWith(text("/etc/fstab: ")))
            _details.append(line);
    });
}

/// Has "/etc/fstab" stand in another folder, behind a link. Tells where.
QString TestFstabWriter::moveTo(const QString &folder)
{
    QString path = folder + text("/fstab.real");
    write(path, Table);
    _sandbox.removeEtc(text("fstab"));
    QFile::link(path, text("/etc/fstab"));
    return path;
}

void TestFstabWriter::enablingAppendsTheOption()
{
    QVERIFY(_manager->setFstabOption(Sda, UserQuota, true));
    QCOMPARE(_sandbox.readEtc(text("fstab")), Rewritten);
    QCOMPARE(_errors, QStringList());

    init();
    QVERIFY(_manager->setFstabOption(Sdb, GroupQuota, true));
    QCOMPARE(_sandbox.readEtc(text("fstab")).split('\n').at(1),
             QByteArray("UUID=b  /srv  ext4  rw,usrquota,noatime,usrquota,grpquota  0  2"));
}

void TestFstabWriter::enablingWhatIsThereLeavesTheFileUntouched()
{
    const ino_t file = statusOf(text("/etc/fstab")).st_ino;
    QVERIFY(_manager->setFstabOption(Sdb, UserQuota, true));
    QCOMPARE(_sandbox.readEtc(text("fstab")), Table);
    QCOMPARE(statusOf(text("/etc/fstab")).st_ino, file);
    QCOMPARE(_errors, QStringList());
}

void TestFstabWriter::disablingRemovesEveryCopy()
{
    QVERIFY(_manager->setFstabOption(Sdb, UserQuota, false));
    QCOMPARE(_sandbox.readEtc(text("fstab")).split('\n').at(1), QByteArray("UUID=b  /srv  ext4  rw,noatime  0  2"));
    QCOMPARE(_errors, QStringList());
}

void TestFstabWriter::disablingWhatIsNotThereLeavesTheFileUntouched()
{
    const ino_t file = statusOf(text("/etc/fstab")).st_ino;
    QVERIFY(_manager->setFstabOption(Sdb, GroupQuota, false));
    QVERIFY(_manager->setFstabOption(Sda, UserQuota, false));
    QCOMPARE(_sandbox.readEtc(text("fstab")), Table);
    QCOMPARE(statusOf(text("/etc/fstab")).st_ino, file);
    QCOMPARE(_errors, QStringList());
}

void TestFstabWriter::disablingTheOnlyOptionLeavesDefaults()
{
    _sandbox.writeEtc(text("fstab"), "/dev/sda1 / ext4 grpquota 0 1\n");
    QVERIFY(_manager->setFstabOption(Sda, GroupQuota, false));
    QCOMPARE(_sandbox.readEtc(text("fstab")), QByteArray("/dev/sda1  /  ext4  defaults  0  1\n"));
}

void TestFstabWriter::enablingInAnEmptyColumn()
{
    _sandbox.writeEtc(text("fstab"), "/dev/sda1 / ext4\n");
    QVERIFY(_manager->setFstabOption(Sda, GroupQuota, true));
    QCOMPARE(_sandbox.readEtc(text("fstab")), QByteArray("/dev/sda1  /  ext4  grpquota  0  0\n"));
}

/// Without anything that has the caches read again in between.
void TestFstabWriter::oneKindAfterTheOther()
{
    QVERIFY(_manager->setFstabOption(Sda, UserQuota, true));
    QVERIFY(_manager->setFstabOption(Sda, GroupQuota, true));
    QCOMPARE(_sandbox.readEtc(text("fstab")).split('\n').at(0),
             QByteArray("/dev/sda1  /  ext4  errors=remount-ro,usrquota,grpquota  0  1"));
    QVERIFY(_manager->hasQuotaOption(Sda, GroupQuota, text("/etc/fstab")));
    QCOMPARE(_sandbox.calls(text("blkid")).size(), 1);
}

void TestFstabWriter::whatWasEditedSinceTheReadStays()
{
    QCOMPARE(_manager->deviceOptions(Sda, text("/etc/fstab")), QStringList(text("errors=remount-ro")));
    _sandbox.writeEtc(text("fstab"), QByteArray(Table).replace("errors=remount-ro", "ro,nosuid"));
    QVERIFY(_manager->setFstabOption(Sda, UserQuota, true));
    QVERIFY(_sandbox.readEtc(text("fstab")).contains("/dev/sda1  /  ext4  ro,nosuid,usrquota  0  1\n"));

    _sandbox.writeEtc(text("fstab"), "/dev/sda1 / ext4 usrquota,sync 0 1\n");
    QVERIFY(_manager->setFstabOption(Sda, UserQuota, false));
    QCOMPARE(_sandbox.readEtc(text("fstab")), QByteArray("/dev/sda1  /  ext4  sync  0  1\n"));
}

void TestFstabWriter::optionsAreWrittenAsGiven()
{
    QVERIFY(_manager->writeFstab(Sda, {text("ro"), text("usrquota")}));
    QCOMPARE(_sandbox.readEtc(text("fstab")).split('\n').at(0), QByteArray("/dev/sda1  /  ext4  ro,usrquota  0  1"));
}

void TestFstabWriter::aDeviceWithoutALineIsRefused()
{
    const QMap<QString, QString> reasons = {
        {text("/dev/none"), text("none of its lines names the device /dev/none by its path or by UUID=")},
        {text("/dev/sdc1"),
         text("its line 5 names the device /dev/sdc1 as LABEL=c; write UUID=c there, then it can be switched")}};
    for (auto reason = reasons.cbegin(); reason != reasons.cend(); ++reason) {
        _errors.clear();
        QVERIFY(!_manager->setFstabOption(reason.key(), GroupQuota, true));
        QCOMPARE(_sandbox.readEtc(text("fstab")), Table);
        QCOMPARE(_errors, QStringList{text("File /etc/fstab was not changed: ") + *reason});
    }
    // Nothing has to go where nothing is.
    _errors.clear();
    QVERIFY(_manager->setFstabOption(text("/dev/none"), UserQuota, false));
    QVERIFY(_manager->setFstabOption(text("/dev/sdc1"), GroupQuota, false));
    QCOMPARE(_errors, QStringList());
    QVERIFY(!_manager->setFstabOption(text("/dev/sdc1"), UserQuota, false));
    QCOMPARE(_errors, QStringList{text("File /etc/fstab was not changed: ") + reasons.value(text("/dev/sdc1"))});
}

/// Nobody knows then which line is whose.
void TestFstabWriter::withoutBlkidNothingIsChanged()
{
    _sandbox.standIn(text("blkid")).cannotBeStarted();
    QVERIFY(!_manager->setFstabOption(Sda, UserQuota, true));
    QCOMPARE(_sandbox.readEtc(text("fstab")), Table);
    QCOMPARE(_errors, QStringList({text("Process blkid can not started"),
                                   text("File /etc/fstab was not changed: blkid did not tell which of its lines is "
                                        "for /dev/sda1; try again when it works")}));

    init();
    _sandbox.standIn(text("blkid")).prints("/dev/sdb1: UUID=\"b\" TYPE=\"ext4\"\n");
    QVERIFY(!_manager->setFstabOption(Sda, UserQuota, true));
    QCOMPARE(_errors,
             QStringList{text("File /etc/fstab was not changed: its line 2 names the device /dev/sda1, but blkid does "
                              "not list that device; look whether it is there and whether blkid works")});
}

void TestFstabWriter::everyLineOfTheDeviceIsChanged()
{
    _sandbox.writeEtc(text("fstab"), "UUID=b /b ext4 ro 0 0\n/dev/sdb1 /a ext4 usrquota,rw 0 0\n");
    QVERIFY(_manager->setFstabOption(Sdb, UserQuota, false));
    QCOMPARE(_sandbox.readEtc(text("fstab")),
             QByteArray("UUID=b  /b  ext4  ro  0  0\n/dev/sdb1  /a  ext4  rw  0  0\n"));
    QVERIFY(_manager->setFstabOption(Sdb, GroupQuota, true));
    QCOMPARE(_sandbox.readEtc(text("fstab")),
             QByteArray("UUID=b  /b  ext4  ro,grpquota  0  0\n/dev/sdb1  /a  ext4  rw,grpquota  0  0\n"));
    QCOMPARE(_errors, QStringList());
}

void TestFstabWriter::anUnsafeTableIsRefused()
{
    _sandbox.writeEtc(text("fstab"), Table + "/dev/sdd1\n");
    QVERIFY(!_manager->setFstabOption(Sda, UserQuota, true));
    QCOMPARE(_sandbox.readEtc(text("fstab")), Table + "/dev/sdd1\n");
    QCOMPARE(_errors, QStringList{text("File /etc/fstab was not changed: its line 6 lacks a mount point or a file "
                                       "system type: /dev/sdd1")});
}

void TestFstabWriter::ownerModeAndAttributesStay()
{
    const QString path = moveTo(_sandbox.folder(text("elsewhere")));
    const QByteArray name = QFile::encodeName(path);
    QCOMPARE(chmod(name.constData(), 0640), 0);
    const bool mayGiveAway = chown(name.constData(), 1234, 5678) == 0; // not where only one user is known
    // An access list: owner rw, user 7 r, group r, mask r, others nothing.
    const QByteArray list("\2\0\0\0"
                          "\1\0\6\0\377\377\377\377"
                          "\2\0\4\0\0\0\0\0"
                          "\4\0\4\0\377\377\377\377"
                          "\20\0\4\0\377\377\377\377"
                          "\40\0\0\0\377\377\377\377",
                          44);
    QCOMPARE(setxattr(name.constData(), "system.posix_acl_access", list.constData(), 44, 0), 0);
    const struct stat before = statusOf(path);

    QVERIFY(_manager->setFstabOption(Sda, UserQuota, true));
    const struct stat after = statusOf(path);
    QVERIFY(after.st_ino != before.st_ino);
    QCOMPARE(after.st_mode, before.st_mode);
    QCOMPARE(after.st_uid, before.st_uid);
    QCOMPARE(after.st_gid, before.st_gid);
    if (mayGiveAway)
        QCOMPARE(after.st_uid, 1234U);
    std::array<char, 64> found{};
    const ssize_t length = getxattr(name.constData(), "system.posix_acl_access", found.data(), found.size());
    QCOMPARE(QByteArray(found.data(), static_cast<int>(length)), list);
}

void TestFstabWriter::aSymbolicLinkStaysOne()
{
    const QString folder = _sandbox.folder(text("elsewhere"));
    const QString path = moveTo(folder);
    QVERIFY(_manager->setFstabOption(Sda, UserQuota, true));
    QCOMPARE(QFileInfo(text("/etc/fstab")).symLinkTarget(), path);
    QVERIFY(!QFileInfo(path).isSymLink());
    QCOMPARE(content(path), Rewritten);

    // Also over two links, of which one is relative.
    init();
    QCOMPARE(moveTo(_sandbox.folder(text("elsewhere"))), path);
    QVERIFY(QFile::link(text("fstab.real"), folder + text("/second")));
    _sandbox.removeEtc(text("fstab"));
    QVERIFY(QFile::link(folder + text("/second"), text("/etc/fstab")));
    QVERIFY(_manager->setFstabOption(Sda, UserQuota, true));
    QVERIFY(QFileInfo(folder + text("/second")).isSymLink());
    QCOMPARE(content(path), Rewritten);
}

void TestFstabWriter::nothingIsLeftBeside()
{
    const QStringList before = QDir(text("/etc")).entryList(QDir::AllEntries | QDir::Hidden | QDir::System);
    QVERIFY(_manager->setFstabOption(Sda, UserQuota, true));
    QCOMPARE(QDir(text("/etc")).entryList(QDir::AllEntries | QDir::Hidden | QDir::System), before);
}

/// Once, as there are none afterwards.
void TestFstabWriter::commentsAreKeptInACopy()
{
    _sandbox.writeEtc(text("fstab"), Table + "/dev/sdd1 /late ext4 defaults 0 2 # after the fields\n");
    const QByteArray before = content(text("/etc/fstab"));
    QVERIFY(_manager->setFstabOption(Sda, UserQuota, true));
    QCOMPARE(Sandbox::backupContents(), QByteArrayList{before});
    const QString copy = Sandbox::backups().filePath(Sandbox::backups().entryList().constFirst());
    QCOMPARE(_details, QStringList{text("The comments of /etc/fstab are not written again. The file as it was is kept "
                                        "as %1.")
                                       .arg(copy)});
    QVERIFY(_manager->setFstabOption(Sda, GroupQuota, true));
    QCOMPARE(Sandbox::backups().entryList().size(), 1);
    QCOMPARE(_details.size(), 1);
}

void TestFstabWriter::whereNoCopyCanBeMadeTheCommentsStay()
{
    const Memory backups(text("/var/backups"), "size=16k");
    backups.makeReadOnly();
    QVERIFY(!_manager->setFstabOption(Sda, UserQuota, true));
    QCOMPARE(content(text("/etc/fstab")), Table);
    QCOMPARE(_errors, QStringList{text("File /etc/fstab was not changed: its comments would be lost, and no copy of it "
                                       "could be made in /var/backups; make room there and try again")});

    // Without a comment there is nothing to keep.
    const QByteArray bare = "/dev/sda1 / ext4 rw 0 1\n";
    _sandbox.writeEtc(text("fstab"), bare);
    QVERIFY(_manager->setFstabOption(Sda, UserQuota, true));
    QCOMPARE(content(text("/etc/fstab")), QByteArray("/dev/sda1  /  ext4  rw,usrquota  0  1\n"));
}

void TestFstabWriter::aMissingFileIsReported()
{
    _sandbox.removeEtc(text("fstab"));
    QVERIFY(!_manager->writeFstab(Sda, {text("usrquota")}));
    QCOMPARE(_errors, QStringList{CannotOpen});
    QVERIFY(!QFile::exists(text("/etc/fstab")));
}

void TestFstabWriter::aPipeInItsPlaceIsReported()
{
    _sandbox.removeEtc(text("fstab"));
    QCOMPARE(mkfifo("/etc/fstab", 0644), 0);
    QVERIFY(!_manager->setFstabOption(Sda, UserQuota, true));
    QCOMPARE(_errors, QStringList{CannotOpen});
}

void TestFstabWriter::aFolderInItsPlaceIsReported()
{
    _sandbox.removeEtc(text("fstab"));
    QDir().mkdir(text("/etc/fstab"));
    QVERIFY(!_manager->writeFstab(Sda, {text("usrquota")}));
    QCOMPARE(_errors, QStringList{CannotOpen});
    QVERIFY(QFileInfo(text("/etc/fstab")).isDir());
}

void TestFstabWriter::aReadOnlyFolderIsReported()
{
    const QString folder = _sandbox.folder(text("readonly"));
    const Memory memory(folder, "size=64k");
    const QString path = moveTo(folder);
    memory.makeReadOnly();
    QVERIFY(!_manager->setFstabOption(Sda, UserQuota, true));
    QCOMPARE(_errors, QStringList{CannotOpen});
    QCOMPARE(content(path), Table);
    QCOMPARE(QDir(folder).entryList(QDir::Files), QStringList{text("fstab.real")});
}

void TestFstabWriter::aFullDiskLeavesTheOldFile()
{
    const QString folder = _sandbox.folder(text("full"));
    const Memory memory(folder, "size=64k");
    const QString path = moveTo(folder);
    memory.fill();
    QVERIFY(!_manager->setFstabOption(Sda, UserQuota, true));
    QCOMPARE(_errors, QStringList({CannotOpen, text("It could not be written and is as it was before: No space left "
                                                    "on device")}));
    QCOMPARE(content(path), Table);
    QCOMPARE(QDir(folder).entryList(QDir::Files), QStringList({text("filler"), text("fstab.real")}));

    // Not even room for another file.
    _errors.clear();
    const QString second = _sandbox.folder(text("nofiles"));
    const Memory noFiles(second, "nr_inodes=2");
    const QString other = moveTo(second);
    QVERIFY(!_manager->setFstabOption(Sda, UserQuota, true));
    QCOMPARE(_errors, QStringList{CannotOpen});
    QCOMPARE(content(other), Table);
}

void TestFstabWriter::aKilledWriterLeavesTheOldOrTheNewFile()
{
    _manager->deviceOptions(Sda, text("/etc/fstab")); // what it reads of programs it has read
    const struct stat before = statusOf(text("/etc/fstab"));
    int oldOnes = 0;
    int newOnes = 0;
    const auto work = [this] { _manager->setFstabOption(Sda, UserQuota, true); };
    constexpr int manyStops = 10000;
    int stop = 1;
    while (stop < manyStops && killAtStop(stop, work)) {
        const QByteArray found = _sandbox.readEtc(text("fstab"));
        QVERIFY2(found == Table || found == Rewritten, found);
        const struct stat after = statusOf(text("/etc/fstab"));
        QCOMPARE(after.st_mode, before.st_mode);
        QCOMPARE(after.st_uid, before.st_uid);
        QVERIFY(found == Table || Sandbox::backupContents().contains(Table));
        found == Table ? ++oldOnes : ++newOnes;

        // What may be left over has a name that is passed over; a later run is not hindered by it.
        const QStringList left = QDir(text("/etc")).entryList({text("*fstab*")}, QDir::Files | QDir::Hidden);
        for (const QString &name : left)
            QVERIFY(QStringList({text("fstab"), text(".fstab.kra-new~"), text(".fstab.kra-lock~")}).contains(name));
        _sandbox.writeEtc(text("fstab"), Table);
        Sandbox::clearBackups();
        ++stop;
    }
    QVERIFY(stop < manyStops);
    QCOMPARE(_sandbox.readEtc(text("fstab")), Rewritten); // the run that was not killed
    QCOMPARE(QDir(text("/etc")).entryList({text("*fstab*")}, QDir::Files | QDir::Hidden), QStringList{text("fstab")});
    QVERIFY2(oldOnes > 20 && newOnes > 0, qPrintable(QStringLiteral("%1 old, %2 new").arg(oldOnes).arg(newOnes)));
}

void TestFstabWriter::aSaveAtAnyMomentIsKept_data()
{
    QTest::addColumn<bool>("byRename");
    QTest::newRow("an editor that writes a new file") << true;
    QTest::newRow("an editor that writes into the file") << false;
}

/// Before the option is in, it is put into the other's table; afterwards his table is the one that counts.
void TestFstabWriter::aSaveAtAnyMomentIsKept()
{
    QFETCH(bool, byRename);
    const QByteArray line = "/dev/sdb1  /other  ext4  noauto  0  0\n";
    _manager->deviceOptions(Sda, text("/etc/fstab")); // what it reads of programs it has read
    const auto work = [this] { _manager->setFstabOption(Sda, UserQuota, true); };
    const auto save = [&] {
        const QString path = byRename ? text("/etc/fstab.edited") : text("/etc/fstab");
        write(path, Table + line);
        if (byRename && rename("/etc/fstab.edited", "/etc/fstab") != 0)
            qFatal("rename() failed");
    };
    int both = 0;
    int after = 0;
    constexpr int manyStops = 10000;
    int stop = 1;
    while (stop < manyStops && interruptAtStop(stop, work, save)) {
        const QByteArray found = _sandbox.readEtc(text("fstab"));
        QVERIFY2(found == Rewritten + line || found == Table + line, QByteArray::number(stop) + ":\n" + found);
        found == Table + line ? ++after : ++both;
        QCOMPARE(QDir(text("/etc")).entryList({text("*fstab*")}, QDir::Files | QDir::Hidden),
                 QStringList{text("fstab")});
        _sandbox.writeEtc(text("fstab"), Table);
        Sandbox::clearBackups();
        ++stop;
    }
    QVERIFY(stop < manyStops);
    QVERIFY2(both > 20 && after > 2, qPrintable(QStringLiteral("%1 with both, %2 after").arg(both).arg(after)));
}

/// Each copy of the comments comes before the look at the file: the other saves between the two.
void TestFstabWriter::savesWithoutEndAreReported()
{
    int saves = 0;
    connect(_manager.get(), &QuotaManager::detail, this, [&](const QString &line) {
        if (line.startsWith(text("The comments")))
            _sandbox.writeEtc(text("fstab"), Table + "# " + QByteArray::number(++saves) + '\n');
    });
    QVERIFY(!_manager->setFstabOption(Sda, UserQuota, true));
    QCOMPARE(_sandbox.readEtc(text("fstab")), Table + "# " + QByteArray::number(saves) + '\n');
    QCOMPARE(_errors, QStringList{text("File /etc/fstab was not changed: another program kept changing it; try again "
                                       "for /dev/sda1 when that has ended")});
}

void TestFstabWriter::twoWritersBothSucceed()
{
    constexpr int rounds = 100;
    for (int round = 0; round < rounds; ++round) {
        _sandbox.writeEtc(text("fstab"), "/dev/sda1 / ext4 rw 0 1\nUUID=b /srv ext4 ro 0 2\n");
        _manager->resetCache();
        _manager->deviceOptions(Sda, text("/etc/fstab"));
        doAtOnce({[this] { _manager->setFstabOption(Sda, UserQuota, true); },
                  [this] { _manager->setFstabOption(Sda, GroupQuota, true); },
                  [this] { _manager->setFstabOption(Sdb, UserQuota, true); }});
        const QByteArrayList lines = _sandbox.readEtc(text("fstab")).split('\n');
        QVERIFY(lines.at(0) == "/dev/sda1  /  ext4  rw,usrquota,grpquota  0  1" ||
                lines.at(0) == "/dev/sda1  /  ext4  rw,grpquota,usrquota  0  1");
        QCOMPARE(lines.at(1), QByteArray("UUID=b  /srv  ext4  ro,usrquota  0  2"));
    }
}

/// Each has the options of its own kind to itself, whatever the other does in the same moment.
void TestFstabWriter::twoWritersSwitchAgainAndAgain()
{
    constexpr int rounds = 300;
    _sandbox.writeEtc(text("fstab"), "/dev/sda1 / ext4 rw 0 1\n");
    _manager->deviceOptions(Sda, text("/etc/fstab"));
    const auto switching = [this](QuotaKind kind) {
        const QByteArray word = kind == GroupQuota ? "grpquota" : "usrquota";
        for (int round = 1; round <= rounds; ++round) {
            const bool on = round % 2 == 1;
            if (!_manager->setFstabOption(Sda, kind, on) || _sandbox.readEtc(text("fstab")).contains(word) != on)
                qFatal("%s was lost in round %d", word.constData(), round);
        }
    };
    doAtOnce({[&] { switching(UserQuota); }, [&] { switching(GroupQuota); }});
    QCOMPARE(_sandbox.readEtc(text("fstab")), QByteArray("/dev/sda1  /  ext4  rw  0  1\n"));
}

KRA_SANDBOX_MAIN(TestFstabWriter)

#include "tst_fstabwriter.moc"
