// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "editortest.h"
#include "madeuprecords.h"

#include <generalwidget.h>

#include <QAbstractButton>
#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QListWidget>
#include <QMessageBox>
#include <QSignalSpy>
#include <QSpinBox>
#include <QTimer>
#include <QtTest>

#include <functional>

using namespace MadeUpRecords;

namespace
{

const QString vda = QStringLiteral("/dev/vda1");
const QString vdb = QStringLiteral("/dev/vdb1");

/// A module that keeps the record it is to write.
class WritingModule : public RecordingModule
{
public:
    void performOperation(ContextOperation *operation, OperationType type, ElementData *data, int extra) override
    {
        if (type == OperationType::Write)
            written.reset(dynamic_cast<GeneralData *>(data));
        RecordingModule::performOperation(operation, type, nullptr, extra);
    }

    std::unique_ptr<GeneralData> written;
};

bool isEdited(const KindSettings &settings, const KindSettings &asRead)
{
    return settings.quotaOn != asRead.quotaOn || settings.blockGrace.toSeconds() != asRead.blockGrace.toSeconds() ||
           settings.inodeGrace.toSeconds() != asRead.inodeGrace.toSeconds();
}

QVector<int> editedKinds(const GeneralData &record)
{
    const DeviceSettings settings = record.deviceSettings.value(record.touched->device);
    const DeviceSettings &asRead = record.touched->asRead;
    QVector<int> kinds;
    if (isEdited(settings.userSettings, asRead.userSettings))
        kinds.append(UserQuota);
    if (isEdited(settings.groupSettings, asRead.groupSettings))
        kinds.append(GroupQuota);
    return kinds;
}

} // namespace

/// What the general settings editor hands over to be applied, and what it says before and after.
class TestGeneralWidgetApply : public QObject, private EditorTest<GeneralWidget, WritingModule>
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup() { closeEditor(); }

    void theFormIsExported();
    void otherDevicesAreExportedAsRead();
    void anEditedGracePeriodHasNoSeconds();
    void aTickTakenBackIsNoEdit();
    void withoutAnEditNothingIsToBeApplied();
    void anOptionIsTakenOnWishOnly();
    void aRejectedFieldIsSaidBeforeAnyBox();
    void noBoxWithoutAFileToBeMade();
    void aNumberBeyondItsBoxStaysAndIsRefused_data();
    void aNumberBeyondItsBoxStaysAndIsRefused();
    void aNumberThatIsRefusedGoesWithItsKind();
    void theLongestGracePeriod();
    void theFilesystemTextIsANumber_data();
    void theFilesystemTextIsANumber();
    void withoutADeviceNothingIsToBeApplied();

    void whatWasTouchedIsSaid_data();
    void whatWasTouchedIsSaid();
    void aReadForgetsWhatWasTouched();

    void newQuotaFilesAreAnnounced_data();
    void newQuotaFilesAreAnnounced();
    void theBoxIsAsDescribed();
    void aPageThatIsReadWhileTheBoxIsOpenIsNotApplied();
    void aPageThatGoesWhileTheBoxIsOpen();

    void aKindThatIsStillOffIsSaidPlainly();
    void aKindThatCameOnIsNot();
    void aKindThatWasSwitchedOffAgainIsNotExpected();

    void byTheKeyboardAlone();

private:
    QSpinBox *spin(const char *name) const { return find<QSpinBox>(name); }
    QGroupBox *users() const { return find<QGroupBox>("_usersSettingsGroupBox"); }
    QGroupBox *groups() const { return find<QGroupBox>("_groupsSettingsGroupBox"); }
    QStringList texts(const char *list) const;
    QMessageBox *box() const { return _widget ? _widget->findChild<QMessageBox *>() : nullptr; }

    void show(const QMap<QString, DeviceSettings> &settings);
    void show(const DeviceSettings &settings) { show({{vda, settings}}); }
    std::unique_ptr<GeneralData> exported() const;
    /// Applies, and the update succeeds.
    void apply();
    void whileTheBoxIsOpen(const std::function<void()> &work);

    int _boxes = 0;
};

