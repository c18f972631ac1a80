// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "editortest.h"
#include "madeuprecords.h"
#include "turnedwheel.h"

#include <devicesbox.h>
#include <generalwidget.h>
#include <silentsource.h>

#include <QAccessible>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMessageBox>
#include <QScrollArea>
#include <QScrollBar>
#include <QSpinBox>
#include <QToolButton>
#include <QTranslator>
#include <QtTest>

using namespace MadeUpRecords;

/// What the general settings editor shows of a record, and what it asks.
class TestGeneralWidget : public QObject, private EditorTest<GeneralWidget>
{
    Q_OBJECT

private Q_SLOTS:
    void init() { openEditor(QStringLiteral("QuotaGeneralElement")); }
    void cleanup() { closeEditor(); }

    void theFormIsAsDescribed_data();
    void theFormIsAsDescribed();
    void spinBoxRanges_data();
    void spinBoxRanges();
    void aGracePeriodIsShownWithoutItsSeconds();
    void fourRowsShowFourPeriods();
    void aGroupThatWaitsIsTickedButNotEditable();
    void aUserThatWaitsIsTickedAndEditable();
    void kindsThatAreOffCarryTheNote();
    void gracesFollowTheTickByHand();
    void suffixesFollowTheirPlurals();
    void aReadKeepsTheDevice();
    void theDeviceToShowNextIsShownOnce();
    void anUnknownDeviceToShowIsShownAsMissing();
    void showingIsNoChange();
    void everyEditIsAChangeThatHoldsTheDevice_data();
    void everyEditIsAChangeThatHoldsTheDevice();
    void withoutAUsableRecordThePageStaysBlocked();
    void recordsOfOtherElementsAreNotShown();
    void factsOfAKind();
    void aFileSystemWithItsOwnQuota();
    void anUnmountedDeviceAndItsFailures();
    void factsStayReadableWhileEditingIsBlocked();
    void withoutDevicesThePageSaysWhatWasPassedOver();
    void withDevicesThePassedOverLinesAreOnePressAway();
    void missingRightsAreSaid();
    void aDeviceComesBack();
    void aDeviceThatIsGoneStaysShown();
    void whereADeviceIsMounted();
    void periodsAreToldInSingularAndPlural();
    void aScreenReaderKnowsThePeriods();
    void theOptionOfAKindThatIsOff();
    void theKeyboardReachesEverything();
    void theWheelChangesNothingInPassing();
    void theWheelKeepsTheDevice();
    void theHalvesNeedNoSidewaysScrolling();

private:
    QGroupBox *box(const char *name) const { return find<QGroupBox>(name); }
    QSpinBox *spin(const char *name) const { return find<QSpinBox>(name); }
    QComboBox *devices() const { return find<QComboBox>("_filesystemsComboBox"); }
    QStringList texts(const char *list) const;
    bool isEditable(const char *name) const { return find<QWidget>(name)->isEnabled(); }
    QMessageBox *question() const { return _widget->findChild<QMessageBox *>(); }
    /// Whether the page asks; it does so a moment after the read.
    bool asks() const;

    void show(const QMap<QString, DeviceSettings> &settings);
    void show(const DeviceSettings &settings) { show({{QStringLiteral("/dev/vda1"), settings}}); }
    void answer(QMessageBox::StandardButton button);
};

namespace
{
const char *const waitingNote = "*settings will be available after quotas are enabled";
const char *const spinBoxNames[] = {
    "_blocksUsersWeekGraceSpinBox",  "_blocksUsersDaysGraceSpinBox",  "_blocksUsersHoursSpinBox",
    "_blocksUsersMinutesSpinBox",    "_inodesUsersWeekGraceSpinBox",  "_inodesUsersDaysGraceSpinBox",
    "_inodesUsersHoursSpinBox",      "_inodesUsersMinutesSpinBox",    "_blocksGroupsWeekGraceSpinBox",
    "_blocksGroupsDaysGraceSpinBox", "_blocksGroupsHoursSpinBox",     "_blocksGroupsMinutesSpinBox",
    "_inodesGroupsWeekGraceSpinBox", "_inodesGroupsDaysGraceSpinBox", "_inodesGroupsHoursSpinBox",
    "_inodesGroupsMinutesSpinBox"};

QString tip(const char *text)
{
    return QStringLiteral("<html><head/><body><p>%1</p></body></html>").arg(QLatin1String(text));
}
} // namespace

QStringList TestGeneralWidget::texts(const char *list) const
{
    const auto *widget = find<QListWidget>(list);
    QStringList result;
    for (int i = 0; i < widget->count(); ++i)
        result += widget->item(i)->text();
    return result;
}

