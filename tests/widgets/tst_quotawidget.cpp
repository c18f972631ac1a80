// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "editortest.h"
#include "madeupaccounts.h"

#include <generalelement.h>
#include <generalwidget.h>
#include <localgroupquotawidget.h>
#include <localuserquotawidget.h>

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDateTimeEdit>
#include <QDoubleSpinBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QScrollArea>
#include <QTimer>
#include <QTranslator>
#include <QWheelEvent>
#include <QtTest>

using namespace MadeUpAccounts;

/// The editor of an account's limits: what it shows of a record, and what it exports.
class TestQuotaWidget : public QObject, private EditorTest<UserWidget>
{
    Q_OBJECT

private Q_SLOTS:
    void init() { openEditor(QStringLiteral("QuotaUserElement")); }
    void cleanup() { closeEditor(); }

    void theFormIsAsDescribed_data();
    void theFormIsAsDescribed();
    void whatTheEditorsAre();
    void aRecordIsShown();
    void aSoftLimitOfZeroIsUncheckedAndExportsNothing();
    void theUnitLimitsTheNumber_data();
    void theUnitLimitsTheNumber();
    void theUnitIsShownBeforeTheNumber();
    void aGraceTimeThatDoesNotRunIsBlankAndExportsNone();
    void filesHaveTheirPlural();
    void theDeviceToShowNextIsShownOnce();
    void withoutTheQuotaFileApplyingWarnsFirst();
    void withoutAFileToMakeApplyingSaysNothing_data();
    void withoutAFileToMakeApplyingSaysNothing();
    void checkBoxesEnableTheirCompanions_data();
    void checkBoxesEnableTheirCompanions();
    void anUnknownDeviceShowsNoLimits();
    void showingIsNoChange();
    void everyEditIsAChangeThatHoldsTheDevice_data();
    void everyEditIsAChangeThatHoldsTheDevice();
    void anEditedLimitIsANumberAUnitAndBytes();
    void theExportedRecordIsTheAccountsAndSaysWhatWasTouched();
    void aLimitThatTheFormCannotShowIsSaid();
    void theGeneralFormIsFound();
    void recordsThatAreNotThisElementsAreNotShown();
    void readOnlyThePageCanStillBeLookedThrough();
    void theWheelScrollsThePage();
    void theKeyboardReachesEverything();

private:
    QComboBox *combo(const char *name) const { return find<QComboBox>(name); }
    QCheckBox *check(const char *name) const { return find<QCheckBox>(name); }
    QDoubleSpinBox *size(const char *name) const { return find<QDoubleSpinBox>(name); }
    QSpinBox *count(const char *name) const { return find<QSpinBox>(name); }
    QDateTimeEdit *time(const char *name) const { return find<QDateTimeEdit>(name); }
    QString text(const char *label) const { return find<QLabel>(label)->text(); }
    QComboBox *devices() const { return combo("_devicesComboBox"); }

    void show(const QMap<QString, DeviceQuota> &quotas);
    void show(const DeviceQuota &quota) { show({{QStringLiteral("/dev/vda1"), quota}}); }
    DeviceQuota exported(const QString &device = QStringLiteral("/dev/vda1")) const;
};

namespace
{
QString tip(const char *text)
{
    return QStringLiteral("<html><head/><body><p>%1</p></body></html>").arg(QLatin1String(text));
}
} // namespace

void TestQuotaWidget::show(const QMap<QString, DeviceQuota> &quotas)
{
    UserData record = account(quotas);
    _widget->afterSuccessfulRead(_element.get(), &record);
}

DeviceQuota TestQuotaWidget::exported(const QString &device) const
{
    const std::unique_ptr<ElementData> record = _widget->exportElementData();
    return dynamic_cast<const UserData &>(*record).deviceQuotas.value(device);
}

