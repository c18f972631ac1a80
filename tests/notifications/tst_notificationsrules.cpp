// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "editortest.h"
#include "madeupwarnings.h"

#include <notificationsmanager.h>
#include <notificationswidget.h>

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDateTimeEdit>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTimer>
#include <QToolButton>
#include <QWheelEvent>
#include <QtTest>

#include <functional>

using namespace MadeUpWarnings;

namespace
{
/// Counts how often the content is said to be changed.
class CountingWidget : public NotificationsWidget
{
public:
    using NotificationsWidget::NotificationsWidget;
    void changeContent() override
    {
        ++changes;
        NotificationsWidget::changeContent();
    }

    int changes = 0;
};

QString signatures(const QMetaObject &meta, QMetaMethod::MethodType type)
{
    QStringList names;
    for (int i = meta.methodOffset(); i < meta.methodCount(); ++i)
        if (meta.method(i).methodType() == type)
            names += QString::fromLatin1(meta.method(i).methodSignature());
    return names.join(QLatin1Char(' '));
}
} // namespace

/// What the page asks and notes before a run is changed, and what counts as a change.
class TestNotificationsRules : public QObject, private EditorTest<CountingWidget>
{
    Q_OBJECT

private Q_SLOTS:
    void init() { openEditor(QStringLiteral("QuotaNotificationsElement")); }
    void cleanup() { closeEditor(); }

    void slotsAndSignals();
    void howOftenTheContentChanges();
    void aSecondNewTaskTakesThePlaceOfTheFirst();

    void aPlainRunIsAppliedWithoutAQuestion();
    void theQuestion_data();
    void theQuestion();
    void noLeavesWhatWasTyped();

    void notesOfTheRun_data();
    void notesOfTheRun();
    void aMissingTableIsSaid();

    void aNewTaskNeedsASchedule();
    void lettersCanBeTypedWhereTheyStood();
    void twoPlacesOfOnePathAreOneText();
    void aPathThatIsNotPlainIsNotEdited();
    void theWheelChangesNothingInPassing();

private:
    QComboBox *names() const { return find<QComboBox>("_cronJobsComboBox"); }
    QLineEdit *line() const { return find<QLineEdit>("_expertLineEdit"); }
    QPlainTextEdit *configEdit() const { return find<QPlainTextEdit>("_warnquotaconfPlainTextEdit"); }
    QPlainTextEdit *tabEdit() const { return find<QPlainTextEdit>("_quotatabPlainTextEdit"); }
    void click(const char *name) const { find<QAbstractButton>(name)->click(); }
    void show(const QStringList &lines) { show(record(lines)); }
    void show(NotificationsData data) { _widget->afterSuccessfulRead(_element.get(), &data); }
    QString note() const
    {
        const auto *label = find<QLabel>("_runNoteLabel");
        return label->isHidden() ? QString() : label->text();
    }
    NotificationsData exported() const
    {
        const std::unique_ptr<ElementData> data = _widget->exportElementData();
        return dynamic_cast<const NotificationsData &>(*data);
    }
    /// Applies, and answers the box that comes. Its text; empty when none came.
    QString applyAndAnswer(QMessageBox::StandardButton answer)
    {
        QString text;
        QTimer::singleShot(0, this, [&text, answer] {
            auto *box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget());
            QVERIFY(box);
            text = box->text();
            QCOMPARE(box->textFormat(), Qt::PlainText);
            QVERIFY(box->standardButton(box->defaultButton()) == QMessageBox::No);
            QTest::mouseClick(box->button(answer), Qt::LeftButton);
        });
        _widget->applyContentChanges();
        return text;
    }
};

void TestNotificationsRules::slotsAndSignals()
{
    QCOMPARE(signatures(NotificationsWidget::staticMetaObject, QMetaMethod::Slot),
             QStringLiteral("currentJobChanged(QString) connectChangeDataWidgets() changeData() cronWidgetsChanged() "
                            "changeExpertLineData() addTask() deleteTask() analizCheckBoxes()"));
    QCOMPARE(signatures(NotificationsWidget::staticMetaObject, QMetaMethod::Signal), QString());
    QCOMPARE(signatures(NotificationsManager::staticMetaObject, QMetaMethod::Signal),
             QStringLiteral("error(QString) detail(QString)"));
    QCOMPARE(signatures(NotificationsManager::staticMetaObject, QMetaMethod::Slot), QString());
}

