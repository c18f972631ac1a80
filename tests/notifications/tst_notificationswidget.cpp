// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "editortest.h"
#include "madeupwarnings.h"

#include <notificationswidget.h>
#include <schedulechoice.h>

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDateTimeEdit>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QRadioButton>
#include <QToolButton>
#include <QtTest>

using namespace MadeUpWarnings;

/// What the editor of the warnings shows of a record, and what it makes of it.
class TestNotificationsWidget : public QObject, private EditorTest<NotificationsWidget>
{
    Q_OBJECT

private Q_SLOTS:
    void init() { openEditor(QStringLiteral("QuotaNotificationsElement")); }
    void cleanup() { closeEditor(); }

    void texts_data();
    void texts();
    void toolTips();
    void tasksByName();
    void showingATask();
    void showingASchedule_data();
    void showingASchedule();
    void everyScheduleAfterEveryOther();
    void anotherTasksFiles();
    void theUpdateIsToldWhatWasRead();
    void withoutTasks();
    void showingIsNoChange();
    void everyEditIsAChangeThatHoldsTheTask_data();
    void everyEditIsAChangeThatHoldsTheTask();
    void onlyItsOwnElementsRecordsAreShown();
    void withoutAUsableRecordThePageStaysBlocked();
    void whoeverMayNotWriteMayLook();

    void addingATask();
    void addingTheFirstTask();
    void deletingTasks();
    void theLastCheckedBoxStaysChecked();

    void everyModeAfterEveryOther_data();
    void everyModeAfterEveryOther();
    void typingInTheExpertLine();
    void anEditedLineThatDoesNotFitIsRefused();
    void aLineThatFitsNoGrammarCanBeEdited();
    void aLineThatCronRefusesIsSaid();
    void ofManyRefusedLinesAFewAreSaid();

    void nothingEditedIsExportedAsItWas();
    void elevenTasksAreSavedInTheOrderOfTheirNames();
    void anEditedRunIsRootsRun();
    void textsKeepTheirCharacters_data();
    void textsKeepTheirCharacters();
    void anEditedText();
    void anEditedTextOfAnotherSystem();
    void afterAnUpdateTheTaskIsShownAgain();

    void theDailyRunIsSaid();
    void droppedLinesAreSaid();
    void noTaskIsSaid();
    void theKeyboardReachesEverything();

private:
    QComboBox *tasks() const { return find<QComboBox>("_cronJobsComboBox"); }
    QRadioButton *radio(const char *mode) const
    {
        return find<QRadioButton>(QByteArray(QByteArray("_") + mode + "RadioButton").constData());
    }
    QCheckBox *users() const { return find<QCheckBox>("_usersCheckBox"); }
    QCheckBox *groups() const { return find<QCheckBox>("_groupsCheckBox"); }
    QDateTimeEdit *at() const { return find<QDateTimeEdit>("_atDateTimeEdit"); }
    QLineEdit *line() const { return find<QLineEdit>("_expertLineEdit"); }
    QPlainTextEdit *configEdit() const { return find<QPlainTextEdit>("_warnquotaconfPlainTextEdit"); }
    QToolButton *button(const char *name) const { return find<QToolButton>(name); }
    bool isEnabled(const char *name) const { return find<QWidget>(name)->isEnabled(); }
    QStringList names() const;

    void show(const QStringList &lines) { show(record(lines)); }
    void show(NotificationsData data) { _widget->afterSuccessfulRead(_element.get(), &data); }
    NotificationsData exported() const;
    QStringList exportedLines() const;
};

namespace
{
const QStringList oneTask = {QStringLiteral("30 4 * * * root warnquota -u")};

QString cronLine(const char *schedule)
{
    return QString::fromLatin1(schedule) + QStringLiteral(" root warnquota -u");
}
} // namespace

QStringList TestNotificationsWidget::names() const
{
    QStringList result;
    for (int i = 0; i < tasks()->count(); ++i)
        result += tasks()->itemText(i);
    return result;
}

NotificationsData TestNotificationsWidget::exported() const
{
    const std::unique_ptr<ElementData> data = _widget->exportElementData();
    return dynamic_cast<const NotificationsData &>(*data);
}

QStringList TestNotificationsWidget::exportedLines() const
{
    QStringList lines;
    const QList<WarnquotaJob> jobs = exported().jobs;
    for (const WarnquotaJob &job : jobs)
        lines += MadeUpWarnings::line(job);
    return lines;
}

