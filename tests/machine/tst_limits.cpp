// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "accountlist.h"
#include "accountpage.h"
#include "machinefacts.h"
#include "ordinarywrite.h"

#include <startup.h>

#include <QApplication>
#include <QFile>
#include <QLocale>
#include <QTest>

using Bound = AccountPage::Bound;
using Way = AccountPage::Way;
using MachineFacts::accounts;
using MachineFacts::disk;
using OrdinaryWrite::isExceeded;

Q_DECLARE_METATYPE(QuotaKind)
Q_DECLARE_METATYPE(AccountPage::Way)

namespace
{

constexpr quint64 Kib = 1024;
constexpr quint64 Mib = 1024 * Kib;

MachineFacts::Kind kindOn(const QString &device, QuotaKind kind)
{
    const MachineFacts::Device facts = MachineFacts::device(device);
    return kind == GroupQuota ? facts.group : facts.user;
}

QStringList namesIn(const QString &accountFile)
{
    QStringList names;
    QFile file(accountFile);
    if (file.open(QIODevice::ReadOnly)) {
        for (const QString &line : QString::fromUtf8(file.readAll()).split(QLatin1Char('\n'), Qt::SkipEmptyParts))
            names.append(line.section(QLatin1Char(':'), 0, 0));
    }
    return names;
}

} // namespace

/// The limits of users and groups, set with the editors of the real console with the real plug-in and enforced by the
/// real kernel, against what `repquota` says. Each of the accounts made for it is a user, and the group of that user.
class TestLimits : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void cleanupTestCase();
    void limitsAreEnforced_data();
    void limitsAreEnforced();
    void usersLimitsSwitchQuotasOn();
    void groupsLimitsSwitchQuotasOn();
    void limitsPutConfiguredQuotasIntoForce();
    void aFileSystemThatKeepsItsQuotasItself();
    void theHighestId_data();
    void theHighestId();
    void anAccountThatIsGone_data();
    void anAccountThatIsGone();
    void aTabFollowsItsAccount_data();
    void aTabFollowsItsAccount();
    void theListShowsWhatRepquotaReports_data();
    void theListShowsWhatRepquotaReports();

private:
    void compareRow(const AccountList &list, const QString &account, const MachineFacts::Account &facts) const;

    std::unique_ptr<RealConsole> _console;
    std::unique_ptr<AccountPage> _page;
    static QStringList allDisks() { return {disk("homes"), disk("projects"), disk("archive"), disk("mail")}; }

    const QString _homes = disk("homes");
};

void TestLimits::initTestCase()
{
    QVERIFY(Shell::succeeds(QStringLiteral("id=2000; for name in lena tilda gwen tess zoe rosa; do"
                                           "  echo $name:x:$((++id)):$id::/nonexistent:/bin/sh >>/etc/passwd;"
                                           "  echo $name:x:$id: >>/etc/group; done;"
                                           "printf 'zelda:x:2011:\\nruby:x:2012:\\n' >>/etc/group;"
                                           "groupadd --gid 4294967294 highest;"
                                           "useradd --uid 4294967294 --gid highest highest;"
                                           "mkdir --mode 1777 /srv/{homes,archive,projects,mail}/public")));
    _console = std::make_unique<RealConsole>();
    _page = std::make_unique<AccountPage>(*_console);
}

void TestLimits::cleanupTestCase()
{
    _page.reset();
    _console.reset();
}

void TestLimits::limitsAreEnforced_data()
{
    QTest::addColumn<Way>("way");
    QTest::addColumn<QuotaKind>("kind");
    QTest::addColumn<QString>("account");
    QTest::newRow("user, list") << Way::List << UserQuota << "lena";
    QTest::newRow("user, tab") << Way::Tab << UserQuota << "tilda";
    QTest::newRow("group, list") << Way::List << GroupQuota << "gwen";
    QTest::newRow("group, tab") << Way::Tab << GroupQuota << "tess";
}

