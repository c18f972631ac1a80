// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "consolekeyboard.h"

#include <formwidget.h>
#include <sandbox.h>
#include <vieweditelementwidget.h>

#include <QComboBox>
#include <QDir>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QSettings>
#include <QToolTip>

/// The page "Notifications" in the console's own window, with nothing but a keyboard, from the tree to the files.
class TestNotificationsPage : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();

    void theFirstTask();
    void tabGoesDownThePage();
    void everyMode_data();
    void everyMode();
    void theTexts();
    void anotherTask();
    void theLastTaskIsDeleted();
    void elevenTasks();
    void aLineThatIsNotUnderstoodStays();
    void anEditedLineThatIsNotUnderstoodIsRefused();
    void changesAreTakenBack();
    void aFailedUpdateLosesNothingTyped();

private:
    void openPage(const QByteArray &cronLines);
    void apply();
    QByteArray cronTable() const { return _sandbox.readEtc(QStringLiteral("cron.d/warnquota")); }
    template<typename Widget>
    Widget *find(const char *name) const
    {
        return formWidget<Widget>(*_page, name);
    }

    Sandbox _sandbox;
    ConsoleKeyboard _console;
    ViewEditElementWidget *_page = nullptr;
};

namespace
{
const QByteArray head = "# Cron job for quota notifications\n# Dont edit this file\nPATH=/usr/sbin\n";

QByteArray line(const QByteArray &schedule)
{
    return schedule + " root warnquota -u\n";
}
} // namespace

void TestNotificationsPage::initTestCase()
{
    ConsoleKeyboard::useOwnSettings(QStringLiteral("tst_notificationspage"));
}

void TestNotificationsPage::init()
{
    QSettings().clear();
    _sandbox.reset();
    _sandbox.standIn(QStringLiteral("blkid"));
    _sandbox.standIn(QStringLiteral("modinfo"));
    _sandbox.writeEtc(QStringLiteral("cron.d/.placeholder"), QByteArray());
    _sandbox.writeEtc(QStringLiteral("warnquota.conf"), "FROM = \"root@localhost\"\n");
    _sandbox.writeEtc(QStringLiteral("quotatab"), "/dev/vda1:This is your home folder\n");
    _sandbox.writeEtc(QStringLiteral("quotagrpadmins"), "staff: anna\n");
}

void TestNotificationsPage::cleanup()
{
    _console.close();
}

/// Nothing but the file's head and these lines is in the cron table; without any there is no such file.
void TestNotificationsPage::openPage(const QByteArray &cronLines)
{
    if (!cronLines.isEmpty())
        _sandbox.writeEtc(QStringLiteral("cron.d/warnquota"), head + cronLines);
    _console.open();
    _console.type(QStringLiteral("Quota"));
    _console.press(Qt::Key_Right);
    _console.press(Qt::Key_Down);
    QTRY_VERIFY(_page = _console.window().findChild<ViewEditElementWidget *>(QStringLiteral("NotificationsWidget")));
    QTRY_VERIFY(_page->isVisible() && _page->isEditable());
    _console.press(Qt::Key_F6);
}

/// Ctrl+S, after which nothing is left to apply.
void TestNotificationsPage::apply()
{
    QVERIFY(_page->isContentChanged());
    _console.press(Qt::Key_S, Qt::ControlModifier);
    QTRY_VERIFY(_page->isEditable());
    ConsoleKeyboard::settle();
    QVERIFY(!_page->isContentChanged());
}

void TestNotificationsPage::theFirstTask()
{
    openPage({});
    const auto *message = _console.window().findChild<QLabel *>(QStringLiteral("pageMessage"));
    QVERIFY(message && message->isVisible());
    QCOMPARE(message->text(), QStringLiteral("Can'n open /etc/cron.d/warnquota file"));
    _console.tabTo("_addedTaskToolButton");
    _console.press(Qt::Key_Space);
    QCOMPARE(ConsoleKeyboard::focus(), QStringLiteral("_usersCheckBox")); // the first thing to choose
    apply();
    QCOMPARE(cronTable(), head + line("0 * * * *"));
    QCOMPARE(ConsoleKeyboard::focus(), QStringLiteral("_usersCheckBox"));
    QCOMPARE(find<QComboBox>("_cronJobsComboBox")->currentText(), QStringLiteral("1"));
}