void TestGeneralWidgetApply::init()
{
    _boxes = 0;
    openEditor(QStringLiteral("QuotaGeneralElement"));
}

QStringList TestGeneralWidgetApply::texts(const char *list) const
{
    const auto *widget = find<QListWidget>(list);
    QStringList result;
    for (int i = 0; i < widget->count(); ++i)
        result += widget->item(i)->text();
    return result;
}

void TestGeneralWidgetApply::show(const QMap<QString, DeviceSettings> &settings)
{
    GeneralData record;
    record.deviceSettings = settings;
    _widget->afterSuccessfulRead(_element.get(), &record);
}

std::unique_ptr<GeneralData> TestGeneralWidgetApply::exported() const
{
    const std::unique_ptr<ElementData> data = _widget->exportElementData();
    const auto *general = dynamic_cast<const GeneralData *>(data.get());
    return general ? std::make_unique<GeneralData>(*general) : nullptr;
}

void TestGeneralWidgetApply::apply()
{
    _widget->applyContentChanges();
    _widget->afterSuccessfulUpdate();
}

/// To be called before what opens the box; the box then goes by its button.
void TestGeneralWidgetApply::whileTheBoxIsOpen(const std::function<void()> &work)
{
    QTimer::singleShot(0, this, [this, work] {
        if (!box())
            return;
        ++_boxes;
        work();
        if (box())
            QTest::mouseClick(box()->button(QMessageBox::Ok), Qt::LeftButton);
    });
}

void TestGeneralWidgetApply::theFormIsExported()
{
    show({{vda, noQuota()}, {vdb, fullQuota()}});
    find<QComboBox>("_filesystemsComboBox")->setCurrentText(vdb);
    users()->setChecked(false);
    const std::pair<const char *, int> values[] = {
        {"_blocksGroupsWeekGraceSpinBox", 1}, {"_blocksGroupsDaysGraceSpinBox", 2},
        {"_blocksGroupsHoursSpinBox", 3},     {"_blocksGroupsMinutesSpinBox", 4},
        {"_inodesGroupsWeekGraceSpinBox", 5}, {"_inodesGroupsDaysGraceSpinBox", 6},
        {"_inodesGroupsHoursSpinBox", 7},     {"_inodesGroupsMinutesSpinBox", 8}};
    for (const auto &[name, value] : values)
        spin(name)->setValue(value);

    const std::unique_ptr<GeneralData> record = exported();
    QVERIFY(record);
    const DeviceSettings settings = record->deviceSettings.value(vdb);
    for (const KindSettings &kind : {settings.userSettings, settings.groupSettings}) {
        QCOMPARE(kind.device, vdb);
        QVERIFY(!kind.optionInForce);
        QVERIFY(!kind.optionConfigured);
        QVERIFY(!kind.fileExists);
    }
    QVERIFY(!settings.userSettings.quotaOn);
    QVERIFY(settings.groupSettings.quotaOn);
    QCOMPARE(settings.userSettings.blockGrace.toSeconds(), 604800);
    QCOMPARE(settings.userSettings.inodeGrace.toSeconds(), 604800);
    constexpr qint64 minute = 60;
    constexpr qint64 hour = 60 * minute;
    constexpr qint64 day = 24 * hour;
    QCOMPARE(settings.groupSettings.blockGrace.toSeconds(), 9 * day + 3 * hour + 4 * minute);
    QCOMPARE(settings.groupSettings.inodeGrace.toSeconds(), 41 * day + 7 * hour + 8 * minute);
    QCOMPARE(settings.groupSettings.inodeGrace.days, 6U);
}