bool TestGeneralWidget::asks() const
{
    QCoreApplication::processEvents();
    return question() != nullptr;
}

void TestGeneralWidget::show(const QMap<QString, DeviceSettings> &settings)
{
    GeneralData record;
    record.deviceSettings = settings;
    _widget->afterSuccessfulRead(_element.get(), &record);
}

void TestGeneralWidget::answer(QMessageBox::StandardButton button)
{
    QTRY_VERIFY(question() && question()->isVisible());
    QTest::mouseClick(question()->button(button), Qt::LeftButton);
    QTRY_VERIFY(!question());
}

void TestGeneralWidget::theFormIsAsDescribed_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("property");
    QTest::addColumn<QString>("text");

    const auto row = [](const char *name, const char *property, const QString &text) {
        QTest::addRow("%s.%s", name, property) << QString::fromLatin1(name) << QString::fromLatin1(property) << text;
    };
    const QString devicesTip = tip("Devices from fstab file which support quotas");
    const QString filesystemTip = tip("Filesystem current device");
    row("label_2", "text", QStringLiteral("Devices (from fstab)"));
    row("label_2", "toolTip", devicesTip);
    row("_filesystemsComboBox", "toolTip", devicesTip);
    row("label", "text", QStringLiteral("Filesystem:"));
    row("label", "toolTip", filesystemTip);
    row("_deviceFilesystemLabel", "text", QString());
    row("_deviceFilesystemLabel", "toolTip", filesystemTip);
    row("_usersSettingsGroupBox", "title", QStringLiteral("Support quota for users"));
    row("_usersSettingsGroupBox", "toolTip", tip("Enable / disable quota support for users on this device"));
    row("_groupsSettingsGroupBox", "title", QStringLiteral("Support quota for groups"));
    row("_groupsSettingsGroupBox", "toolTip", tip("Enable / disable quota support for groups on this device"));

    const char *const graceTip =
        "<html><head/><body><p>The time that will be given to the %1 when the %2 soft limit "
        "is exceeded. After the present time the soft limit will become hard</p></body></html>";
    const auto grace = [&](const char *name, const char *title, const char *who, const char *what) {
        row(name, "title", QString::fromLatin1(title));
        row(name, "toolTip", QString::fromLatin1(graceTip).arg(QLatin1String(who), QLatin1String(what)));
    };
    grace("groupBox_3", "Block grace", "user", "memory");
    grace("groupBox_4", "Inode grace", "user", "files");
    grace("groupBox_6", "Block grace", "group", "memory");
    grace("groupBox_7", "Inode grace", "group", "files");
}

void TestGeneralWidget::theFormIsAsDescribed()
{
    QFETCH(QString, name);
    QFETCH(QString, property);
    QFETCH(QString, text);
    QCOMPARE(find<QWidget>(qPrintable(name))->property(qPrintable(property)).toString(), text);
    QCOMPARE(_widget->windowTitle(), QStringLiteral("General setings"));
    QCOMPARE(_widget->elementType(), QStringLiteral("QuotaGeneralElement"));
}

void TestGeneralWidget::spinBoxRanges_data()
{
    QTest::addColumn<int>("maximum");
    const int maxima[] = {7100, 6, 23, 59};
    int number = 0;
    for (const char *name : spinBoxNames)
        QTest::newRow(name) << maxima[number++ % 4];
}

void TestGeneralWidget::spinBoxRanges()
{
    QFETCH(int, maximum);
    QSpinBox *spinBox = spin(QTest::currentDataTag());
    QCOMPARE(spinBox->minimum(), 0);
    spinBox->setValue(maximum + 1);
    QCOMPARE(spinBox->value(), maximum);
}

void TestGeneralWidget::aGracePeriodIsShownWithoutItsSeconds()
{
    DeviceSettings settings = fullQuota();
    settings.userSettings.blockGrace = TimePeriod(604800 + 2 * 86400 + 3 * 3600 + 4 * 60 + 5);
    show(settings);
    QCOMPARE(spin("_blocksUsersWeekGraceSpinBox")->value(), 1);
    QCOMPARE(spin("_blocksUsersDaysGraceSpinBox")->value(), 2);
    QCOMPARE(spin("_blocksUsersHoursSpinBox")->value(), 3);
    QCOMPARE(spin("_blocksUsersMinutesSpinBox")->value(), 4);
}

