// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "accountlist.h"
#include "accountpage.h"
#include "machinefacts.h"
#include "shell.h"

#include <abstracttask.h>
#include <startup.h>
#include <taskobserver.h>

#include <QApplication>
#include <QTest>

#include <array>

#include <linux/capability.h>
#include <sys/syscall.h>
#include <unistd.h>

using Bound = AccountPage::Bound;
using Way = AccountPage::Way;
using MachineFacts::accounts;
using MachineFacts::disk;

namespace
{

constexpr quint64 Mib = 1024 * 1024;

/// Takes CAP_SYS_ADMIN from the thread that works on the console's tasks, as a container does from its root, or gives
/// it back.
class AdministrationTask : public AbstractTask
{
public:
    explicit AdministrationTask(bool isAllowed)
        : _isAllowed(isAllowed)
    {}

    void run() override
    {
        __user_cap_header_struct header = {_LINUX_CAPABILITY_VERSION_3, 0}; // of this thread
        std::array<__user_cap_data_struct, _LINUX_CAPABILITY_U32S_3> sets = {};
        bool isDone = syscall(SYS_capget, &header, sets.data()) == 0;
        __user_cap_data_struct &set = sets.at(CAP_TO_INDEX(CAP_SYS_ADMIN));
        set.effective =
            _isAllowed ? set.effective | CAP_TO_MASK(CAP_SYS_ADMIN) : set.effective & ~CAP_TO_MASK(CAP_SYS_ADMIN);
        isDone = isDone && syscall(SYS_capset, &header, sets.data()) == 0;
        setStatus(isDone ? Succeeded : Failed);
        AbstractTask::run();
    }

private:
    const bool _isAllowed;
};

/// To the last block: large writes leave a few.
void fillArchive()
{
    Shell::run(QStringLiteral("cd /srv/archive; head --bytes 64M /dev/zero >filling;"
                              "dd if=/dev/zero of=filling bs=1K oflag=append conv=notrunc; sync"));
}

} // namespace

/// What goes wrong with a device or an account while its limits are looked at: it is said, and everything else goes on
/// as if nothing had been.
class TestLimitFailures : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void cleanupTestCase();
    void quotasThatWereSwitchedOffMeanwhile();
    void withoutTheRight();
    void aFullDiskCannotBeSwitchedOn();
    void aFullDiskHasNoRoomForAnotherAccount();
    void anotherAccountOfThatName();
    void aDeviceThatWasUnmounted();
    void aDeviceThatVanished();

private:
    /// Sets a hard limit on the page in front and applies it.
    AccountPage::Applied apply(int megabytes);
    /// After an update that failed: what was typed is still there, and what the computer has comes instead of it.
    bool revert(int typedMegabytes);
    /// Lena's limit, on the disk that never fails, still goes through.
    void verifyTheOthersAreWritten();
    void setAdministering(bool isAllowed);

    std::unique_ptr<RealConsole> _console;
    std::unique_ptr<AccountPage> _page;
    std::unique_ptr<AccountList> _users;
    int _others = 10; // the limit that was set there last, in MiB

    const QString _lena = QStringLiteral("lena");
    const QString _homes = disk("homes");
    const QString _projects = disk("projects");
    const QString _archive = disk("archive");
    const QString _mail = disk("mail");
};

void TestLimitFailures::initTestCase()
{
    QVERIFY(Shell::succeeds(QStringLiteral("printf '%s:x:%s:100::/nonexistent:/bin/sh\\n' "
                                           "lena 2001 tilda 3002 >>/etc/passwd")));
    _console = std::make_unique<RealConsole>();
    _page = std::make_unique<AccountPage>(*_console);
    _users = std::make_unique<AccountList>(*_console, UserQuota);
}

void TestLimitFailures::cleanupTestCase()
{
    _users.reset();
    _page.reset();
    _console.reset();
}