void TestGeneralWidgetApply::otherDevicesAreExportedAsRead()
{
    DeviceSettings other = device(kind(true, false, true, true), kind(true, false, false, true));
    other.userSettings.device = vdb;
    show({{vda, fullQuota()}, {vdb, other}});
    groups()->setChecked(false);
    const DeviceSettings settings = exported()->deviceSettings.value(vdb);
    QCOMPARE(exported()->deviceSettings.keys(), QStringList({vda, vdb}));
    QCOMPARE(settings.filesystemType, QStringLiteral("ext4"));
    QVERIFY(settings.userSettings.optionConfigured && settings.userSettings.quotaOn);
    QVERIFY(settings.groupSettings.optionConfigured && !settings.groupSettings.quotaOn);
    QCOMPARE(settings.userSettings.device, vdb);
}

/// Of an edited period; the three others keep theirs.
void TestGeneralWidgetApply::anEditedGracePeriodHasNoSeconds()
{
    constexpr quint32 week = 604800;
    constexpr quint32 mixed = week + 2 * 86400 + 3 * 3600 + 4 * 60 + 5;
    constexpr quint32 longest = 4294967295U; // 7101 weeks, 3 days, 6 hours, 28 minutes and 15 seconds
    DeviceSettings settings = fullQuota();
    settings.userSettings.blockGrace = TimePeriod(mixed);
    settings.userSettings.inodeGrace = TimePeriod(longest);
    settings.groupSettings.blockGrace = TimePeriod(5);
    settings.groupSettings.inodeGrace = TimePeriod(mixed);
    show(settings);
    const auto seconds = [this] {
        const DeviceSettings now = exported()->deviceSettings.value(vda);
        return QVector<qint64>{now.userSettings.blockGrace.toSeconds(), now.userSettings.inodeGrace.toSeconds(),
                               now.groupSettings.blockGrace.toSeconds(), now.groupSettings.inodeGrace.toSeconds()};
    };
    QCOMPARE(seconds(), (QVector<qint64>{mixed, longest, 5, mixed}));
    QSpinBox *minutes = spin("_blocksUsersMinutesSpinBox");
    minutes->setFocus();
    QTest::keyClick(minutes, Qt::Key_Up);
    QCOMPARE(seconds(), (QVector<qint64>{mixed - 5 + 60, longest, 5, mixed}));
    QTest::keyClick(minutes, Qt::Key_Down); // back: nothing is edited
    QCOMPARE(seconds(), (QVector<qint64>{mixed, longest, 5, mixed}));
    QSpinBox *weeks = spin("_inodesUsersWeekGraceSpinBox");
    weeks->setFocus();
    weeks->selectAll();
    QTest::keyClicks(weeks, QStringLiteral("1"));
    QCOMPARE(seconds(), (QVector<qint64>{mixed, week + longest % week - 15, 5, mixed}));
    const TimePeriod period = exported()->deviceSettings.value(vda).userSettings.inodeGrace;
    QCOMPARE(period.seconds, 0U);
    QCOMPARE(period.weeks, 1U);
}

void TestGeneralWidgetApply::aTickTakenBackIsNoEdit()
{
    show(device(kind(true, true, false, true), kind(true, true, true, true)));
    QTest::keyClick(users(), Qt::Key_Space);
    QTest::keyClick(users(), Qt::Key_Space);
    QTest::keyClick(spin("_blocksGroupsDaysGraceSpinBox"), Qt::Key_Up);
    _widget->applyContentChanges();
    QVERIFY(_module->written);
    QCOMPARE(editedKinds(*_module->written), QVector<int>{GroupQuota});
    QVERIFY(_module->written->touched->optionsToTake.isEmpty());
}

void TestGeneralWidgetApply::withoutAnEditNothingIsToBeApplied()
{
    show({{vda, device(kind(true, true, false, true), kind(true, true, true, true))}, {vdb, fullQuota()}});
    QVERIFY(exported()->touched);
    QCOMPARE(exported()->touched->device, vda);
    QCOMPARE(editedKinds(*exported()), QVector<int>());
    QVERIFY(exported()->touched->optionsToTake.isEmpty());
}

