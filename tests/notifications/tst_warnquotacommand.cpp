// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <crontabreader.h>
#include <warnquotacommand.h>

#include <QtTest>

#include <functional>

using WarnquotaCommand::Loss;
Q_DECLARE_METATYPE(Loss)

namespace
{
CronJob run(const QString &command)
{
    return {{QStringLiteral("0"), QStringLiteral("8"), QStringLiteral("*"), QStringLiteral("*"), QStringLiteral("1")},
            QStringLiteral("anna"),
            command,
            QStringLiteral(" why")};
}
} // namespace

/// The options of warnquota in a cron line, out of it and into it.
class TestWarnquotaCommand : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void fixedPaths();
    void parsing_data();
    void parsing();
    void theJobItselfIsCopied();
    void building_data();
    void building();
    void whatIsLost_data();
    void whatIsLost();
    void theLineStaysWhileNothingIsEdited();
    void plainPaths();
};

void TestWarnquotaCommand::fixedPaths()
{
    QCOMPARE(WarnquotaCommand::defaultFiles(),
             QStringList({QStringLiteral("/etc/warnquota.conf"), QStringLiteral("/etc/quotatab"),
                          QStringLiteral("/etc/quotagrpadmins")}));
}

void TestWarnquotaCommand::parsing_data()
{
    QTest::addColumn<QString>("command");
    QTest::addColumn<QString>("kinds");
    QTest::addColumn<QString>("config");
    QTest::addColumn<QString>("quotaTab");
    QTest::addColumn<QString>("adminsFile");
    QTest::addColumn<QString>("builtAgain");
    const auto row = [](const char *command, const char *kinds, const char *builtAgain, const char *config = "",
                        const char *quotaTab = "", const char *adminsFile = "") {
        QTest::newRow(*command ? command : "nothing")
            << QString::fromLatin1(command) << QString::fromLatin1(kinds)
            << QString::fromLatin1(*config ? config : "/etc/warnquota.conf")
            << QString::fromLatin1(*quotaTab ? quotaTab : "/etc/quotatab")
            << QString::fromLatin1(*adminsFile ? adminsFile : "/etc/quotagrpadmins") << QString::fromLatin1(builtAgain);
    };
    row("warnquota", "u", "warnquota -u");
    row("warnquota -u", "u", "warnquota -u");
    row("warnquota -g", "g", "warnquota -g");
    row("warnquota -ug", "ug", "warnquota -u -g");
    row("warnquota -g -u", "ug", "warnquota -u -g");
    row("warnquota -s", "u", "warnquota -u");
    row("warnquota --group", "ug", "warnquota -u -g");
    row("warnquota --user", "u", "warnquota -u");
    row("warnquota -", "u", "warnquota -u");
    row("  warnquota   -g  ", "g", "warnquota -g");
    row("warnquota -g -c /tmp/w.conf", "g", "warnquota -g --config=/tmp/w.conf", "/tmp/w.conf");
    row("warnquota --config=/tmp/w.conf", "u", "warnquota -u --config=/tmp/w.conf", "/tmp/w.conf");
    row("warnquota --config=/tmp/--config=w", "u", "warnquota -u --config=/tmp/w", "/tmp/w");
    row("warnquota --quota-tab=/etc/quotatab", "u", "warnquota -u");
    row("warnquota -q /tmp/q -a /tmp/a", "u", "warnquota -u --admins-file=/tmp/a --quota-tab=/tmp/q", "", "/tmp/q",
        "/tmp/a");
    row("warnquota --admins-file=/tmp/a --quota-tab=/tmp/q --config=/tmp/c -g", "g",
        "warnquota -g --admins-file=/tmp/a --quota-tab=/tmp/q --config=/tmp/c", "/tmp/c", "/tmp/q", "/tmp/a");
    row("warnquota -c", "u", "warnquota -u");
    row("warnquota --config=", "u", "warnquota -u");
    row("warnquota -c /tmp/1 -c /tmp/2", "u", "warnquota -u --config=/tmp/1", "/tmp/1"); // what follows the first "-c"
    row("warnquota -c /tmp/1 --config=/tmp/2", "u", "warnquota -u --config=/tmp/2", "/tmp/2");
    row("warnquota --admins-file=/a--config=/b", "u", "warnquota -u --config=--admins-file=/a/b", "--admins-file=/a/b");
    row("warnquota --config=/b--quota-tab=/q", "u", "warnquota -u --quota-tab=--config=/b/q", "", "--config=/b/q");
    row("warnquota -c -g", "g", "warnquota -g --config=-g", "-g"); // the value is looked at as an option too
    row("/usr/bin/other --verbose", "u", "warnquota -u");
    row("", "u", "warnquota -u");
}

