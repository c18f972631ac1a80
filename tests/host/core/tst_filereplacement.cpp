// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <backupcopy.h>
#include <filereplacement.h>
#include <sandbox.h>

#include <QByteArrayList>
#include <QDateTime>
#include <QFileInfo>

#include <cerrno>
#include <chrono>
#include <cstring>
#include <functional>
#include <random>
#include <set>
#include <thread>
#include <vector>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/mount.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <sys/xattr.h>
#include <unistd.h>

Q_DECLARE_METATYPE(FileReplacement::End)

namespace
{

using End = FileReplacement::End;

QString text(const char *utf8)
{
    return QString::fromUtf8(utf8);
}

QByteArray contentOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(missing)");
}

void write(const QString &path, const QByteArray &content)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
        qFatal("%s cannot be written", qPrintable(path));
}

QStringList filesIn(const QString &folder)
{
    return QDir(folder).entryList(QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden | QDir::System, QDir::Name);
}

/// Runs the work in several processes at once. True when all of them ended well.
bool inProcesses(int count, const std::function<bool(int)> &work)
{
    std::vector<pid_t> children;
    for (int i = 0; i < count; ++i) {
        const pid_t child = fork();
        if (child == 0)
            _exit(work(i) ? 0 : 1);
        children.push_back(child);
    }
    bool well = true;
    for (const pid_t child : children) {
        int status = 0;
        well = waitpid(child, &status, 0) == child && status == 0 && well;
    }
    return well;
}

/// What the system does wrong, or others do at the worst moment. Everything is as usual where nothing is set.
struct Faults
{
    std::function<void(int)> beforeExchange; ///< with the number of the exchange, counted from 1
    int exchanges = 0;
    int failingExchange = 0; ///< the number of the one that fails with EIO
    int lockError = 0;
    std::function<void()> pause;   ///< after a lock that was got, and after an exchange
    QByteArray attributes;         ///< the names that every file has, each with a NUL
    bool doAttributesGrow = false; ///< after their size was asked for
    QByteArrayList set;            ///< the names of those that were set
};
Faults faults;

ssize_t giveFake(const QByteArray &value, void *to, size_t size)
{
    const int length = faults.doAttributesGrow && to != nullptr ? value.size() - 1 : value.size();
    if (to != nullptr)
        std::memcpy(to, value.constData(), qMin(size, static_cast<size_t>(length)));
    return length;
}

} // namespace

// In place of the library's, also for the framework.
// NOLINTBEGIN(readability-inconsistent-declaration-parameter-name): their parameters bear names that are reserved
extern "C" {
__attribute__((visibility("default"))) int renameat2(int fromFolder, const char *from, int toFolder, const char *to,
                                                     unsigned int flags) noexcept
{
    ++faults.exchanges;
    if (faults.beforeExchange)
        faults.beforeExchange(faults.exchanges);
    if (faults.exchanges == faults.failingExchange) {
        errno = EIO;
        return -1;
    }
    if (syscall(SYS_renameat2, fromFolder, from, toFolder, to, flags) != 0)
        return -1;
    if (faults.pause)
        faults.pause();
    return 0;
}

__attribute__((visibility("default"))) int flock(int file, int operation) noexcept
{
    errno = faults.lockError;
    if (errno != 0 || syscall(SYS_flock, file, operation) != 0)
        return -1;
    if (faults.pause)
        faults.pause();
    return 0;
}

__attribute__((visibility("default"))) ssize_t flistxattr(int file, char *list, size_t size) noexcept
{
    return faults.attributes.isEmpty() ? syscall(SYS_flistxattr, file, list, size)
                                       : giveFake(faults.attributes, list, size);
}

__attribute__((visibility("default"))) ssize_t fgetxattr(int file, const char *name, void *value, size_t size) noexcept
{
    return faults.attributes.isEmpty() ? syscall(SYS_fgetxattr, file, name, value, size)
                                       : giveFake("value", value, size);
}

__attribute__((visibility("default"))) int fsetxattr(int file, const char *name, const void *value, size_t size,
                                                     int flags) noexcept
{
    if (faults.attributes.isEmpty())
        return static_cast<int>(syscall(SYS_fsetxattr, file, name, value, size, flags));
    faults.set.append(name);
    return 0;
}
}
// NOLINTEND(readability-inconsistent-declaration-parameter-name)