void TestNotificationsPage::tabGoesDownThePage()
{
    openPage(line("30 4 * * *"));
    _console.tabTo("_addedTaskToolButton");
    QStringList order(ConsoleKeyboard::focus());
    do {
        _console.press(Qt::Key_Tab);
        order += ConsoleKeyboard::focus();
    } while (order.last() != QLatin1String("_quotatabPlainTextEdit") && order.size() < 20);
    const QStringList down = {
        QStringLiteral("_addedTaskToolButton"),
        QStringLiteral("_cronJobsComboBox"),
        QStringLiteral("_deleteTaskToolButton"),
        QStringLiteral("_usersCheckBox"),
        QStringLiteral("_groupsCheckBox"),
        QStringLiteral("_dayRadioButton"),
        QStringLiteral("_atDateTimeEdit"), // the hours
        QStringLiteral("_atDateTimeEdit"), // the minutes
        QStringLiteral("_warnquotaconfPlainTextEdit"),
        QStringLiteral("_quotagrpadminsPlainTextEdit"),
        QStringLiteral("_quotatabPlainTextEdit"),
    };
    QCOMPARE(order.join(QLatin1Char(' ')), down.join(QLatin1Char(' ')));
    for (int i = down.size() - 2; i >= 0; --i) {
        _console.press(Qt::Key_Backtab, Qt::ShiftModifier);
        QCOMPARE(ConsoleKeyboard::focus(), down.at(i));
    }
}

void TestNotificationsPage::everyMode_data()
{
    QTest::addColumn<int>("stepsFromHour"); // with the arrow keys
    QTest::addColumn<QString>("field");
    QTest::addColumn<QString>("keys");
    QTest::addColumn<QByteArray>("schedule");
    const QString at = QStringLiteral("_atDateTimeEdit");
    QTest::newRow("monthly") << -2 << at << QStringLiteral("310805") << QByteArray("5 8 31 * *");
    QTest::newRow("daily") << -1 << at << QStringLiteral("2359") << QByteArray("59 23 * * *");
    QTest::newRow("hourly") << 0 << at << QStringLiteral("07") << QByteArray("7 * * * *");
    QTest::newRow("expert") << 1 << QStringLiteral("_expertLineEdit") << QStringLiteral("*/5 0-6/2 1,15 * 1-5")
                            << QByteArray("*/5 0-6/2 1,15 * 1-5");
}

void TestNotificationsPage::everyMode()
{
    QFETCH(int, stepsFromHour);
    QFETCH(QString, field);
    QFETCH(QString, keys);
    QFETCH(QByteArray, schedule);
    openPage(line("30 * * * *"));
    _console.tabTo("_hourRadioButton");
    for (int i = 0; i < qAbs(stepsFromHour); ++i)
        _console.press(stepsFromHour < 0 ? Qt::Key_Left : Qt::Key_Down);
    _console.tabTo(field.toLatin1().constData());
    _console.type(keys);
    apply();
    QCOMPARE(cronTable(), head + line(schedule));
    QCOMPARE(ConsoleKeyboard::focus(), field); // where the administrator was typing
    QCOMPARE(find<QLineEdit>("_expertLineEdit")->text(), QString::fromLatin1(schedule));
}

void TestNotificationsPage::theTexts()
{
    openPage(line("30 4 * * *"));
    for (const char *name : {"_warnquotaconfPlainTextEdit", "_quotagrpadminsPlainTextEdit", "_quotatabPlainTextEdit"}) {
        _console.tabTo(name);
        _console.press(Qt::Key_End, Qt::ControlModifier);
        _console.type(QStringLiteral("more"));
        _console.press(Qt::Key_Return);
    }
    apply();
    QCOMPARE(ConsoleKeyboard::focus(), QStringLiteral("_quotatabPlainTextEdit"));
    QCOMPARE(_sandbox.readEtc(QStringLiteral("warnquota.conf")), QByteArray("FROM = \"root@localhost\"\nmore\n"));
    QCOMPARE(_sandbox.readEtc(QStringLiteral("quotagrpadmins")), QByteArray("staff: anna\nmore\n"));
    QCOMPARE(_sandbox.readEtc(QStringLiteral("quotatab")), QByteArray("/dev/vda1:This is your home folder\nmore\n"));
    QCOMPARE(cronTable(), head + line("30 4 * * *"));
}

void TestNotificationsPage::anotherTask()
{
    openPage(line("1 * * * *") + line("2 * * * *"));
    _console.tabTo("_cronJobsComboBox");
    _console.press(Qt::Key_Down);
    _console.tabTo("_groupsCheckBox");
    _console.press(Qt::Key_Space);
    apply();
    QCOMPARE(cronTable(), head + line("1 * * * *") + "2 * * * * root warnquota -u -g\n");
    QCOMPARE(find<QComboBox>("_cronJobsComboBox")->currentText(), QStringLiteral("2"));
}

void TestNotificationsPage::theLastTaskIsDeleted()
{
    openPage(line("1 * * * *") + line("2 * * * *"));
    _console.tabTo("_deleteTaskToolButton");
    _console.press(Qt::Key_Space);
    QCOMPARE(ConsoleKeyboard::focus(), QStringLiteral("_deleteTaskToolButton")); // for the next one
    _console.press(Qt::Key_Space);
    QCOMPARE(ConsoleKeyboard::focus(), QStringLiteral("_addedTaskToolButton")); // all that is left to do here
    apply();
    QCOMPARE(cronTable(), head);
    QCOMPARE(ConsoleKeyboard::focus(), QStringLiteral("_addedTaskToolButton"));
    _console.press(Qt::Key_Space);
    apply();
    QCOMPARE(cronTable(), head + line("0 * * * *"));
}