void TestNotificationsWidget::texts_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("property");
    QTest::addColumn<QString>("text");
    const auto row = [](const char *name, const char *property, const char *text) {
        QTest::newRow(name) << QString::fromLatin1(name) << QString::fromLatin1(property) << QString::fromLatin1(text);
    };
    row("_notifyGroupBox", "title", "Notifitations tasks (from cron)");
    row("label_2", "text", "Notify:");
    row("_usersCheckBox", "text", "Users");
    row("_groupsCheckBox", "text", "Groups");
    row("label_3", "text", "Every:");
    row("_monthRadioButton", "text", "month");
    row("_dayRadioButton", "text", "day");
    row("_hourRadioButton", "text", "hour");
    row("_expertRadioButton", "text", "Expert mode (cron)");
    row("_atDateTimeEdit", "displayFormat", "dd.MM.yyyy H:mm");
    row("groupBox_2", "title", "Global settings");
    row("_warnquotaGroupBox", "title", "Configuration notifications for users and groups");
    row("_quotagrpadminsGroupBox", "title", "Users responsible for group disk usage");
    row("_quotatabGroupBox", "title", "Descriptions of devices with disk quotas");
    row("_addedTaskToolButton", "toolTip", "Add new task");
    row("_deleteTaskToolButton", "toolTip", "Delete current task");
}

void TestNotificationsWidget::texts()
{
    QFETCH(QString, name);
    QFETCH(QString, property);
    QFETCH(QString, text);
    QCOMPARE(_widget->findChild<QWidget *>(name)->property(property.toLatin1().constData()).toString(), text);
    QCOMPARE(_widget->windowTitle(), QStringLiteral("Notifications settings"));
    QCOMPARE(_widget->elementType(), QStringLiteral("QuotaNotificationsElement"));
}

void TestNotificationsWidget::toolTips()
{
    show(oneTask);
    QCOMPARE(configEdit()->toolTip(), config);
    QCOMPARE(find<QPlainTextEdit>("_quotagrpadminsPlainTextEdit")->toolTip(), adminsFile);
    QCOMPARE(find<QPlainTextEdit>("_quotatabPlainTextEdit")->toolTip(), quotaTab);
}

void TestNotificationsWidget::tasksByName()
{
    QStringList lines;
    for (int i = 0; i < 11; ++i)
        lines += cronLine(qPrintable(QStringLiteral("%1 * * * *").arg(i)));
    show(lines);
    QCOMPARE(names().join(QLatin1Char(' ')), QStringLiteral("1 10 11 2 3 4 5 6 7 8 9"));
    tasks()->setCurrentText(QStringLiteral("10"));
    QCOMPARE(line()->text(), QStringLiteral("9 * * * *"));
}

void TestNotificationsWidget::showingATask()
{
    show({QStringLiteral("30 4 * * * root warnquota -ug"), QStringLiteral("0 1 * * * root warnquota -g")});
    QVERIFY(users()->isChecked() && groups()->isChecked());
    QCOMPARE(configEdit()->toPlainText(), record({}).files.value(config));
    QCOMPARE(find<QPlainTextEdit>("_quotagrpadminsPlainTextEdit")->toPlainText(), QStringLiteral("staff: anna\n"));
    QCOMPARE(find<QPlainTextEdit>("_quotatabPlainTextEdit")->toPlainText(), record({}).files.value(quotaTab));
    tasks()->setCurrentText(QStringLiteral("2"));
    QVERIFY(!users()->isChecked() && groups()->isChecked());
    for (const char *name :
         {"_notifyWidget", "_globalWidget", "_cronJobsComboBox", "_addedTaskToolButton", "_deleteTaskToolButton"})
        QVERIFY2(isEnabled(name), name);
}

void TestNotificationsWidget::showingASchedule_data()
{
    QTest::addColumn<QString>("schedule");
    QTest::addColumn<QString>("mode");
    QTest::addColumn<QString>("label");
    QTest::addColumn<QString>("shown");
    const auto row = [](const char *schedule, const char *mode, const char *label, const char *shown) {
        QTest::newRow(schedule) << QString::fromLatin1(schedule) << QString::fromLatin1(mode)
                                << QString::fromLatin1(label) << QString::fromLatin1(shown);
    };
    row("5 8 15 * *", "month", "At (day hours:minutes):", "15 08:05");
    row("5 8 31 * *", "month", "At (day hours:minutes):", "31 08:05");
    row("0 08 1 * *", "month", "At (day hours:minutes):", "01 08:00");
    row("30 4 * * *", "day", "At (hours:minutes):", "04:30");
    row("7 * * * *", "hour", "At (minutes):", "07");
    row("0 */2 * * *", "expert", nullptr, nullptr);
    row("0 8 * * MON", "expert", nullptr, nullptr);
}