void TestWarnquotaCommand::parsing()
{
    QFETCH(QString, command);
    QFETCH(QString, kinds);
    QFETCH(QString, config);
    QFETCH(QString, quotaTab);
    QFETCH(QString, adminsFile);
    QFETCH(QString, builtAgain);
    const WarnquotaJob job = WarnquotaCommand::parse(run(command));
    QCOMPARE(job.users, kinds.contains(QLatin1Char('u')));
    QCOMPARE(job.groups, kinds.contains(QLatin1Char('g')));
    QCOMPARE(job.config, config);
    QCOMPARE(job.quotaTab, quotaTab);
    QCOMPARE(job.adminsFile, adminsFile);
    QCOMPARE(WarnquotaCommand::build(job).command, builtAgain);
}

void TestWarnquotaCommand::theJobItselfIsCopied()
{
    const CronJob job = run(QStringLiteral("warnquota -g"));
    const WarnquotaJob parsed = WarnquotaCommand::parse(job);
    QVERIFY(parsed.job == job);
    QCOMPARE(parsed.job.comment, job.comment);
    const CronJob built = WarnquotaCommand::build(parsed);
    QVERIFY(built == job);
    QCOMPARE(built.comment, job.comment);
}

void TestWarnquotaCommand::building_data()
{
    QTest::addColumn<bool>("users");
    QTest::addColumn<bool>("groups");
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("command");
    QTest::newRow("nobody, no paths") << false << false << QString() << QStringLiteral("warnquota");
    QTest::newRow("a path that looks like a place to fill")
        << true << true << QStringLiteral("/%1")
        << QStringLiteral("warnquota -u -g --admins-file=/%1 --quota-tab=/%1 --config=/%1");
}

void TestWarnquotaCommand::building()
{
    QFETCH(bool, users);
    QFETCH(bool, groups);
    QFETCH(QString, path);
    QFETCH(QString, command);
    QCOMPARE(WarnquotaCommand::build({CronJob(), path, path, path, users, groups}).command, command);
}

void TestWarnquotaCommand::whatIsLost_data()
{
    QTest::addColumn<QByteArray>("command");
    QTest::addColumn<Loss>("loss");
    const auto rows = [](Loss loss, std::initializer_list<const char *> commands) {
        for (const char *command : commands)
            QTest::newRow(command) << QByteArray(command) << loss;
    };
    rows(Loss::None,
         {"warnquota", "warnquota -u ", "warnquota  -ug", "warnquota -u -u", "warnquota -c /a -q /b -a /c",
          "warnquota --config=/a --quota-tab=/b --admins-file=/c -g", "warnquota -c w.conf", "warnquota -u # why",
          "warnquota -u ## why", "warnquota -u #", "warnquota -c /etc/gr\xc3\xbc\xc3\x9f"});
    rows(Loss::Detail, {"/usr/sbin/warnquota -g",
                        "sub/warnquota",
                        "warnquota -s",
                        "warnquota -us",
                        "warnquota --group",
                        "warnquota -c",
                        "warnquota --config=",
                        "warnquota --no-mail",
                        "warnquota -c /a -c /b",
                        "warnquota -c /a --config=/b",
                        "warnquota --config=/a --config=/a",
                        "warnquota -c -g",
                        "warnquota -c --quota-tab=/a",
                        "warnquota --config=/--config=a",
                        "warnquota --config=/a--quota-tab=/b",
                        "warnquota -c /etc/w#1.conf",
                        "warnquota -u#why",
                        "warnquota -u#",
                        "warnquota -c \"/etc/a b\"",
                        "warnquota -c /etc/a\\ b",
                        "warnquota -c ~/w.conf",
                        "warnquota -c $HOME/w.conf",
                        "warnquota -c /etc/100%",
                        "warnquota -c /etc/*.conf",
                        "warnquota -u | mail root",
                        "warnquota -u; reboot",
                        "warnquota -u\t-g",
                        "warnquota -u\r",
                        "warnquota # gr\xfc\xdf",
                        "warnquota /etc/w.conf"});
    rows(Loss::Program, {"other", "other warnquota", "mywarnquota", "warnquota;reboot", "warnquota\t-u",
                         "test -x /usr/sbin/warnquota && warnquota", "/usr/bin/clean", "#warnquota"});
}