void TestGeneralWidgetApply::anOptionIsTakenOnWishOnly()
{
    const DeviceSettings off = device(kind(true, true, false, true), kind(true, true, false, true));
    show(off);
    auto *take = find<QCheckBox>("_groupsTakeOptionCheckBox");
    QTest::keyClick(take, Qt::Key_Space);
    _widget->applyContentChanges();
    QVERIFY(_module->written);
    QCOMPARE(_module->written->touched->optionsToTake, QVector<QuotaKind>{GroupQuota});
    QCOMPARE(editedKinds(*_module->written), QVector<int>());

    show(off);
    QVERIFY(!take->isChecked()); // a wish is good for one Apply
}

/// The host says why; the page's own box would come after.
void TestGeneralWidgetApply::aRejectedFieldIsSaidBeforeAnyBox()
{
    show(device(kind(false, false, false, false), kind(true, true, true, true)));
    users()->setChecked(true); // would bring the box
    QSpinBox *days = spin("_blocksGroupsDaysGraceSpinBox");
    days->setFocus();
    days->selectAll();
    QTest::keyClick(days, Qt::Key_Delete);
    QSignalSpy refusals(_widget.get(), &ViewEditElementWidget::refused);
    whileTheBoxIsOpen([] {});
    _widget->applyContentChanges();
    QCoreApplication::processEvents();
    QCOMPARE(_boxes, 0);
    QCOMPARE(refusals.size(), 1);
    QVERIFY(!refusals.first().first().toString().isEmpty());
    QVERIFY(!_module->written);
    QVERIFY(_widget->isContentChanged());
}

/// A kind that is on already, with its file under another name, gets none.
void TestGeneralWidgetApply::noBoxWithoutAFileToBeMade()
{
    show(device(kind(false, true, true, false), kind(true, true, true, true)));
    QTest::keyClick(spin("_blocksUsersDaysGraceSpinBox"), Qt::Key_Up);
    whileTheBoxIsOpen([] {});
    _widget->applyContentChanges();
    QCoreApplication::processEvents();
    QCOMPARE(_boxes, 0);
    QVERIFY(_module->written);
}

void TestGeneralWidgetApply::aNumberBeyondItsBoxStaysAndIsRefused_data()
{
    QTest::addColumn<QString>("box");
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("most");
    QTest::newRow("weeks") << "_blocksUsersWeekGraceSpinBox"
                           << "7101"
                           << "7,100";
    QTest::newRow("days") << "_inodesUsersDaysGraceSpinBox"
                          << "14"
                          << "6";
    QTest::newRow("hours") << "_blocksGroupsHoursSpinBox"
                           << "36"
                           << "23";
    QTest::newRow("minutes") << "_inodesGroupsMinutesSpinBox"
                             << "90"
                             << "59";
    QTest::newRow("no number") << "_inodesGroupsMinutesSpinBox"
                               << "1x"
                               << "59";
}

void TestGeneralWidgetApply::aNumberBeyondItsBoxStaysAndIsRefused()
{
    QFETCH(QString, box);
    QFETCH(QString, typed);
    QFETCH(QString, most);
    const QLocale before;
    QLocale::setDefault(QLocale(QLocale::English));
    show(fullQuota());
    auto *number = spin(box.toLatin1());
    number->setLocale(QLocale(QLocale::English));
    const int read = number->value();
    number->setFocus();
    number->selectAll();
    QTest::keyClicks(number, typed);
    QLocale::setDefault(before);
    QVERIFY(_widget->isContentChanged());
    QVERIFY(number->text().startsWith(typed));
    users()->setFocus();
    QVERIFY2(number->text().startsWith(typed), "it is still there when the box is left");

    QSignalSpy refusals(_widget.get(), &ViewEditElementWidget::refused);
    _widget->applyContentChanges();
    QVERIFY(!_module->written);
    QCOMPARE(refusals.size(), 1);
    QVERIFY2(refusals.first().first().toString().contains(most), qPrintable(refusals.first().first().toString()));
    QVERIFY(number->hasFocus());
    QVERIFY(number->text().startsWith(typed));

    number->selectAll();
    QTest::keyClicks(number, QStringLiteral("5"));
    _widget->applyContentChanges();
    QVERIFY(_module->written);
    QVERIFY(read != 5);
}