void TestNotificationsWidget::showingASchedule()
{
    QFETCH(QString, schedule);
    QFETCH(QString, mode);
    QFETCH(QString, label);
    QFETCH(QString, shown);
    show({cronLine(qPrintable(schedule))});
    for (const char *other : {"month", "day", "hour", "expert"})
        QCOMPARE(radio(other)->isChecked(), mode == QLatin1String(other));
    QCOMPARE(line()->text(), schedule);
    const bool isExpert = mode == QLatin1String("expert");
    QCOMPARE(line()->isEnabled(), isExpert);
    QCOMPARE(at()->isEnabled(), !isExpert);
    if (isExpert) {
        QCOMPARE(at()->dateTime(), QDateTime(ScheduleChoice::dateOfDay(1, QDate::currentDate()), QTime(0, 0), Qt::UTC));
    } else {
        QCOMPARE(find<QLabel>("_atLabel")->text(), label);
        QCOMPARE(at()->text(), shown);
    }
    QVERIFY(!_widget->isContentChanged());
}

void TestNotificationsWidget::everyScheduleAfterEveryOther()
{
    const QStringList schedules = {QStringLiteral("5 8 31 * *"), QStringLiteral("59 23 * * *"),
                                   QStringLiteral("7 * * * *"), QStringLiteral("0 8 * * MON"),
                                   QStringLiteral("0 0 2 * *")};
    QStringList lines;
    for (const QString &one : schedules)
        lines += cronLine(qPrintable(one));
    show(lines);
    for (int before = 0; before < schedules.size(); ++before) {
        for (int after = 0; after < schedules.size(); ++after) {
            tasks()->setCurrentIndex(before);
            tasks()->setCurrentIndex(after);
            QCOMPARE(line()->text(), schedules.at(after));
            const CronSchedule schedule = CrontabReader::parseJob(lines.at(after)).schedule;
            QCOMPARE(at()->dateTime(), ScheduleChoice::of(schedule, QDate::currentDate()).at);
        }
    }
}

void TestNotificationsWidget::anotherTasksFiles()
{
    NotificationsData data =
        record({cronLine("1 * * * *"), QStringLiteral("2 * * * * root warnquota -u -c /etc/w.conf")});
    data.files.insert(QStringLiteral("/etc/w.conf"), QStringLiteral("other\n"));
    data.asRead->files = data.files;
    show(data);
    tasks()->setCurrentText(QStringLiteral("2"));
    QCOMPARE(configEdit()->toPlainText(), QStringLiteral("other\n"));
    QCOMPARE(configEdit()->toolTip(), QStringLiteral("/etc/w.conf"));
    configEdit()->setPlainText(QString());
    configEdit()->document()->setModified(true);
    const NotificationsData edited = exported();
    QCOMPARE(edited.files.value(QStringLiteral("/etc/w.conf")), QString());
    QCOMPARE(edited.files.value(config), data.files.value(config));
    QCOMPARE(editedFiles(edited), QStringList(QStringLiteral("/etc/w.conf")));
}

void TestNotificationsWidget::theUpdateIsToldWhatWasRead()
{
    NotificationsData data = record(oneTask);
    data.asRead = {"as it was", {{config, QStringLiteral("so was this")}}};
    show(data);
    configEdit()->setPlainText(QStringLiteral("edited"));
    QCOMPARE(exported().asRead->table, data.asRead->table);
    QCOMPARE(exported().asRead->files, data.asRead->files);
    data.asRead.reset();
    show(data);
    QVERIFY(!exported().asRead);
}

void TestNotificationsWidget::withoutTasks()
{
    show(oneTask);
    show(QStringList());
    QCOMPARE(tasks()->count(), 0);
    for (const char *name : {"_notifyWidget", "_globalWidget", "_cronJobsComboBox", "_deleteTaskToolButton"})
        QVERIFY2(!isEnabled(name), name);
    QVERIFY(isEnabled("_addedTaskToolButton"));
    QCOMPARE(configEdit()->toPlainText(), QString());
    QVERIFY(!users()->isChecked() && !groups()->isChecked());
    const NotificationsData data = exported();
    QVERIFY(data.jobs.isEmpty());
    QCOMPARE(data.files, record({}).files);
}

void TestNotificationsWidget::showingIsNoChange()
{
    show({cronLine("5 8 31 * *"), cronLine("0 8 * * MON"), cronLine("7 * * * *")});
    for (const QString &name : names()) {
        tasks()->setCurrentText(name);
        QVERIFY(!_widget->isContentChanged());
        QVERIFY(tasks()->isEnabled());
    }
}

void TestNotificationsWidget::everyEditIsAChangeThatHoldsTheTask_data()
{
    QTest::addColumn<QString>("widget");
    for (const char *name :
         {"_groupsCheckBox", "_monthRadioButton", "_hourRadioButton", "_expertRadioButton", "_atDateTimeEdit",
          "_warnquotaconfPlainTextEdit", "_quotagrpadminsPlainTextEdit", "_quotatabPlainTextEdit"})
        QTest::newRow(name) << QString::fromLatin1(name);
}