void TestNotificationsPage::elevenTasks()
{
    QByteArray lines;
    for (int minute = 1; minute <= 10; ++minute)
        lines += line(QByteArray::number(minute) + " * * * *");
    openPage(lines);
    _console.tabTo("_addedTaskToolButton");
    _console.press(Qt::Key_Space);
    apply();
    // By their names, which are texts: "10" before "2", and "new task" after all.
    QByteArray expected = head;
    for (const int minute : {1, 10, 2, 3, 4, 5, 6, 7, 8, 9, 0})
        expected += line(QByteArray::number(minute) + " * * * *");
    QCOMPARE(cronTable(), expected);
    QCOMPARE(find<QComboBox>("_cronJobsComboBox")->currentText(), QStringLiteral("11"));
    _console.tabTo("_groupsCheckBox");
    _console.press(Qt::Key_Space);
    apply();
    expected = head;
    for (const char *minute : {"1", "9", "0", "10", "2", "3", "4", "5", "6", "7", "8"})
        expected += line(QByteArray(minute) + " * * * *");
    expected.replace("\n0 * * * * root warnquota -u\n", "\n0 * * * * root warnquota -u -g\n");
    QCOMPARE(cronTable(), expected);
}

void TestNotificationsPage::aLineThatIsNotUnderstoodStays()
{
    openPage(line("0 8 * * MON") + line("  00 8 * * *"));
    _console.tabTo("_groupsCheckBox");
    _console.press(Qt::Key_Space);
    apply();
    QCOMPARE(cronTable(), head + "0 8 * * MON root warnquota -u -g\n" + line("  00 8 * * *"));
}

void TestNotificationsPage::anEditedLineThatIsNotUnderstoodIsRefused()
{
    openPage(line("0 8 * * MON"));
    _console.tabTo("_expertLineEdit");
    _console.press(Qt::Key_End);
    _console.press(Qt::Key_Backspace);
    _console.tabTo("_quotatabPlainTextEdit");
    _console.press(Qt::Key_S, Qt::ControlModifier);
    QCOMPARE(ConsoleKeyboard::focus(), QStringLiteral("_expertLineEdit"));
    QTRY_VERIFY(!QToolTip::text().isEmpty());
    ConsoleKeyboard::settle();
    QCOMPARE(cronTable(), head + line("0 8 * * MON"));
    QVERIFY(_page->isContentChanged());
    _console.press(Qt::Key_Backspace);
    _console.press(Qt::Key_Backspace);
    _console.type(QStringLiteral("1"));
    apply();
    QCOMPARE(cronTable(), head + line("0 8 * * 1"));
}

void TestNotificationsPage::changesAreTakenBack()
{
    openPage(line("30 4 * * *"));
    _console.tabTo("_dayRadioButton");
    _console.press(Qt::Key_Left);
    _console.press(Qt::Key_R, Qt::ControlModifier);
    ConsoleKeyboard::settle();
    QVERIFY(!_page->isContentChanged());
    QCOMPARE(find<QLineEdit>("_expertLineEdit")->text(), QStringLiteral("30 4 * * *"));
    QVERIFY(find<QComboBox>("_cronJobsComboBox")->isEnabled());
    QCOMPARE(cronTable(), head + line("30 4 * * *"));
}

void TestNotificationsPage::aFailedUpdateLosesNothingTyped()
{
    openPage(line("30 4 * * *"));
    _console.tabTo("_warnquotaconfPlainTextEdit");
    _console.type(QStringLiteral("mine "));
    _sandbox.removeEtc(QStringLiteral("warnquota.conf"));
    QVERIFY(QDir().mkdir(QStringLiteral("/etc/warnquota.conf"))); // no file can be put there
    _console.press(Qt::Key_S, Qt::ControlModifier);
    const auto *message = _console.window().findChild<QLabel *>(QStringLiteral("pageMessage"));
    QTRY_VERIFY(message->text().contains(QStringLiteral("Can'n create /etc/warnquota.conf file")));
    QTRY_VERIFY(_page->isEditable());
    QVERIFY(_page->isContentChanged());
    const QString typed = QStringLiteral("mine FROM = \"root@localhost\"\n");
    QCOMPARE(find<QPlainTextEdit>("_warnquotaconfPlainTextEdit")->toPlainText(), typed);

    QVERIFY(QDir().rmdir(QStringLiteral("/etc/warnquota.conf")));
    apply();
    QCOMPARE(_sandbox.readEtc(QStringLiteral("warnquota.conf")), typed.toUtf8());
}

KRA_SANDBOX_MAIN(TestNotificationsPage)
#include "tst_notificationspage.moc"