void TestGeneralWidgetApply::aNumberThatIsRefusedGoesWithItsKind()
{
    show(fullQuota());
    QSpinBox *days = spin("_blocksUsersDaysGraceSpinBox");
    days->setFocus();
    days->selectAll();
    QTest::keyClicks(days, QStringLiteral("14"));
    users()->setChecked(false);
    QVERIFY(_widget->isContentValid());
    show(fullQuota());
    QVERIFY2(days->text().startsWith(QString::number(days->value())), "a read is shown in its place");
}

void TestGeneralWidgetApply::theLongestGracePeriod()
{
    show(fullQuota());
    spin("_inodesUsersWeekGraceSpinBox")->setValue(7101);
    spin("_inodesUsersDaysGraceSpinBox")->setValue(6);
    spin("_inodesUsersHoursSpinBox")->setValue(23);
    spin("_inodesUsersMinutesSpinBox")->setValue(59);
    const TimePeriod period = exported()->deviceSettings.value(vda).userSettings.inodeGrace;
    QCOMPARE(period.weeks, 7100U);
    QCOMPARE(period.toSeconds(), 7100LL * 604800 + 6 * 86400 + 23 * 3600 + 59 * 60);
}

void TestGeneralWidgetApply::theFilesystemTextIsANumber_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("code");
    QTest::newRow("a file system") << QStringLiteral("ext4") << 0;
    QTest::newRow("empty") << QString() << 0;
    QTest::newRow("a number") << QStringLiteral("65") << 65;
    QTest::newRow("a number and more") << QStringLiteral("65x") << 0;
    QTest::newRow("hexadecimal") << QStringLiteral("0x41") << 0;
}

void TestGeneralWidgetApply::theFilesystemTextIsANumber()
{
    QFETCH(QString, text);
    QFETCH(int, code);
    DeviceSettings settings = fullQuota();
    settings.filesystemType = text;
    show(settings);
    QCOMPARE(find<QLabel>("_deviceFilesystemLabel")->text(), text);
    const QString exportedText = exported()->deviceSettings.value(vda).filesystemType;
    QCOMPARE(exportedText.size(), 1);
    QCOMPARE(int(exportedText.at(0).unicode()), code);
}

/// A record all the same, of which nothing is to be applied.
void TestGeneralWidgetApply::withoutADeviceNothingIsToBeApplied()
{
    show(QMap<QString, DeviceSettings>());
    QVERIFY(exported());
    QVERIFY(exported()->deviceSettings.isEmpty());
    QVERIFY(exported()->touched);
    QVERIFY(!exported()->deviceSettings.contains(exported()->touched->device));

    show({{vda, fullQuota()}}); // and of a device that went
    show({{vdb, fullQuota()}});
    QCOMPARE(exported()->deviceSettings.keys(), QStringList{vdb});
    QCOMPARE(exported()->touched->device, vda);
}

void TestGeneralWidgetApply::whatWasTouchedIsSaid_data()
{
    QTest::addColumn<QStringList>("touched");
    QTest::addColumn<QVector<int>>("kinds");
    QTest::newRow("users") << QStringList{QStringLiteral("_usersSettingsGroupBox")} << QVector<int>{0};
    QTest::newRow("groups") << QStringList{QStringLiteral("_groupsSettingsGroupBox")} << QVector<int>{1};
    QTest::newRow("space of users") << QStringList{QStringLiteral("_blocksUsersDaysGraceSpinBox")} << QVector<int>{0};
    QTest::newRow("files of users") << QStringList{QStringLiteral("_inodesUsersHoursSpinBox")} << QVector<int>{0};
    QTest::newRow("space of groups") << QStringList{QStringLiteral("_blocksGroupsWeekGraceSpinBox")} << QVector<int>{1};
    QTest::newRow("files of groups") << QStringList{QStringLiteral("_inodesGroupsMinutesSpinBox")} << QVector<int>{1};
    QTest::newRow("both") << QStringList{QStringLiteral("_inodesGroupsMinutesSpinBox"),
                                         QStringLiteral("_usersSettingsGroupBox")}
                          << QVector<int>{0, 1};
}

