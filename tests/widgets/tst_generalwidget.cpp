// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "editortest.h"
#include "madeuprecords.h"

#include <generalwidget.h>

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
#include <QTranslator>
#include <QWheelEvent>
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
    void anUnknownDeviceToShowLeavesTheFirst();
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
    void missingRightsAreSaid();
    void aDeviceComesBack();
    void theRebootQuestion_data();
    void theRebootQuestion();
    void theRebootQuestionComesBackWithEveryRead();
    void showingAnOldRecordAsksNothing();
    void theRebootQuestionIsAskedOnceAtATime();
    void theRebootQuestionDiesWithThePage();
    void theKeyboardReachesEverything();
    void theWheelChangesNothingInPassing();
    void theHalvesNeedNoSidewaysScrolling();

private:
    QGroupBox *box(const char *name) const { return find<QGroupBox>(name); }
    QSpinBox *spin(const char *name) const { return find<QSpinBox>(name); }
    QComboBox *devices() const { return find<QComboBox>("_filesystemsComboBox"); }
    QStringList texts(const char *list) const;
    bool isEditable(const char *name) const { return find<QWidget>(name)->isEnabled(); }
    QMessageBox *question() const;

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

QMessageBox *TestGeneralWidget::question() const
{
    return _widget->findChild<QMessageBox *>();
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

void TestGeneralWidget::anUnknownDeviceToShowLeavesTheFirst()
{
    _widget->setDeviceToNextShow(QStringLiteral("/dev/gone"));
    show({{QStringLiteral("/dev/vda1"), fullQuota()}, {QStringLiteral("/dev/vdb1"), noQuota()}});
    QCOMPARE(devices()->currentText(), QStringLiteral("/dev/vda1"));
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
                                              "In force: mounted with usrquota|"
                                              "Quota file aquota.user is present|"
                                              "Grace period for space: 1 weeks|"
                                              "Grace period for files: 1 weeks");
    QCOMPARE(texts("_usersListWidget"), usersTexts.split(QLatin1Char('|')));
    const QString groupsTexts = QStringLiteral("Group quota is off|"
                                               "Not configured: no grpquota in /etc/fstab|"
                                               "Not in force: mounted without grpquota|"
                                               "Quota file aquota.group is missing");
    QCOMPARE(texts("_groupsListWidget"), groupsTexts.split(QLatin1Char('|')));
    QVERIFY(find<QListWidget>("_deviceFactsListWidget")->isHidden());
    QCOMPARE(find<QLabel>("_deviceFilesystemLabel")->text(), QStringLiteral("ext4"));
}

void TestGeneralWidget::aFileSystemWithItsOwnQuota()
{
    show(ownQuota());
    QVERIFY(!question());
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
    QCOMPARE(texts("_usersListWidget"), QStringList({QStringLiteral("User quota is off"),
                                                     QStringLiteral("Not configured: no usrquota in /etc/fstab")}));
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
    GeneralData record;
    const QStringList lines = {QStringLiteral("/dev/sda1 on /: xfs is no file system with quota files"),
                               QStringLiteral("LABEL=data on /srv: there is no such device")};
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
    QVERIFY(find<QLabel>("_passedOverLabel")->isHidden());
    QVERIFY(find<QListWidget>("_passedOverListWidget")->isHidden());
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
    QCOMPARE(devices()->count(), 0);
    QCOMPARE(find<QLabel>("_deviceFilesystemLabel")->text(), QString());
    QVERIFY(!box("_usersSettingsGroupBox")->isVisible());
    show(fullQuota());
    QVERIFY(find<QLabel>("_noDeviceLabel")->isHidden());
    QVERIFY(box("_usersSettingsGroupBox")->isVisible());
    QVERIFY(box("_usersSettingsGroupBox")->isChecked());
}

void TestGeneralWidget::theRebootQuestion_data()
{
    QTest::addColumn<bool>("usersWait");
    QTest::addColumn<bool>("groupsWait");
    QTest::newRow("nobody") << false << false;
    QTest::newRow("users") << true << false;
    QTest::newRow("groups") << false << true;
    QTest::newRow("both") << true << true;
}

void TestGeneralWidget::theRebootQuestion()
{
    QFETCH(bool, usersWait);
    QFETCH(bool, groupsWait);
    const KindSettings waits = kind(true, false, true, true);
    const KindSettings settled = kind(true, true, true, true);
    // The device that waits is not the one that is shown.
    show({{QStringLiteral("/dev/vda1"), fullQuota()},
          {QStringLiteral("/dev/vdb1"), device(usersWait ? waits : settled, groupsWait ? waits : settled)}});
    if (!usersWait && !groupsWait) {
        QVERIFY(!question());
        return;
    }
    QVERIFY(question());
    QCOMPARE(question()->windowTitle(), QStringLiteral("Warning"));
    QCOMPARE(question()->text(), QStringLiteral("To apply the settings you must reboot system.\nReboot now?"));
    QCOMPARE(question()->standardButtons(), QMessageBox::Yes | QMessageBox::No);
    QCOMPARE(question()->icon(), QMessageBox::Warning);
    answer(QMessageBox::No);
    QVERIFY(!_widget->isContentChanged());
    QVERIFY(!_widget->isBlocked());
    QVERIFY(_module->asked.empty());
    QCOMPARE(devices()->currentText(), QStringLiteral("/dev/vda1"));
}

void TestGeneralWidget::theRebootQuestionComesBackWithEveryRead()
{
    const DeviceSettings waits = device(kind(true, false, true, true), KindSettings());
    for (int read = 0; read < 3; ++read) {
        show(waits);
        answer(QMessageBox::No);
    }
    show(fullQuota());
    QVERIFY(!question());
}

void TestGeneralWidget::showingAnOldRecordAsksNothing()
{
    auto record = std::make_unique<GeneralData>();
    record->deviceSettings.insert(QStringLiteral("/dev/vda1"), device(kind(true, false, true, true), KindSettings()));
    GeneralData read = *record;
    _widget->setElement(nullptr);
    _element->setRecord(std::move(record));
    _widget->setElement(_element.get());
    QVERIFY(box("_usersSettingsGroupBox")->isChecked());
    QVERIFY(!question());
    _widget->afterSuccessfulRead(_element.get(), &read);
    answer(QMessageBox::No);
}

void TestGeneralWidget::theRebootQuestionIsAskedOnceAtATime()
{
    const DeviceSettings waits = device(kind(true, false, true, true), KindSettings());
    show(waits);
    show(waits);
    QCOMPARE(_widget->findChildren<QMessageBox *>().size(), 1);
    answer(QMessageBox::No);
}

void TestGeneralWidget::theRebootQuestionDiesWithThePage()
{
    show(device(kind(true, false, true, true), KindSettings()));
    QTRY_VERIFY(question() && question()->isVisible());
    _widget.reset();
    QVERIFY(!QApplication::activeModalWidget());
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
    const auto turnWheel = [weeks](int delta) {
        const QPointF at = weeks->rect().center();
        QWheelEvent event(at, weeks->mapToGlobal(at.toPoint()), QPoint(), QPoint(0, delta), Qt::NoButton,
                          Qt::NoModifier, Qt::NoScrollPhase, false);
        QApplication::sendEvent(weeks, &event);
        return event.isAccepted(); // what is not goes on to the page, which scrolls
    };

    QVERIFY(!turnWheel(-120));
    QCOMPARE(weeks->value(), 1);
    QVERIFY(!_widget->isContentChanged());

    weeks->setFocus();
    QVERIFY(turnWheel(120));
    QCOMPARE(weeks->value(), 2);
    QVERIFY(_widget->isContentChanged());
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
