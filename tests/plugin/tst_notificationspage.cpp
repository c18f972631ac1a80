// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <formwidget.h>
#include <mainwindow.h>
#include <sandbox.h>
#include <session.h>
#include <taskobserver.h>
#include <vieweditelementwidget.h>

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QSettings>
#include <QStandardPaths>
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

private:
    void openPage(const QByteArray &cronLines);
    void press(int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
    void type(const QString &text);
    void tabTo(const char *name);
    void apply();
    void settle();
    QString focus() const;
    QByteArray cronTable() const { return _sandbox.readEtc(QStringLiteral("cron.d/warnquota")); }
    template<typename Widget>
    Widget *find(const char *name) const
    {
        return formWidget<Widget>(*_page, name);
    }

    Sandbox _sandbox;
    std::unique_ptr<Session> _session;
    std::unique_ptr<MainWindow> _window;
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
    QStandardPaths::setTestModeEnabled(true);
    QCoreApplication::setOrganizationName(QStringLiteral("kra-test"));
    QCoreApplication::setApplicationName(QStringLiteral("tst_notificationspage"));
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
    settle();
    _window.reset();
    _session.reset();
}

/// Nothing but the file's head and these lines is in the cron table; without any there is no such file.
void TestNotificationsPage::openPage(const QByteArray &cronLines)
{
    if (!cronLines.isEmpty())
        _sandbox.writeEtc(QStringLiteral("cron.d/warnquota"), head + cronLines);
    _session = std::make_unique<Session>();
    _session->loadPlugins({Session::pluginFolder()});
    _window = std::make_unique<MainWindow>(*_session);
    _window->show();
    _window->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(_window.get()));
    settle();
    type(QStringLiteral("Quota"));
    press(Qt::Key_Right);
    press(Qt::Key_Down);
    QTRY_VERIFY(_page = _window->findChild<ViewEditElementWidget *>(QStringLiteral("NotificationsWidget")));
    QTRY_VERIFY(_page->isVisible() && _page->isEditable());
    press(Qt::Key_F6);
}

/// To whatever has the focus, as the window system would.
void TestNotificationsPage::press(int key, Qt::KeyboardModifiers modifiers)
{
    QWidget *focused = QApplication::focusWidget();
    QVERIFY2(focused, "Nothing has the focus");
    QTest::keyClick(focused, static_cast<Qt::Key>(key), modifiers);
}

void TestNotificationsPage::type(const QString &text)
{
    for (const QChar character : text)
        QTest::keyClick(QApplication::focusWidget(), character.toLatin1());
}

void TestNotificationsPage::tabTo(const char *name)
{
    constexpr int widgetsOfTheWindow = 40;
    for (int i = 0; i < widgetsOfTheWindow && focus() != QLatin1String(name); ++i)
        press(Qt::Key_Tab);
    QCOMPARE(focus(), QString::fromLatin1(name));
}

/// Ctrl+S, after which nothing is left to apply.
void TestNotificationsPage::apply()
{
    QVERIFY(_page->isContentChanged());
    press(Qt::Key_S, Qt::ControlModifier);
    QTRY_VERIFY(_page->isEditable());
    settle();
    QVERIFY(!_page->isContentChanged());
}

void TestNotificationsPage::settle()
{
    QTRY_VERIFY(!TaskObserver::instance()->isBusy());
    QCoreApplication::processEvents();
}

QString TestNotificationsPage::focus() const
{
    const QWidget *focused = QApplication::focusWidget();
    return focused ? focused->objectName() : QString();
}

void TestNotificationsPage::theFirstTask()
{
    openPage({});
    const auto *message = _window->findChild<QLabel *>(QStringLiteral("pageMessage"));
    QVERIFY(message && message->isVisible());
    QCOMPARE(message->text(), QStringLiteral("Can'n open /etc/cron.d/warnquota file"));
    tabTo("_addedTaskToolButton");
    press(Qt::Key_Space);
    QCOMPARE(focus(), QStringLiteral("_usersCheckBox")); // the first thing to choose
    apply();
    QCOMPARE(cronTable(), head + line("0 * * * *"));
    QCOMPARE(focus(), QStringLiteral("_usersCheckBox"));
    QCOMPARE(find<QComboBox>("_cronJobsComboBox")->currentText(), QStringLiteral("1"));
}

