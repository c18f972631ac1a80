// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "editedelement.h"
#include "madeuprecords.h"

#include <generalwidget.h>

#include <QComboBox>
#include <QDir>
#include <QScrollArea>
#include <QScrollBar>
#include <QtTest>

using namespace MadeUpRecords;

/// What the page looks like, kept as pictures for a person to judge; what a machine can judge of it is checked.
class TestGeneralWidgetPictures : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void picture_data();
    void picture();
};

void TestGeneralWidgetPictures::picture_data()
{
    QTest::addColumn<QStringList>("devices");
    QTest::addColumn<QString>("state");
    QTest::addColumn<QSize>("size");
    QTest::addColumn<int>("percent");

    const QSize usual(760, 640);
    const QStringList one = {QStringLiteral("/dev/sda1")};
    const QStringList longNames = {QStringLiteral("/dev/mapper/vg--storage--fileserver--2026-lv--home--of--all--staff"),
                                   QStringLiteral("/dev/mapper/vg--storage--fileserver--2026-lv--projects--archive")};
    for (const int percent : {100, 200}) {
        const QByteArray suffix = percent == 100 ? QByteArray() : QByteArray("-200");
        const auto row = [&](const char *name, const QStringList &devices, const char *state, const QSize &size) {
            QTest::newRow(QByteArray(name + suffix).constData())
                << devices << QString::fromLatin1(state) << size * percent / 100 << percent;
        };
        row("on", one, "on", usual);
        row("off", one, "off", usual);
        row("own-quota", one, "own", usual);
        row("not-mounted", one, "unmounted", usual);
        row("long-names", longNames, "on", usual);
        row("no-device", {}, "on", usual);
        row("narrow", one, "own", QSize(480, 400));
    }
}

void TestGeneralWidgetPictures::picture()
{
    QFETCH(QStringList, devices);
    QFETCH(QString, state);
    QFETCH(QSize, size);
    QFETCH(int, percent);

    const QFont before = QApplication::font();
    QFont font = before;
    font.setPointSizeF(before.pointSizeF() * percent / 100);
    QApplication::setFont(font);

    RecordingModule module;
    EditedElement element(QStringLiteral("QuotaGeneralElement"), &module);
    GeneralWidget widget(&module, &everybodyMay);
    widget.setElement(&element);
    widget.resize(size);

    GeneralData record;
    DeviceSettings settings = state == QLatin1String("on")    ? fullQuota()
                              : state == QLatin1String("own") ? ownQuota()
                                                              : noQuota();
    if (state == QLatin1String("unmounted")) {
        settings.filesystemType.clear();
        settings.failures.append(QStringLiteral("Value special does not indicate on block device"));
    }
    for (const QString &name : devices)
        record.deviceSettings.insert(name, settings);
    if (devices.isEmpty())
        record.params.insert(GeneralData::passedOverKey(),
                             QStringList({QStringLiteral("/dev/sda1 (/): its file system is xfs"),
                                          QStringLiteral("UUID=0b1c3f0e-5a5c-4a53-9f5c-1f7c6e1d2a4b (/srv): there is "
                                                         "no such device")}));
    widget.show();
    widget.afterSuccessfulRead(&element, &record);
    QVERIFY(QTest::qWaitForWindowExposed(&widget));
    QTest::mouseMove(&widget, QPoint(1, 1));
    QCoreApplication::processEvents();

    QVERIFY(QDir().mkpath(QStringLiteral(KRA_SCREENSHOTS)));
    const QString file =
        QStringLiteral(KRA_SCREENSHOTS "/generalwidget-%1.png").arg(QLatin1String(QTest::currentDataTag()));
    QVERIFY(widget.grab().save(file));
    QApplication::setFont(before);

    // Neither a long device name nor a narrow window makes the page wider than the window it is in.
    QCOMPARE(widget.size(), size);
}

QTEST_MAIN(TestGeneralWidgetPictures)
#include "tst_generalwidgetpictures.moc"