void TestGeneralWidget::fourRowsShowFourPeriods()
{
    DeviceSettings settings = fullQuota();
    settings.userSettings.blockGrace = TimePeriod(1 * 86400);
    settings.userSettings.inodeGrace = TimePeriod(2 * 86400);
    settings.groupSettings.blockGrace = TimePeriod(3 * 86400);
    settings.groupSettings.inodeGrace = TimePeriod(4 * 86400);
    show(settings);
    QCOMPARE(spin("_blocksUsersDaysGraceSpinBox")->value(), 1);
    QCOMPARE(spin("_inodesUsersDaysGraceSpinBox")->value(), 2);
    QCOMPARE(spin("_blocksGroupsDaysGraceSpinBox")->value(), 3);
    QCOMPARE(spin("_inodesGroupsDaysGraceSpinBox")->value(), 4);
}

void TestGeneralWidget::aGroupThatWaitsIsTickedButNotEditable()
{
    show(device(KindSettings(), kind(true, false, true, true)));
    answer(QMessageBox::No);
    QVERIFY(box("_groupsSettingsGroupBox")->isChecked());
    QVERIFY(!isEditable("_groupsGracesGroupBox"));
    QCOMPARE(box("_groupsGracesGroupBox")->title(), QString());
}

void TestGeneralWidget::aUserThatWaitsIsTickedAndEditable()
{
    show(device(kind(true, false, true, true), KindSettings()));
    answer(QMessageBox::No);
    QVERIFY(box("_usersSettingsGroupBox")->isChecked());
    QVERIFY(isEditable("_usersGracesGroupBox"));
    QCOMPARE(box("_usersGracesGroupBox")->title(), QString());
}

void TestGeneralWidget::kindsThatAreOffCarryTheNote()
{
    const DeviceSettings off = device(kind(true, true, false, true), kind(true, true, false, true));
    show({{QStringLiteral("/dev/vda1"), off}, {QStringLiteral("/dev/vdb1"), off}});
    for (const int index : {0, 1, 0}) { // also when the device before was off as well
        devices()->setCurrentIndex(index);
        for (const char *name : {"_usersGracesGroupBox", "_groupsGracesGroupBox"}) {
            QCOMPARE(box(name)->title(), QString::fromLatin1(waitingNote));
            QVERIFY(!isEditable(name));
        }
        QVERIFY(!box("_usersSettingsGroupBox")->isChecked());
        QVERIFY(!box("_groupsSettingsGroupBox")->isChecked());
    }
}

void TestGeneralWidget::gracesFollowTheTickByHand()
{
    // Ticking a kind that is off makes nothing editable for users, whose graces wait for the kernel; for groups the
    // option in force is enough.
    show(device(kind(true, true, false, true), kind(true, true, false, true)));
    box("_usersSettingsGroupBox")->setChecked(true);
    box("_groupsSettingsGroupBox")->setChecked(true);
    QVERIFY(!isEditable("_usersGracesGroupBox"));
    QVERIFY(isEditable("_groupsGracesGroupBox"));
    QCOMPARE(box("_usersGracesGroupBox")->title(), QString::fromLatin1(waitingNote));
    QCOMPARE(box("_groupsGracesGroupBox")->title(), QStringLiteral("*set as soon as quotas are on"));
    box("_groupsSettingsGroupBox")->setChecked(false);
    QCOMPARE(box("_groupsGracesGroupBox")->title(), QString::fromLatin1(waitingNote));
}

void TestGeneralWidget::suffixesFollowTheirPlurals()
{
    QCOMPARE(spin("_blocksUsersWeekGraceSpinBox")->suffix(), QStringLiteral(" weeks"));

    QTranslator translator;
    QVERIFY(translator.load(QStringLiteral(KRA_TRANSLATIONS "/kra-quota-plugin_en.qm")));
    QVERIFY(QCoreApplication::installTranslator(&translator));
    const GeneralWidget translated(_module.get(), &everybodyMay);
    const QStringList singulars = {QStringLiteral(" week"), QStringLiteral(" day"), QStringLiteral(" hour"),
                                   QStringLiteral(" minute")};
    int number = 0;
    for (const char *name : spinBoxNames) {
        auto *spinBox = translated.findChild<QSpinBox *>(QString::fromLatin1(name));
        const QString &singular = singulars.at(number++ % singulars.size());
        QCOMPARE(spinBox->suffix(), singular + QLatin1Char('s')); // 0, from the start
        spinBox->setValue(1);
        QCOMPARE(spinBox->suffix(), singular);
        spinBox->setValue(5);
        QCOMPARE(spinBox->suffix(), singular + QLatin1Char('s'));
    }
}