void TestQuotaWidget::theFormIsAsDescribed_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QVariantMap>("properties");

    const auto row = [](const char *name, const QString &text, const QString &toolTip, QVariantMap more = {}) {
        const bool isBox = QByteArray(name).startsWith("groupBox") || QByteArray(name) == "_settingsGroupBox";
        if (!text.isNull())
            more.insert(isBox ? QStringLiteral("title") : QStringLiteral("text"), text);
        more.insert(QStringLiteral("toolTip"), toolTip);
        QTest::newRow(name) << QString::fromLatin1(name) << more;
    };
    const QString none = QString();
    const QString empty = QLatin1String("");
    const QString softMemory = tip("Memory limit at which the time is counted in the amount of the grace period. After "
                                   "this time the soft limit will become hard.");
    const QString hardMemory = tip("Memory limit that can not be exceeded under no circumstances");
    const QString memoryTime = tip("Time when the memory soft limit will become hard");
    const QString softFiles = tip("Files limit at which the time is counted in the amount of the grace period. After "
                                  "this time the soft limit will become hard.");
    const QString hardFiles = tip("Files limit that can not be exceeded under no circumstances");
    const QString filesTime = tip("Time when the files soft limit will become hard");
    const QString filesystem = tip("Filesystem current device");
    const QString support = tip("Support the ability to set quota on this device");
    const QString usedMemory = tip("Current memory consumption");
    const QString usedFiles = tip("Current files consumption");
    const QVariantMap disabled = {{QStringLiteral("enabled"), false}};
    const auto with = [](QVariantMap map, const char *key, const QVariant &value) {
        map.insert(QLatin1String(key), value);
        return map;
    };
    const QVariantMap files = with(disabled, "maximum", 2147483647);
    const QVariantMap time = with(disabled, "calendarPopup", true);

    row("groupBox", QStringLiteral("Device (from fstab)"), none);
    row("_devicesComboBox", none, tip("Devices from fstab file which support quotas"));
    row("_quotaIsOnStatusLabel", empty, none);
    row("_quotaIsOnLabel", QStringLiteral("Quota for user on this device:"), none);
    row("label_13", QStringLiteral("Filesystem:"), filesystem);
    row("_deviceSupportQuotaLabel", QStringLiteral("Quota on this device:"), support);
    row("_deviceFilesystemLabel", empty, filesystem);
    row("_deviceSupportQuotaStatusLabel", empty, support);
    row("_goToGeneralFormPushButton", QStringLiteral("Go to the quota inclusion form"), none,
        {{QStringLiteral("visible"), false}});
    row("_settingsGroupBox", empty, none, {{QStringLiteral("flat"), true}});
    row("groupBox_2", QStringLiteral("Blocks"), none);
    row("_softLimitBlocksDoubleSpinBox", none, softMemory, with(disabled, "specialValueText", empty));
    row("_softLimitDimensionComboBox", none, softMemory, disabled);
    row("_softLimitBlocksCheckBox", empty, softMemory);
    row("_hardLimitBlocksDoubleSpinBox", none, hardMemory, with(disabled, "specialValueText", empty));
    row("_hardLimitBlocksCheckBox", empty, hardMemory);
    row("_hardLimitDimensionComboBox", none, hardMemory, disabled);
    row("_blocksDateTimeEdit", none, memoryTime, time);
    row("label_4", QStringLiteral("Soft limit"), softMemory);
    row("label_3", QStringLiteral("Used"), usedMemory);
    row("label_7", QStringLiteral("Time to force"), memoryTime);
    row("label_6", QStringLiteral("Hard limit"), hardMemory);
    row("_usedBlocksDoubleSpinBox", none, usedMemory, with(disabled, "maximum", 1e11));
    row("groupBox_16", QStringLiteral("Inodes"), none);
    row("label", QStringLiteral("Used"), usedFiles);
    row("_usedInodesSpinBox", none, usedFiles, with(with(files, "readOnly", true), "suffix", QStringLiteral(" files")));
    row("label_2", QStringLiteral("Soft limit"), softFiles);
    row("_softLimitInodesCheckBox", empty, softFiles);
    row("_softLimitInodesSpinBox", none, softFiles, files);
    row("label_5", QStringLiteral("Hard limit"), hardFiles);
    row("_hardLimitInodesCheckBox", empty, hardFiles);
    row("_hardLimitInodesSpinBox", none, hardFiles, files);
    row("label_8", QStringLiteral("Time to force"), filesTime);
    row("_inodesDateTimeEdit", none, filesTime, time);
}

void TestQuotaWidget::theFormIsAsDescribed()
{
    QFETCH(QString, name);
    QFETCH(QVariantMap, properties);
    const auto *widget = find<QWidget>(qPrintable(name));
    for (auto property = properties.cbegin(); property != properties.cend(); ++property) {
        if (property.key() == QLatin1String("enabled")) // by itself: before a read the whole page is not
            QCOMPARE(QVariant(widget->isEnabledTo(widget->parentWidget())), property.value());
        else
            QCOMPARE(widget->property(qPrintable(property.key())), property.value());
    }
    // The names end with what they name.
    for (const char *kind : {"QDoubleSpinBox", "QSpinBox", "QDateTimeEdit", "QCheckBox", "QComboBox", "QPushButton"}) {
        if (name.endsWith(QLatin1String(kind + 1))) {
            QVERIFY2(widget->inherits(kind), widget->metaObject()->className());
            break;
        }
    }
    for (const char *used : {"_usedBlocksDoubleSpinBox", "_usedInodesSpinBox"})
        QCOMPARE(find<QAbstractSpinBox>(used)->buttonSymbols(), QAbstractSpinBox::NoButtons);
}