void TestNotificationsWidget::everyEditIsAChangeThatHoldsTheTask()
{
    QFETCH(QString, widget);
    show(oneTask);
    auto *edited = _widget->findChild<QWidget *>(widget);
    edited->setFocus();
    const bool isButton = qobject_cast<QAbstractButton *>(edited) != nullptr;
    const bool isTime = qobject_cast<QDateTimeEdit *>(edited) != nullptr;
    QTest::keyClick(edited, isButton ? Qt::Key_Space : isTime ? Qt::Key_Up : Qt::Key_X);
    QVERIFY(_widget->isContentChanged());
    for (const char *held : {"_cronJobsComboBox", "_addedTaskToolButton", "_deleteTaskToolButton"})
        QVERIFY2(!isEnabled(held), held);
    show(oneTask);
    QVERIFY(!_widget->isContentChanged());
    for (const char *held : {"_cronJobsComboBox", "_addedTaskToolButton", "_deleteTaskToolButton"})
        QVERIFY2(isEnabled(held), held);
}

void TestNotificationsWidget::onlyItsOwnElementsRecordsAreShown()
{
    show(oneTask);
    EditedElement other(QStringLiteral("QuotaNotificationsElement"), _module.get());
    NotificationsData data = record({});
    _widget->afterSuccessfulRead(&other, &data);
    QCOMPARE(tasks()->count(), 1);
}

void TestNotificationsWidget::withoutAUsableRecordThePageStaysBlocked()
{
    QVERIFY(_widget->isBlocked());
    ElementData other;
    _widget->afterSuccessfulRead(_element.get(), &other);
    QVERIFY(_widget->isBlocked());
    _widget->afterSuccessfulRead(_element.get(), nullptr);
    QVERIFY(_widget->isBlocked());
    QVERIFY(!isEnabled("_addedTaskToolButton"));
    show(oneTask);
    QVERIFY(!_widget->isBlocked());
}

void TestNotificationsWidget::whoeverMayNotWriteMayLook()
{
    openEditor(&nobodyMay);
    show({cronLine("1 * * * *"), cronLine("0 8 * * 1")});
    QVERIFY(tasks()->isEnabled());
    tasks()->setCurrentText(QStringLiteral("2"));
    QCOMPARE(line()->text(), QStringLiteral("0 8 * * 1"));
    QVERIFY(configEdit()->isEnabled() && configEdit()->isReadOnly());
    for (const char *name :
         {"_addedTaskToolButton", "_deleteTaskToolButton", "_usersCheckBox", "_dayRadioButton", "_expertLineEdit"})
        QVERIFY2(!isEnabled(name), name);
}

void TestNotificationsWidget::addingATask()
{
    show(oneTask);
    QTest::mouseClick(button("_addedTaskToolButton"), Qt::LeftButton);
    QCOMPARE(names(), QStringList({QStringLiteral("1"), QStringLiteral("new task")}));
    QCOMPARE(tasks()->currentText(), QStringLiteral("new task"));
    QVERIFY(radio("hour")->isChecked());
    QVERIFY(users()->isChecked() && !groups()->isChecked());
    QCOMPARE(at()->text(), QStringLiteral("00"));
    QCOMPARE(line()->text(), QStringLiteral("0 * * * *"));
    QCOMPARE(configEdit()->toPlainText(), record({}).files.value(config));
    QVERIFY(_widget->isContentChanged());
    for (const char *held : {"_cronJobsComboBox", "_addedTaskToolButton", "_deleteTaskToolButton"})
        QVERIFY2(!isEnabled(held), held);
    QCOMPARE(exportedLines(), oneTask + QStringList(cronLine("0 * * * *")));
    QVERIFY(_widget->isContentValid());
}

void TestNotificationsWidget::addingTheFirstTask()
{
    show(QStringList());
    button("_addedTaskToolButton")->setFocus();
    QTest::keyClick(button("_addedTaskToolButton"), Qt::Key_Space);
    QVERIFY(isEnabled("_usersCheckBox") && isEnabled("_warnquotaconfPlainTextEdit"));
    QCOMPARE(configEdit()->toPlainText(), record({}).files.value(config));
    QCOMPARE(exportedLines(), QStringList(cronLine("0 * * * *")));
    _widget->applyContentChanges();
    QCOMPARE(_module->asked.back(), OperationType::Write);
}