AccountPage::Applied TestLimitFailures::apply(int megabytes)
{
    if (_page->setSpaceLimit(Bound::Hard, megabytes, QStringLiteral("Mb")))
        return _page->apply();
    AccountPage::Applied refused;
    refused.message = QStringLiteral("The page does not take the limit.");
    return refused;
}

bool TestLimitFailures::revert(int typedMegabytes)
{
    return _page->limit(Counted::Space, Bound::Hard) == static_cast<quint64>(typedMegabytes) * Mib &&
           _console->click(QStringLiteral("revertAction")) && _console->driver().settle();
}

void TestLimitFailures::verifyTheOthersAreWritten()
{
    QVERIFY(_page->openAccount(Way::List, UserQuota, _lena, _homes));
    QCOMPARE(_page->device(), _homes);
    const AccountPage::Applied applied = apply(++_others);
    QVERIFY2(applied.succeeded, qPrintable(applied.message));
    QCOMPARE(_page->limit(Counted::Space, Bound::Hard), static_cast<quint64>(_others) * Mib);
    QCOMPARE(accounts(UserQuota, QStringLiteral("/srv/homes")).value(_lena).hardBytes,
             static_cast<quint64>(_others) * Mib);
}

void TestLimitFailures::setAdministering(bool isAllowed)
{
    TaskObserver::instance()->performTask(new AdministrationTask(isAllowed));
    QVERIFY(_console->driver().settle());
}

/// A limit needs them, so they are switched on again; a limit cannot be taken away without them.
void TestLimitFailures::quotasThatWereSwitchedOffMeanwhile()
{
    QVERIFY(_page->openAccount(Way::List, UserQuota, _lena, _homes));
    QVERIFY(_page->saysQuotaIsOn());
    QVERIFY(Shell::succeeds(QStringLiteral("quotaoff --user /srv/homes")));
    const AccountPage::Applied limited = apply(2);
    QVERIFY2(limited.succeeded, qPrintable(limited.message));
    QVERIFY(_page->saysQuotaIsOn());
    QVERIFY(MachineFacts::device(_homes).user.on);
    QCOMPARE(accounts(UserQuota, QStringLiteral("/srv/homes")).value(_lena).hardBytes, 2 * Mib);

    QVERIFY(Shell::succeeds(QStringLiteral("quotaoff --user /srv/homes")));
    QVERIFY(_page->clearLimit(Counted::Space, Bound::Hard));
    const AccountPage::Applied unlimited = _page->apply();
    QVERIFY(!unlimited.succeeded);
    QCOMPARE(unlimited.message, QStringLiteral("%1: quotas are off, so nothing was written for lena").arg(_homes));
    QVERIFY(revert(0));
    QVERIFY(!_page->saysQuotaIsOn());
    QVERIFY(!MachineFacts::device(_homes).user.on);

    QVERIFY(Shell::succeeds(QStringLiteral("quotaon --user /srv/homes")));
    QVERIFY(_page->refresh());
    QCOMPARE(_page->limit(Counted::Space, Bound::Hard), 2 * Mib);
    verifyTheOthersAreWritten();
}

