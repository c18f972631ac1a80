// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "pagefixture.h"

#include <QApplication>
#include <QLabel>
#include <QProgressBar>
#include <QSemaphore>
#include <QToolButton>

using namespace toys;

/// What a page says of the tasks of its element.
class PageMessagesTest : public QObject, private PageFixture
{
    Q_OBJECT

private Q_SLOTS:
    void init() { setUp(); }
    void cleanup() { takeDown(); }

    void busyBarShowsWhileATaskRuns();
    void failureIsSaidUntilSuccess();
    void failedWriteIsSaidThoughTheReadAfterItSucceeds();
    void messageCanBeHidden();
    void longMessageScrolls();
    void messageBelongsToItsElement();
    void messageFollowsTheTheme_data();
    void messageFollowsTheTheme();
    void noteLooksLikeOne();
    void noteBesideAFailureIsNone();
    void pathKeepsItsEndsFromRightToLeft();
    void writeThatStartsNoTaskOpensThePageAgain();

private:
    QLabel *label() const { return part<QLabel>("pageMessage"); }
    QString message() const { return label()->isVisibleTo(pages.get()) ? label()->text() : QString(); }
    /// The tinted widget behind the text.
    QWidget *area() const
    {
        QWidget *area = label();
        while (!area->autoFillBackground())
            area = area->parentWidget();
        return area;
    }
    QColor tint() const { return area()->palette().color(QPalette::Window); }
};

void PageMessagesTest::busyBarShowsWhileATaskRuns()
{
    class Waiting : public ElementTask
    {
    public:
        Waiting(Element *of, QSemaphore &semaphore)
            : ElementTask(of)
            , _semaphore(semaphore)
        {}
        void run() override
        {
            _semaphore.acquire();
            ElementTask::run();
        }

    private:
        QSemaphore &_semaphore;
    };
    QSemaphore semaphore;
    pages->setCurrentElement(anna);
    const auto *bar = part<QProgressBar>("pageBusyBar");
    QVERIFY(!bar->isVisible());
    TaskObserver::instance()->performTask(new Waiting(anna, semaphore));
    QVERIFY(bar->isVisible());
    QCOMPARE(bar->maximum(), 0);
    pages->setCurrentElement(bob);
    QVERIFY(!bar->isVisible());
    pages->setCurrentElement(anna);
    QVERIFY(bar->isVisible());
    semaphore.release();
    QTRY_VERIFY(!bar->isVisible());
}

void PageMessagesTest::failureIsSaidUntilSuccess()
{
    pages->setCurrentElement(anna);
    runTask(TaskDescription::Failed, QStringLiteral("no <such> device"), false);
    QTRY_COMPARE(message(), QStringLiteral("no <such> device"));
    QVERIFY(label()->textInteractionFlags().testFlag(Qt::TextSelectableByMouse));
    QCOMPARE(label()->textFormat(), Qt::PlainText);
    runTask(TaskDescription::Failed, QStringLiteral("worse"), false);
    QTRY_COMPARE(message(), QStringLiteral("worse"));
    runTask(TaskDescription::Succeeded, QString(), false);
    QTRY_COMPARE(message(), QString());
    runTask(TaskDescription::Failed, QString(), false);
    QTRY_VERIFY(message().contains(QStringLiteral("Toy task")));
}

void PageMessagesTest::failedWriteIsSaidThoughTheReadAfterItSucceeds()
{
    pages->setCurrentElement(anna);
    runTask(TaskDescription::Failed, QStringLiteral("disk full"), true);
    runTask(TaskDescription::Succeeded, QString(), false);
    QCOMPARE(message(), QStringLiteral("disk full"));
    runTask(TaskDescription::Succeeded, QString(), true);
    QCOMPARE(message(), QString());
    runTask(TaskDescription::Failed, QStringLiteral("disk full"), true);
    pages->refresh();
    QCOMPARE(message(), QString());
}

void PageMessagesTest::messageCanBeHidden()
{
    pages->setCurrentElement(anna);
    runTask(TaskDescription::Failed, QStringLiteral("disk full"), true);
    QCOMPARE(message(), QStringLiteral("disk full"));
    part<QToolButton>("pageMessageClose")->click();
    QCOMPARE(message(), QString());
}

void PageMessagesTest::longMessageScrolls()
{
    pages->setCurrentElement(anna);
    runTask(TaskDescription::Failed, QStringLiteral("short"), false);
    const int shortHeight = label()->height();
    runTask(TaskDescription::Failed, QStringLiteral("a device that could not be read\n").repeated(200), false);
    QTRY_VERIFY(label()->height() > pages->height());
    QVERIFY(label()->parentWidget()->height() < pages->height() / 2);
    QVERIFY(label()->parentWidget()->height() > shortHeight);
    QVERIFY(editor->isVisible());
}