void TestNotificationsWidget::deletingTasks()
{
    show({cronLine("1 * * * *"), cronLine("2 * * * *"), cronLine("3 * * * *")});
    tasks()->setCurrentText(QStringLiteral("2"));
    QTest::mouseClick(button("_deleteTaskToolButton"), Qt::LeftButton);
    QCOMPARE(names(), QStringList({QStringLiteral("1"), QStringLiteral("3")}));
    QVERIFY(_widget->isContentChanged());
    QVERIFY(isEnabled("_cronJobsComboBox") && isEnabled("_addedTaskToolButton") && isEnabled("_deleteTaskToolButton"));
    QCOMPARE(exportedLines(), QStringList({cronLine("1 * * * *"), cronLine("3 * * * *")}));
    QTest::mouseClick(button("_deleteTaskToolButton"), Qt::LeftButton);
    QTest::mouseClick(button("_deleteTaskToolButton"), Qt::LeftButton);
    for (const char *name : {"_notifyWidget", "_globalWidget", "_cronJobsComboBox", "_deleteTaskToolButton"})
        QVERIFY2(!isEnabled(name), name);
    QVERIFY(isEnabled("_addedTaskToolButton"));
    QVERIFY(exportedLines().isEmpty());
    QVERIFY(_widget->isContentValid());
    QCOMPARE(exported().files, record({}).files);
    QVERIFY(editedFiles(exported()).isEmpty());
}

void TestNotificationsWidget::theLastCheckedBoxStaysChecked()
{
    show(oneTask);
    users()->click();
    QVERIFY(users()->isChecked());
    QVERIFY(!_widget->isContentChanged());
    groups()->click();
    users()->click();
    QVERIFY(!users()->isChecked() && groups()->isChecked());
    groups()->click();
    QVERIFY(groups()->isChecked());
    QCOMPARE(exportedLines(), QStringList(QStringLiteral("30 4 * * * root warnquota -g")));
}

void TestNotificationsWidget::everyModeAfterEveryOther_data()
{
    QTest::addColumn<QString>("before");
    QTest::addColumn<QString>("mode");
    QTest::addColumn<QString>("keys");
    QTest::addColumn<QString>("expected");
    const QMap<QString, QString> starts = {{QStringLiteral("month"), QStringLiteral("5 8 31 * *")},
                                           {QStringLiteral("day"), QStringLiteral("59 23 * * *")},
                                           {QStringLiteral("hour"), QStringLiteral("7 * * * *")},
                                           {QStringLiteral("expert"), QStringLiteral("0 8 * * MON")}};
    for (const QString &before : starts.keys()) {
        const auto row = [&](const char *mode, const char *keys, const char *expected) {
            if (before == QLatin1String(mode))
                return;
            QTest::addRow("%s, then %s: %s", qPrintable(before), mode, expected)
                << starts.value(before) << QString::fromLatin1(mode) << QString::fromLatin1(keys)
                << QString::fromLatin1(expected);
        };
        row("month", "010000", "0 0 1 * *");
        row("month", "302359", "59 23 30 * *");
        row("month", "310005", "5 0 31 * *");
        row("day", "0000", "0 0 * * *");
        row("day", "2359", "59 23 * * *");
        row("day", "0230", "30 2 * * *");
        row("hour", "00", "0 * * * *");
        row("hour", "59", "59 * * * *");
        row("expert", "*/5 0-6/2 1,15 * 1-5", "*/5 0-6/2 1,15 * 1-5");
    }
}

void TestNotificationsWidget::everyModeAfterEveryOther()
{
    QFETCH(QString, before);
    QFETCH(QString, mode);
    QFETCH(QString, keys);
    QFETCH(QString, expected);
    show({cronLine(qPrintable(before))});
    radio(mode.toLatin1().constData())->click();
    QWidget *edited = line();
    if (mode == QLatin1String("expert")) {
        QVERIFY(line()->isEnabled() && !at()->isEnabled());
        QCOMPARE(line()->text(), before); // it begins as what it was before
        line()->setFocus();
        line()->selectAll();
    } else {
        QVERIFY(at()->isEnabled() && !line()->isEnabled());
        edited = at();
        at()->setFocus();
        at()->setSelectedSection(at()->sectionAt(0));
    }
    for (const QChar key : keys)
        QTest::keyClick(edited, key.toLatin1());
    QCOMPARE(line()->text(), expected);
    QVERIFY(_widget->isContentValid());
    QCOMPARE(exportedLines(), QStringList(cronLine(qPrintable(expected))));
}

void TestNotificationsWidget::typingInTheExpertLine()
{
    show({cronLine("0 */2 * * *")});
    line()->setFocus();
    line()->selectAll();
    QString typed;
    for (const char key : QByteArray("  0   8 * * 1,2 ")) {
        QTest::keyClick(line(), key);
        typed += QLatin1Char(key);
        QCOMPARE(line()->text(), typed); // nothing is rewritten under the hands
    }
    QCOMPARE(exportedLines(), QStringList(cronLine("0 8 * * 1,2")));
    QTest::keyClicks(line(), QStringLiteral("MON"));
    QCOMPARE(line()->text(), typed);
}