void TestLimits::limitsAreEnforced()
{
    QFETCH(const Way, way);
    QFETCH(const QuotaKind, kind);
    QFETCH(const QString, account);
    const QString folder = QStringLiteral("/srv/homes");
    const QString large = QStringLiteral("%1/public/%2-large").arg(folder, account);
    const QString small = QStringLiteral("%1/public/%2-").arg(folder, account);
    const MachineFacts::Kind homes = kindOn(_homes, kind);

    QVERIFY(_page->openAccount(way, kind, account, _homes));
    QCOMPARE(_page->device(), _homes);
    QVERIFY(_page->setSpaceLimit(Bound::Soft, 1, QStringLiteral("Mb")));
    QVERIFY(_page->setSpaceLimit(Bound::Hard, 3072, QStringLiteral("Kb")));
    QVERIFY(_page->setFilesLimit(Bound::Soft, 3));
    QVERIFY(_page->setFilesLimit(Bound::Hard, 5));
    AccountPage::Applied applied = _page->apply();
    QVERIFY2(applied.succeeded, qPrintable(applied.message));
    QCOMPARE(applied.boxes, QStringList());
    MachineFacts::Account facts = accounts(kind, folder).value(account);
    QCOMPARE(facts.softBytes, Mib);
    QCOMPARE(facts.hardBytes, 3 * Mib);
    QCOMPARE(facts.softFiles, quint64(3));
    QCOMPARE(facts.hardFiles, quint64(5));

    // Past the hard limits.
    QVERIFY(isExceeded(OrdinaryWrite::append(account, large, 4096)));
    QVERIFY(isExceeded(OrdinaryWrite::create(account, small, 5)));
    QVERIFY(Shell::succeeds(QStringLiteral("rm %1*").arg(small)));

    // Past the soft ones. From now on the time runs.
    QCOMPARE(OrdinaryWrite::append(account, large, 1536).exitCode, 0);
    QCOMPARE(OrdinaryWrite::create(account, small, 3).exitCode, 0);
    QVERIFY(_page->refresh());
    facts = accounts(kind, folder).value(account);
    const qint64 now = QDateTime::currentSecsSinceEpoch();
    QVERIFY(facts.spaceForced > now && facts.spaceForced <= now + homes.blockGrace);
    QVERIFY(facts.filesForced > now && facts.filesForced <= now + homes.inodeGrace);
    QCOMPARE(_page->timeToForce(Counted::Space).toSecsSinceEpoch(), facts.spaceForced);
    QCOMPARE(_page->timeToForce(Counted::Files).toSecsSinceEpoch(), facts.filesForced);
    QCOMPARE(_page->used(Counted::Files), quint64(4));
    QCOMPARE(facts.usedFiles, quint64(4));
    QVERIFY(_page->used(Counted::Space) >= Mib * 3 / 2);

    // Once it is over, the soft limits are as hard as the others.
    QVERIFY(_page->forceYearBefore(Counted::Space));
    QVERIFY(_page->forceYearBefore(Counted::Files));
    const QDateTime past = _page->timeToForce(Counted::Space);
    applied = _page->apply();
    QVERIFY2(applied.succeeded, qPrintable(applied.message));
    facts = accounts(kind, folder).value(account);
    QCOMPARE(facts.spaceForced, past.toSecsSinceEpoch());
    QVERIFY(facts.filesForced < now);
    QCOMPARE(facts.softBytes, Mib);
    QCOMPARE(facts.hardBytes, 3 * Mib);
    QCOMPARE(_page->timeToForce(Counted::Space), past);
    QVERIFY(isExceeded(OrdinaryWrite::append(account, large, 64)));
    QVERIFY(isExceeded(OrdinaryWrite::create(account, small, 4)));
}