void TestQuotaWidget::whatTheEditorsAre()
{
    const auto isEditor = [](const ElementWidget &widget, const char *type, const char *owner, int order,
                             const char *title, const char *isOnLabel) {
        QCOMPARE(widget.elementType(), QString::fromLatin1(type));
        QCOMPARE(widget.ownerType(), QString::fromLatin1(owner));
        QCOMPARE(widget.order(), order);
        QCOMPARE(widget.windowTitle(), QString::fromLatin1(title));
        QCOMPARE(widget.role(), 1);
        QCOMPARE(widget.size(), QSize(771, 577));
        QCOMPARE(widget.findChild<QLabel *>(QStringLiteral("_quotaIsOnLabel"))->text(), QString::fromLatin1(isOnLabel));
        QCOMPARE(widget.findChild<QLabel *>(QStringLiteral("_deviceSupportQuotaLabel"))->text(),
                 QStringLiteral("Quota on this device:"));
    };
    Module *module = _module.get();
    const char *const ofUser = "Quota for user on this device:";
    const char *const ofGroups = "Quota for groups on this device:";
    isEditor(UserWidget(module, &everybodyMay), "QuotaUserElement", "", 0, "", ofUser);
    isEditor(GroupWidget(module, &everybodyMay), "QuotaGroupElement", "", 0, "", ofGroups);
    isEditor(LocalUserQuotaWidget(module, &everybodyMay), "LocalUserQuotaElement", "LocalUser", 800, "Quota", ofUser);
    isEditor(LocalGroupQuotaWidget(module, &everybodyMay), "LocalGroupQuotaElement", "LocalGroup", 800, "Quota",
             ofGroups);
}

void TestQuotaWidget::aRecordIsShown()
{
    DeviceQuota quota = limits(2 * GiB, 3 * MiB, 1000, 2000);
    quota.blocksTimeToForce = QDateTime(QDate(2026, 11, 28), QTime(12, 30, 59));
    show(quota);
    QCOMPARE(text("_deviceFilesystemLabel"), QStringLiteral("ext4"));
    QCOMPARE(text("_quotaIsOnStatusLabel"), QStringLiteral("ON"));
    QCOMPARE(text("_deviceSupportQuotaStatusLabel"), QStringLiteral("ON"));
    QCOMPARE(size("_usedBlocksDoubleSpinBox")->value(), 1.5);
    QCOMPARE(size("_usedBlocksDoubleSpinBox")->suffix(), QStringLiteral(" Mb"));
    QCOMPARE(count("_usedInodesSpinBox")->value(), 17);
    QCOMPARE(size("_softLimitBlocksDoubleSpinBox")->value(), 2.0);
    QCOMPARE(combo("_softLimitDimensionComboBox")->currentText(), QStringLiteral("Gb"));
    QCOMPARE(size("_hardLimitBlocksDoubleSpinBox")->value(), 3.0);
    QCOMPARE(combo("_hardLimitDimensionComboBox")->currentText(), QStringLiteral("Mb"));
    QCOMPARE(count("_softLimitInodesSpinBox")->value(), 1000);
    QCOMPARE(count("_hardLimitInodesSpinBox")->value(), 2000);
    for (const char *name : {"_softLimitBlocksCheckBox", "_hardLimitBlocksCheckBox", "_softLimitInodesCheckBox",
                             "_hardLimitInodesCheckBox"})
        QVERIFY(check(name)->isChecked());
    QVERIFY(time("_blocksDateTimeEdit")->isEnabled());
    QCOMPARE(time("_blocksDateTimeEdit")->text(), QStringLiteral("28.11.2026 12:30"));
    QVERIFY(!find<QWidget>("_goToGeneralFormPushButton")->isVisible());
}

void TestQuotaWidget::aSoftLimitOfZeroIsUncheckedAndExportsNothing()
{
    show(limits(0, 3 * MiB));
    QVERIFY(!check("_softLimitBlocksCheckBox")->isChecked());
    QVERIFY(!size("_softLimitBlocksDoubleSpinBox")->isEnabled());
    QVERIFY(!combo("_softLimitDimensionComboBox")->isEnabled());
    const MemorySize soft = exported().softBlockLimit;
    QCOMPARE(soft.bytes, quint64(0));
    QCOMPARE(soft.value, 0.0);
    QCOMPARE(soft.unitName, QStringLiteral("Bytes"));
}