void TestGeneralWidget::aReadKeepsTheDevice()
{
    const QMap<QString, DeviceSettings> settings = {{QStringLiteral("/dev/vda1"), noQuota()},
                                                    {QStringLiteral("/dev/vdb1"), fullQuota()}};
    show(settings);
    QCOMPARE(devices()->currentText(), QStringLiteral("/dev/vda1"));
    devices()->setCurrentIndex(1);
    QVERIFY(box("_usersSettingsGroupBox")->isChecked());

    QMap<QString, DeviceSettings> more = settings;
    more.insert(QStringLiteral("/dev/sda1"), noQuota());
    show(more);
    QCOMPARE(devices()->currentText(), QStringLiteral("/dev/vdb1"));
    QVERIFY(box("_usersSettingsGroupBox")->isChecked());
}

void TestGeneralWidget::theDeviceToShowNextIsShownOnce()
{
    const QMap<QString, DeviceSettings> settings = {{QStringLiteral("/dev/vda1"), noQuota()},
                                                    {QStringLiteral("/dev/vdb1"), fullQuota()}};
    show(settings);
    _widget->setDeviceToNextShow(QStringLiteral("/dev/vdb1"));
    QCOMPARE(devices()->currentText(), QStringLiteral("/dev/vda1"));
    show(settings);
    QCOMPARE(devices()->currentText(), QStringLiteral("/dev/vdb1"));
    QCOMPARE(spin("_blocksUsersWeekGraceSpinBox")->value(), 1);
    devices()->setCurrentIndex(0);
    show(settings);
    QCOMPARE(devices()->currentText(), QStringLiteral("/dev/vda1"));
    QCOMPARE(spin("_blocksUsersWeekGraceSpinBox")->value(), 0);
}

void TestGeneralWidget::anUnknownDeviceToShowIsShownAsMissing()
{
    _widget->setDeviceToNextShow(QStringLiteral("/dev/gone"));
    show({{QStringLiteral("/dev/vda1"), fullQuota()}, {QStringLiteral("/dev/vdb1"), noQuota()}});
    QCOMPARE(devices()->currentText(), QStringLiteral("/dev/gone"));
    QVERIFY(!isEditable("_groupsSettingsGroupBox"));
    devices()->setCurrentText(QStringLiteral("/dev/vda1"));
    QVERIFY(box("_groupsSettingsGroupBox")->isChecked());
}

void TestGeneralWidget::showingIsNoChange()
{
    show({{QStringLiteral("/dev/vda1"), noQuota()}, {QStringLiteral("/dev/vdb1"), fullQuota()}});
    devices()->setCurrentIndex(1);
    devices()->setCurrentIndex(0);
    QVERIFY(!_widget->isContentChanged());
    QVERIFY(devices()->isEnabled());
}

void TestGeneralWidget::everyEditIsAChangeThatHoldsTheDevice_data()
{
    QTest::addColumn<bool>("isSpinBox");
    QTest::newRow("_usersSettingsGroupBox") << false;
    QTest::newRow("_groupsSettingsGroupBox") << false;
    for (const char *name : spinBoxNames)
        QTest::newRow(name) << true;
}

void TestGeneralWidget::everyEditIsAChangeThatHoldsTheDevice()
{
    QFETCH(bool, isSpinBox);
    show(fullQuota());
    QVERIFY(!_widget->isContentChanged());
    if (isSpinBox)
        QTest::keyClick(spin(QTest::currentDataTag()), Qt::Key_Up);
    else
        QTest::keyClick(box(QTest::currentDataTag()), Qt::Key_Space);
    QVERIFY(_widget->isContentChanged());
    QVERIFY(!devices()->isEnabled());

    show(fullQuota());
    QVERIFY(!_widget->isContentChanged());
    QVERIFY(devices()->isEnabled());
}

void TestGeneralWidget::withoutAUsableRecordThePageStaysBlocked()
{
    QVERIFY(_widget->isBlocked());
    ElementData other;
    _widget->afterSuccessfulRead(_element.get(), &other);
    QVERIFY(_widget->isBlocked());
    _widget->afterSuccessfulRead(_element.get(), nullptr);
    QVERIFY(_widget->isBlocked());
    QVERIFY(!box("_usersSettingsGroupBox")->isEnabled());

    show(fullQuota());
    QVERIFY(!_widget->isBlocked());
    _widget->afterSuccessfulRead(_element.get(), &other);
    QVERIFY(_widget->isBlocked());
}

void TestGeneralWidget::recordsOfOtherElementsAreNotShown()
{
    EditedElement other(QStringLiteral("QuotaGeneralElement"), _module.get());
    GeneralData record;
    record.deviceSettings.insert(QStringLiteral("/dev/other"), fullQuota());
    _widget->afterSuccessfulRead(&other, &record);
    QCOMPARE(devices()->count(), 0);
}