/// Files that are replaced whole, and the copies of what they held before.
class TestFileReplacement : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void onlyWhatIsExpectedIsReplaced();
    void aMissingFileHoldsNothing();
    void programsDoNotLoseEachOthersChanges_data();
    void programsDoNotLoseEachOthersChanges();
    void aLeftoverIsRemoved();
    void aWriterWaitsForTheOneBeforeIt();
    void aSaveThatCannotBePutBackIsKept();
    void aSaveIsPutBackWhereTheFileHasGone();
    void aFileThatHasGoneIsNotMadeAnew();
    void aNewFileGetsTheUsualRights();
    void aFileOfRootsGetsNoMoreRights_data();
    void aFileOfRootsGetsNoMoreRights();
    void anOldFileKeepsItsRights_data();
    void anOldFileKeepsItsRights();
    void whatIsMadeForOneFileIsNotCopied();
    void attributesThatChangeAreReported();
    void withoutALockNothingIsLeft();
    void theSystemSaysWhy_data();
    void theSystemSaysWhy();
    void whatIsNoFileIsRefused_data();
    void whatIsNoFileIsRefused();
    void aLinkWithoutATargetStays();
    void aFailureLeavesNothing();
    void copiesOfOneSecondAreAllThere();
    void aCopyFollowsNoLink();
    void onlyRootReadsACopy();
    void theOldestAndTheNewestCopiesAreKept();
    void theCopyJustMadeStays();
    void copiesOfOtherFilesStay();
    void theSameBytesAreCopiedOnce();

private:
    /// What the copies of "/etc/fstab" are called, but for the moment.
    static QString nameOfCopies();
    QString path(const char *name) const { return _folder + QLatin1Char('/') + text(name); }

    Sandbox _sandbox;
    QString _folder;
};

void TestFileReplacement::init()
{
    faults = {};
    _sandbox.reset();
    _folder = _sandbox.folder(text("files"));
}

QString TestFileReplacement::nameOfCopies()
{
    const QString copy = BackupCopy::make(text("/etc/fstab"), "one");
    Sandbox::clearBackups();
    return copy.left(copy.lastIndexOf(QLatin1Char('.')) + 1);
}

void TestFileReplacement::onlyWhatIsExpectedIsReplaced()
{
    const QString file = path("table");
    write(file, "old");
    const FileReplacement refused = replaceFile(file, "new", QByteArray("older"));
    QCOMPARE(refused.end, End::ChangedMeanwhile);
    QVERIFY(!refused.succeeded());
    QCOMPARE(contentOf(file), QByteArray("old"));
    QCOMPARE(filesIn(_folder), QStringList{text("table")});

    QVERIFY(replaceFile(file, "new", QByteArray("old")).succeeded());
    QCOMPARE(contentOf(file), QByteArray("new"));
    QVERIFY(replaceFile(file, "newer").succeeded()); // without a word on what it holds
    QCOMPARE(contentOf(file), QByteArray("newer"));
    QCOMPARE(filesIn(_folder), QStringList{text("table")});
}

void TestFileReplacement::aMissingFileHoldsNothing()
{
    QCOMPARE(replaceFile(path("table"), "new", QByteArray("old")).end, End::ChangedMeanwhile);
    QVERIFY(filesIn(_folder).isEmpty());
    QVERIFY(replaceFile(path("table"), "new", QByteArray()).succeeded());
    QCOMPARE(contentOf(path("table")), QByteArray("new"));
}

void TestFileReplacement::programsDoNotLoseEachOthersChanges_data()
{
    QTest::addColumn<bool>("areHeldUp");
    QTest::newRow("as quick as they are") << false;
    QTest::newRow("held up at bad moments") << true;
}