void TestNotificationsWidget::anEditedLineThatDoesNotFitIsRefused()
{
    show({cronLine("0 */2 * * *")});
    line()->setFocus();
    QTest::keyClick(line(), Qt::Key_End);
    QTest::keyClick(line(), Qt::Key_Backspace);
    QTest::keyClick(line(), Qt::Key_Backspace);
    QVERIFY(!_widget->isContentValid());
    _widget->applyContentChanges();
    QVERIFY(_module->asked.empty());
    QVERIFY(_widget->isContentChanged());
    QCOMPARE(line()->text(), QStringLiteral("0 */2 * *"));
    radio("day")->click(); // what was typed does not count in another mode
    QVERIFY(_widget->isContentValid());
}

void TestNotificationsWidget::aLineThatFitsNoGrammarCanBeEdited()
{
    show({cronLine("0 8 * * MON")});
    QVERIFY(_widget->isContentValid());
    line()->setFocus();
    QTest::keyClick(line(), Qt::Key_End);
    QTest::keyClick(line(), Qt::Key_Backspace);
    QCOMPARE(line()->text(), QStringLiteral("0 8 * * MO"));
    QVERIFY(!_widget->isContentValid());
    QTest::keyClicks(line(), QStringLiteral("N")); // as it was, so there is nothing to refuse
    QVERIFY(_widget->isContentValid());
    QCOMPARE(exportedLines(), QStringList(cronLine("0 8 * * MON")));
    for (int i = 0; i < 3; ++i)
        QTest::keyClick(line(), Qt::Key_Backspace);
    QTest::keyClicks(line(), QStringLiteral("1"));
    QVERIFY(_widget->isContentValid());
    QCOMPARE(exportedLines(), QStringList(cronLine("0 8 * * 1")));
}

void TestNotificationsWidget::aLineThatCronRefusesIsSaid()
{
    show({cronLine("0 25 * * *"), cronLine("0 8 * * MON"), cronLine("0 8 * 13 MON")});
    const auto *note = find<QLabel>("_refusedLineLabel");
    const auto refused = [note] { return note->isVisible() ? note->text() : QString(); };
    const QString first = QStringLiteral("cron refuses the hour (0 to 23) of task 1, and with it all tasks.");
    const QString third = QStringLiteral("cron refuses the month (1 to 12) of task 3, and with it all tasks.");
    QCOMPARE(refused(), first + QLatin1Char('\n') + third);
    tasks()->setCurrentText(QStringLiteral("2")); // of every task, shown or not
    QCOMPARE(refused(), first + QLatin1Char('\n') + third);
    tasks()->setCurrentText(QStringLiteral("3"));
    button("_deleteTaskToolButton")->click();
    QCOMPARE(refused(), first);
    tasks()->setCurrentText(QStringLiteral("1"));
    line()->setFocus();
    line()->selectAll();
    QTest::keyClicks(line(), QStringLiteral("*/0 2 * * *"));
    QCOMPARE(refused(), QStringLiteral("cron refuses the minute (0 to 59) of task 1, and with it all tasks."));
    QVERIFY(_widget->isContentValid()); // the administrator is told, and decides
    line()->selectAll();
    QTest::keyClicks(line(), QStringLiteral("*/5 2 * * *"));
    QCOMPARE(refused(), QString());
    line()->selectAll();
    QTest::keyClicks(line(), QStringLiteral("99 2 * * *"));
    QVERIFY(!refused().isEmpty());
    radio("day")->click();
    QCOMPARE(refused(), QString());
}

void TestNotificationsWidget::ofManyRefusedLinesAFewAreSaid()
{
    show({cronLine("60 * * * *"), cronLine("60 * * * *"), cronLine("60 * * * *"), cronLine("60 * * * *")});
    QCOMPARE(find<QLabel>("_refusedLineLabel")->text().count(QLatin1Char('\n')), 3);
    QVERIFY(find<QLabel>("_refusedLineLabel")->text().endsWith(QChar(0x2026)));
}

void TestNotificationsWidget::nothingEditedIsExportedAsItWas()
{
    const QStringList lines = {cronLine("0 08 31 * *"), cronLine("0 8 * * MON"), cronLine("  00 8 * * *"),
                               QStringLiteral("7 * * * * root warnquota -g --config=/etc/w.conf # why")};
    show(lines);
    for (const QString &name : names()) {
        tasks()->setCurrentText(name);
        QCOMPARE(exportedLines(), lines);
        QVERIFY(editedFiles(exported()).isEmpty());
    }
    groups()->click(); // what is edited beside it does not touch the schedule
    QVERIFY(exportedLines().at(3).startsWith(QStringLiteral("7 * * * * root ")));
    show({lines.first()});
    groups()->click();
    QCOMPARE(exportedLines(), QStringList(QStringLiteral("0 08 31 * * root warnquota -u -g")));
    radio("day")->click();
    radio("month")->click(); // there and back again
    QCOMPARE(exportedLines(), QStringList(QStringLiteral("0 08 31 * * root warnquota -u -g")));
}

