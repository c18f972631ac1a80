// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "editortest.h"
#include "madeupaccounts.h"
#include "turnedwheel.h"

#include <devicesbox.h>
#include <groupwidget.h>
#include <silentsource.h>
#include <userwidget.h>

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QApplication>
#include <QLabel>
#include <QSignalSpy>
#include <QSpinBox>
#include <QtTest>

using namespace MadeUpAccounts;

/// What an account's page says of devices: which one it shows, and what it does not know.
class TestQuotaDevices : public QObject, private EditorTest<UserWidget>
{
    Q_OBJECT

private Q_SLOTS:
    void init() { openEditor(QStringLiteral("QuotaUserElement")); }
    void cleanup() { closeEditor(); }

    void beforeARecordNothingIsSaid();
    void nothingIsLeftOfTheAccountBefore();
    void withoutDevicesThePageSaysWhy_data();
    void withoutDevicesThePageSaysWhy();
    void whatGaveNoAnswerIsSaid();
    void theWheelKeepsTheDevice();
    void theShownDeviceThatIsGoneStaysShown();
    void theDeviceOfTheListThatGaveNoAnswerIsNotAnother();
    void anAbsentDeviceExportsNothing();
    void theBoxShowsMountPointsAndHoldsDevices();
    void usedFilesHaveTheirNumber();
    void whatIsUsedCanBeReadInEveryTheme();

private:
    DevicesBox *devices() const { return find<DevicesBox>("_devicesComboBox"); }
    QString text(const char *label) const { return find<QLabel>(label)->text(); }
    QString problem() const { return find<QLabel>("_noDeviceLabel")->text(); }
    void show(UserData record) { _widget->afterSuccessfulRead(_element.get(), &record); }
    void saysNothing() const;

    const QString _first = QStringLiteral("/dev/a");
    const QString _second = QStringLiteral("/dev/b");
};

/// The page shows neither a state nor an amount.
void TestQuotaDevices::saysNothing() const
{
    QCOMPARE(text("_quotaIsOnStatusLabel"), QString());
    QCOMPARE(text("_deviceSupportQuotaStatusLabel"), QString());
    QCOMPARE(text("_deviceFilesystemLabel"), QString());
    for (const char *used : {"_usedBlocksDoubleSpinBox", "_usedInodesSpinBox"})
        QCOMPARE(find<QAbstractSpinBox>(used)->text().trimmed(), QString());
    for (const char *box : {"_softLimitBlocksCheckBox", "_hardLimitBlocksCheckBox", "_softLimitInodesCheckBox",
                            "_hardLimitInodesCheckBox"})
        QVERIFY(!find<QAbstractButton>(box)->isChecked());
}

void TestQuotaDevices::beforeARecordNothingIsSaid()
{
    saysNothing();
    QCOMPARE(devices()->count(), 0);
    QVERIFY(find<QWidget>("_noDeviceLabel")->isHidden());
    QVERIFY(!_widget->exportElementData());
}

void TestQuotaDevices::nothingIsLeftOfTheAccountBefore()
{
    DeviceQuota full = limits(GiB, 50 * GiB, 3, 4);
    full.blocksTimeToForce = QDateTime::currentDateTime();
    show(account({{_first, noLimits()}, {_second, full}}));
    devices()->setCurrentText(_second);
    EditedElement other(QStringLiteral("QuotaUserElement"), _module.get());
    _widget->setElement(&other);
    saysNothing();
    QCOMPARE(devices()->count(), 0);
    for (const char *note : {"_blocksNoteLabel", "_inodesNoteLabel", "_noDeviceLabel"})
        QVERIFY(find<QWidget>(note)->isHidden());
    QVERIFY(!_widget->exportElementData());
    // The device is still the administrator's choice.
    UserData record = account({{_first, noLimits()}, {_second, noLimits()}}, QStringLiteral("bob"));
    _widget->afterSuccessfulRead(&other, &record);
    QCOMPARE(devices()->currentText(), _second);
    QCOMPARE(find<QSpinBox>("_usedInodesSpinBox")->text(), QStringLiteral("17 files"));
    QCOMPARE(text("_quotaIsOnStatusLabel"), QStringLiteral("OFF"));
    QCOMPARE(text("_deviceSupportQuotaStatusLabel"), QStringLiteral("ON"));
    _widget->setElement(nullptr);
    saysNothing();
}