/// Of a device that never had to do with quotas.
void TestLimits::usersLimitsSwitchQuotasOn()
{
    const QString archive = disk("archive");
    QVERIFY(_page->openAccount(Way::List, UserQuota, QStringLiteral("lena"), archive));
    QVERIFY(!_page->saysQuotaIsOn());
    QVERIFY(_page->setSpaceLimit(Bound::Hard, 1, QStringLiteral("Mb")));
    const AccountPage::Applied applied = _page->apply();
    QVERIFY2(applied.succeeded, qPrintable(applied.message));
    QCOMPARE(applied.boxes,
             QStringList(QStringLiteral("In process of inclusion quota configuration file will be created. "
                                        "This process may take several minutes.")));
    QCOMPARE(MachineFacts::fstabLine("/srv/archive").value(3), QStringLiteral("defaults,noatime,usrquota"));
    const MachineFacts::Device facts = MachineFacts::device(archive);
    QVERIFY(facts.user.configured && facts.user.inForce && facts.user.hasFile && facts.user.on);
    QVERIFY(!facts.group.inForce && !facts.group.hasFile && !facts.group.on);

    QVERIFY(_page->saysQuotaIsOn());
    QCOMPARE(_page->device(), archive);
    QCOMPARE(_page->limit(Counted::Space, Bound::Hard), Mib);
    const MachineFacts::Accounts users = accounts(UserQuota, QStringLiteral("/srv/archive"));
    QCOMPARE(users.value(QStringLiteral("lena")).hardBytes, Mib);
    QVERIFY(users.value(QStringLiteral("anna")).usedBytes >= 3 * Mib); // counted when they were switched on
    QVERIFY(
        isExceeded(OrdinaryWrite::append(QStringLiteral("lena"), QStringLiteral("/srv/archive/public/lena"), 2048)));
}

/// Beside those of its users, which stay as they are.
void TestLimits::groupsLimitsSwitchQuotasOn()
{
    const QString archive = disk("archive");
    QVERIFY(_page->openAccount(Way::Tab, GroupQuota, QStringLiteral("gwen"), archive));
    QVERIFY(!_page->saysQuotaIsOn());
    QVERIFY(_page->setFilesLimit(Bound::Hard, 2));
    const AccountPage::Applied applied = _page->apply();
    QVERIFY2(applied.succeeded, qPrintable(applied.message));
    QCOMPARE(MachineFacts::fstabLine("/srv/archive").value(3), QStringLiteral("defaults,noatime,usrquota,grpquota"));
    const MachineFacts::Device facts = MachineFacts::device(archive);
    QVERIFY(facts.user.configured && facts.user.inForce && facts.user.hasFile && facts.user.on);
    QVERIFY(facts.group.configured && facts.group.inForce && facts.group.hasFile && facts.group.on);
    QVERIFY(_page->saysQuotaIsOn());
    QCOMPARE(accounts(UserQuota, QStringLiteral("/srv/archive")).value(QStringLiteral("lena")).hardBytes, Mib);
    QCOMPARE(accounts(GroupQuota, QStringLiteral("/srv/archive")).value(QStringLiteral("gwen")).hardFiles, quint64(2));
    QVERIFY(isExceeded(OrdinaryWrite::create(QStringLiteral("gwen"), QStringLiteral("/srv/archive/public/gwen-"), 3)));
}

/// The options were in the table before, but the device was mounted without them.
void TestLimits::limitsPutConfiguredQuotasIntoForce()
{
    const QString projects = disk("projects");
    const QStringList line = MachineFacts::fstabLine("/srv/projects");
    QVERIFY(!MachineFacts::device(projects).group.inForce);
    QVERIFY(_page->openAccount(Way::List, GroupQuota, QStringLiteral("tess"), projects));
    QVERIFY(_page->setSpaceLimit(Bound::Hard, 1, QStringLiteral("Mb")));
    const AccountPage::Applied applied = _page->apply();
    QVERIFY2(applied.succeeded, qPrintable(applied.message));
    QCOMPARE(MachineFacts::fstabLine("/srv/projects"), line);
    const MachineFacts::Device facts = MachineFacts::device(projects);
    QVERIFY(facts.group.inForce && facts.group.hasFile && facts.group.on);
    QVERIFY(facts.user.inForce && !facts.user.hasFile && !facts.user.on); // nobody asked for these
    QVERIFY(
        isExceeded(OrdinaryWrite::append(QStringLiteral("tess"), QStringLiteral("/srv/projects/public/tess"), 2048)));
}