void TestFileReplacement::programsDoNotLoseEachOthersChanges()
{
    QFETCH(bool, areHeldUp);
    constexpr int programs = 4;
    constexpr int lines = 25;
    const QString file = path("table");
    write(file, {});
    QVERIFY(inProcesses(programs, [&](int program) {
        std::mt19937 random(static_cast<unsigned>(program));
        if (areHeldUp)
            faults.pause = [&random] {
                std::this_thread::sleep_for(std::chrono::milliseconds(random() % 4 == 0 ? 30 : 1));
            };
        for (int line = 0; line < lines;) {
            const QByteArray before = contentOf(file);
            const QByteArray added = QByteArray::number(program) + '.' + QByteArray::number(line) + '\n';
            const FileReplacement done = replaceFile(file, before + added, before);
            if (done.succeeded())
                ++line;
            else if (done.end != End::ChangedMeanwhile)
                return false;
        }
        return true;
    }));
    const QByteArrayList found = contentOf(file).trimmed().split('\n');
    QCOMPARE(found.size(), programs * lines);
    QCOMPARE(std::set<QByteArray>(found.begin(), found.end()).size(), std::size_t(programs * lines));
    QCOMPARE(filesIn(_folder), QStringList{text("table")});
}

/// A process that is killed leaves the file that it was making, and no lock.
void TestFileReplacement::aLeftoverIsRemoved()
{
    const QString file = path("table");
    write(file, "old");
    const pid_t child = fork();
    if (child == 0) {
        const int held = open(QFile::encodeName(path(".table.kra-lock~")).constData(), O_RDWR | O_CREAT, 0600);
        flock(held, LOCK_EX);
        const int leftover = open(QFile::encodeName(path(".table.kra-new~")).constData(), O_RDWR | O_CREAT, 0644);
        _exit(::write(leftover, "half and much longer than the rest", 34) == 34 ? 0 : 1);
    }
    int status = 1;
    QCOMPARE(waitpid(child, &status, 0), child);
    QCOMPARE(status, 0);
    QCOMPARE(filesIn(_folder), QStringList({text(".table.kra-lock~"), text(".table.kra-new~"), text("table")}));
    QVERIFY(replaceFile(file, "new").succeeded());
    QCOMPARE(contentOf(file), QByteArray("new"));
    QCOMPARE(filesIn(_folder), QStringList{text("table")});
}

void TestFileReplacement::aWriterWaitsForTheOneBeforeIt()
{
    const QString file = path("table");
    write(file, "old");
    // A program that is at it until this process has seen its lock.
    int toChild[2];
    int toParent[2];
    QVERIFY(pipe(toChild) == 0 && pipe(toParent) == 0);
    const QByteArray made = QFile::encodeName(path(".table.kra-new~"));
    const QByteArray lock = QFile::encodeName(path(".table.kra-lock~"));
    const pid_t child = fork();
    if (child == 0) {
        const int held = open(lock.constData(), O_RDWR | O_CREAT, 0600);
        flock(held, LOCK_EX);
        close(open(made.constData(), O_RDWR | O_CREAT, 0600));
        char byte = 0;
        const bool told = ::write(toParent[1], &byte, 1) == 1 && read(toChild[0], &byte, 1) == 1;
        rename(made.constData(), QFile::encodeName(file).constData());
        unlink(lock.constData());
        _exit(told ? 0 : 1);
    }
    char byte = 0;
    QCOMPARE(read(toParent[0], &byte, 1), ssize_t(1));
    QVERIFY(inProcesses(2, [&](int which) {
        if (which == 0)
            return replaceFile(file, "new").succeeded(); // waits for the lock
        return ::write(toChild[1], &byte, 1) == 1;
    }));
    int status = 1;
    QCOMPARE(waitpid(child, &status, 0), child);
    QCOMPARE(status, 0);
    QCOMPARE(contentOf(file), QByteArray("new"));
    QCOMPARE(filesIn(_folder), QStringList{text("table")});
    for (const int end : {toChild[0], toChild[1], toParent[0], toParent[1]})
        close(end);
}