void TestQuotaWidget::theUnitLimitsTheNumber_data()
{
    QTest::addColumn<int>("unit");
    QTest::addColumn<double>("maximum");
    QTest::newRow("Bytes") << 0 << 4294967294.0;
    QTest::newRow("Kb") << 1 << 4194303.0;
    QTest::newRow("Mb") << 2 << 4095.0;
    QTest::newRow("Gb") << 3 << 3.0;
}

void TestQuotaWidget::theUnitLimitsTheNumber()
{
    QFETCH(int, unit);
    QFETCH(double, maximum);
    const std::pair<const char *, const char *> pairs[] = {
        {"_softLimitDimensionComboBox", "_softLimitBlocksDoubleSpinBox"},
        {"_hardLimitDimensionComboBox", "_hardLimitBlocksDoubleSpinBox"}};
    for (const auto &[unitBox, number] : pairs) {
        QCOMPARE(combo(unitBox)->itemData(unit).toInt(), unit);
        QCOMPARE(combo(unitBox)->itemText(unit), QString::fromLatin1(QTest::currentDataTag()));
        combo(unitBox)->setCurrentIndex(unit);
        QCOMPARE(size(number)->maximum(), maximum);
    }
}

void TestQuotaWidget::theUnitIsShownBeforeTheNumber()
{
    show({{QStringLiteral("/dev/a"), limits(2 * GiB, 2 * GiB)}, {QStringLiteral("/dev/b"), limits(500 * KiB, 900)}});
    QCOMPARE(size("_softLimitBlocksDoubleSpinBox")->value(), 2.0);
    devices()->setCurrentText(QStringLiteral("/dev/b"));
    QCOMPARE(size("_softLimitBlocksDoubleSpinBox")->value(), 500.0);
    QCOMPARE(size("_hardLimitBlocksDoubleSpinBox")->value(), 900.0);
}

void TestQuotaWidget::aGraceTimeThatDoesNotRunIsBlankAndExportsNone()
{
    DeviceQuota running = limits(GiB, 2 * GiB, 5, 6);
    running.blocksTimeToForce = running.inodesTimeToForce = QDateTime::currentDateTime();
    show({{QStringLiteral("/dev/a"), running}, {QStringLiteral("/dev/b"), limits(GiB, 2 * GiB, 5, 6)}});
    devices()->setCurrentText(QStringLiteral("/dev/b"));
    for (const char *name : {"_blocksDateTimeEdit", "_inodesDateTimeEdit"}) {
        QVERIFY(!time(name)->isEnabled());
        QCOMPARE(time(name)->text(), QStringLiteral(" "));
        QCOMPARE(time(name)->date(), QDate(1752, 9, 14));
    }
    QVERIFY(!exported(QStringLiteral("/dev/b")).blocksTimeToForce.isValid());
    QVERIFY(!exported(QStringLiteral("/dev/b")).inodesTimeToForce.isValid());
}

void TestQuotaWidget::filesHaveTheirPlural()
{
    QTranslator english;
    QVERIFY(english.load(QStringLiteral(KRA_TRANSLATIONS "/kra-quota-plugin_en.qm")));
    QVERIFY(QCoreApplication::installTranslator(&english));
    show(limits(0, 0, 7, 8));
    for (const char *name : {"_softLimitInodesSpinBox", "_hardLimitInodesSpinBox"}) {
        count(name)->setValue(1);
        QCOMPARE(count(name)->text(), QStringLiteral("1 file"));
        count(name)->setValue(5);
        QCOMPARE(count(name)->text(), QStringLiteral("5 files"));
    }
    DeviceQuota quota = noLimits();
    quota.usedInodes = 1;
    show(quota);
    QCOMPARE(count("_usedInodesSpinBox")->text(), QStringLiteral("1 file"));
    QCoreApplication::removeTranslator(&english);
}

void TestQuotaWidget::theDeviceToShowNextIsShownOnce()
{
    const QMap<QString, DeviceQuota> quotas = {{QStringLiteral("/dev/a"), noLimits()},
                                               {QStringLiteral("/dev/b"), noLimits()},
                                               {QStringLiteral("/dev/c"), noLimits()}};
    show(quotas);
    QCOMPARE(devices()->currentText(), QStringLiteral("/dev/a"));
    _widget->setDeviceToNextShow(QStringLiteral("/dev/b"));
    show(quotas);
    QCOMPARE(devices()->currentText(), QStringLiteral("/dev/b"));
    devices()->setCurrentText(QStringLiteral("/dev/c"));
    show(quotas);
    QCOMPARE(devices()->currentText(), QStringLiteral("/dev/c"));
}