void TestQuotaDevices::withoutDevicesThePageSaysWhy_data()
{
    QTest::addColumn<qint32>("id");
    QTest::addColumn<bool>("hasFailed");
    QTest::addColumn<QString>("silentSource");
    QTest::addColumn<QString>("text");
    QTest::newRow("the table has none")
        << 1001 << false << QString()
        << QStringLiteral("There is no device to set limits on: no line of /etc/fstab names a present device with an "
                          "ext2, ext3 or ext4 file system.");
    QTest::newRow("it gave no answer") << 1001 << true << QString()
                                       << QStringLiteral("/dev/a gave no answer: Input/output <b>error</b>");
    QTest::newRow("nobody is called so") << -1 << false << QString()
                                         << QStringLiteral("There is no such account any more.");
    QTest::newRow("nobody told which there are")
        << 1001 << false << QStringLiteral("blkid")
        << QStringLiteral("Which devices there are is not known: blkid did not tell. Please refresh this when that is "
                          "mended; the list of tasks says what went wrong.");
}

void TestQuotaDevices::withoutDevicesThePageSaysWhy()
{
    QFETCH(qint32, id);
    QFETCH(bool, hasFailed);
    QFETCH(QString, silentSource);
    UserData record = account({}, QStringLiteral("anna"), id);
    record.params.insert(silentSourceKey(), silentSource);
    if (hasFailed)
        record.failures.insert(_first, QStringLiteral("Input/output <b>error</b>"));
    show(record);
    QTEST(problem(), "text");
    QCOMPARE(find<QLabel>("_noDeviceLabel")->textFormat(), Qt::PlainText);
    QVERIFY(find<QWidget>("_noDeviceLabel")->isVisible());
    QVERIFY(!find<QWidget>("_settingsGroupBox")->isVisible());
    saysNothing();
    show(account({{_first, noLimits()}}));
    QVERIFY(!find<QWidget>("_noDeviceLabel")->isVisible());
    QVERIFY(find<QWidget>("_settingsGroupBox")->isVisible());
}

void TestQuotaDevices::whatGaveNoAnswerIsSaid()
{
    UserData record = account({{_first, limits(GiB, 0)}});
    record.failures.insert(_second, QStringLiteral("No space left on device"));
    show(record);
    QCOMPARE(devices()->currentText(), _first);
    QCOMPARE(problem(), QStringLiteral("/dev/b gave no answer: No space left on device"));
    QVERIFY(find<QWidget>("_settingsGroupBox")->isVisible());
    QCOMPARE(text("_quotaIsOnStatusLabel"), QStringLiteral("ON"));
    // It is there, and can be chosen.
    devices()->setCurrentText(_second);
    QCOMPARE(devices()->currentText(), _second);
    QVERIFY(!devices()->isAbsent());
    QCOMPARE(devices()->label(devices()->model()->index(devices()->currentIndex(), 0)), _second);
    saysNothing();
    show(record);
    QCOMPARE(devices()->currentText(), _second);
    QVERIFY(!devices()->isAbsent());
    QVERIFY(!_widget->exportElementData());
}

void TestQuotaDevices::theWheelKeepsTheDevice()
{
    show(account({{_first, noLimits()}, {_second, noLimits()}}));
    QVERIFY(QTest::qWaitForWindowActive(_widget.get()));
    find<QWidget>("_softLimitBlocksCheckBox")->setFocus();
    QVERIFY(!turnedWheel(devices(), -120));
    QCOMPARE(devices()->currentText(), _first);
    devices()->setFocus();
    QVERIFY(turnedWheel(devices(), -120));
    QCOMPARE(devices()->currentText(), _second);
}

void TestQuotaDevices::theShownDeviceThatIsGoneStaysShown()
{
    const UserData both = account({{_first, limits(GiB, 0)}, {_second, limits(2 * GiB, 0)}});
    show(both);
    devices()->setCurrentText(_second);
    show(account({{_first, limits(GiB, 0)}}));
    QCOMPARE(devices()->currentText(), _second);
    QVERIFY(devices()->isAbsent());
    QCOMPARE(devices()->label(devices()->model()->index(devices()->currentIndex(), 0)),
             QStringLiteral("/dev/b (absent)"));
    QCOMPARE(problem(), QStringLiteral("/dev/b was not there at the last read."));
    QVERIFY(!find<QWidget>("_settingsGroupBox")->isVisible());
    saysNothing();
    QVERIFY(devices()->isEnabled());
    // Only the administrator chooses another one, and the next read has it again.
    devices()->setCurrentText(_first);
    QVERIFY(find<QWidget>("_settingsGroupBox")->isVisible());
    QCOMPARE(text("_quotaIsOnStatusLabel"), QStringLiteral("ON"));
    devices()->setCurrentText(_second);
    saysNothing();
    show(both);
    QCOMPARE(devices()->currentText(), _second);
    QVERIFY(!devices()->isAbsent());
    QCOMPARE(devices()->count(), 2);
    QCOMPARE(problem(), QString());
    QCOMPARE(text("_quotaIsOnStatusLabel"), QStringLiteral("ON"));
}