void TestNotificationsRules::howOftenTheContentChanges()
{
    const auto changesBy = [this](const std::function<void()> &act) {
        show({QStringLiteral("30 4 * * * root warnquota -u"), QStringLiteral("0 8 * * 1 root warnquota -ug")});
        names()->setCurrentIndex(0);
        _widget->changes = 0;
        act();
        return _widget->changes;
    };
    QCOMPARE(changesBy([this] { names()->setCurrentIndex(1); }), 0);
    QCOMPARE(changesBy([this] { click("_groupsCheckBox"); }), 1);
    QCOMPARE(changesBy([this] { click("_usersCheckBox"); }), 0); // the last one stays checked
    QCOMPARE(changesBy([this] { QTest::keyClick(configEdit(), Qt::Key_X); }), 1);
    QCOMPARE(changesBy([this] { click("_deleteTaskToolButton"); }), 1);
    QVERIFY(names()->isEnabled()); // by itself, not as an edit of a run
    QVERIFY(changesBy([this] { click("_addedTaskToolButton"); }) >= 1);
    QVERIFY(changesBy([this] { click("_hourRadioButton"); }) >= 1);
    QCOMPARE(changesBy([this] { show(QStringList()); }), 0);
}

void TestNotificationsRules::aSecondNewTaskTakesThePlaceOfTheFirst()
{
    show(QStringList());
    _widget->addTask();
    click("_groupsCheckBox");
    click("_dayRadioButton");
    _widget->addTask();
    QCOMPARE(names()->count(), 1);
    QVERIFY(find<QRadioButton>("_hourRadioButton")->isChecked());
    QVERIFY(!find<QCheckBox>("_groupsCheckBox")->isChecked());
    QCOMPARE(exported().jobs.size(), 1);
    QCOMPARE(MadeUpWarnings::line(exported().jobs.first()), QStringLiteral("0 * * * * root warnquota -u"));
}

void TestNotificationsRules::aPlainRunIsAppliedWithoutAQuestion()
{
    show({QStringLiteral("30 4 * * * root warnquota -u"), QStringLiteral("0 1 * * * anna /usr/bin/clean")});
    click("_groupsCheckBox");
    _widget->applyContentChanges(); // would not return before a box was answered
    QCOMPARE(_module->asked.size(), 1U);
    show({QStringLiteral("0 1 * * * anna /usr/bin/clean")});
    configEdit()->setPlainText(QStringLiteral("a text is not the run"));
    _widget->applyContentChanges();
    QCOMPARE(_module->asked.size(), 2U);
    show({QStringLiteral("0 1 * * * anna /usr/bin/clean"), QStringLiteral("0 2 * * * root warnquota")});
    click("_deleteTaskToolButton");
    _widget->applyContentChanges();
    QCOMPARE(_module->asked.size(), 3U);
}

void TestNotificationsRules::theQuestion_data()
{
    QTest::addColumn<QStringList>("parts");
    const QString rootText = QStringLiteral("will run as root");
    const QString programText = QStringLiteral("It ran another program");
    QTest::newRow("0 5 * * * someone warnquota -c /home/someone/w.conf")
        << QStringList({QStringLiteral("0 5 * * * root warnquota -u -g --config=/home/someone/w.conf"),
                        QStringLiteral("It ran as someone"), rootText,
                        QStringLiteral("the mail command that /home/someone/w.conf names")});
    QTest::newRow("*/5 * * * * root /usr/bin/clean <b>x</b>")
        << QStringList({QStringLiteral("*/5 * * * * root warnquota -u -g"), programText});
    QTest::newRow("0 5 * * * root /usr/local/sbin/warnquota -u")
        << QStringList(QStringLiteral("0 5 * * * root warnquota -u -g"));
    QTest::newRow("0 5 * * * root warnquota -u -c /a -c /b")
        << QStringList(QStringLiteral("0 5 * * * root warnquota -u -g --config=/a"));
    QTest::newRow("0 5 * * * root warnquota -u -c /etc/w#1.conf")
        << QStringList(QStringLiteral("0 5 * * * root warnquota -u -g --config=/etc/w #1.conf"));
}

void TestNotificationsRules::theQuestion()
{
    QFETCH(QStringList, parts);
    const QString read = QString::fromLatin1(QTest::currentDataTag());
    show({read});
    click("_groupsCheckBox");
    const QString asked = applyAndAnswer(QMessageBox::Yes);
    parts << read << QStringLiteral("/var/backups");
    for (const QString &part : qAsConst(parts))
        QVERIFY2(asked.contains(part), qPrintable(part + QLatin1Char('\n') + asked));
    QCOMPARE(asked.contains(QStringLiteral("as root")), read.contains(QStringLiteral("someone")));
    QCOMPARE(asked.contains(QStringLiteral("another program")), read.contains(QStringLiteral("clean")));
    QCOMPARE(_module->asked, std::vector<OperationType>({OperationType::Write}));
}