void TestQuotaWidget::withoutTheQuotaFileApplyingWarnsFirst()
{
    DeviceQuota quota;
    show(quota);
    check("_softLimitInodesCheckBox")->click();
    count("_softLimitInodesSpinBox")->setValue(5);
    _module->asked.clear();
    bool wasShown = false;
    QTimer::singleShot(0, this, [this, &wasShown] {
        auto *box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget());
        QVERIFY(box);
        wasShown = _module->asked.empty() && box->windowTitle() == QLatin1String("Warning") &&
                   box->text() == QLatin1String("In process of inclusion quota configuration file will be created. "
                                                "This process may take several minutes.") &&
                   box->icon() == QMessageBox::Information && box->standardButtons() == QMessageBox::Ok;
        box->button(QMessageBox::Ok)->click();
    });
    _widget->applyContentChanges();
    QVERIFY(wasShown);
    QCOMPARE(_module->asked, std::vector<OperationType>({OperationType::Write}));
}

void TestQuotaWidget::withoutAFileToMakeApplyingSaysNothing_data()
{
    QTest::addColumn<bool>("isOn");
    QTest::addColumn<bool>("hasFile");
    QTest::addColumn<quint64>("limit");
    QTest::newRow("quotas are on") << true << true << GiB;
    QTest::newRow("they are off, and have a file") << false << true << GiB;
    QTest::newRow("the file system keeps them in itself") << true << false << GiB;
    QTest::newRow("nothing is switched on without a limit") << false << false << quint64(0);
}

void TestQuotaWidget::withoutAFileToMakeApplyingSaysNothing()
{
    QFETCH(bool, isOn);
    QFETCH(bool, hasFile);
    QFETCH(quint64, limit);
    DeviceQuota quota = limits(2 * GiB, limit);
    quota.kindIsOn = isOn;
    quota.fileExists = hasFile;
    show(quota);
    check("_softLimitBlocksCheckBox")->click();
    _module->asked.clear();
    _widget->applyContentChanges();
    QCOMPARE(_module->asked, std::vector<OperationType>({OperationType::Write}));
    QVERIFY(_widget->isBlocked());
}

void TestQuotaWidget::checkBoxesEnableTheirCompanions_data()
{
    QTest::addColumn<QStringList>("companions");
    const auto row = [](const char *box, const char *number, const char *unit) {
        QStringList names(QString::fromLatin1(number));
        if (unit)
            names += QString::fromLatin1(unit);
        QTest::newRow(box) << names;
    };
    row("_softLimitBlocksCheckBox", "_softLimitBlocksDoubleSpinBox", "_softLimitDimensionComboBox");
    row("_hardLimitBlocksCheckBox", "_hardLimitBlocksDoubleSpinBox", "_hardLimitDimensionComboBox");
    row("_softLimitInodesCheckBox", "_softLimitInodesSpinBox", nullptr);
    row("_hardLimitInodesCheckBox", "_hardLimitInodesSpinBox", nullptr);
}

void TestQuotaWidget::checkBoxesEnableTheirCompanions()
{
    QFETCH(QStringList, companions);
    show(noLimits());
    QStringList enabled;
    const auto enabledNumbers = [this] {
        QStringList names;
        for (const char *name :
             {"_softLimitBlocksDoubleSpinBox", "_softLimitDimensionComboBox", "_hardLimitBlocksDoubleSpinBox",
              "_hardLimitDimensionComboBox", "_softLimitInodesSpinBox", "_hardLimitInodesSpinBox"})
            if (find<QWidget>(name)->isEnabled())
                names += QString::fromLatin1(name);
        return names;
    };
    QCOMPARE(enabledNumbers(), QStringList());
    check(QTest::currentDataTag())->click();
    QCOMPARE(enabledNumbers(), companions);
    check(QTest::currentDataTag())->click();
    QCOMPARE(enabledNumbers(), QStringList());
}

void TestQuotaWidget::anUnknownDeviceShowsNoLimits()
{
    show(limits(GiB, 2 * GiB, 3, 4));
    _widget->currentDeviceChanged(QStringLiteral("/dev/nowhere"));
    QCOMPARE(text("_quotaIsOnStatusLabel"), QStringLiteral("OFF"));
    QCOMPARE(text("_deviceSupportQuotaStatusLabel"), QStringLiteral("OFF"));
    QCOMPARE(size("_softLimitBlocksDoubleSpinBox")->value(), 0.0);
    QCOMPARE(count("_hardLimitInodesSpinBox")->value(), 0);
    QCOMPARE(time("_blocksDateTimeEdit")->text(), QStringLiteral(" "));
}