void PageMessagesTest::messageBelongsToItsElement()
{
    pages->setCurrentElement(bob);
    runTask(TaskDescription::Failed, QStringLiteral("anna's"), false);
    QCOMPARE(message(), QString());
    pages->setCurrentElement(anna);
    QCOMPARE(message(), QStringLiteral("anna's"));
}

void PageMessagesTest::messageFollowsTheTheme_data()
{
    QTest::addColumn<bool>("ofAll");
    QTest::newRow("of the application") << true;
    QTest::newRow("of the window") << false;
}

void PageMessagesTest::messageFollowsTheTheme()
{
    QFETCH(bool, ofAll);
    pages->setCurrentElement(anna);
    runTask(TaskDescription::Failed, QStringLiteral("disk full"), true);
    const auto contrast = [this] {
        return std::abs(qGray(label()->palette().color(QPalette::WindowText).rgb()) - qGray(tint().rgb()));
    };
    QVERIFY(contrast() > 100);
    const QPalette before = QApplication::palette();
    for (const QColor &background : {QColor(30, 30, 30), QColor(240, 240, 240)}) {
        const QPalette theme(background, background);
        ofAll ? QApplication::setPalette(theme) : pages->setPalette(theme);
        QCoreApplication::processEvents();
        QVERIFY2(contrast() > 100, qPrintable(QString::number(contrast())));
    }
    QApplication::setPalette(before);
}

void PageMessagesTest::noteLooksLikeOne()
{
    pages->setCurrentElement(anna);
    runTask(TaskDescription::Failed, QStringLiteral("disk full"), false);
    const QColor ofFailure = tint();
    QVERIFY2(ofFailure.red() > ofFailure.blue(), qPrintable(ofFailure.name()));

    runTask(TaskDescription::Failed, QStringLiteral("disk full"), false, true);
    QCOMPARE(message(), QStringLiteral("disk full"));
    QVERIFY2(tint().blue() > tint().red(), qPrintable(tint().name()));
    const auto iconOf = [this] {
        const auto labels = area()->findChildren<QLabel *>(QString(), Qt::FindDirectChildrenOnly);
        return labels.value(0)->grab().toImage();
    };
    const QImage ofNote = iconOf();
    runTask(TaskDescription::Failed, QStringLiteral("disk full"), false);
    QCOMPARE(tint(), ofFailure);
    QVERIFY(iconOf() != ofNote);
}

void PageMessagesTest::noteBesideAFailureIsNone()
{
    pages->setCurrentElement(anna);
    runTask(TaskDescription::Failed, QStringLiteral("disk full"), true);
    const QColor ofFailure = tint();
    runTask(TaskDescription::Failed, QStringLiteral("no file yet"), false, true);
    QCOMPARE(message(), QStringLiteral("disk full\nno file yet"));
    QCOMPARE(tint(), ofFailure);
}

void PageMessagesTest::pathKeepsItsEndsFromRightToLeft()
{
    QGuiApplication::setLayoutDirection(Qt::RightToLeft);
    pages->setCurrentElement(anna);
    runTask(TaskDescription::Failed, QStringLiteral("/dev/a/ is full\n/dev/b/"), false);
    const QString shown = message();
    QGuiApplication::setLayoutDirection(Qt::LeftToRight);
    QCOMPARE(shown, QString::fromUtf8("\xe2\x81\xa8/dev/a/ is full\xe2\x81\xa9\n\xe2\x81\xa8/dev/b/\xe2\x81\xa9"));
}

void PageMessagesTest::writeThatStartsNoTaskOpensThePageAgain()
{
    pages->setCurrentElement(anna);
    editor->afterSuccessfulRead(anna, anna->record());
    editor->type(QStringLiteral("mine"));
    pages->apply();
    QCOMPARE(module->count(OperationType::Write), 1);
    QVERIFY(editor->isBlocked());
    QTRY_VERIFY(!editor->isBlocked());
    QVERIFY(editor->isContentChanged());
    QCOMPARE(editor->line->text(), QStringLiteral("mine"));
    QCOMPARE(message(), QStringLiteral("Nothing was applied: no task was started for it."));
    QVERIFY(pages->canApply());
    editor->type(QStringLiteral("mine, too"));
    QCOMPARE(message(), QString());
}

QTEST_MAIN(PageMessagesTest)
#include "tst_pagemessages.moc"
