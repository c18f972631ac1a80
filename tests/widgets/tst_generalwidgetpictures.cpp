// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "editedelement.h"
#include "madeuprecords.h"
#include "picture.h"

#include <generalwidget.h>

#include <QComboBox>
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
    Picture::forEachScale([&](int percent, const char *suffix) {
        const auto row = [&](const char *name, const QStringList &devices, const char *state, const QSize &size) {
            QTest::addRow("%s%s", name, suffix)
                << devices << QString::fromLatin1(state) << size * percent / 100 << percent;
        };
        row("on", one, "on", usual);
        row("off", one, "off", usual);
        row("configured", one, "configured", usual);
        row("dark", one, "dark", usual);
        row("own-quota", one, "own", usual);
        row("not-mounted", one, "unmounted", usual);
        row("long-names", longNames, "on", usual);
        row("no-device", {}, "on", usual);
        row("narrow", one, "own", QSize(480, 400));
    });
}

void TestGeneralWidgetPictures::picture()
{
    QFETCH(QStringList, devices);
    QFETCH(QString, state);
    QFETCH(QSize, size);
    QFETCH(int, percent);

    const Picture::Scale scale(percent);
    const QPalette before = QApplication::palette();
    const auto restoring = qScopeGuard([&before] { QApplication::setPalette(before); });
    if (state == QLatin1String("dark"))
        QApplication::setPalette(QPalette(QColor(60, 60, 60), QColor(45, 45, 45)));
    RecordingModule module;
    EditedElement element(QStringLiteral("QuotaGeneralElement"), &module);
    GeneralWidget widget(&module, &everybodyMay);
    widget.setElement(&element);
    widget.resize(size);

    GeneralData record;
    DeviceSettings settings = noQuota();
    if (state == QLatin1String("on") || state == QLatin1String("dark"))
        settings = fullQuota();
    else if (state == QLatin1String("own"))
        settings = ownQuota();
    else if (state == QLatin1String("configured"))
        settings = device(kind(true, true, false, true), kind(true, true, false, true));
    settings.mountPoint = QStringLiteral("/home");
    settings.size = 20ULL << 30;
    if (state == QLatin1String("unmounted")) {
        settings.filesystemType.clear();
        settings.mountPoint.clear();
        settings.failures.append(QStringLiteral("Value special does not indicate on block device"));
    }
    for (const QString &name : devices)
        record.deviceSettings.insert(name, settings);
    if (devices.isEmpty() || state == QLatin1String("configured"))
        record.params.insert(GeneralData::passedOverKey(),
                             QStringList({QStringLiteral("/dev/sda1 on /: xfs, not ext2, ext3 or ext4"),
                                          QStringLiteral("UUID=0b1c3f0e-5a5c-4a53-9f5c-1f7c6e1d2a4b on /srv: "
                                                         "blkid finds no such device")}));
    widget.show();
    widget.afterSuccessfulRead(&element, &record);
    QVERIFY(QTest::qWaitForWindowExposed(&widget));
    Picture::keep(widget, "generalwidget");
    // Neither a long device name nor a narrow window makes the page wider than the window it is in.
    QCOMPARE(widget.size(), size);
}

QTEST_MAIN(TestGeneralWidgetPictures)
#include "tst_generalwidgetpictures.moc"