/// An account of one's own may be read; what is off needs no right to be seen.
void TestLimitFailures::withoutTheRight()
{
    const QString noRight = QStringLiteral("The caller does not have the necessary rights (CAP_SYS_ADMIN) to perform "
                                           "the specified operation");
    const quint64 before = accounts(UserQuota, QStringLiteral("/srv/homes")).value(_lena).hardBytes;
    QVERIFY(_page->openAccount(Way::List, UserQuota, _lena, _homes));
    setAdministering(false);
    const AccountPage::Applied applied = apply(1);
    QVERIFY(!applied.succeeded);
    QCOMPARE(applied.message, QStringLiteral("%1\n%2: Operation not permitted").arg(noRight, _homes));
    QVERIFY2(_console->message().contains(noRight), qPrintable(_console->message()));
    QCOMPARE(accounts(UserQuota, QStringLiteral("/srv/homes")).value(_lena).hardBytes, before);
    QVERIFY(revert(1));
    QCOMPARE(_page->devices(), (QStringList{_homes, _projects, _archive, _mail})); // with those that gave no answer

    QVERIFY(_users->open());
    QVERIFY(_console->refresh());
    QCOMPARE(_console->message().count(noRight), 2); // two devices, not that many accounts
    QVERIFY(_users->choose(_homes));
    QVERIFY(_users->cell(QStringLiteral("root"), AccountColumn::UsedInodes).toInt() > 0);
    QVERIFY(!_users->cell(QStringLiteral("anna"), AccountColumn::UsedInodes).isValid());

    setAdministering(true);
    QVERIFY(_console->refresh());
    QCOMPARE(_console->message(), QString());
    verifyTheOthersAreWritten();
}

void TestLimitFailures::aFullDiskCannotBeSwitchedOn()
{
    QVERIFY(_page->openAccount(Way::List, UserQuota, _lena, _archive));
    fillArchive();
    const AccountPage::Applied applied = apply(1);
    QVERIFY(!applied.succeeded);
    QVERIFY2(applied.message.contains(QLatin1String("No space left on device")), qPrintable(applied.message));
    QVERIFY2(applied.message.contains(QStringLiteral("Quotas could not be switched on on %1").arg(_archive)),
             qPrintable(applied.message));
    QVERIFY(!MachineFacts::device(_archive).user.on);
    QVERIFY(revert(1));
    QVERIFY(!_page->saysQuotaIsOn());
    QCOMPARE(_page->limit(Counted::Space, Bound::Hard), quint64(0));
    verifyTheOthersAreWritten();

    // What the administrator then does. The second file is what quotacheck left, which it would stumble over.
    QVERIFY(Shell::succeeds(QStringLiteral("rm /srv/archive/filling /srv/archive/aquota.user.new; sync")));
    QVERIFY(_page->choose(_archive));
    const AccountPage::Applied again = apply(1);
    QVERIFY2(again.succeeded, qPrintable(again.message));
    QVERIFY(MachineFacts::device(_archive).user.on);
}

/// The kernel makes an account's record in the quota file as soon as it is asked for it. Tilda's id is too far from the
/// others for the blocks that are there.
void TestLimitFailures::aFullDiskHasNoRoomForAnotherAccount()
{
    fillArchive();
    QVERIFY(_users->open());
    QVERIFY(_console->refresh());
    const QString noRoom =
        QStringLiteral("Unknown error while executing quotactl\n%1: No space left on device").arg(_archive);
    QCOMPARE(_console->message(), noRoom);
    QVERIFY(_users->choose(_archive));
    QCOMPARE(_users->cell(_lena, AccountColumn::HardBlockLimit).toString(), QStringLiteral("1 Mb"));
    QVERIFY(!_users->cell(QStringLiteral("tilda"), AccountColumn::HardBlockLimit).isValid());
    QVERIFY(_users->choose(_homes));
    QCOMPARE(_users->cell(QStringLiteral("david"), AccountColumn::HardBlockLimit).toString(), QStringLiteral("10 Mb"));

    QVERIFY(_page->openAccount(Way::List, UserQuota, QStringLiteral("tilda"), _homes));
    QCOMPARE(_console->message(), noRoom);
    QCOMPARE(_page->devices(), (QStringList{_homes, _projects, _archive, _mail}));
    const AccountPage::Applied applied = apply(3);
    QVERIFY2(applied.succeeded, qPrintable(applied.message));
    QCOMPARE(accounts(UserQuota, QStringLiteral("/srv/homes")).value(QStringLiteral("tilda")).hardBytes, 3 * Mib);

    // The room is there once the journal knows of it.
    QVERIFY(Shell::succeeds(QStringLiteral("rm /srv/archive/filling; sync")));
    QVERIFY(_page->refresh());
    QCOMPARE(_console->message(), QString());
    QVERIFY(_page->choose(_archive));
    QVERIFY(apply(4).succeeded);
}