/// No option, no file, nothing to switch on. The kernel counts from the mount on, but holds nobody to a limit unless it
/// was told to, by the mount option or by `quotaon`.
void TestLimits::aFileSystemThatKeepsItsQuotasItself()
{
    const QString mail = disk("mail");
    const QString zoe = QStringLiteral("zoe");
    const QString file = QStringLiteral("/srv/mail/public/zoe");
    const QStringList line = MachineFacts::fstabLine("/srv/mail");
    QVERIFY(_page->openAccount(Way::List, UserQuota, zoe, mail));
    QVERIFY(_page->saysQuotaIsOn());
    QVERIFY(_page->setSpaceLimit(Bound::Hard, 1, QStringLiteral("Mb")));
    const AccountPage::Applied applied = _page->apply();
    QVERIFY2(applied.succeeded, qPrintable(applied.message));
    QCOMPARE(MachineFacts::fstabLine("/srv/mail"), line);
    QCOMPARE(accounts(UserQuota, QStringLiteral("/srv/mail")).value(zoe).hardBytes, Mib);
    QCOMPARE(OrdinaryWrite::append(zoe, file, 2048).exitCode, 0);
    QVERIFY(Shell::succeeds(QStringLiteral("quotaon --user /srv/mail")));
    QVERIFY(isExceeded(OrdinaryWrite::append(zoe, file, 64)));
}

void TestLimits::theHighestId_data()
{
    QTest::addColumn<QuotaKind>("kind");
    QTest::newRow("user") << UserQuota;
    QTest::newRow("group") << GroupQuota;
}

void TestLimits::theHighestId()
{
    QFETCH(const QuotaKind, kind);
    const QString account = QStringLiteral("highest");
    AccountList list(*_console, kind);
    QVERIFY(_page->openAccount(Way::List, kind, account, _homes));
    QVERIFY(_page->setSpaceLimit(Bound::Hard, 512, QStringLiteral("Kb")));
    const AccountPage::Applied applied = _page->apply();
    QVERIFY2(applied.succeeded, qPrintable(applied.message));
    const MachineFacts::Account facts = accounts(kind, QStringLiteral("/srv/homes")).value(account);
    QCOMPARE(facts.hardBytes, 512 * Kib);
    const QString file = QStringLiteral("/srv/homes/public/highest");
    QVERIFY(isExceeded(OrdinaryWrite::append(account, file, 1024)));
    QVERIFY(QFile::remove(file));

    QVERIFY(list.open());
    QCOMPARE(list.cell(account, AccountColumn::HardBlockLimit).toString(), QStringLiteral("512 Kb"));
    // Without a limit again, lest the user's stops what the group's is to stop.
    QVERIFY(_page->openAccount(Way::List, kind, account, _homes));
    QVERIFY(_page->clearLimit(Counted::Space, Bound::Hard));
    QVERIFY(_page->apply().succeeded);
    QCOMPARE(OrdinaryWrite::append(account, file, 1024).exitCode, 0);
    QVERIFY(QFile::remove(file));
}

void TestLimits::anAccountThatIsGone_data()
{
    QTest::addColumn<QuotaKind>("kind");
    QTest::addColumn<QString>("account");
    QTest::addColumn<QString>("removal");
    QTest::addColumn<QString>("message");
    QTest::newRow("user") << UserQuota << "zoe"
                          << "userdel zoe"
                          << "There is no user zoe";
    QTest::newRow("group") << GroupQuota << "zelda"
                           << "groupdel zelda"
                           << "There is no group zelda";
}