void TestGeneralWidget::factsOfAKind()
{
    show(device(kind(true, true, true, true), kind(false, false, false, false)));
    const QString usersTexts = QStringLiteral("User quota is on|"
                                              "Configured: usrquota stands in /etc/fstab|"
                                              "In force: mounted with an option for user quota|"
                                              "Quota file aquota.user is present|"
                                              "Grace period for space: 1 weeks|"
                                              "Grace period for files: 1 weeks");
    QCOMPARE(texts("_usersListWidget"), usersTexts.split(QLatin1Char('|')));
    const QString groupsTexts = QStringLiteral("Group quota is off|"
                                               "Not configured: no grpquota in a line of /etc/fstab that is "
                                               "recognised as this device|"
                                               "Not in force: mounted without an option for group quota|"
                                               "Quota file aquota.group is missing");
    QCOMPARE(texts("_groupsListWidget"), groupsTexts.split(QLatin1Char('|')));
    QVERIFY(find<QListWidget>("_deviceFactsListWidget")->isHidden());
    QCOMPARE(find<QLabel>("_deviceFilesystemLabel")->text(), QStringLiteral("ext4"));

    DeviceSettings named = device(kind(true, true, true, true), kind(false, false, false, false));
    named.userSettings.fileName = QStringLiteral("quota.user");
    show(named);
    QVERIFY(texts("_usersListWidget").contains(QStringLiteral("Quota file quota.user is present")));
}

void TestGeneralWidget::aFileSystemWithItsOwnQuota()
{
    show(ownQuota());
    QVERIFY(!asks());
    const QString unenforced = QStringLiteral("Mounted without %1: limits stop nobody, unless quotaon was run since");
    QCOMPARE(texts("_usersListWidget").mid(0, 2),
             QStringList({QStringLiteral("User quota is on"), unenforced.arg(QStringLiteral("usrquota"))}));
    QVERIFY(texts("_groupsListWidget").contains(unenforced.arg(QStringLiteral("grpquota"))));
    QVERIFY(!isEditable("_usersSettingsGroupBox"));
    QVERIFY(!isEditable("_groupsSettingsGroupBox"));
    const QStringList facts = texts("_deviceFactsListWidget");
    QCOMPARE(facts.size(), 1);
    QVERIFY(facts.first().contains(QStringLiteral("grace periods is not available")));
    QVERIFY(find<QListWidget>("_deviceFactsListWidget")->isVisible());

    DeviceSettings enforced = ownQuota();
    enforced.userSettings.optionInForce = true;
    show(enforced);
    QVERIFY(!texts("_usersListWidget").contains(unenforced.arg(QStringLiteral("usrquota"))));

    show(fullQuota());
    QVERIFY(isEditable("_usersSettingsGroupBox"));
    QVERIFY(find<QListWidget>("_deviceFactsListWidget")->isHidden());
}

void TestGeneralWidget::anUnmountedDeviceAndItsFailures()
{
    DeviceSettings settings = noQuota();
    settings.filesystemType.clear();
    settings.failures.append(QStringLiteral("Value special does not indicate on block device"));
    show(settings);
    QCOMPARE(texts("_deviceFactsListWidget"),
             QStringList({QStringLiteral("This device is not mounted."),
                          QStringLiteral("Value special does not indicate on block device")}));
    // Whether the option is in force and the file is there is not known of it.
    QCOMPARE(texts("_usersListWidget"),
             QStringList({QStringLiteral("User quota is off"),
                          QStringLiteral("Not configured: no usrquota in a line of /etc/fstab "
                                         "that is recognised as this device")}));
}

void TestGeneralWidget::factsStayReadableWhileEditingIsBlocked()
{
    show(ownQuota());
    _widget->blockEditWidget(true);
    for (const char *name : {"_usersListWidget", "_groupsListWidget", "_deviceFactsListWidget", "_filesystemsComboBox",
                             "_deviceFilesystemLabel", "label", "label_2"})
        QVERIFY2(find<QWidget>(name)->isEnabled(), name);
    QVERIFY(!box("_usersSettingsGroupBox")->isEnabled());
}