void TestGeneralWidgetApply::whatWasTouchedIsSaid()
{
    QFETCH(QStringList, touched);
    QFETCH(QVector<int>, kinds);
    show({{vda, fullQuota()}, {vdb, fullQuota()}});
    find<QComboBox>("_filesystemsComboBox")->setCurrentText(vdb);
    for (const QString &name : touched) {
        auto *widget = find<QWidget>(qPrintable(name));
        if (auto *spinBox = qobject_cast<QSpinBox *>(widget))
            spinBox->stepUp();
        else
            qobject_cast<QGroupBox *>(widget)->setChecked(false);
    }
    QVERIFY(_widget->isContentChanged());
    _widget->applyContentChanges();
    QVERIFY(_module->written);
    QVERIFY(_module->written->touched);
    QCOMPARE(_module->written->touched->device, vdb);
    QCOMPARE(editedKinds(*_module->written), kinds);
}

void TestGeneralWidgetApply::aReadForgetsWhatWasTouched()
{
    show(fullQuota());
    users()->setChecked(false);
    show(fullQuota());
    QVERIFY(!_widget->isContentChanged());
    groups()->setChecked(false);
    _widget->applyContentChanges();
    QCOMPARE(editedKinds(*_module->written), QVector<int>{GroupQuota});
}

void TestGeneralWidgetApply::newQuotaFilesAreAnnounced_data()
{
    QTest::addColumn<bool>("userFile");
    QTest::addColumn<bool>("groupFile");
    QTest::addColumn<bool>("usersTicked");
    QTest::addColumn<bool>("groupsTicked");
    QTest::addColumn<int>("boxes");
    QTest::newRow("both there") << true << true << true << true << 0;
    QTest::newRow("users' to be made") << false << true << true << false << 1;
    QTest::newRow("groups' to be made") << true << false << false << true << 1;
    QTest::newRow("both to be made") << false << false << true << true << 1;
    QTest::newRow("none wanted") << false << false << false << false << 0;
    QTest::newRow("the other one's is missing") << false << true << false << true << 0;
}

void TestGeneralWidgetApply::newQuotaFilesAreAnnounced()
{
    QFETCH(bool, userFile);
    QFETCH(bool, groupFile);
    QFETCH(bool, usersTicked);
    QFETCH(bool, groupsTicked);
    QFETCH(int, boxes);
    show(device(kind(false, false, false, userFile), kind(false, false, false, groupFile)));
    users()->setChecked(usersTicked);
    groups()->setChecked(groupsTicked);
    _widget->changeData();
    bool wasWritten = false;
    whileTheBoxIsOpen([&] { wasWritten = _module->written != nullptr; });
    _widget->applyContentChanges();
    QCOMPARE(_boxes, boxes);
    QVERIFY(!wasWritten); // only when the box was read
    QVERIFY(_module->written);
}

void TestGeneralWidgetApply::theBoxIsAsDescribed()
{
    show(noQuota());
    users()->setChecked(true);
    QString title;
    QString text;
    QMessageBox::Icon icon = QMessageBox::NoIcon;
    QMessageBox::StandardButtons buttons = QMessageBox::NoButton;
    whileTheBoxIsOpen([&] {
        title = box()->windowTitle();
        text = box()->text();
        icon = box()->icon();
        buttons = box()->standardButtons();
    });
    _widget->applyContentChanges();
    QCOMPARE(title, QStringLiteral("Warning"));
    QCOMPARE(text, QStringLiteral("In process of inclusion quota configuration files will be created. This process may "
                                  "take several minutes."));
    QCOMPARE(icon, QMessageBox::Information);
    QCOMPARE(int(buttons), int(QMessageBox::Ok));
    QVERIFY(!box());
}