/// It is still in the list when it is opened.
void TestLimits::anAccountThatIsGone()
{
    QFETCH(const QuotaKind, kind);
    QFETCH(const QString, account);
    QFETCH(const QString, removal);
    QFETCH(const QString, message);
    AccountList list(*_console, kind);
    QVERIFY(list.open());
    QVERIFY(Shell::succeeds(removal));
    QVERIFY(list.accounts().contains(account));
    QVERIFY(list.openAccount(account));
    QCOMPARE(_console->message(), message);
    QCOMPARE(_page->devices(), allDisks()); // none of which says anything of the account

    QVERIFY(list.open());
    QVERIFY(_console->refresh());
    QVERIFY(!list.accounts().contains(account));
    QCOMPARE(_console->message(), QString());
}

void TestLimits::aTabFollowsItsAccount_data()
{
    QTest::addColumn<QuotaKind>("kind");
    QTest::addColumn<QString>("before");
    QTest::addColumn<QString>("renaming");
    QTest::addColumn<QString>("removal");
    QTest::addColumn<QString>("noSuch");
    QTest::addColumn<QString>("id");
    QTest::newRow("user") << UserQuota << "rosa"
                          << "usermod --login rosalind rosa"
                          << "userdel rosalind"
                          << "There is no user %1"
                          << "#2006";
    QTest::newRow("group") << GroupQuota << "ruby"
                           << "groupmod --new-name rosalind ruby"
                           << "groupdel rosalind"
                           << "There is no group %1"
                           << "#2012";
}

void TestLimits::aTabFollowsItsAccount()
{
    QFETCH(const QuotaKind, kind);
    QFETCH(const QString, before);
    QFETCH(const QString, renaming);
    QFETCH(const QString, removal);
    QFETCH(const QString, noSuch);
    QFETCH(const QString, id);
    const QString after = QStringLiteral("rosalind");
    const QString folder = QStringLiteral("/srv/homes");
    const QString listTitle = kind == GroupQuota ? QStringLiteral("Local groups") : QStringLiteral("Local users");
    QVERIFY(_page->openAccount(Way::Tab, kind, before, _homes));
    QCOMPARE(_page->tabs(), 1);
    QVERIFY(_page->setSpaceLimit(Bound::Hard, 2, QStringLiteral("Mb")));
    QVERIFY(_page->apply().succeeded);

    QVERIFY(Shell::succeeds(renaming));
    QVERIFY(_page->refresh());
    QVERIFY2(_console->message().contains(noSuch.arg(before)), qPrintable(_console->message()));
    QCOMPARE(_page->devices(), allDisks()); // none of which says anything of that name
    QCOMPARE(_page->device(), _homes);
    QVERIFY(_console->driver().open({listTitle}));
    QVERIFY(_console->refresh());
    QVERIFY(!_console->driver().open({listTitle, before}));
    QVERIFY(_page->openAccount(Way::Tab, kind, after, _homes));
    QCOMPARE(_page->tabs(), 1);
    QCOMPARE(_page->limit(Counted::Space, Bound::Hard), 2 * Mib);
    QVERIFY(_page->setSpaceLimit(Bound::Hard, 3, QStringLiteral("Mb")));
    QVERIFY(_page->apply().succeeded);
    MachineFacts::Accounts facts = accounts(kind, folder);
    QCOMPARE(facts.value(after).hardBytes, 3 * Mib);
    QVERIFY(!facts.contains(before));

    // Removed while its limits are being edited: nobody gets them.
    QVERIFY(_page->setSpaceLimit(Bound::Hard, 4, QStringLiteral("Mb")));
    QVERIFY(Shell::succeeds(removal));
    const AccountPage::Applied applied = _page->apply();
    QVERIFY(!applied.succeeded);
    QCOMPARE(applied.message, noSuch.arg(after));
    facts = accounts(kind, folder);
    QCOMPARE(facts.value(id).hardBytes, 3 * Mib);
    QVERIFY(_console->click(QStringLiteral("revertAction")) && _console->driver().settle());
    QVERIFY(_console->driver().open({listTitle}));
    QVERIFY(_console->refresh());
    QVERIFY(!_console->driver().open({listTitle, after}));
}