void TestWarnquotaCommand::whatIsLost()
{
    QFETCH(QByteArray, command);
    QFETCH(Loss, loss);
    const QList<CronJob> jobs = CrontabReader::jobsIn("0 8 * * 1 root " + command);
    QCOMPARE(jobs.size(), 1);
    QCOMPARE(WarnquotaCommand::lossOf(jobs.first()), loss);
}

void TestWarnquotaCommand::theLineStaysWhileNothingIsEdited()
{
    const QByteArray read = "  0  08 * * MON anna /opt/warnquota\t-c /a -c /b   # gr\xfc\xdf\r";
    const WarnquotaJob run = WarnquotaCommand::parse(CrontabReader::jobsIn(read).first());
    QVERIFY(WarnquotaCommand::isAsRead(run));
    QCOMPARE(WarnquotaCommand::line(run), read);

    const std::function<void(WarnquotaJob &)> edits[] = {
        [](WarnquotaJob &edited) { edited.users = !edited.users; },
        [](WarnquotaJob &edited) { edited.groups = !edited.groups; },
        [](WarnquotaJob &edited) { edited.config += QLatin1Char('x'); },
        [](WarnquotaJob &edited) { edited.quotaTab += QLatin1Char('x'); },
        [](WarnquotaJob &edited) { edited.adminsFile += QLatin1Char('x'); },
        [](WarnquotaJob &edited) { edited.job.user = QStringLiteral("root"); },
        [](WarnquotaJob &edited) { edited.job.comment = QStringLiteral("x"); },
        [](WarnquotaJob &edited) { edited.job.command += QLatin1Char('x'); },
        [](WarnquotaJob &edited) { edited.job.schedule.hour = QStringLiteral("8"); },
    };
    for (const auto &edit : edits) {
        WarnquotaJob edited = run;
        edit(edited);
        QVERIFY(!WarnquotaCommand::isAsRead(edited));
        QCOMPARE(WarnquotaCommand::line(edited), CrontabReader::formatJob(WarnquotaCommand::build(edited)).toUtf8());
    }

    WarnquotaJob made = run; // the same, but not from a file
    made.job.asRead.clear();
    QVERIFY(!WarnquotaCommand::isAsRead(made));
    QVERIFY(WarnquotaCommand::line(made).startsWith("  0 08 * * MON anna warnquota -u"));
}

void TestWarnquotaCommand::plainPaths()
{
    for (const char *path : {"/etc/w.conf", "/a/b_c-d+e@f:g,h=i", "/etc/gr\xc3\xbc\xc3\x9f", "/"})
        QVERIFY2(WarnquotaCommand::isPlainPath(QString::fromUtf8(path)), path);
    for (const char *path :
         {"",     "w.conf", "./w.conf", "~/w.conf", "$HOME/w", "/$HOME", "/a b", "/a\"b", "/a'b",  "/a\\b", "/a%b",
          "/a#b", "/a*",    "/a?",      "/a;b",     "/a&b",    "/a`b",   "/a(b", "/a\n",  "/a\tb", "/~a/\\"})
        QVERIFY2(!WarnquotaCommand::isPlainPath(QString::fromUtf8(path)), path);
}

QTEST_GUILESS_MAIN(TestWarnquotaCommand)
#include "tst_warnquotacommand.moc"