void TestQuotaWidget::showingIsNoChange()
{
    DeviceQuota full = limits(7 * GiB, 8 * GiB, 9, 10);
    full.blocksTimeToForce = QDateTime::currentDateTime();
    show({{QStringLiteral("/dev/a"), full}, {QStringLiteral("/dev/b"), noLimits()}});
    devices()->setCurrentText(QStringLiteral("/dev/b"));
    devices()->setCurrentText(QStringLiteral("/dev/a"));
    QVERIFY(!_widget->isContentChanged());
    QVERIFY(devices()->isEnabled());
    QVERIFY(!_widget->isBlocked());
}

void TestQuotaWidget::everyEditIsAChangeThatHoldsTheDevice_data()
{
    QTest::addColumn<QString>("name");
    for (const char *name :
         {"_softLimitBlocksCheckBox", "_hardLimitBlocksCheckBox", "_softLimitInodesCheckBox",
          "_hardLimitInodesCheckBox", "_softLimitBlocksDoubleSpinBox", "_hardLimitBlocksDoubleSpinBox",
          "_softLimitInodesSpinBox", "_hardLimitInodesSpinBox", "_softLimitDimensionComboBox",
          "_hardLimitDimensionComboBox", "_blocksDateTimeEdit", "_inodesDateTimeEdit"})
        QTest::newRow(name) << QString::fromLatin1(name);
}

void TestQuotaWidget::everyEditIsAChangeThatHoldsTheDevice()
{
    QFETCH(QString, name);
    DeviceQuota full = limits(GiB, 2 * GiB, 9, 10);
    full.blocksTimeToForce = full.inodesTimeToForce = QDateTime::currentDateTime();
    show({{QStringLiteral("/dev/a"), full}, {QStringLiteral("/dev/b"), full}});
    devices()->setCurrentText(QStringLiteral("/dev/b"));
    auto *edited = find<QWidget>(qPrintable(name));
    if (auto *box = qobject_cast<QCheckBox *>(edited)) {
        box->click();
    } else {
        edited->setFocus();
        QTest::keyClick(edited, Qt::Key_Up);
    }
    QVERIFY(_widget->isContentChanged());
    QVERIFY(!devices()->isEnabled());
    show({{QStringLiteral("/dev/a"), full}, {QStringLiteral("/dev/b"), full}});
    QVERIFY(!_widget->isContentChanged());
    QVERIFY(devices()->isEnabled());
}

void TestQuotaWidget::anEditedLimitIsANumberAUnitAndBytes()
{
    show(limits(0, 3 * MiB));
    check("_softLimitBlocksCheckBox")->click();
    combo("_softLimitDimensionComboBox")->setCurrentText(QStringLiteral("Kb"));
    size("_softLimitBlocksDoubleSpinBox")->setValue(1.5);
    check("_softLimitInodesCheckBox")->click();
    count("_softLimitInodesSpinBox")->setValue(42);
    const DeviceQuota quota = exported();
    QCOMPARE(quota.softBlockLimit.value, 1.5);
    QCOMPARE(quota.softBlockLimit.unit, int(MemorySizeTransfer::Kb));
    QCOMPARE(quota.softBlockLimit.bytes, quint64(1536));
    QCOMPARE(quota.hardBlockLimit.bytes, 3 * MiB);
    QCOMPARE(quota.softInodeLimit, quint64(42));
    QCOMPARE(quota.hardInodeLimit, quint64(0));
}

void TestQuotaWidget::theExportedRecordIsTheAccountsAndSaysWhatWasTouched()
{
    GroupWidget groups(_module.get(), &everybodyMay);
    EditedElement element(QStringLiteral("QuotaGroupElement"), _module.get());
    groups.setElement(&element);
    auto read = account<GroupData>(
        {{QStringLiteral("/dev/a"), limits(5 * GiB, 6 * GiB)}, {QStringLiteral("/dev/b"), limits(7 * GiB, 8 * GiB)}},
        QStringLiteral("staff"), qint32(4294967294U));
    read.text = QStringLiteral("a text");
    groups.afterSuccessfulRead(&element, &read);
    groups.findChild<QComboBox *>(QStringLiteral("_devicesComboBox"))->setCurrentText(QStringLiteral("/dev/b"));

    const std::unique_ptr<ElementData> record = groups.exportElementData();
    const auto *exportedGroup = dynamic_cast<const GroupData *>(record.get());
    QVERIFY(exportedGroup);
    QCOMPARE(exportedGroup->name, QStringLiteral("staff"));
    QCOMPARE(exportedGroup->id, qint32(-2));
    QCOMPARE(exportedGroup->text, QStringLiteral("a text"));
    QCOMPARE(exportedGroup->deviceQuotas.keys(), read.deviceQuotas.keys());
    QCOMPARE(exportedGroup->deviceQuotas[QStringLiteral("/dev/a")].softBlockLimit.bytes, 5 * GiB);
    QCOMPARE(exportedGroup->deviceQuotas[QStringLiteral("/dev/b")].deviceName, QStringLiteral("/dev/b"));
    QVERIFY(exportedGroup->touched);
    QCOMPARE(exportedGroup->touched->device, QStringLiteral("/dev/b"));
    QCOMPARE(exportedGroup->touched->asRead.softBlockLimit.bytes, 7 * GiB);
    QCOMPARE(exportedGroup->touched->asRead.hardBlockLimit.bytes, 8 * GiB);
}