/// What is shown then is not what the administrator meant.
void TestGeneralWidgetApply::aPageThatIsReadWhileTheBoxIsOpenIsNotApplied()
{
    show(noQuota());
    users()->setChecked(true);
    whileTheBoxIsOpen([this] { show(noQuota()); });
    _widget->applyContentChanges();
    QCOMPARE(_boxes, 1);
    QVERIFY(!_module->written);
    QVERIFY(!users()->isChecked());
}

void TestGeneralWidgetApply::aPageThatGoesWhileTheBoxIsOpen()
{
    show(noQuota());
    users()->setChecked(true);
    whileTheBoxIsOpen([this] { _widget.reset(); });
    _widget->applyContentChanges();
    QCOMPARE(_boxes, 1);
    QVERIFY(!_module->written);
}

void TestGeneralWidgetApply::aKindThatIsStillOffIsSaidPlainly()
{
    const QString said =
        QStringLiteral("It was to be switched on, but it is still off. The details of the task say what happened.");
    const DeviceSettings configured = device(kind(true, false, false, true), kind(false, false, false, true));
    show({{vda, configured}, {vdb, configured}});
    QVERIFY(!texts("_usersListWidget").contains(said));
    users()->setChecked(true);
    apply();
    QVERIFY(!texts("_usersListWidget").contains(said)); // nobody knows yet

    show({{vda, configured}, {vdb, configured}});
    QCOMPARE(texts("_usersListWidget").first(), said);
    QVERIFY(!texts("_groupsListWidget").contains(said));
    find<QComboBox>("_filesystemsComboBox")->setCurrentText(vdb);
    QVERIFY(!texts("_usersListWidget").contains(said));

    // As long as it is so.
    find<QComboBox>("_filesystemsComboBox")->setCurrentText(vda);
    show({{vda, configured}, {vdb, configured}});
    QCOMPARE(texts("_usersListWidget").first(), said);
    show({{vda, fullQuota()}, {vdb, configured}});
    QVERIFY(!texts("_usersListWidget").contains(said));
    show({{vda, configured}, {vdb, configured}}); // switched off by somebody else
    QVERIFY(!texts("_usersListWidget").contains(said));
}

void TestGeneralWidgetApply::aKindThatCameOnIsNot()
{
    const DeviceSettings off = device(kind(false, false, false, true), kind(false, false, false, true));
    show(off);
    groups()->setChecked(true);
    apply();
    show(fullQuota());
    QCOMPARE(texts("_groupsListWidget").first(), QStringLiteral("Group quota is on"));
}

void TestGeneralWidgetApply::aKindThatWasSwitchedOffAgainIsNotExpected()
{
    const DeviceSettings off = device(kind(false, false, false, true), kind(false, false, false, true));
    show(off);
    groups()->setChecked(true);
    apply();
    show(off);
    QVERIFY(texts("_groupsListWidget").first().startsWith(QStringLiteral("It was to be switched on")));
    groups()->setChecked(true);
    groups()->setChecked(false);
    apply();
    show(off);
    QCOMPARE(texts("_groupsListWidget").first(), QStringLiteral("Group quota is off"));
}

void TestGeneralWidgetApply::byTheKeyboardAlone()
{
    show(device(kind(true, true, true, true), kind(false, false, false, true)));
    _widget->activateWindow();
    groups()->setFocus();
    QTRY_VERIFY(groups()->hasFocus());
    QTest::keyClick(groups(), Qt::Key_Space);
    QVERIFY(groups()->isChecked());
    QSpinBox *days = spin("_blocksUsersDaysGraceSpinBox");
    days->setFocus();
    days->selectAll();
    QTest::keyClicks(days, QStringLiteral("3"));
    _widget->applyContentChanges();
    QVERIFY(_module->written);
    const DeviceSettings settings = _module->written->deviceSettings.value(vda);
    QVERIFY(settings.groupSettings.quotaOn);
    QCOMPARE(settings.userSettings.blockGrace.days, 3U);
    QCOMPARE(editedKinds(*_module->written), QVector<int>({UserQuota, GroupQuota}));
}

QTEST_MAIN(TestGeneralWidgetApply)
#include "tst_generalwidgetapply.moc"