void TestGeneralWidget::withoutDevicesThePageSaysWhatWasPassedOver()
{
    QVERIFY(find<QLabel>("_noDeviceLabel")->isHidden()); // nothing was read yet
    QVERIFY(find<QToolButton>("_passedOverButton")->isHidden());
    GeneralData record;
    const QStringList lines = {QStringLiteral("/dev/sda1 on /: xfs, not ext2, ext3 or ext4"),
                               QStringLiteral("UUID=u7 on /srv: blkid finds no such device")};
    record.params.insert(GeneralData::passedOverKey(), lines);
    _widget->afterSuccessfulRead(_element.get(), &record);
    QVERIFY(find<QLabel>("_noDeviceLabel")->isVisible());
    QCOMPARE(texts("_passedOverListWidget"), lines);
    QVERIFY(find<QListWidget>("_passedOverListWidget")->isVisible());
    for (const char *name : {"_usersSettingsGroupBox", "_groupsSettingsGroupBox", "_usersListWidget",
                             "_groupsListWidget", "_deviceFactsListWidget"})
        QVERIFY2(!find<QWidget>(name)->isVisible(), name);

    record.params.clear();
    _widget->afterSuccessfulRead(_element.get(), &record);
    QVERIFY(find<QLabel>("_noDeviceLabel")->isVisible());
    QVERIFY(find<QLabel>("_noDeviceLabel")->text().startsWith(QStringLiteral("There is no device to set quotas on")));
    QVERIFY(find<QToolButton>("_passedOverButton")->isHidden());
    QVERIFY(find<QListWidget>("_passedOverListWidget")->isHidden());

    record.params.insert(silentSourceKey(), QStringLiteral("/etc/fstab"));
    _widget->afterSuccessfulRead(_element.get(), &record);
    QVERIFY(find<QLabel>("_noDeviceLabel")
                ->text()
                .startsWith(QStringLiteral("Which devices there are is not known: /etc/fstab did not tell.")));
}

void TestGeneralWidget::withDevicesThePassedOverLinesAreOnePressAway()
{
    GeneralData record;
    record.deviceSettings.insert(QStringLiteral("/dev/vda1"), fullQuota());
    const QStringList lines = {QStringLiteral("/dev/vdb1 on /srv: blkid finds no such device")};
    record.params.insert(GeneralData::passedOverKey(), lines);
    _widget->afterSuccessfulRead(_element.get(), &record);
    auto *button = find<QToolButton>("_passedOverButton");
    const auto *list = find<QListWidget>("_passedOverListWidget");
    QVERIFY(button->isVisible());
    QCOMPARE(button->text(), QStringLiteral("Lines of /etc/fstab that were passed over: 1"));
    QVERIFY(list->isHidden());

    _widget->blockEditWidget(true); // to be read, not to be edited
    button->setFocus();
    QTest::keyClick(button, Qt::Key_Space);
    QCOMPARE(texts("_passedOverListWidget"), lines);
    QVERIFY(list->isVisible());
    _widget->afterSuccessfulRead(_element.get(), &record);
    QVERIFY(list->isVisible());
    QTest::keyClick(button, Qt::Key_Space);
    QVERIFY(list->isHidden());
    QVERIFY(!_widget->isContentChanged());
}

void TestGeneralWidget::missingRightsAreSaid()
{
    show(fullQuota());
    QVERIFY(!find<QLabel>("_missingRightsLabel")->isVisible());
    openEditor(&nobodyMay);
    const auto *label = find<QLabel>("_missingRightsLabel");
    QVERIFY(!label->isVisible()); // nothing was read yet
    show(fullQuota());
    QVERIFY(label->isVisible() && label->isEnabled());
}

void TestGeneralWidget::aDeviceComesBack()
{
    show(fullQuota());
    show(QMap<QString, DeviceSettings>());
    QCOMPARE(find<QLabel>("_deviceFilesystemLabel")->text(), QString());
    QVERIFY(!box("_usersSettingsGroupBox")->isVisible());
    show(fullQuota());
    QCOMPARE(devices()->count(), 1);
    QVERIFY(find<QLabel>("_noDeviceLabel")->isHidden());
    QVERIFY(box("_usersSettingsGroupBox")->isVisible());
    QVERIFY(box("_usersSettingsGroupBox")->isChecked());
}

/// What is edited next must not go to another device.
void TestGeneralWidget::aDeviceThatIsGoneStaysShown()
{
    const QString gone = QStringLiteral("/dev/vdb1");
    show({{QStringLiteral("/dev/vda1"), fullQuota()}, {gone, fullQuota()}});
    devices()->setCurrentText(gone);
    show({{QStringLiteral("/dev/vda1"), fullQuota()}});
    QCOMPARE(devices()->currentText(), gone);
    QCOMPARE(texts("_deviceFactsListWidget"),
             QStringList{QStringLiteral("This device is missing: the last read did not find it.")});
    QVERIFY(texts("_usersListWidget").isEmpty());
    QVERIFY(!isEditable("_usersSettingsGroupBox") && !isEditable("_groupsSettingsGroupBox"));

    show(QMap<QString, DeviceSettings>()); // nor where nothing was found at all
    show({{QStringLiteral("/dev/vda1"), fullQuota()}, {gone, noQuota()}});
    QCOMPARE(devices()->currentText(), gone);
    QCOMPARE(devices()->count(), 2);
    QVERIFY(isEditable("_usersSettingsGroupBox"));
    devices()->setCurrentIndex(0);
    show({{QStringLiteral("/dev/vda1"), fullQuota()}});
    QCOMPARE(devices()->count(), 1);
}