/// Somebody saves the file after the last look at it, and then the disk fails.
void TestFileReplacement::aSaveThatCannotBePutBackIsKept()
{
    const QString file = path("table%1");
    for (const char *other : {"other", "another"}) {
        write(file, "old");
        faults = {};
        faults.beforeExchange = [&](int number) {
            if (number == 1)
                write(file, other);
        };
        faults.failingExchange = 2;
        const FileReplacement done = replaceFile(file, "new", QByteArray("old"));
        QCOMPARE(done.end, End::NotWritten);
        QVERIFY(done.reason.startsWith(QString::fromLocal8Bit(std::strerror(EIO))));
        QCOMPARE(contentOf(done.reason.section(QLatin1Char(' '), -1)), QByteArray(other));
    }
    faults = {};
    QVERIFY(replaceFile(file, "newer").succeeded()); // which takes neither for a leftover
    QCOMPARE(filesIn(_folder),
             QStringList({text("table%1"), text("table%1.kra-saved1~"), text("table%1.kra-saved2~")}));
    QCOMPARE(contentOf(path("table%1.kra-saved1~")), QByteArray("other"));
}

void TestFileReplacement::aSaveIsPutBackWhereTheFileHasGone()
{
    const QString file = path("table");
    write(file, "old");
    faults.beforeExchange = [&](int number) {
        if (number == 1)
            write(file, "other");
        else
            QFile::remove(file);
    };
    QCOMPARE(replaceFile(file, "new", QByteArray("old")).end, End::ChangedMeanwhile);
    QCOMPARE(contentOf(file), QByteArray("other"));
    QCOMPARE(filesIn(_folder), QStringList{text("table")});
}

void TestFileReplacement::aFileThatHasGoneIsNotMadeAnew()
{
    const QString file = path("table");
    faults.beforeExchange = [&](int /*number*/) { QFile::remove(file); };
    for (const QByteArray &held : {QByteArray("old"), QByteArray()}) {
        write(file, held);
        const FileReplacement done = replaceFile(file, "new", held);
        QCOMPARE(done.end, held.isEmpty() ? End::Replaced : End::ChangedMeanwhile); // a missing file holds nothing
        QCOMPARE(QFileInfo::exists(file), held.isEmpty());
    }
}

void TestFileReplacement::aNewFileGetsTheUsualRights()
{
    const mode_t before = umask(0027);
    const bool made = replaceFile(path("plain"), "x").succeeded();
    const bool forRoot = replaceFile(path("table"), "x", FileRights::RootWritable).succeeded();
    umask(before);
    QVERIFY(made);
    QVERIFY(forRoot);
    struct stat state = {};
    QCOMPARE(stat(QFile::encodeName(path("plain")).constData(), &state), 0);
    QCOMPARE(state.st_mode & 07777, mode_t(0640));
    QCOMPARE(stat(QFile::encodeName(path("table")).constData(), &state), 0);
    QCOMPARE(state.st_mode & 07777, mode_t(0644));
}

void TestFileReplacement::aFileOfRootsGetsNoMoreRights_data()
{
    QTest::addColumn<mode_t>("before");
    QTest::addColumn<mode_t>("after");
    QTest::newRow("nobody else reads it") << mode_t(0600) << mode_t(0600);
    QTest::newRow("its group reads it") << mode_t(0640) << mode_t(0640);
    QTest::newRow("others write it") << mode_t(0666) << mode_t(0644);
    QTest::newRow("it runs as its owner") << mode_t(04755) << mode_t(0644);
    QTest::newRow("nobody writes it") << mode_t(0400) << mode_t(0600);
}