void TestNotificationsWidget::elevenTasksAreSavedInTheOrderOfTheirNames()
{
    QStringList lines;
    for (int i = 1; i <= 11; ++i)
        lines += cronLine(qPrintable(QStringLiteral("%1 * * * *").arg(i)));
    show(lines);
    QStringList minutes;
    const QStringList saved = exportedLines();
    for (const QString &one : saved)
        minutes += one.section(QLatin1Char(' '), 0, 0);
    QCOMPARE(minutes.join(QLatin1Char(' ')), QStringLiteral("1 10 11 2 3 4 5 6 7 8 9"));
}

void TestNotificationsWidget::anEditedRunIsRootsRun()
{
    const QString foreign = QStringLiteral("1 * * * * daemon /opt/warnquota  -c /a -c /b");
    const QString other = QStringLiteral("2 * * * * daemon warnquota");
    show({foreign, other});
    QCOMPARE(exportedLines(), QStringList({foreign, other})); // to the byte, as nothing is edited
    configEdit()->setPlainText(QStringLiteral("a text is not the run"));
    QCOMPARE(exportedLines(), QStringList({foreign, other}));
    groups()->click();
    QCOMPARE(exportedLines(), QStringList({QStringLiteral("1 * * * * root warnquota -u -g --config=/a"), other}));
    groups()->click();
    QCOMPARE(exportedLines(), QStringList({foreign, other})); // taken back
    radio("expert")->click();
    line()->setText(QStringLiteral("3 * * * *"));
    QCOMPARE(exportedLines(), QStringList({QStringLiteral("3 * * * * root warnquota -u --config=/a"), other}));
}

void TestNotificationsWidget::textsKeepTheirCharacters_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("lines of another system") << QStringLiteral("one\r\ntwo\r\n");
    QTest::newRow("no line end at the end") << QStringLiteral("one\ntwo");
    QTest::newRow("odd separators") << QString::fromUtf8("a\xc2\xa0"
                                                         "b\xe2\x80\xa8"
                                                         "c\xe2\x80\xa9"
                                                         "d\rb\n");
    QTest::newRow("NUL") << QString(QChar());
    QTest::newRow("no character") << QString(QChar(0xfffd)) + QChar(0xfdd0) + QChar(0xfdd1);
    QTest::newRow("a megabyte") << QString(1024 * 1024, QLatin1Char('x'));
}

void TestNotificationsWidget::textsKeepTheirCharacters()
{
    QFETCH(QString, text);
    NotificationsData data = record(oneTask);
    data.files.insert(config, text);
    data.asRead->files = data.files;
    show(data);
    groups()->click();
    QCOMPARE(exported().files.value(config), text);
    // Edited and undone it is what it was.
    configEdit()->setFocus();
    QTest::keyClicks(configEdit(), QStringLiteral("x"));
    QVERIFY(exported().files.value(config) != text);
    configEdit()->undo();
    QCOMPARE(exported().files.value(config), text);
    QVERIFY(editedFiles(exported()).isEmpty());
}

void TestNotificationsWidget::anEditedText()
{
    NotificationsData data = record(oneTask);
    data.files.insert(config, QString::fromUtf8("a\xc2\xa0"
                                                "b\n"));
    data.asRead->files = data.files;
    show(data);
    configEdit()->setFocus();
    configEdit()->moveCursor(QTextCursor::End);
    QTest::keyClicks(configEdit(), QStringLiteral("c"));
    QTest::keyClick(configEdit(), Qt::Key_Return, Qt::ShiftModifier);
    QTest::keyClicks(configEdit(), QStringLiteral("d"));
    QCOMPARE(exported().files.value(config), QString::fromUtf8("a\xc2\xa0"
                                                               "b\nc\nd"));
    QCOMPARE(editedFiles(exported()), QStringList(config));
    QCOMPARE(exportedLines(), oneTask);
}

/// The form knows one end of a line, and so does an edited text: never some of the one kind and some of the other.
void TestNotificationsWidget::anEditedTextOfAnotherSystem()
{
    NotificationsData data = record(oneTask);
    data.files.insert(config, QStringLiteral("one\r\ntwo\r\n"));
    show(data);
    configEdit()->setFocus();
    QTest::keyClicks(configEdit(), QStringLiteral("x"));
    QCOMPARE(exported().files.value(config), QStringLiteral("xone\ntwo\n"));
}