void TestQuotaWidget::aLimitThatTheFormCannotShowIsSaid()
{
    const auto *blocksNote = find<QLabel>("_blocksNoteLabel");
    const auto *inodesNote = find<QLabel>("_inodesNoteLabel");
    show(limits(2 * GiB, 3 * GiB, 100, 200));
    QVERIFY(blocksNote->isHidden() && inodesNote->isHidden());

    show(limits(1234567 * KiB, 100 * GiB, 4, 5000000000));
    const QLocale locale;
    QVERIFY(blocksNote->text().contains(QStringLiteral("(1234567 KB). The box shows it rounded.")));
    QVERIFY(blocksNote->text().contains(QStringLiteral("(100 GB), which is more than the box can show.")));
    QVERIFY(inodesNote->text().contains(locale.toString(5000000000)));
    QVERIFY(blocksNote->isVisible() && inodesNote->isVisible());
    QCOMPARE(exported().hardInodeLimit, quint64(5000000000));

    // No longer the one that goes back.
    size("_hardLimitBlocksDoubleSpinBox")->setValue(2.0);
    QVERIFY(!blocksNote->text().contains(QStringLiteral("(100 GB)")));
    QVERIFY(blocksNote->text().contains(QStringLiteral(" KB)")));
    QCOMPARE(exported().hardBlockLimit.bytes, 2 * GiB);
    QCOMPARE(exported().softBlockLimit.bytes, 1234567 * KiB);
    // Back at what the form showed: the one that is stored goes back again, and the page says so.
    size("_hardLimitBlocksDoubleSpinBox")->setValue(3.0);
    QVERIFY(blocksNote->text().contains(QStringLiteral("(100 GB)")));
    QCOMPARE(exported().hardBlockLimit.bytes, 100 * GiB);
}

void TestQuotaWidget::theGeneralFormIsFound()
{
    class Watcher : public TreeNodeObserver
    {
    public:
        void rowsAboutToBeInserted(TreeNode * /*parent*/, int /*first*/, int /*last*/) override {}
        void rowsInserted(TreeNode * /*parent*/) override {}
        void rowsAboutToBeRemoved(TreeNode * /*parent*/, int /*first*/, int /*last*/) override {}
        void rowsRemoved(TreeNode * /*parent*/) override {}
        void nodeDataChanged(TreeNode * /*node*/) override {}
        void childrenDataChanged(TreeNode * /*parent*/) override {}
        void currentNodeRequested(TreeNode *node) override { requested = node; }
        void observedNodeDestroyed(TreeNode * /*node*/) override {}
        TreeNode *requested = nullptr;
    };
    auto *generalWidget = new GeneralWidget(_module.get(), &everybodyMay);
    _module->insertElementWidget(generalWidget);
    EditedElement computer(QStringLiteral("LocalComputer"), _module.get());
    auto *general = new EditedElement(QStringLiteral("QuotaGeneralElement"), _module.get());
    auto *users = new EditedElement(QStringLiteral("QuotaUsersElement"), _module.get());
    auto *user = new EditedElement(QStringLiteral("QuotaUserElement"), _module.get());
    computer.append(general);
    general->append(users);
    users->append(user);
    Watcher watcher;
    computer.addObserver(&watcher);

    UserData record = account({{QStringLiteral("/dev/a"), noLimits()}, {QStringLiteral("/dev/b"), noLimits()}});
    auto *button = find<QPushButton>("_goToGeneralFormPushButton");
    button->click(); // nothing above its element
    QVERIFY(!watcher.requested);
    _widget->setElement(user);
    _widget->afterSuccessfulRead(user, &record);
    devices()->setCurrentText(QStringLiteral("/dev/b"));
    button->click();
    QCOMPARE(watcher.requested, static_cast<TreeNode *>(general));
    GeneralData settings;
    settings.deviceSettings = {{QStringLiteral("/dev/a"), {}}, {QStringLiteral("/dev/b"), {}}};
    generalWidget->setElement(general);
    generalWidget->afterSuccessfulRead(general, &settings);
    QCOMPARE(generalWidget->findChild<QComboBox *>(QStringLiteral("_filesystemsComboBox"))->currentText(),
             QStringLiteral("/dev/b"));
    computer.removeObserver(&watcher);
    _widget->setElement(nullptr);
}