void TestNotificationsRules::noLeavesWhatWasTyped()
{
    show({QStringLiteral("0 5 * * * someone warnquota")});
    click("_groupsCheckBox");
    QVERIFY(!applyAndAnswer(QMessageBox::No).isEmpty());
    QVERIFY(_module->asked.empty());
    QVERIFY(_widget->isContentChanged());
    QVERIFY(_widget->isEditable());
    QVERIFY(find<QCheckBox>("_groupsCheckBox")->isChecked());
}

void TestNotificationsRules::notesOfTheRun_data()
{
    QTest::addColumn<QString>("line");
    QTest::addColumn<QStringList>("parts"); // one of each line of the note
    const auto row = [](const char *line, const QStringList &parts) {
        QTest::newRow(line) << QStringLiteral("0 5 * * * ") + QLatin1String(line) << parts;
    };
    const QString more = QStringLiteral("says more than this page can");
    const QString home = QStringLiteral("from the home folder of root");
    row("root warnquota -u # why", {});
    row("anna warnquota", {QStringLiteral("runs as anna. With changes applied it runs as root.")});
    row("root /usr/bin/clean", {QStringLiteral("is not a run of warnquota: /usr/bin/clean.")});
    row("anna /usr/bin/clean", {QStringLiteral("runs as anna"), QStringLiteral("is not a run of warnquota")});
    row("root warnquota -c /a -c /b", {more + QStringLiteral(": 0 5 * * * root warnquota -c /a -c /b. With changes "
                                                             "applied it is rewritten as: warnquota -u --config=/a.")});
    row("root warnquota -c w.conf", {QStringLiteral("cron looks for w.conf ") + home});
    row("root warnquota -c ~/w.conf", {more, QStringLiteral("~/w.conf ") + home});
    row("root warnquota -c /$HOME/w", {more, QStringLiteral("may read /$HOME/w as another path")});
    row("root warnquota -c /etc/absent/w",
        {QStringLiteral("The folder /etc/absent does not exist: make it before you edit the text of /etc/absent/w.")});
    row("root warnquota -c /etc/new -q /etc/new", {QStringLiteral("/etc/new does not exist: it is made when")});
}

void TestNotificationsRules::notesOfTheRun()
{
    QFETCH(QString, line);
    QFETCH(QStringList, parts);
    NotificationsData data = record({line, QStringLiteral("0 1 * * * root warnquota")});
    data.notes.missingFiles = QStringList({QStringLiteral("/etc/absent/w"), QStringLiteral("/etc/new")});
    data.notes.filesWithoutFolder = QStringList(QStringLiteral("/etc/absent/w"));
    show(data);
    const QStringList lines = note().split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    QVERIFY2(lines.size() == parts.size(), qPrintable(note()));
    for (int i = 0; i < parts.size(); ++i)
        QVERIFY2(lines.at(i).contains(parts.at(i)), qPrintable(lines.at(i)));
    QCOMPARE(find<QLabel>("_runNoteLabel")->textFormat(), Qt::PlainText);
    names()->setCurrentText(QStringLiteral("2"));
    QCOMPARE(note(), QString());
}

void TestNotificationsRules::aMissingTableIsSaid()
{
    const auto *noTable = find<QLabel>("_noTableLabel");
    const auto *noCron = find<QLabel>("_noCronLabel");
    QVERIFY(noTable->isHidden() && noCron->isHidden());
    NotificationsData data = record({});
    data.notes.isTableMissing = true;
    show(data);
    QVERIFY(!noTable->isHidden() && noCron->isHidden());
    QVERIFY(noTable->text().contains(QStringLiteral("made with the first task")));
    data.notes.isCronMissing = true;
    show(data);
    QVERIFY(noTable->isHidden() && !noCron->isHidden());
    show(record({}));
    QVERIFY(noTable->isHidden() && noCron->isHidden());
}

void TestNotificationsRules::aNewTaskNeedsASchedule()
{
    show(QStringList());
    click("_addedTaskToolButton");
    click("_expertRadioButton");
    for (const char *typed : {"", "    ", "0 * * *"}) {
        line()->setFocus();
        line()->selectAll();
        QTest::keyClick(line(), Qt::Key_Delete);
        QTest::keyClicks(line(), QString::fromLatin1(typed));
        QVERIFY2(!_widget->isContentValid(), typed);
        find<QCheckBox>("_usersCheckBox")->setFocus();
        _widget->applyContentChanges();
        QVERIFY(_module->asked.empty());
        QCOMPARE(QApplication::focusWidget(), line());
        QVERIFY(_widget->whyInvalid().contains(QStringLiteral("five fields")));
        QCOMPARE(line()->text(), QString::fromLatin1(typed));
    }
    line()->selectAll();
    QTest::keyClicks(line(), QStringLiteral("0 * * * *"));
    QVERIFY(_widget->isContentValid());
}