void TestNotificationsWidget::afterAnUpdateTheTaskIsShownAgain()
{
    QStringList lines;
    for (int i = 1; i <= 10; ++i)
        lines += cronLine(qPrintable(QStringLiteral("%1 * * * *").arg(i)));
    show(lines);
    tasks()->setCurrentText(QStringLiteral("10"));
    groups()->click();
    const QStringList saved = exportedLines();
    _widget->afterSuccessfulUpdate();
    show(saved);
    QCOMPARE(tasks()->currentText(), QStringLiteral("2")); // its place in the file
    QCOMPARE(line()->text(), QStringLiteral("10 * * * *"));
    show(saved); // and a read that follows no update keeps the name
    QCOMPARE(tasks()->currentText(), QStringLiteral("2"));
    // Where only a text was edited, the file of the tasks is as it was.
    show(lines);
    QTest::keyClicks(configEdit(), QStringLiteral("#"));
    _widget->afterSuccessfulUpdate();
    show(lines);
    QCOMPARE(tasks()->currentText(), QStringLiteral("2"));
    QCOMPARE(line()->text(), QStringLiteral("2 * * * *"));

    show(saved);
    button("_addedTaskToolButton")->click();
    const QStringList withNew = exportedLines();
    _widget->afterSuccessfulUpdate();
    show(withNew);
    QCOMPARE(tasks()->currentText(), QStringLiteral("11"));
    QCOMPARE(line()->text(), QStringLiteral("0 * * * *"));
}

void TestNotificationsWidget::theDailyRunIsSaid()
{
    auto *note = find<QLabel>("_dailyRunLabel");
    QVERIFY(!note->isVisible());
    NotificationsData data = record(oneTask);
    data.notes.hasDailyRun = true;
    show(data);
    QVERIFY(note->isVisible());
    QVERIFY(note->text().contains(QStringLiteral("run_warnquota in /etc/default/quota")));
    data.notes.hasDailyRun = false;
    show(data);
    QVERIFY(!note->isVisible());
}

void TestNotificationsWidget::droppedLinesAreSaid()
{
    auto *note = find<QLabel>("_droppedLinesLabel");
    QVERIFY(!note->isVisible());
    NotificationsData data = record(oneTask);
    data.notes.droppedLines = QStringList(QStringLiteral("@daily root <b>x</b>"));
    show(data);
    QVERIFY(note->isVisible());
    QVERIFY(note->text().contains(QStringLiteral("/var/backups")));
    QVERIFY(note->toolTip().contains(QStringLiteral("&lt;b&gt;")));
    show(oneTask);
    QVERIFY(!note->isVisible());
}

void TestNotificationsWidget::noTaskIsSaid()
{
    const auto *note = find<QLabel>("_noTaskLabel");
    QVERIFY(!note->isVisible());
    show(QStringList());
    QVERIFY(note->isVisible() && note->isEnabled());
    button("_addedTaskToolButton")->click();
    QVERIFY(!note->isVisible());
    show(oneTask);
    QVERIFY(!note->isVisible());
    button("_deleteTaskToolButton")->click();
    QVERIFY2(!note->isVisible(), "it sends mail until this is applied");
    show(QStringList());
    QVERIFY(note->isVisible());
}

void TestNotificationsWidget::theKeyboardReachesEverything()
{
    show(oneTask);
    button("_addedTaskToolButton")->setFocus();
    QStringList visited;
    for (int i = 0; i < 40 && (visited.isEmpty() || QApplication::focusWidget() != button("_addedTaskToolButton"));
         ++i) {
        visited += QApplication::focusWidget()->objectName();
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab); // out of the texts too
    }
    for (const char *name : {"_addedTaskToolButton", "_cronJobsComboBox", "_usersCheckBox", "_groupsCheckBox",
                             "_dayRadioButton", "_atDateTimeEdit", "_deleteTaskToolButton",
                             "_warnquotaconfPlainTextEdit", "_quotagrpadminsPlainTextEdit", "_quotatabPlainTextEdit"})
        QVERIFY2(visited.contains(QString::fromLatin1(name)), qPrintable(visited.join(QLatin1Char(' '))));
    // The chosen mode is reached by Tab, the others from there.
    radio("day")->setFocus();
    QTest::keyClick(radio("day"), Qt::Key_Right);
    QVERIFY(radio("hour")->isChecked());
    QTest::keyClick(radio("hour"), Qt::Key_Down);
    QVERIFY(radio("expert")->isChecked());
    QVERIFY(line()->isEnabled());
}

QTEST_MAIN(TestNotificationsWidget)
#include "tst_notificationswidget.moc"
