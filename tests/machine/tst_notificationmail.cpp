// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "notificationspage.h"
#include "shell.h"

#include <startup.h>

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <QTest>

using Text = NotificationsPage::Text;

namespace
{
constexpr int patience = 120000; // milliseconds: the machine is emulated

const QString table = QStringLiteral("/etc/cron.d/warnquota");

QByteArray contents(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// The mails in somebody's mailbox; each begins with the line that separates them.
QStringList mails(const char *user)
{
    static const QRegularExpression start(QStringLiteral("^(?=From )"), QRegularExpression::MultilineOption);
    const QByteArray box = contents(QStringLiteral("/var/mail/") + QLatin1String(user));
    return QString::fromUtf8(box).split(start, Qt::SkipEmptyParts);
}

bool isOnItsWay()
{
    return Shell::run(QStringLiteral("pidof warnquota dma")).exitCode == 0 ||
           !QDir(QStringLiteral("/var/spool/dma")).entryList({QStringLiteral("[MQ]*")}, QDir::Files).isEmpty();
}

int minutesOfCron()
{
    return contents(QStringLiteral("/run/minutes")).count('\n');
}

/// Sets the clock to the end of this minute, and has cron look at it, until cron has seen that many minutes more. They
/// are all minutes of its own: it takes none of them for a correction of the clock.
bool passMinutes(int count)
{
    for (; count > 0; --count) {
        const int seen = minutesOfCron();
        const Shell::Result set = Shell::run(QStringLiteral(
            "date --set \"$(date +%R:58)\" && systemctl kill --signal=HUP --kill-who=main cron.service"));
        if (set.exitCode != 0 || !QTest::qWaitFor([seen] { return minutesOfCron() > seen; }, patience))
            return false;
    }
    return true;
}
} // namespace

/// From the page to the mailbox: the real console writes, the machine's own cron, warnquota and mail system do the
/// rest.
class TestNotificationMail : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void cleanupTestCase();
    void aMachineThatNeverWarned();
    void theFirstTask();
    void cronSendsTheMail();
    void whoIsBelowGetsNone();
    void everyMinuteAnother();
    void aDeletedTaskSendsNoMore();
    void debiansOwnDailyRun();
    void somebodyElsesTable();

private:
    /// Whether nothing is on its way and there is a mail for each minute that cron has seen since the task is there.
    bool isOnePerMinute(const QStringList &mails) const
    {
        return !mails.isEmpty() && mails.size() == minutesOfCron() - _minutesBefore && !isOnItsWay();
    }

    std::unique_ptr<RealConsole> _console;
    std::unique_ptr<NotificationsPage> _page;
    int _minutesBefore = 0;
};

void TestNotificationMail::initTestCase()
{
    const Shell::Result setUp = Shell::run(QStringLiteral("./mail-set-up"));
    QVERIFY2(setUp.exitCode == 0, qPrintable(setUp.errors));
    _console = std::make_unique<RealConsole>();
    _page = std::make_unique<NotificationsPage>(*_console);
    QVERIFY(_page->open());
}

void TestNotificationMail::cleanupTestCase()
{
    _page.reset();
    _console.reset();
}

void TestNotificationMail::aMachineThatNeverWarned()
{
    QVERIFY(!QFile::exists(table));
    QCOMPARE(_page->message(), QStringLiteral("Can'n open /etc/cron.d/warnquota file"));
    QCOMPARE(_page->tasks(), QStringList());
    QCOMPARE(_page->notes().size(), 1);
    QVERIFY(_page->notes().constFirst().contains(QStringLiteral("made with the first task")));
}

void TestNotificationMail::theFirstTask()
{
    QVERIFY(_page->addTask());
    QVERIFY(_page->chooseExpertMode(QStringLiteral("* * * * *")));
    _page->toggleGroups();
    QVERIFY(_page->text(Text::Configuration).contains(QStringLiteral("MAIL_CMD")));
    _page->append(Text::Configuration,
                  QString::fromUtf8("SUBJECT = Your files on the server\n"
                                    "FROM = \"quota@machine\"\n"
                                    "MESSAGE = \"Gr\xc3\xbc\xc3\x9f dich, %s!|Please clean up:|\"\n"));
    _page->append(Text::Administrators, QStringLiteral("accounting: clara\neditorial: david\n"));
    _page->append(Text::Devices, QStringLiteral("/dev/vda: The homes of everybody\n"));
    QVERIFY(passMinutes(1)); // a whole minute is left from here on
    _minutesBefore = minutesOfCron();
    const ConsolePage::Applied applied = _page->apply();
    QVERIFY2(applied.succeeded, qPrintable(applied.message));
    QCOMPARE(_page->message(), QString());
    QCOMPARE(_page->tasks(), QStringList(QStringLiteral("1")));
    QVERIFY(contents(table).endsWith("\nPATH=/usr/sbin\n* * * * * root warnquota -u -g\n"));
    QCOMPARE(Shell::run(QStringLiteral("stat --format '%U:%G %a' ") + table).output, QStringLiteral("root:root 644\n"));
    for (const char *user : {"root", "anna", "ben", "clara", "david", "emma"})
        QCOMPARE(mails(user), QStringList());
}