void TestGeneralWidget::whereADeviceIsMounted()
{
    DeviceSettings settings = fullQuota();
    settings.mountPoint = QStringLiteral("/home");
    show(settings);
    QCOMPARE(texts("_deviceFactsListWidget"), QStringList{QStringLiteral("Mounted on /home")});
    settings.size = 20ULL << 30;
    show(settings);
    QCOMPARE(texts("_deviceFactsListWidget"), QStringList{QStringLiteral("Mounted on /home, 20 Gb")});
    QCOMPARE(devices()->currentText(), QStringLiteral("/dev/vda1")); // stays the device's path
    const auto *offered = find<DevicesBox>("_filesystemsComboBox");
    QCOMPARE(offered->label(offered->model()->index(0, 0)), QStringLiteral("/dev/vda1 (/home)"));
}

void TestGeneralWidget::periodsAreToldInSingularAndPlural()
{
    QTranslator translator;
    QVERIFY(translator.load(QStringLiteral(KRA_TRANSLATIONS "/kra-quota-plugin_en.qm")));
    QVERIFY(QCoreApplication::installTranslator(&translator));
    DeviceSettings settings = fullQuota();
    settings.userSettings.blockGrace = TimePeriod(604800 + 2 * 86400 + 3600 + 2 * 60 + 1);
    settings.userSettings.inodeGrace = TimePeriod(2 * 604800 + 2);
    settings.groupSettings.blockGrace = TimePeriod();
    show(settings);
    QVERIFY(texts("_usersListWidget")
                .contains(QStringLiteral("Grace period for space: 1 week 2 days 1 hour 2 minutes 1 second")));
    QVERIFY(texts("_usersListWidget").contains(QStringLiteral("Grace period for files: 2 weeks 2 seconds")));
    QVERIFY(texts("_groupsListWidget").contains(QStringLiteral("Grace period for space: none")));
}

void TestGeneralWidget::aScreenReaderKnowsThePeriods()
{
    const bool wasActive = QAccessible::isActive();
    QAccessible::setActive(true); // before the form is built, as with a screen reader
    openEditor(&everybodyMay);
    show(fullQuota());
    const QStringList names = {QStringLiteral("Users, space: weeks"),  QStringLiteral("Users, space: days"),
                               QStringLiteral("Users, space: hours"),  QStringLiteral("Users, space: minutes"),
                               QStringLiteral("Users, files: weeks"),  QStringLiteral("Users, files: days"),
                               QStringLiteral("Users, files: hours"),  QStringLiteral("Users, files: minutes"),
                               QStringLiteral("Groups, space: weeks"), QStringLiteral("Groups, space: days"),
                               QStringLiteral("Groups, space: hours"), QStringLiteral("Groups, space: minutes"),
                               QStringLiteral("Groups, files: weeks"), QStringLiteral("Groups, files: days"),
                               QStringLiteral("Groups, files: hours"), QStringLiteral("Groups, files: minutes")};
    int number = 0;
    for (const char *name : spinBoxNames) {
        QSpinBox *spinBox = spin(name);
        spinBox->setValue(3);
        QAccessibleInterface *read = QAccessible::queryAccessibleInterface(spinBox);
        QVERIFY(read);
        QCOMPARE(read->role(), QAccessible::SpinBox);
        QVERIFY(read->valueInterface());
        QCOMPARE(read->valueInterface()->currentValue().toInt(), 3);
        QCOMPARE(read->text(QAccessible::Name), names.at(number++));
    }
    for (const char *name : {"_filesystemsComboBox", "_usersSettingsGroupBox", "groupBox_3"}) {
        const QString said = QAccessible::queryAccessibleInterface(find<QWidget>(name))->text(QAccessible::Description);
        QVERIFY2(!said.isEmpty() && !said.contains(QLatin1Char('<')), qPrintable(said));
    }
    QAccessible::setActive(wasActive);
}