void TestFileReplacement::aFileOfRootsGetsNoMoreRights()
{
    QFETCH(mode_t, before);
    QFETCH(mode_t, after);
    const QByteArray file = QFile::encodeName(path("table"));
    write(path("table"), "old");
    QCOMPARE(chmod(file.constData(), before), 0);
    QVERIFY(replaceFile(path("table"), "new", FileRights::RootWritable).succeeded());
    struct stat state = {};
    QCOMPARE(stat(file.constData(), &state), 0);
    QCOMPARE(state.st_mode & 07777, after);
}

/// Signatures of the content, among others.
void TestFileReplacement::whatIsMadeForOneFileIsNotCopied()
{
    write(path("table"), "old");
    faults.attributes = QByteArray("security.ima\0user.note\0security.evm\0", 36);
    QVERIFY(replaceFile(path("table"), "new").succeeded());
    QCOMPARE(faults.set, QByteArrayList{"user.note"});
}

void TestFileReplacement::attributesThatChangeAreReported()
{
    write(path("table"), "old");
    faults.attributes = QByteArray("user.note\0", 10);
    faults.doAttributesGrow = true;
    errno = ENOENT;
    const FileReplacement done = replaceFile(path("table"), "new");
    QCOMPARE(done.end, End::NotWritten);
    QCOMPARE(done.reason, QString::fromLocal8Bit(std::strerror(EAGAIN)));
    QCOMPARE(contentOf(path("table")), QByteArray("old"));
}

void TestFileReplacement::withoutALockNothingIsLeft()
{
    write(path("table"), "old");
    faults.lockError = ENOLCK;
    const FileReplacement done = replaceFile(path("table"), "new");
    QCOMPARE(done.end, End::NotOpened);
    QCOMPARE(done.reason, QString::fromLocal8Bit(std::strerror(ENOLCK)));
    QCOMPARE(filesIn(_folder), QStringList{text("table")});
}

void TestFileReplacement::anOldFileKeepsItsRights_data()
{
    QTest::addColumn<mode_t>("mode");
    QTest::newRow("for others, not for the group") << mode_t(0604);
    QTest::newRow("bits that a new owner takes away") << mode_t(06755);
}

void TestFileReplacement::anOldFileKeepsItsRights()
{
    QFETCH(mode_t, mode);
    const QByteArray file = QFile::encodeName(path("table"));
    write(path("table"), "old");
    QCOMPARE(chmod(file.constData(), mode), 0);
    QVERIFY(replaceFile(path("table"), "new").succeeded());
    struct stat state = {};
    QCOMPARE(stat(file.constData(), &state), 0);
    QCOMPARE(state.st_mode & 07777, mode);
}

void TestFileReplacement::theSystemSaysWhy_data()
{
    QTest::addColumn<QByteArray>("options");
    QTest::addColumn<bool>("isReadOnly");
    QTest::addColumn<End>("end");
    QTest::addColumn<int>("error");
    QTest::newRow("read only") << QByteArray("size=1m") << true << End::NotOpened << EROFS;
    QTest::newRow("full") << QByteArray("size=64k") << false << End::NotWritten << ENOSPC;
    QTest::newRow("no more files") << QByteArray("nr_inodes=2") << false << End::NotOpened << ENOSPC;
}

void TestFileReplacement::theSystemSaysWhy()
{
    QFETCH(QByteArray, options);
    QFETCH(bool, isReadOnly);
    QFETCH(End, end);
    QFETCH(int, error);
    const QByteArray folder = QFile::encodeName(_sandbox.folder(text("small")));
    QCOMPARE(mount("small", folder.constData(), "tmpfs", MS_NOSUID | MS_NODEV, options.constData()), 0);
    const QString file = QFile::decodeName(folder) + text("/table");
    write(file, "old");
    if (isReadOnly)
        QCOMPARE(mount("small", folder.constData(), "tmpfs", MS_REMOUNT | MS_RDONLY | MS_NOSUID | MS_NODEV, nullptr),
                 0);
    const FileReplacement done = replaceFile(file, QByteArray(1 << 20, 'x'));
    const QByteArray content = contentOf(file);
    const QStringList files = filesIn(QFile::decodeName(folder));
    umount2(folder.constData(), MNT_DETACH);
    QCOMPARE(done.end, end);
    QCOMPARE(done.reason, QString::fromLocal8Bit(std::strerror(error)));
    QCOMPARE(content, QByteArray("old"));
    QCOMPARE(files, QStringList{text("table")});
}

