// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "editedelement.h"
#include "madeupwarnings.h"
#include "picture.h"

#include <notificationswidget.h>

#include <QtTest>

using namespace MadeUpWarnings;

/// What the page looks like, kept as pictures for a person to judge; what a machine can judge of it is checked.
class TestNotificationsWidgetPictures : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void picture_data();
    void picture();
};

void TestNotificationsWidgetPictures::picture_data()
{
    QTest::addColumn<QStringList>("lines");
    QTest::addColumn<bool>("isNoted");
    QTest::addColumn<QSize>("size");
    QTest::addColumn<int>("percent");

    const QSize usual(760, 640);
    Picture::forEachScale([&](int percent, const char *suffix) {
        const auto row = [&](const char *name, const char *schedule, bool isNoted, const QSize &size) {
            const QString text = QString::fromLatin1(schedule);
            const QString line =
                text.contains(QLatin1String("warnquota")) ? text : text + QStringLiteral(" root warnquota -u");
            QTest::addRow("%s%s", name, suffix)
                << (*schedule ? QStringList(line) : QStringList()) << isNoted << size * percent / 100 << percent;
        };
        row("monthly", "5 8 31 * *", false, usual);
        row("daily", "30 4 * * *", false, usual);
        row("hourly", "7 * * * *", false, usual);
        row("expert", "0 8 * * 1-5", false, usual);
        row("notes", "0 8 * * MON", true, usual);
        row("refused", "0 25 * * *", false, usual);
        row("no-task", "", false, usual); // nor a table
        row("foreign", "0 5 * * * someone /opt/warnquota -c ~/w.conf -c", false, usual);
        row("narrow", "5 8 31 * *", true, QSize(480, 400));
    });
}

void TestNotificationsWidgetPictures::picture()
{
    QFETCH(QStringList, lines);
    QFETCH(bool, isNoted);
    QFETCH(QSize, size);
    QFETCH(int, percent);

    const Picture::Scale scale(percent);
    RecordingModule module;
    EditedElement element(QStringLiteral("QuotaNotificationsElement"), &module);
    NotificationsWidget widget(&module, &everybodyMay);
    widget.setElement(&element);
    widget.resize(size);
    NotificationsData data = record(lines);
    if (isNoted) {
        data.notes.hasDailyRun = true;
        data.notes.droppedLines = QStringList(QStringLiteral("@daily root warnquota"));
    }
    data.notes.isTableMissing = lines.isEmpty();
    widget.show();
    widget.afterSuccessfulRead(&element, &data);
    QVERIFY(QTest::qWaitForWindowExposed(&widget));
    Picture::keep(widget, "notificationswidget");
    // Neither the notes nor a narrow window make the page wider than the window it is in.
    QCOMPARE(widget.size(), size);
}

QTEST_MAIN(TestNotificationsWidgetPictures)
#include "tst_notificationswidgetpictures.moc"