void TestGeneralWidget::theOptionOfAKindThatIsOff()
{
    // Not there, not off, or not to be switched here: nothing to take.
    for (const DeviceSettings &settings : {noQuota(), fullQuota(), ownQuota()}) {
        show(settings);
        QVERIFY(!find<QCheckBox>("_usersTakeOptionCheckBox")->isVisible());
        QVERIFY(!find<QCheckBox>("_groupsTakeOptionCheckBox")->isVisible());
    }
    show(device(kind(true, true, false, true), kind(false, false, false, true)));
    auto *take = find<QCheckBox>("_usersTakeOptionCheckBox");
    QVERIFY(take->isVisible() && take->isEnabled() && !take->isChecked());
    QCOMPARE(take->text(), QStringLiteral("Take usrquota out of /etc/fstab"));
    QVERIFY(!find<QCheckBox>("_groupsTakeOptionCheckBox")->isVisible());
    QTest::keyClick(take, Qt::Key_Space);
    QVERIFY(take->isChecked());
    QVERIFY(_widget->isContentChanged());
    QVERIFY(!devices()->isEnabled());
    QTest::keyClick(box("_usersSettingsGroupBox"), Qt::Key_Space); // to be on needs the option
    QVERIFY(!take->isChecked() && !take->isEnabled());
    QTest::keyClick(box("_usersSettingsGroupBox"), Qt::Key_Space);
    QVERIFY(take->isEnabled());

    show(device(KindSettings(), kind(true, true, false, true)));
    QVERIFY(!take->isVisible());
    QCOMPARE(find<QCheckBox>("_groupsTakeOptionCheckBox")->text(), QStringLiteral("Take grpquota out of /etc/fstab"));
    QVERIFY(find<QCheckBox>("_groupsTakeOptionCheckBox")->isVisible());
}

void TestGeneralWidget::theKeyboardReachesEverything()
{
    show(fullQuota());
    _widget->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(_widget.get()));
    devices()->setFocus();
    QStringList reached;
    while (!reached.contains(QApplication::focusWidget()->objectName())) {
        reached += QApplication::focusWidget()->objectName();
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    }
    for (const char *name : spinBoxNames)
        QVERIFY2(reached.contains(QLatin1String(name)), name);
    QVERIFY(reached.contains(QLatin1String("_usersSettingsGroupBox")));
    QVERIFY(reached.contains(QLatin1String("_groupsSettingsGroupBox")));
    QVERIFY(reached.indexOf(QLatin1String("_usersSettingsGroupBox")) <
            reached.indexOf(QLatin1String("_groupsSettingsGroupBox")));
}

void TestGeneralWidget::theWheelChangesNothingInPassing()
{
    show(fullQuota());
    _widget->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(_widget.get()));
    devices()->setFocus();
    QSpinBox *weeks = spin("_blocksUsersWeekGraceSpinBox");
    QVERIFY(!turnedWheel(weeks, -120));
    QCOMPARE(weeks->value(), 1);
    QVERIFY(!_widget->isContentChanged());

    weeks->setFocus();
    QVERIFY(turnedWheel(weeks, 120));
    QCOMPARE(weeks->value(), 2);
    QVERIFY(_widget->isContentChanged());
}

void TestGeneralWidget::theWheelKeepsTheDevice()
{
    show({{QStringLiteral("/dev/vda1"), fullQuota()}, {QStringLiteral("/dev/vdb1"), fullQuota()}});
    spin("_blocksUsersWeekGraceSpinBox")->setFocus();
    QVERIFY(!turnedWheel(devices(), -120));
    QCOMPARE(devices()->currentText(), QStringLiteral("/dev/vda1"));
    devices()->setFocus();
    QVERIFY(turnedWheel(devices(), -120));
    QCOMPARE(devices()->currentText(), QStringLiteral("/dev/vdb1"));
}

void TestGeneralWidget::theHalvesNeedNoSidewaysScrolling()
{
    const QScrollBar *sideways = find<QScrollArea>("_scrollArea")->horizontalScrollBar();
    const QWidget *users = box("_usersSettingsGroupBox");
    const QWidget *groups = box("_groupsSettingsGroupBox");
    bool wasBelow = false;
    bool wasBeside = false;
    for (const bool isOn : {true, false}) {
        show(isOn ? fullQuota() : noQuota());
        for (int width = 420; width <= 1100; width += 20) {
            _widget->resize(width, 500);
            QCoreApplication::processEvents();
            QTRY_VERIFY2(!sideways->isVisible(), qPrintable(QString::number(width)));
            const QPoint distance = groups->mapToGlobal(QPoint()) - users->mapToGlobal(QPoint());
            (distance.y() > 0 ? wasBelow : wasBeside) = true;
            QVERIFY(distance.y() > 0 ? distance.x() == 0 : distance.x() > 0);
        }
    }
    QVERIFY(wasBelow && wasBeside);
}

QTEST_MAIN(TestGeneralWidget)
#include "tst_generalwidget.moc"