void TestFileReplacement::whatIsNoFileIsRefused_data()
{
    QTest::addColumn<QString>("name");
    for (const char *name : {"pipe", "folder", "device", "ring", "nofolder/table"})
        QTest::newRow(name) << text(name);
}

void TestFileReplacement::whatIsNoFileIsRefused()
{
    QFETCH(QString, name);
    QDir(_folder).mkdir(text("folder"));
    mkfifo(QFile::encodeName(path("pipe")).constData(), 0600);
    QFile::link(text("/dev/null"), path("device"));
    QFile::link(path("ring"), path("ring"));
    const QStringList before = filesIn(_folder);
    const FileReplacement done = replaceFile(_folder + QLatin1Char('/') + name, "new");
    QCOMPARE(done.end, End::NotOpened);
    QVERIFY(!done.reason.isEmpty());
    QVERIFY(!done.reason.contains(QLatin1Char('/')));
    QCOMPARE(filesIn(_folder), before);
}

void TestFileReplacement::aLinkWithoutATargetStays()
{
    QVERIFY(QFile::link(path("target"), path("link")));
    QVERIFY(replaceFile(path("link"), "new").succeeded());
    QVERIFY(QFileInfo(path("link")).isSymLink());
    QCOMPARE(contentOf(path("target")), QByteArray("new"));
    QVERIFY(replaceFile(path("link"), "newer").succeeded());
    QVERIFY(QFileInfo(path("link")).isSymLink());
    QCOMPARE(contentOf(path("target")), QByteArray("newer"));
}

void TestFileReplacement::aFailureLeavesNothing()
{
    const auto openOnes = [] { return QDir(text("/proc/self/fd")).entryList(QDir::AllEntries | QDir::System).size(); };
    write(path("table"), "old");
    const int before = openOnes();
    QVERIFY(replaceFile(path("table"), "new").succeeded());
    QCOMPARE(replaceFile(path("table"), "newer", QByteArray("other")).end, End::ChangedMeanwhile);
    QVERIFY(!BackupCopy::make(path("table"), "old").isEmpty());
    QCOMPARE(openOnes(), before);
}

void TestFileReplacement::copiesOfOneSecondAreAllThere()
{
    constexpr int programs = 4;
    constexpr int each = 4;
    QVERIFY(inProcesses(programs, [](int program) {
        for (int i = 0; i < each; ++i) {
            const QByteArray bytes = QByteArray::number(program) + '.' + QByteArray::number(i);
            if (contentOf(BackupCopy::make(text("/etc/fstab"), bytes)) != bytes)
                return false;
        }
        return true;
    }));
    const QByteArrayList found = Sandbox::backupContents();
    QCOMPARE(found.size(), programs * each);
    QCOMPARE(std::set<QByteArray>(found.begin(), found.end()).size(), std::size_t(programs * each));
    QCOMPARE(filesIn(text("/var/backups")).size(), programs * each);
}

void TestFileReplacement::aCopyFollowsNoLink()
{
    const QString target = path("victim");
    const QString name = nameOfCopies();
    const QDateTime now = QDateTime::currentDateTimeUtc();
    constexpr int seconds = 120; // one of them is that of the copy, however slow the machine
    for (int i = 0; i < seconds; ++i) {
        const QString moment = now.addSecs(i).toString(text("yyyyMMdd-hhmmss"));
        QVERIFY(QFile::link(target, name + moment));
    }
    const QString copy = BackupCopy::make(text("/etc/fstab"), "old");
    QVERIFY2(copy.endsWith(QLatin1String(".1")), qPrintable(copy));
    QVERIFY(!QFileInfo(copy).isSymLink());
    QCOMPARE(contentOf(copy), QByteArray("old"));
    QVERIFY(!QFileInfo::exists(target));
    for (const QString &made : filesIn(text("/var/backups")))
        QFile::remove(text("/var/backups/") + made);
}