/// A line that never fitted the grammar can be made anew, letter by letter.
void TestNotificationsRules::lettersCanBeTypedWhereTheyStood()
{
    show({QStringLiteral("0 8 * * MON root warnquota -u")});
    line()->setFocus();
    for (int i = 0; i < 3; ++i)
        QTest::keyClick(line(), Qt::Key_Backspace);
    QTest::keyClicks(line(), QStringLiteral("MON"));
    QCOMPARE(line()->text(), QStringLiteral("0 8 * * MON"));
    QVERIFY(_widget->isContentValid());
    QCOMPARE(MadeUpWarnings::line(exported().jobs.first()), QStringLiteral("0 8 * * MON root warnquota -u"));
    show({QStringLiteral("0 8 * * 1 root warnquota -u")});
    line()->setFocus();
    QTest::keyClick(line(), Qt::Key_End);
    QTest::keyClicks(line(), QStringLiteral("X"));
    QCOMPARE(line()->text(), QStringLiteral("0 8 * * 1"));
}

void TestNotificationsRules::twoPlacesOfOnePathAreOneText()
{
    show({QStringLiteral("0 8 * * 1 root warnquota -u -c /etc/quotatab"),
          QStringLiteral("0 9 * * 1 root warnquota -u")});
    QCOMPARE(configEdit()->toPlainText(), record({}).files.value(quotaTab));
    configEdit()->setFocus();
    QTest::keyClicks(configEdit(), QStringLiteral("one "));
    QVERIFY(tabEdit()->toPlainText().startsWith(QStringLiteral("one /dev")));
    tabEdit()->setFocus();
    QTest::keyClicks(tabEdit(), QStringLiteral("two "));
    QVERIFY(configEdit()->toPlainText().contains(QStringLiteral("two ")));
    QCOMPARE(exported().files.value(quotaTab), tabEdit()->toPlainText());
    QCOMPARE(editedFiles(exported()), QStringList(quotaTab));

    show({QStringLiteral("0 8 * * 1 root warnquota -u -c /etc/quotatab"),
          QStringLiteral("0 9 * * 1 root warnquota -u")});
    names()->setCurrentText(QStringLiteral("2")); // a text of its own in each place again
    QTest::keyClicks(configEdit(), QStringLiteral("x"));
    QCOMPARE(tabEdit()->toPlainText(), record({}).files.value(quotaTab));
    QCOMPARE(editedFiles(exported()), QStringList(config));
}

void TestNotificationsRules::aPathThatIsNotPlainIsNotEdited()
{
    show({QStringLiteral("0 8 * * 1 root warnquota -u -c w.conf -a /a$b"), QStringLiteral("0 9 * * 1 root warnquota")});
    QVERIFY(configEdit()->isReadOnly());
    QVERIFY(find<QPlainTextEdit>("_quotagrpadminsPlainTextEdit")->isReadOnly());
    QVERIFY(!tabEdit()->isReadOnly());
    names()->setCurrentText(QStringLiteral("2"));
    QVERIFY(!configEdit()->isReadOnly());
    openEditor(&nobodyMay);
    show({QStringLiteral("0 9 * * 1 root warnquota")});
    QVERIFY(configEdit()->isReadOnly());
}

void TestNotificationsRules::theWheelChangesNothingInPassing()
{
    show({QStringLiteral("30 4 * * * root warnquota"), QStringLiteral("0 8 * * 1 root warnquota")});
    auto *at = find<QDateTimeEdit>("_atDateTimeEdit");
    const auto turnWheel = [](QWidget *under) {
        const QPointF place(5, 5);
        QWheelEvent event(place, under->mapToGlobal(place.toPoint()), QPoint(), QPoint(0, -120), Qt::NoButton,
                          Qt::NoModifier, Qt::NoScrollPhase, false);
        QApplication::sendEvent(under, &event);
        return event.isAccepted(); // one that is not scrolls the page
    };
    configEdit()->setFocus();
    QVERIFY(!turnWheel(at));
    QVERIFY(!turnWheel(names()));
    QVERIFY(!_widget->isContentChanged());
    QCOMPARE(at->text(), QStringLiteral("04:30"));
    QCOMPARE(names()->currentText(), QStringLiteral("1"));

    names()->setFocus();
    QVERIFY(turnWheel(names()));
    QCOMPARE(names()->currentText(), QStringLiteral("2"));
    names()->setCurrentText(QStringLiteral("1"));
    at->setFocus();
    at->setSelectedSection(QDateTimeEdit::MinuteSection);
    QVERIFY(turnWheel(at));
    QCOMPARE(at->text(), QStringLiteral("04:29"));
    QVERIFY(_widget->isContentChanged());
}

QTEST_MAIN(TestNotificationsRules)
#include "tst_notificationsrules.moc"