/// Ben is over his soft limit, and so is the group of accounting, which Clara is to be told of.
void TestNotificationMail::cronSendsTheMail()
{
    QVERIFY(passMinutes(1));
    QTRY_VERIFY_WITH_TIMEOUT(isOnePerMinute(mails("ben")) && isOnePerMinute(mails("clara")), patience);

    const QString ben = mails("ben").constFirst();
    for (const char *part : {"\nFrom: quota@machine\n", "\nSubject: Your files on the server\n", "\nTo: ben\n",
                             "\nGr\xc3\xbc\xc3\x9f dich, ben!\nPlease clean up:\n",
                             "\nThe homes of everybody (/dev/vda)\n", " 10240   20480 "})
        QVERIFY2(ben.contains(QString::fromUtf8(part)), qPrintable(QString::fromUtf8(part) + ben));

    const QString clara = mails("clara").constFirst();
    for (const char *part : {"\nSubject: Your files on the server\n", "\nTo: clara\n", "the group accounting ",
                             "\nThe homes of everybody (/dev/vda)\n", " 256    1024 "})
        QVERIFY2(clara.contains(QString::fromUtf8(part)), qPrintable(QString::fromUtf8(part) + clara));
}

/// Nor do those whom the groups that are below have for an administrator, and no mail of cron's own tells root that
/// something was wrong with the task.
void TestNotificationMail::whoIsBelowGetsNone()
{
    for (const char *user : {"anna", "david", "emma"})
        QCOMPARE(mails(user), QStringList());
    for (const QString &mail : mails("root")) // the copies
        QVERIFY2(mail.contains(QStringLiteral("\nSubject: Your files on the server\n")), qPrintable(mail));
}

void TestNotificationMail::everyMinuteAnother()
{
    QVERIFY(passMinutes(1));
    QTRY_VERIFY_WITH_TIMEOUT(isOnePerMinute(mails("ben")) && isOnePerMinute(mails("clara")), patience);
    whoIsBelowGetsNone();
}

void TestNotificationMail::aDeletedTaskSendsNoMore()
{
    QVERIFY(_page->deleteTask());
    QVERIFY(passMinutes(1));
    const ConsolePage::Applied applied = _page->apply();
    QVERIFY2(applied.succeeded, qPrintable(applied.message));
    QCOMPARE(_page->tasks(), QStringList());
    QVERIFY(contents(table).endsWith("\nPATH=/usr/sbin\n"));
    QTRY_VERIFY_WITH_TIMEOUT(isOnePerMinute(mails("ben")), patience); // up to the minute before
    const int before = mails("ben").size();

    QVERIFY(passMinutes(3));
    QTRY_VERIFY_WITH_TIMEOUT(!isOnItsWay(), patience);
    QCOMPARE(mails("ben").size(), before);
    QCOMPARE(mails("clara").size(), before);
}

void TestNotificationMail::debiansOwnDailyRun()
{
    QCOMPARE(Shell::run(QStringLiteral("sed --in-place 's/^run_warnquota=$/run_warnquota=true/' /etc/default/quota && "
                                       "grep --quiet '^run_warnquota=true$' /etc/default/quota"))
                 .exitCode,
             0);
    QVERIFY(_page->refresh());
    QCOMPARE(_page->notes().size(), 1);
    QVERIFY(_page->notes().constFirst().contains(QStringLiteral("run_warnquota in /etc/default/quota")));
    QCOMPARE(Shell::run(QStringLiteral("sed --in-place '/^run_warnquota=/d' /etc/default/quota")).exitCode, 0);
    QVERIFY(_page->refresh());
    QCOMPARE(_page->notes(), QStringList());
}

/// A table that Debian brings, under the own one's name.
void TestNotificationMail::somebodyElsesTable()
{
    const QByteArray foreign = contents(QStringLiteral("/run/machine/host/etc/cron.d/e2scrub_all"));
    QVERIFY(foreign.contains("e2scrub_all"));
    QVERIFY(QFile::remove(table));
    QVERIFY(QFile::copy(QStringLiteral("/run/machine/host/etc/cron.d/e2scrub_all"), table));
    QVERIFY(_page->refresh());
    QCOMPARE(_page->tasks().size(), 2);
    QVERIFY(
        _page->notes().constLast().contains(QStringLiteral("not a run of warnquota: test -e /run/systemd/system ")));

    _page->agree();
    _page->toggleGroups();
    const ConsolePage::Applied applied = _page->apply();
    QVERIFY2(applied.succeeded, qPrintable(applied.message));
    QCOMPARE(applied.boxes.size(), 1);
    QVERIFY(contents(table).contains("\n30 3 * * 0 root warnquota -u -g\n"));
    const int second = foreign.indexOf("10 3 * * * root ");
    QVERIFY(second > 0 && contents(table).endsWith('\n' + foreign.mid(second))); // nobody edited it
    const QStringList kept = QDir(QStringLiteral("/var/backups")).entryList({QStringLiteral("warnquota.*")});
    QCOMPARE(kept.size(), 1);
    const QString copy = QStringLiteral("/var/backups/") + kept.constFirst();
    QCOMPARE(contents(copy), foreign);
    QVERIFY2(applied.details.join(QLatin1Char('\n')).contains(copy),
             qPrintable(applied.details.join(QLatin1Char('\n'))));
    QCOMPARE(QDir(QStringLiteral("/etc/cron.d")).entryList(QDir::Files),
             QStringList({QStringLiteral("minutes"), QStringLiteral("warnquota")}));
    QCOMPARE(_page->notes(), QStringList());
}

int main(int argc, char *argv[])
{
    Startup::prepareProcess();
    QApplication application(argc, argv);
    TestNotificationMail test;
    return QTest::qExec(&test, argc, argv);
}
#include "tst_notificationmail.moc"