/// Somebody else got the name while the limits were being edited.
void TestLimitFailures::anotherAccountOfThatName()
{
    QVERIFY(_page->openAccount(Way::List, UserQuota, QStringLiteral("tilda"), _homes));
    QVERIFY(Shell::succeeds(QStringLiteral("usermod --uid 3099 tilda")));
    const AccountPage::Applied applied = apply(5);
    QVERIFY(!applied.succeeded);
    QCOMPARE(applied.message, QStringLiteral("tilda is another account by now: nothing was written"));
    const MachineFacts::Accounts facts = accounts(UserQuota, QStringLiteral("/srv/homes"));
    QCOMPARE(facts.value(QStringLiteral("#3002")).hardBytes, 3 * Mib);
    QCOMPARE(facts.value(QStringLiteral("tilda")).hardBytes, quint64(0));
    QVERIFY(revert(5));
    QCOMPARE(_page->limit(Counted::Space, Bound::Hard), quint64(0)); // the new one's
}

void TestLimitFailures::aDeviceThatWasUnmounted()
{
    QVERIFY(_page->openAccount(Way::List, UserQuota, _lena, _mail));
    QVERIFY(_page->saysQuotaIsOn());
    QVERIFY(Shell::succeeds(QStringLiteral("umount /srv/mail")));
    const QString notMounted = QStringLiteral("Device %1 not mounted").arg(_mail);
    const AccountPage::Applied applied = apply(1);
    QVERIFY(!applied.succeeded);
    QVERIFY(revert(1));
    QVERIFY2(_console->message().contains(notMounted), qPrintable(_console->message()));
    QVERIFY(!_page->saysQuotaIsOn());

    QVERIFY(_users->open());
    QVERIFY(_console->refresh());
    QCOMPARE(_console->message().count(notMounted), 1);
    QVERIFY(_users->choose(_homes));
    QCOMPARE(_users->cell(QStringLiteral("david"), AccountColumn::HardBlockLimit).toString(), QStringLiteral("10 Mb"));
    verifyTheOthersAreWritten();
    QVERIFY2(_console->message().contains(notMounted), qPrintable(_console->message()));

    QVERIFY(Shell::succeeds(QStringLiteral("mount /srv/mail")));
    QVERIFY(_page->refresh());
    QCOMPARE(_console->message(), QString());
}

void TestLimitFailures::aDeviceThatVanished()
{
    QVERIFY(_page->openAccount(Way::List, UserQuota, _lena, _projects));
    QVERIFY(Shell::succeeds(
        QStringLiteral("echo 1 >/sys/block/%1/device/../remove").arg(_projects.section(QLatin1Char('/'), -1))));
    const AccountPage::Applied applied = apply(1);
    QVERIFY(!applied.succeeded);
    QCOMPARE(
        applied.message,
        QStringLiteral("File specified in special or addr not exist\n%1: No such file or directory").arg(_projects));
    QVERIFY(revert(1));
    QCOMPARE(_page->devices(), (QStringList{_homes, _archive, _mail, _projects})); // the shown one stays, as absent

    QVERIFY(_users->open());
    QVERIFY(_console->refresh());
    QCOMPARE(_users->devices(), (QStringList{_homes, _archive, _mail, _projects})); // as there
    QVERIFY(_users->choose(_homes));
    QCOMPARE(_users->cell(QStringLiteral("david"), AccountColumn::HardBlockLimit).toString(), QStringLiteral("10 Mb"));
    verifyTheOthersAreWritten();
}

int main(int argc, char *argv[])
{
    Startup::prepareProcess();
    QApplication application(argc, argv);
    TestLimitFailures test;
    return QTest::qExec(&test, argc, argv);
}
#include "tst_limitfailures.moc"