void TestQuotaWidget::recordsThatAreNotThisElementsAreNotShown()
{
    EditedElement other(QStringLiteral("QuotaUserElement"), _module.get());
    UserData user = account({{QStringLiteral("/dev/a"), noLimits()}});
    auto group = account<GroupData>({{QStringLiteral("/dev/a"), noLimits()}});
    _widget->afterSuccessfulRead(&other, &user);
    QCOMPARE(devices()->count(), 0);
    _widget->afterSuccessfulRead(_element.get(), &group);
    QCOMPARE(devices()->count(), 0);
    QVERIFY(_widget->isBlocked());
    _widget->afterSuccessfulRead(_element.get(), &user);
    QVERIFY(!_widget->isBlocked());
    _widget->afterSuccessfulRead(_element.get(), nullptr);
    QVERIFY(_widget->isBlocked());
}

void TestQuotaWidget::readOnlyThePageCanStillBeLookedThrough()
{
    UserWidget widget(_module.get(), &nobodyMay);
    widget.setElement(_element.get());
    widget.show();
    UserData record =
        account({{QStringLiteral("/dev/a"), limits(GiB, 2 * GiB)}, {QStringLiteral("/dev/b"), noLimits()}});
    widget.afterSuccessfulRead(_element.get(), &record);
    const auto isEnabled = [&widget](const char *name) {
        return widget.findChild<QWidget *>(QString::fromLatin1(name))->isEnabled();
    };
    auto *box = widget.findChild<QComboBox *>(QStringLiteral("_devicesComboBox"));
    for (const QString &device : {QStringLiteral("/dev/b"), QStringLiteral("/dev/a")}) {
        box->setCurrentText(device);
        QVERIFY(isEnabled("_devicesComboBox"));
        QVERIFY(isEnabled("_quotaIsOnStatusLabel"));
        QVERIFY(!isEnabled("_softLimitBlocksCheckBox"));
        QVERIFY(!isEnabled("_softLimitBlocksDoubleSpinBox"));
        QVERIFY(!isEnabled("_hardLimitInodesCheckBox"));
    }
}

void TestQuotaWidget::theWheelScrollsThePage()
{
    show(limits(GiB, 2 * GiB, 3, 4));
    devices()->setFocus();
    auto *number = size("_softLimitBlocksDoubleSpinBox");
    QWheelEvent turn(QPointF(5, 5), number->mapToGlobal(QPointF(5, 5).toPoint()), QPoint(), QPoint(0, -120),
                     Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
    turn.ignore();
    QCoreApplication::sendEvent(number, &turn);
    QCOMPARE(number->value(), 1.0);
    QVERIFY(!turn.isAccepted());
    QVERIFY(!_widget->isContentChanged());
}

void TestQuotaWidget::theKeyboardReachesEverything()
{
    DeviceQuota quota = limits(GiB, 2 * GiB, 3, 4);
    quota.blocksTimeToForce = quota.inodesTimeToForce = QDateTime::currentDateTime();
    show(quota);
    const char *const order[] = {"_devicesComboBox",
                                 "_softLimitBlocksCheckBox",
                                 "_softLimitBlocksDoubleSpinBox",
                                 "_softLimitDimensionComboBox",
                                 "_softLimitBlocksAnyButton",
                                 "_hardLimitBlocksCheckBox",
                                 "_hardLimitBlocksDoubleSpinBox",
                                 "_hardLimitDimensionComboBox",
                                 "_hardLimitBlocksAnyButton",
                                 "_blocksDateTimeEdit",
                                 "_softLimitInodesCheckBox",
                                 "_softLimitInodesSpinBox",
                                 "_softLimitInodesAnyButton",
                                 "_hardLimitInodesCheckBox",
                                 "_hardLimitInodesSpinBox",
                                 "_hardLimitInodesAnyButton",
                                 "_inodesDateTimeEdit"};
    QVERIFY(QTest::qWaitForWindowActive(_widget.get()));
    devices()->setFocus();
    for (const char *name : order) {
        QCOMPARE(QApplication::focusWidget()->objectName(), QString::fromLatin1(name));
        // A date-time edit first goes from part to part.
        for (int parts = 0; parts < 5 && QApplication::focusWidget()->objectName() == QLatin1String(name); ++parts)
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    }
    QVERIFY(!_widget->isContentChanged());
}

QTEST_MAIN(TestQuotaWidget)
#include "tst_quotawidget.moc"