void TestFileReplacement::onlyRootReadsACopy()
{
    const mode_t before = umask(0);
    const QString copy = BackupCopy::make(text("/etc/fstab"), "old");
    umask(before);
    struct stat state = {};
    QCOMPARE(stat(QFile::encodeName(copy).constData(), &state), 0);
    QCOMPARE(state.st_mode & 07777, mode_t(0600));
    QCOMPARE(filesIn(text("/var/backups")).size(), 1);
}

void TestFileReplacement::theOldestAndTheNewestCopiesAreKept()
{
    const QString name = nameOfCopies();
    // The number of a copy counts as one: 10 comes after 9.
    constexpr int made = 30;
    for (int i = 0; i < made; ++i) {
        const QString suffix = i == 0 ? QString() : QStringLiteral(".%1").arg(i);
        write(name + text("20250102-030405") + suffix, QByteArray::number(i));
    }
    const QString newest = BackupCopy::make(text("/etc/fstab"), "newest");
    QCOMPARE(contentOf(newest), QByteArray("newest"));
    QStringList wanted{name + text("20250102-030405"), newest};
    for (int i = made - (BackupCopy::Kept - 2); i < made; ++i)
        wanted.append(name + text("20250102-030405.") + QString::number(i));
    wanted.sort();
    QStringList found;
    for (const QString &file : filesIn(text("/var/backups")))
        found.append(text("/var/backups/") + file);
    found.sort();
    QCOMPARE(found, wanted);
}

/// Before the clock was set back others were made.
void TestFileReplacement::theCopyJustMadeStays()
{
    const QString name = nameOfCopies();
    constexpr int before = 30;
    for (int i = 0; i < before; ++i)
        write(name + QString::number(29990101 + i) + text("-030405"), QByteArray::number(i));
    write(name + text("20000101-000000"), "oldest");
    const QString copy = BackupCopy::make(text("/etc/fstab"), "made now");
    QCOMPARE(contentOf(copy), QByteArray("made now"));
    QCOMPARE(filesIn(text("/var/backups")).size(), BackupCopy::Kept);
    QVERIFY(QFile::exists(name + text("20000101-000000")));
}

/// Of other programs and administrators, and of a file of that name elsewhere.
void TestFileReplacement::copiesOfOtherFilesStay()
{
    constexpr int enough = BackupCopy::Kept + 5;
    for (int i = 0; i < enough; ++i) {
        write(QStringLiteral("/var/backups/fstab.20250102-0304%1").arg(i + 10), "other");
        write(QStringLiteral("/var/backups/xfstab.20250102-0304%1").arg(i + 10), "other");
    }
    for (int i = 0; i < enough; ++i)
        QVERIFY(!BackupCopy::make(text("/etc/fstab"), QByteArray::number(i)).isEmpty());
    QVERIFY(!BackupCopy::make(text("/srv/fstab"), "elsewhere").isEmpty());
    const QStringList files = filesIn(text("/var/backups"));
    QCOMPARE(files.size(), 2 * enough + BackupCopy::Kept + 1);
    QVERIFY(Sandbox::backupContents().contains("elsewhere"));
}

void TestFileReplacement::theSameBytesAreCopiedOnce()
{
    const QString copy = BackupCopy::make(text("/etc/fstab"), "one");
    QCOMPARE(BackupCopy::make(text("/etc/fstab"), "one"), copy);
    QVERIFY(BackupCopy::make(text("/srv/fstab"), "one") != copy);
    QVERIFY(BackupCopy::make(text("/etc/fstab"), "two") != copy);
    QVERIFY(BackupCopy::make(text("/etc/fstab"), "one") != copy); // not the newest any more, which is kept longest
    QCOMPARE(filesIn(text("/var/backups")).size(), 4);
}

KRA_SANDBOX_MAIN(TestFileReplacement)
#include "tst_filereplacement.moc"