void TestQuotaDevices::theDeviceOfTheListThatGaveNoAnswerIsNotAnother()
{
    UserData record = account({{_first, limits(GiB, 0)}});
    record.failures.insert(_second, QStringLiteral("Input/output error"));
    _widget->setDeviceToNextShow(_second);
    show(record);
    QCOMPARE(devices()->currentText(), _second);
    QCOMPARE(problem(), QStringLiteral("/dev/b gave no answer: Input/output error"));
    saysNothing();
}

void TestQuotaDevices::anAbsentDeviceExportsNothing()
{
    show(account({{_first, limits(GiB, 0)}, {_second, limits(2 * GiB, 0)}}));
    devices()->setCurrentText(_second);
    show(account({{_first, limits(GiB, 0)}}));
    QVERIFY2(!_widget->exportElementData(), "without a touched device all others would be applied");
    GroupWidget groups(_module.get(), &everybodyMay);
    groups.setElement(_element.get());
    groups.setDeviceToNextShow(_second);
    auto record = account<GroupData>({{_first, limits(GiB, 0)}});
    groups.afterSuccessfulRead(_element.get(), &record);
    QVERIFY(!groups.exportElementData());
}

void TestQuotaDevices::theBoxShowsMountPointsAndHoldsDevices()
{
    DeviceQuota home = limits(GiB, 0);
    home.mountPoint = QStringLiteral("/home");
    show(account({{_first, home}, {_second, noLimits()}}));
    DevicesBox *box = devices();
    QCOMPARE(box->currentText(), _first);
    QCOMPARE(box->currentData().toString(), _first);
    QCOMPARE(box->label(box->model()->index(0, 0)), QStringLiteral("/dev/a (/home)"));
    QCOMPARE(box->label(box->model()->index(1, 0)), _second);
    QCOMPARE(box->accessibleDescription(), QStringLiteral("/dev/a (/home)"));
    QCOMPARE(box->itemData(0, Qt::AccessibleTextRole).toString(), QStringLiteral("/dev/a (/home)"));
    // It is what is painted, too.
    const QImage withMountPoint = box->grab().toImage();
    home.mountPoint.clear();
    show(account({{_first, home}, {_second, noLimits()}}));
    QVERIFY(box->grab().toImage() != withMountPoint);
    // Chosen by the text of an item, and with the keyboard.
    QSignalSpy chosen(box, &QComboBox::currentTextChanged);
    box->setFocus();
    QTest::keyClick(box, Qt::Key_Down);
    QCOMPARE(chosen.size(), 1);
    QCOMPARE(chosen.first().first().toString(), _second);
    QCOMPARE(text("_quotaIsOnStatusLabel"), QStringLiteral("OFF"));
}

void TestQuotaDevices::usedFilesHaveTheirNumber()
{
    DeviceQuota quota = noLimits();
    quota.usedInodes = 0;
    quota.usedBlocks = size(0);
    show(account({{_first, quota}}));
    QCOMPARE(find<QSpinBox>("_usedInodesSpinBox")->text(), QStringLiteral("0 files"));
    QCOMPARE(find<QAbstractSpinBox>("_usedBlocksDoubleSpinBox")->text(), QStringLiteral("0.00 Bytes"));
}

void TestQuotaDevices::whatIsUsedCanBeReadInEveryTheme()
{
    const QPalette before = QApplication::palette();
    for (const auto &[base, text] : {std::pair(QColor(Qt::black), QColor(Qt::white)), {Qt::white, Qt::black}}) {
        QPalette theme = before;
        theme.setColor(QPalette::Base, base);
        theme.setColor(QPalette::Text, text);
        theme.setColor(QPalette::Disabled, QPalette::Text, QColor(Qt::gray));
        QApplication::setPalette(theme);
        for (const char *used : {"_usedBlocksDoubleSpinBox", "_usedInodesSpinBox"}) {
            QTRY_COMPARE(find<QWidget>(used)->palette().color(QPalette::Disabled, QPalette::Text), text);
            QCOMPARE(find<QWidget>(used)->palette().color(QPalette::Disabled, QPalette::Base), base);
        }
    }
    QApplication::setPalette(before);
}

QTEST_MAIN(TestQuotaDevices)
#include "tst_quotadevices.moc"