void TestLimits::theListShowsWhatRepquotaReports_data()
{
    QTest::addColumn<QuotaKind>("kind");
    QTest::addColumn<QString>("accountFile");
    QTest::newRow("users") << UserQuota << "/etc/passwd";
    QTest::newRow("groups") << GroupQuota << "/etc/group";
}

void TestLimits::theListShowsWhatRepquotaReports()
{
    QFETCH(const QuotaKind, kind);
    QFETCH(const QString, accountFile);
    QVERIFY(Shell::succeeds(QStringLiteral("sync"))); // what is written is counted when it reaches the disk
    AccountList list(*_console, kind);
    QVERIFY(list.open());
    QVERIFY(_console->refresh());
    QStringList shown = list.accounts();
    QStringList expected = namesIn(accountFile);
    shown.sort();
    expected.sort();
    QCOMPARE(shown, expected);

    for (const char *name : {"homes", "projects", "archive", "mail"}) {
        QVERIFY(list.choose(disk(name)));
        const MachineFacts::Accounts facts = accounts(kind, QStringLiteral("/srv/%1").arg(QLatin1String(name)));
        QCOMPARE(facts.isEmpty(), !kindOn(disk(name), kind).on);
        for (const QString &account : qAsConst(shown))
            compareRow(list, account, facts.value(account));
    }
}

/// Sizes are shown with four digits, and nothing is shown as nothing.
void TestLimits::compareRow(const AccountList &list, const QString &account, const MachineFacts::Account &facts) const
{
    const auto isShown = [&](AccountColumn::Column column, quint64 bytes) {
        static const QStringList units{QStringLiteral("Bytes"), QStringLiteral("Kb"), QStringLiteral("Mb"),
                                       QStringLiteral("Gb")};
        const QString text = list.cell(account, column).toString();
        if (text.isEmpty() || bytes == 0)
            return text.isEmpty() && bytes == 0;
        double number = text.section(QLatin1Char(' '), 0, 0).remove(QLocale().groupSeparator()).toDouble();
        for (int unit = units.indexOf(text.section(QLatin1Char(' '), 1)); unit > 0; --unit)
            number *= 1024;
        return qAbs(number / static_cast<double>(bytes) - 1) <= 0.0005;
    };
    const auto timeText = [](qint64 seconds) {
        return seconds == 0 ? QString()
                            : QDateTime::fromSecsSinceEpoch(seconds).toString(QStringLiteral("dd.MM.yyyy hh:mm"));
    };
    const bool hasLimit = facts.softBytes != 0 || facts.hardBytes != 0 || facts.softFiles != 0 || facts.hardFiles != 0;
    QCOMPARE(list.cell(account, AccountColumn::QuotaIsOn).toString(),
             hasLimit ? QStringLiteral("on") : QStringLiteral("off"));
    QVERIFY2(isShown(AccountColumn::UsedBlocks, facts.usedBytes), qPrintable(account));
    QVERIFY2(isShown(AccountColumn::SoftBlockLimit, facts.softBytes), qPrintable(account));
    QVERIFY2(isShown(AccountColumn::HardBlockLimit, facts.hardBytes), qPrintable(account));
    QCOMPARE(list.cell(account, AccountColumn::BlocksTimeToForce).toString(), timeText(facts.spaceForced));
    QCOMPARE(list.cell(account, AccountColumn::UsedInodes).toULongLong(), facts.usedFiles);
    QCOMPARE(list.cell(account, AccountColumn::SoftInodeLimit).toULongLong(), facts.softFiles);
    QCOMPARE(list.cell(account, AccountColumn::HardInodeLimit).toULongLong(), facts.hardFiles);
    QCOMPARE(list.cell(account, AccountColumn::InodesTimeToForce).toString(), timeText(facts.filesForced));
}

int main(int argc, char *argv[])
{
    Startup::prepareProcess();
    QApplication application(argc, argv);
    TestLimits test;
    return QTest::qExec(&test, argc, argv);
}
#include "tst_limits.moc"