void TestNotificationsPage::tabGoesDownThePage()
{
    openPage(line("30 4 * * *"));
    tabTo("_addedTaskToolButton");
    QStringList order(focus());
    do {
        press(Qt::Key_Tab);
        order += focus();
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
        press(Qt::Key_Backtab, Qt::ShiftModifier);
        QCOMPARE(focus(), down.at(i));
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
    tabTo("_hourRadioButton");
    for (int i = 0; i < qAbs(stepsFromHour); ++i)
        press(stepsFromHour < 0 ? Qt::Key_Left : Qt::Key_Down);
    tabTo(field.toLatin1().constData());
    type(keys);
    apply();
    QCOMPARE(cronTable(), head + line(schedule));
    QCOMPARE(focus(), field); // where the administrator was typing
    QCOMPARE(find<QLineEdit>("_expertLineEdit")->text(), QString::fromLatin1(schedule));
}

void TestNotificationsPage::theTexts()
{
    openPage(line("30 4 * * *"));
    for (const char *name : {"_warnquotaconfPlainTextEdit", "_quotagrpadminsPlainTextEdit", "_quotatabPlainTextEdit"}) {
        tabTo(name);
        press(Qt::Key_End, Qt::ControlModifier);
        type(QStringLiteral("more"));
        press(Qt::Key_Return);
    }
    apply();
    QCOMPARE(focus(), QStringLiteral("_quotatabPlainTextEdit"));
    QCOMPARE(_sandbox.readEtc(QStringLiteral("warnquota.conf")), QByteArray("FROM = \"root@localhost\"\nmore\n"));
    QCOMPARE(_sandbox.readEtc(QStringLiteral("quotagrpadmins")), QByteArray("staff: anna\nmore\n"));
    QCOMPARE(_sandbox.readEtc(QStringLiteral("quotatab")), QByteArray("/dev/vda1:This is your home folder\nmore\n"));
    QCOMPARE(cronTable(), head + line("30 4 * * *"));
}

void TestNotificationsPage::anotherTask()
{
    openPage(line("1 * * * *") + line("2 * * * *"));
    tabTo("_cronJobsComboBox");
    press(Qt::Key_Down);
    tabTo("_groupsCheckBox");
    press(Qt::Key_Space);
    apply();
    QCOMPARE(cronTable(), head + line("1 * * * *") + "2 * * * * root warnquota -u -g\n");
    QCOMPARE(find<QComboBox>("_cronJobsComboBox")->currentText(), QStringLiteral("2"));
}

void TestNotificationsPage::theLastTaskIsDeleted()
{
    openPage(line("1 * * * *") + line("2 * * * *"));
    tabTo("_deleteTaskToolButton");
    press(Qt::Key_Space);
    QCOMPARE(focus(), QStringLiteral("_deleteTaskToolButton")); // for the next one
    press(Qt::Key_Space);
    QCOMPARE(focus(), QStringLiteral("_addedTaskToolButton")); // all that is left to do here
    apply();
    QCOMPARE(cronTable(), head);
    QCOMPARE(focus(), QStringLiteral("_addedTaskToolButton"));
    press(Qt::Key_Space);
    apply();
    QCOMPARE(cronTable(), head + line("0 * * * *"));
}

void TestNotificationsPage::elevenTasks()
{
    QByteArray lines;
    for (int minute = 1; minute <= 10; ++minute)
        lines += line(QByteArray::number(minute) + " * * * *");
    openPage(lines);
    tabTo("_addedTaskToolButton");
    press(Qt::Key_Space);
    apply();
    // By their names, which are texts: "10" before "2", and "new task" after all.
    QByteArray expected = head;
    for (const int minute : {1, 10, 2, 3, 4, 5, 6, 7, 8, 9, 0})
        expected += line(QByteArray::number(minute) + " * * * *");
    QCOMPARE(cronTable(), expected);
    QCOMPARE(find<QComboBox>("_cronJobsComboBox")->currentText(), QStringLiteral("11"));
    tabTo("_groupsCheckBox");
    press(Qt::Key_Space);
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
    tabTo("_groupsCheckBox");
    press(Qt::Key_Space);
    apply();
    QCOMPARE(cronTable(), head + "0 8 * * MON root warnquota -u -g\n" + line("  00 8 * * *"));
}

void TestNotificationsPage::anEditedLineThatIsNotUnderstoodIsRefused()
{
    openPage(line("0 8 * * MON"));
    tabTo("_expertLineEdit");
    press(Qt::Key_End);
    press(Qt::Key_Backspace);
    tabTo("_quotatabPlainTextEdit");
    press(Qt::Key_S, Qt::ControlModifier);
    QCOMPARE(focus(), QStringLiteral("_expertLineEdit"));
    QTRY_VERIFY(!QToolTip::text().isEmpty());
    settle();
    QCOMPARE(cronTable(), head + line("0 8 * * MON"));
    QVERIFY(_page->isContentChanged());
    press(Qt::Key_Backspace);
    press(Qt::Key_Backspace);
    type(QStringLiteral("1"));
    apply();
    QCOMPARE(cronTable(), head + line("0 8 * * 1"));
}

void TestNotificationsPage::changesAreTakenBack()
{
    openPage(line("30 4 * * *"));
    tabTo("_dayRadioButton");
    press(Qt::Key_Left);
    press(Qt::Key_R, Qt::ControlModifier);
    settle();
    QVERIFY(!_page->isContentChanged());
    QCOMPARE(find<QLineEdit>("_expertLineEdit")->text(), QStringLiteral("30 4 * * *"));
    QVERIFY(find<QComboBox>("_cronJobsComboBox")->isEnabled());
    QCOMPARE(cronTable(), head + line("30 4 * * *"));
}

KRA_SANDBOX_MAIN(TestNotificationsPage)
#include "tst_notificationspage.moc"
