// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "accountlist.h"
#include "formwidget.h"

#include <accountcolumn.h>
#include <devicesbox.h>
#include <elementtreeview.h>
#include <generalwidget.h>
#include <groupswidget.h>
#include <localuserquotawidget.h>
#include <treenodemodel.h>
#include <userswidget.h>
#include <userwidget.h>

#include <QHeaderView>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QScrollBar>
#include <QSettings>
#include <QSignalSpy>
#include <QStyledItemDelegate>
#include <QTemporaryDir>
#include <QtTest>

using namespace MadeUpAccounts;

/// The lists of users and groups.
class TestUsersList : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();

    void theFormIsAsDescribed();
    void everyFilterHidesTheSectionBeforeItsName();
    void aDoubleClickTogglesAFilter();
    void theFiltersSurviveARestart();
    void theColumnsSurviveARestart();
    void columnsThatNeverHadRowsAreFittedAfterARestart();
    void theLastNameFitsItsColumn();
    void aListThatWasNeverShownSavesNothing();
    void theGroupsHaveFiltersOfTheirOwn();
    void allColumnsFitBesideTheTree();
    void theWarningStandsWhileTheDeviceHasNoQuota();
    void theWarningFollowsTheRecords();
    void theListIsReadAgainAfterAnUpdateThatItShows_data();
    void theListIsReadAgainAfterAnUpdateThatItShows();
    void theWarningIsDecidedByTheFirstAccount();
    void theDeviceSurvivesANewRead();
    void aDeviceThatIsGoneStaysChosen();
    void theBoxShowsMountPoints();
    void theCellsAreTheDevices();
    void theNumbersOfARowAreWrittenAlike();
    void rowsThatWereThereFirstShowTheDeviceToo();
    void sortingIsByValueAndEmptyCellsAreLast_data();
    void sortingIsByValueAndEmptyCellsAreLast();
    void searchingIsCaseInsensitive();
    void theVariantsNarrowTheRows();
    void aRowOpensItsPageAtTheSameDevice_data();
    void aRowOpensItsPageAtTheSameDevice();
    void aRowWithoutAnEditorOpensNothing();
    void theFirstReadIsTheViews();
    void furtherReadsAreForStaleContent();
    void paranoidListsAreAlwaysReadAgain();
    void theSelectionAndThePlaceSurviveANewRead();
    void rowsThatGoForGoodAreNotRememberedForLater();
    void rowsThatGoInSeveralRunsAreRememberedFromTheFirst();
    void rowsThatComeInRunsShowTheDevice();
    void theMenuComesBelowThePointer();
    void theSelectedElementIsTold();

private:
    template<typename Widget>
    Widget *find(const char *name) const
    {
        return formWidget<Widget>(*_widget, name);
    }
    DevicesBox *devices() const { return find<DevicesBox>("_devicesComboBox"); }
    QListWidget *filters() const { return find<QListWidget>("_filtersListWidget"); }
    ElementTreeView *view() const { return find<ElementTreeView>("_elementTreeView"); }
    bool isWarned() const { return find<QLabel>("_warningLabel")->isVisible(); }
    QString warning() const { return find<QLabel>("_warningLabel")->text(); }
    QString cell(int row, int column) const { return view()->model()->index(row, column).data().toString(); }
    QStringList names() const;
    QModelIndex rowOf(const QString &name) const;
    void makeWidget();
    void showThree();

    QTemporaryDir _settings;
    std::unique_ptr<RecordingModule> _module;
    std::unique_ptr<UsersElement> _users;
    std::unique_ptr<UsersWidget> _widget;
    const QString _first = QStringLiteral("/dev/a");
    const QString _second = QStringLiteral("/dev/b");
};

void TestUsersList::initTestCase()
{
    QVERIFY(_settings.isValid());
    QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, _settings.path());
    QCoreApplication::setOrganizationName(QStringLiteral("kra"));
    QCoreApplication::setApplicationName(QStringLiteral("tst_userslist"));
}

void TestUsersList::init()
{
    QSettings().clear();
    _module = std::make_unique<RecordingModule>();
    _users = std::make_unique<UsersElement>(_module.get(), &everybodyMay);
    makeWidget();
}

void TestUsersList::cleanup()
{
    _widget.reset();
    _users.reset();
    _module.reset();
}

void TestUsersList::makeWidget()
{
    _widget = std::make_unique<UsersWidget>(_module.get(), &everybodyMay);
    _widget->resize(900, 400);
    _widget->setElement(_users.get());
    _widget->show();
    QVERIFY(QTest::qWaitForWindowExposed(_widget.get()));
}

/// Three users on two devices.
void TestUsersList::showThree()
{
    _widget->read();
    const auto quotas = [this](quint64 softA, quint64 softB) {
        DeviceQuota onA = limits(softA, 0, softA / KiB, 0);
        DeviceQuota onB = limits(softB, 0);
        if (softA != 0)
            onA.blocksTimeToForce = QDateTime(QDate(2026, 12, 1), QTime(0, 0)).addSecs(-qint64(softA / KiB));
        return QMap<QString, DeviceQuota>({{_first, onA}, {_second, onB}});
    };
    AccountList::replace(*_users,
                         {AccountList::user(_module.get(), QStringLiteral("root"), 0, quotas(GiB, 5 * KiB)),
                          AccountList::user(_module.get(), QStringLiteral("Berta"), 1000, quotas(0, 7 * KiB)),
                          AccountList::user(_module.get(), QStringLiteral("anna"), 1001, quotas(9 * KiB, 6 * KiB))});
    AccountList::tellDevices(*_widget, {_first, _second});
}

QStringList TestUsersList::names() const
{
    QStringList texts;
    for (int row = 0; row < view()->model()->rowCount(); ++row)
        texts += cell(row, AccountColumn::Name);
    return texts;
}

QModelIndex TestUsersList::rowOf(const QString &name) const
{
    return view()->model()->index(names().indexOf(name), AccountColumn::Name);
}

void TestUsersList::theFormIsAsDescribed()
{
    QCOMPARE(find<QLabel>("label")->text(), QStringLiteral("Device:"));
    QCOMPARE(find<QPushButton>("_filtersPushButton")->text(), QStringLiteral("Filters"));
    QVERIFY(!filters()->isVisible());
    find<QPushButton>("_filtersPushButton")->click();
    QVERIFY(filters()->isVisible());
    find<QPushButton>("_filtersPushButton")->click();
    QVERIFY(!filters()->isVisible());
    QVERIFY(!view()->rootIsDecorated());
    QVERIFY(view()->isSortingEnabled());
    QCOMPARE(_widget->objectName(), QStringLiteral("AbstractUsersGroupsWidget"));

    const GroupsWidget groups(_module.get(), &everybodyMay);
    const auto warning = [](const QWidget &widget) {
        return widget.findChild<QLabel *>(QStringLiteral("_warningLabel"))->text();
    };
    QCOMPARE(_widget->elementType(), QStringLiteral("QuotaUsersElement"));
    QCOMPARE(_widget->windowTitle(), QStringLiteral("Users"));
    QCOMPARE(_widget->order(), 900);
    QCOMPARE(warning(*_widget), QStringLiteral("*To display all information enable quotas for users on this device"));
    QCOMPARE(groups.elementType(), QStringLiteral("QuotaGroupsElement"));
    QCOMPARE(groups.windowTitle(), QStringLiteral("Groups"));
    QCOMPARE(groups.order(), 600);
    QCOMPARE(warning(groups), QStringLiteral("*To display all information enable quotas for groups on this device"));
}

void TestUsersList::everyFilterHidesTheSectionBeforeItsName()
{
    const QStringList texts = {QStringLiteral("Name"),
                               QStringLiteral("Quota is on"),
                               QStringLiteral("Used blocks"),
                               QStringLiteral("Soft block limit"),
                               QStringLiteral("Hard block limit"),
                               QStringLiteral("Grace block period"),
                               QStringLiteral("Blocks time to force"),
                               QStringLiteral("Used inodes"),
                               QStringLiteral("Soft inode limit"),
                               QStringLiteral("Hard inode limit"),
                               QStringLiteral("Grace inode period"),
                               QStringLiteral("Inodes time to force")};
    showThree();
    QCOMPARE(filters()->count(), texts.size());
    const QHeaderView *header = view()->header();
    for (int i = 0; i < texts.size(); ++i) {
        QListWidgetItem *item = filters()->item(i);
        QCOMPARE(item->text(), texts.at(i));
        QCOMPARE(item->checkState(), Qt::Checked);
        QVERIFY(!header->isSectionHidden(i));
        item->setCheckState(Qt::Unchecked);
        for (int section = 0; section < header->count(); ++section)
            QCOMPARE(header->isSectionHidden(section), section == i);
        item->setCheckState(Qt::Checked);
        QVERIFY(!header->isSectionHidden(i));
    }
}

void TestUsersList::aDoubleClickTogglesAFilter()
{
    showThree();
    _widget->showHideFiltersWidget();
    QListWidgetItem *item = filters()->item(0);
    QVERIFY(QTest::qWaitForWindowExposed(_widget.get()));
    const QRect place = filters()->visualItemRect(item);
    const QPoint onText(place.right() - 4, place.center().y());
    QTest::mouseClick(filters()->viewport(), Qt::LeftButton, {}, onText);
    QTest::mouseDClick(filters()->viewport(), Qt::LeftButton, {}, onText);
    QCOMPARE(item->checkState(), Qt::Unchecked);
    QVERIFY(view()->header()->isSectionHidden(0));
    _widget->filterItemDoubleCkicked(filters()->model()->index(0, 0));
    QCOMPARE(item->checkState(), Qt::Checked);
    QVERIFY(!view()->header()->isSectionHidden(0));
}

void TestUsersList::theFiltersSurviveARestart()
{
    showThree();
    filters()->item(2)->setCheckState(Qt::Unchecked);
    filters()->item(11)->setCheckState(Qt::Unchecked);
    _widget.reset();
    QCOMPARE(QSettings().value(QStringLiteral("filtersForQuota/QuotaUsersElement0")), QVariant(true));
    QCOMPARE(QSettings().value(QStringLiteral("filtersForQuota/QuotaUsersElement2")).toBool(), false);
    QCOMPARE(QSettings().value(QStringLiteral("filtersForQuota/QuotaUsersElement11")).toBool(), false);
    QStringList expected;
    for (int filter = 0; filter < 12; ++filter)
        expected += QStringLiteral("filtersForQuota/QuotaUsersElement%1").arg(filter);
    expected.sort();
    QCOMPARE(QSettings().allKeys().filter(QStringLiteral("filtersForQuota")), expected);

    makeWidget();
    _widget->read();
    QVERIFY(view()->header()->isSectionHidden(2));
    QVERIFY(view()->header()->isSectionHidden(11));
    QVERIFY(!view()->header()->isSectionHidden(3));
    QCOMPARE(filters()->item(2)->checkState(), Qt::Unchecked);
}

void TestUsersList::theColumnsSurviveARestart()
{
    const int unfitted = view()->header()->defaultSectionSize();
    showThree();
    QTRY_VERIFY(view()->header()->sectionSize(AccountColumn::BlocksTimeToForce) != unfitted);
    view()->header()->moveSection(5, 1);
    view()->header()->resizeSection(4, 222);
    view()->sortByColumn(AccountColumn::Name, Qt::AscendingOrder);
    // A column that is shown again in the settings alone is shown, whatever the header remembers.
    filters()->item(3)->setCheckState(Qt::Unchecked);
    _users.reset(); // elements go before their editors when the console ends
    _widget.reset();
    _users = std::make_unique<UsersElement>(_module.get(), &everybodyMay);
    QSettings().setValue(QStringLiteral("filtersForQuota/QuotaUsersElement3"), true);
    makeWidget();
    _widget->read();
    QCOMPARE(view()->header()->visualIndex(5), 1);
    QCOMPARE(view()->header()->sectionSize(4), 222);
    QVERIFY(!view()->header()->isSectionHidden(3));
    showThree();
    QCOMPARE(names().last(), QStringLiteral("root"));
}

void TestUsersList::columnsThatNeverHadRowsAreFittedAfterARestart()
{
    _widget->read();
    _widget.reset();
    makeWidget();
    const int unfitted = view()->header()->defaultSectionSize();
    showThree();
    QTRY_VERIFY(view()->header()->sectionSize(AccountColumn::BlocksTimeToForce) != unfitted);
}

void TestUsersList::theLastNameFitsItsColumn()
{
    _widget->read();
    QVector<TreeNode *> users;
    for (int i = 0; i < 3000; ++i) {
        const QString name = QStringLiteral("u%1").arg(i).leftJustified(i / 120, QLatin1Char('a'));
        users += AccountList::user(_module.get(), name, i, {{_first, noLimits()}});
    }
    AccountList::replace(*_users, users);
    const QModelIndex last = view()->model()->index(2999, AccountColumn::Title);
    QTRY_VERIFY(view()->header()->sectionSize(AccountColumn::Title) >= view()->sizeHintForIndex(last).width());
}

void TestUsersList::aListThatWasNeverShownSavesNothing()
{
    QSettings().setValue(QStringLiteral("filtersForQuota/QuotaUsersElement4"), false);
    _widget.reset();
    QCOMPARE(QSettings().allKeys(), QStringList(QStringLiteral("filtersForQuota/QuotaUsersElement4")));
    QCOMPARE(QSettings().value(QStringLiteral("filtersForQuota/QuotaUsersElement4")).toBool(), false);
}

void TestUsersList::theGroupsHaveFiltersOfTheirOwn()
{
    QSettings().setValue(QStringLiteral("filtersForQuota/QuotaUsersElement3"), false);
    QSettings().setValue(QStringLiteral("filtersForQuota/QuotaGroupsElement5"), false);
    GroupsElement groups(_module.get(), &everybodyMay);
    auto list = std::make_unique<GroupsWidget>(_module.get(), &everybodyMay);
    list->setElement(&groups);
    list->read();
    auto *filtersOfGroups = list->findChild<QListWidget *>(QStringLiteral("_filtersListWidget"));
    QCOMPARE(filtersOfGroups->item(3)->checkState(), Qt::Checked);
    QCOMPARE(filtersOfGroups->item(5)->checkState(), Qt::Unchecked);
    filtersOfGroups->item(7)->setCheckState(Qt::Unchecked);
    list.reset();
    QCOMPARE(QSettings().allKeys().filter(QStringLiteral("filtersForQuota/QuotaGroupsElement")).size(), 12);
    QCOMPARE(QSettings().value(QStringLiteral("filtersForQuota/QuotaGroupsElement7")), QVariant(false));
    QCOMPARE(QSettings().value(QStringLiteral("filtersForQuota/QuotaGroupsElement8")), QVariant(true));
    QVERIFY(!QSettings().contains(QStringLiteral("filtersForQuota/QuotaUsersElement7")));
}

/// In a window 1280 wide.
void TestUsersList::allColumnsFitBesideTheTree()
{
    constexpr int roomBesideTheTree = 990;
    _widget->resize(roomBesideTheTree, 400);
    _widget->read();
    DeviceQuota full = limits(1023 * MiB + 512 * KiB, 2 * GiB, 120000, 150000);
    full.usedBlocks = size(1500 * MiB);
    full.usedInodes = 123456;
    full.blocksTimeToForce = full.inodesTimeToForce = QDateTime(QDate(2026, 12, 1), QTime(0, 0));
    AccountList::replace(*_users,
                         {AccountList::user(_module.get(), QStringLiteral("annemarie"), 1001, {{_first, full}})});
    AccountList::tellDevices(*_widget, {_first});
    const QHeaderView *header = view()->header();
    const QString time = QStringLiteral("01.12.2026 00:00");
    QTRY_VERIFY(header->sectionSize(AccountColumn::BlocksTimeToForce) >= view()->fontMetrics().horizontalAdvance(time));
    QVERIFY2(header->length() <= view()->viewport()->width(), qPrintable(QString::number(header->length())));
    for (int column = 0; column < AccountColumn::Count; ++column) {
        const QModelIndex index = view()->model()->index(0, column);
        QVERIFY2(header->sectionSize(column) >= view()->sizeHintForIndex(index).width(), qPrintable(cell(0, column)));
    }
    QCOMPARE(view()->model()->headerData(AccountColumn::BlocksTimeToForce, Qt::Horizontal).toString(),
             QStringLiteral("Blocks\ntime to\nforce"));
    QCOMPARE(_users->headerData(AccountColumn::BlocksTimeToForce, Qt::Horizontal, Qt::DisplayRole).toString(),
             QStringLiteral("Blocks time to force"));
}

void TestUsersList::theWarningStandsWhileTheDeviceHasNoQuota()
{
    _widget->read();
    AccountList::tellDevices(*_widget, {_first, _second});
    QVERIFY2(isWarned(), "there are no accounts");
    DeviceQuota off = noLimits();
    off.kindIsOn = false;
    AccountList::replace(
        *_users, {AccountList::user(_module.get(), QStringLiteral("anna"), 1, {{_first, noLimits()}, {_second, off}})});
    AccountList::tellDevices(*_widget, {_first, _second, QStringLiteral("/dev/c")});
    QVERIFY(!isWarned());
    devices()->setCurrentText(_second);
    QVERIFY(isWarned());
    devices()->setCurrentText(_first);
    QVERIFY(!isWarned());
    devices()->setCurrentText(QStringLiteral("/dev/c"));
    QVERIFY2(isWarned(), "the first account has no record for the device");
}

void TestUsersList::theWarningFollowsTheRecords()
{
    DeviceQuota off = noLimits();
    off.kindIsOn = false;
    _widget->read();
    UserElement *anna = AccountList::user(_module.get(), QStringLiteral("anna"), 1, {{_first, off}});
    AccountList::replace(*_users, {anna});
    AccountList::tellDevices(*_widget, {_first});
    QVERIFY(isWarned());
    // Quotas came on with an Apply on the account's own page; then the list is shown again.
    anna->setRecord(std::make_unique<UserData>(account({{_first, noLimits()}}, QStringLiteral("anna"), 1)));
    _widget->read();
    QVERIFY(!isWarned());
}

void TestUsersList::theListIsReadAgainAfterAnUpdateThatItShows_data()
{
    QTest::addColumn<QString>("page");
    QTest::addColumn<bool>("isOn");
    QTest::addColumn<bool>("isReadAgain");
    QTest::newRow("general settings") << QStringLiteral("general") << true << true;
    QTest::newRow("limits of a row") << QStringLiteral("user") << true << false;
    QTest::newRow("limits that switched quotas on") << QStringLiteral("user") << false << true;
    QTest::newRow("limits of the console's own user") << QStringLiteral("local") << true << true;
}

void TestUsersList::theListIsReadAgainAfterAnUpdateThatItShows()
{
    QFETCH(QString, page);
    QFETCH(bool, isOn);
    QFETCH(bool, isReadAgain);
    using Content = ContainerElement::Content;
    EditedElement computer(QStringLiteral("LocalComputer"), _module.get());
    auto *general = new EditedElement(QStringLiteral("QuotaGeneralElement"), _module.get());
    auto *users = new UsersElement(_module.get(), &everybodyMay);
    auto *groups = new GroupsElement(_module.get(), &everybodyMay);
    computer.append(general);
    general->append({users, groups});
    users->setContent(Content::Read);
    auto *user = new EditedElement(QStringLiteral("QuotaUserElement"), _module.get());
    users->append(user);

    DeviceQuota quota = noLimits();
    quota.kindIsOn = isOn;
    UserData record = account({{_first, quota}});
    std::unique_ptr<ViewEditElementWidget> editor;
    if (page == QLatin1String("general")) {
        editor = std::make_unique<GeneralWidget>(_module.get(), &everybodyMay);
        editor->setElement(general);
    } else {
        if (page == QLatin1String("user"))
            editor = std::make_unique<UserWidget>(_module.get(), &everybodyMay);
        else
            editor = std::make_unique<LocalUserQuotaWidget>(_module.get(), &everybodyMay);
        editor->setElement(user);
        editor->afterSuccessfulRead(user, &record);
    }
    editor->afterSuccessfulUpdate();
    QCOMPARE(users->content(), isReadAgain ? Content::Stale : Content::Read);
    QCOMPARE(groups->content(), Content::NeverRead); // and so it is read anyway
}

void TestUsersList::theWarningIsDecidedByTheFirstAccount()
{
    _widget->read();
    DeviceQuota off = noLimits();
    off.kindIsOn = false;
    const auto showTwo = [this](const DeviceQuota &first, const DeviceQuota &second) {
        AccountList::replace(*_users,
                             {AccountList::user(_module.get(), QStringLiteral("anna"), 1, {{_first, first}}),
                              AccountList::user(_module.get(), QStringLiteral("berta"), 2, {{_first, second}})});
        AccountList::tellDevices(*_widget, {_first});
    };
    showTwo(off, noLimits());
    QVERIFY(isWarned());
    showTwo(noLimits(), off);
    QVERIFY(!isWarned());
}

void TestUsersList::theDeviceSurvivesANewRead()
{
    showThree();
    devices()->setCurrentText(_second);
    showThree();
    QCOMPARE(devices()->currentText(), _second);
    QTRY_COMPARE(cell(0, AccountColumn::SoftBlockLimit), QStringLiteral("5 Kb"));
}

/// What is read on from the list would else be of another device.
void TestUsersList::aDeviceThatIsGoneStaysChosen()
{
    showThree();
    devices()->setCurrentText(_second);
    const QString usual = warning();
    AccountList::tellDevices(*_widget, {_first});
    QCOMPARE(devices()->currentText(), _second);
    QVERIFY(devices()->isAbsent());
    QVERIFY(isWarned());
    QCOMPARE(warning(), QStringLiteral("/dev/b was not there at the last read."));
    AccountList::tellDevices(*_widget, {});
    QCOMPARE(devices()->currentText(), _second);
    QCOMPARE(devices()->count(), 1);

    AccountList::tellDevices(*_widget, {_first});
    devices()->setCurrentText(_first);
    QVERIFY(!isWarned());
    QTRY_COMPARE(cell(0, AccountColumn::SoftBlockLimit), QStringLiteral("1 Gb"));
    devices()->setCurrentText(_second);
    AccountList::tellDevices(*_widget, {_first, _second});
    QVERIFY(!devices()->isAbsent());
    QVERIFY(!isWarned());
    QCOMPARE(warning(), usual);
    QTRY_COMPARE(cell(0, AccountColumn::SoftBlockLimit), QStringLiteral("5 Kb"));
}

void TestUsersList::theBoxShowsMountPoints()
{
    _widget->read();
    DeviceQuota home = noLimits();
    home.mountPoint = QStringLiteral("/home");
    AccountList::replace(*_users, {AccountList::user(_module.get(), QStringLiteral("anna"), 1,
                                                     {{_first, home}, {_second, noLimits()}})});
    AccountList::tellDevices(*_widget, {_first, _second});
    QCOMPARE(devices()->currentText(), _first);
    QCOMPARE(devices()->label(devices()->model()->index(0, 0)), QStringLiteral("/dev/a (/home)"));
    QCOMPARE(devices()->label(devices()->model()->index(1, 0)), _second);
}

void TestUsersList::theCellsAreTheDevices()
{
    showThree();
    QTRY_COMPARE(cell(0, AccountColumn::SoftBlockLimit), QStringLiteral("1 Gb"));
    QSignalSpy changes(view()->model(), &QAbstractItemModel::dataChanged);
    devices()->setCurrentText(_second);
    QCOMPARE(cell(0, AccountColumn::SoftBlockLimit), QStringLiteral("5 Kb"));
    QTRY_COMPARE(changes.count(), 1);
}

void TestUsersList::theNumbersOfARowAreWrittenAlike()
{
    const QLocale before;
    QLocale::setDefault(QLocale(QLocale::German));
    _widget->read();
    DeviceQuota quota = limits(1023 * KiB, GiB + 512 * MiB, 12345);
    AccountList::replace(*_users, {AccountList::user(_module.get(), QStringLiteral("anna"), 1, {{_first, quota}})});
    AccountList::tellDevices(*_widget, {_first});
    const auto shown = [this](int column, int role) {
        const QVariant value = view()->model()->index(0, column).data(role);
        return qobject_cast<QStyledItemDelegate *>(view()->itemDelegate())->displayText(value, QLocale());
    };
    QStringList texts;
    for (const int column :
         {AccountColumn::SoftBlockLimit, AccountColumn::HardBlockLimit, AccountColumn::SoftInodeLimit})
        for (const int role : {Qt::DisplayRole, Qt::ToolTipRole})
            texts += shown(column, role);
    QLocale::setDefault(before);
    QCOMPARE(texts, QStringList({QStringLiteral("1.023 Kb"), QStringLiteral("1.023 Kb"), QStringLiteral("1,5 Gb"),
                                 QStringLiteral("1,5 Gb"), QStringLiteral("12.345"), QStringLiteral("12.345")}));
}

void TestUsersList::rowsThatWereThereFirstShowTheDeviceToo()
{
    // The tree beside the page was opened first: its read told the devices before this list showed anything.
    UsersWidget late(_module.get(), &everybodyMay);
    AccountList::replace(*_users,
                         {AccountList::user(_module.get(), QStringLiteral("anna"), 1, {{_first, limits(GiB, 0)}})});
    AccountList::tellDevices(late, {_first});
    late.setElement(_users.get());
    late.read();
    QCOMPARE(late.findChild<ElementTreeView *>()->model()->index(0, AccountColumn::SoftBlockLimit).data().toString(),
             QStringLiteral("1 Gb"));
    QVERIFY(late.findChild<QLabel *>(QStringLiteral("_warningLabel"))->isHidden());
}

void TestUsersList::sortingIsByValueAndEmptyCellsAreLast_data()
{
    QTest::addColumn<int>("column");
    QTest::addColumn<bool>("isBackwards"); // the times are set against the sizes
    QTest::newRow("9 Kb before 1 Gb") << int(AccountColumn::SoftBlockLimit) << false;
    QTest::newRow("numbers") << int(AccountColumn::SoftInodeLimit) << false;
    QTest::newRow("dates") << int(AccountColumn::BlocksTimeToForce) << true;
}

void TestUsersList::sortingIsByValueAndEmptyCellsAreLast()
{
    QFETCH(int, column);
    QFETCH(bool, isBackwards);
    showThree();
    const QString small = QStringLiteral("anna");
    const QString large = QStringLiteral("root");
    const QString empty = QStringLiteral("Berta");
    view()->sortByColumn(column, isBackwards ? Qt::DescendingOrder : Qt::AscendingOrder);
    QTRY_COMPARE(names(), QStringList({small, large, empty}));
    view()->sortByColumn(column, isBackwards ? Qt::AscendingOrder : Qt::DescendingOrder);
    QTRY_COMPARE(names(), QStringList({large, small, empty}));
}

void TestUsersList::searchingIsCaseInsensitive()
{
    showThree();
    _widget->setFilterText(QStringLiteral("bER"));
    QTRY_COMPARE(names(), QStringList(QStringLiteral("Berta")));
    _widget->setFilterText(QString());
    QTRY_COMPARE(names().size(), 3);
}

void TestUsersList::theVariantsNarrowTheRows()
{
    showThree();
    const auto choose = [this](int variant) {
        ChangeDisplayElementData data(variant);
        _users->performOperation(OperationType::ChangeDisplay, &data, 0);
    };
    choose(1);
    QTRY_COMPARE(names(), QStringList(QStringLiteral("root")));
    choose(2);
    QTRY_COMPARE(names(), QStringList({QStringLiteral("Berta"), QStringLiteral("anna")}));
    choose(0);
    QTRY_COMPARE(names().size(), 3);
}

void TestUsersList::aRowOpensItsPageAtTheSameDevice_data()
{
    QTest::addColumn<int>("key");
    QTest::newRow("double click") << 0;
    QTest::newRow("Return") << int(Qt::Key_Return);
    QTest::newRow("Enter") << int(Qt::Key_Enter);
}

void TestUsersList::aRowOpensItsPageAtTheSameDevice()
{
    QFETCH(int, key);
    auto *editor = new UserWidget(_module.get(), &everybodyMay);
    _module->insertElementWidget(editor);
    showThree();
    devices()->setCurrentText(_second);
    TreeNodeModel tree;
    tree.setRootNode(_users.get());
    std::vector<TreeNode *> requests;
    connect(&tree, &TreeNodeModel::currentNodeRequested, this,
            [&requests](TreeNode *node) { requests.push_back(node); });

    const QModelIndex row = rowOf(QStringLiteral("anna"));
    if (key == 0) {
        const QPoint place = view()->visualRect(row).center();
        QTest::mouseClick(view()->viewport(), Qt::LeftButton, {}, place);
        QTest::mouseDClick(view()->viewport(), Qt::LeftButton, {}, place);
    } else {
        _widget->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(_widget.get()));
        view()->setFocus();
        view()->setCurrentIndex(row);
        QTest::keyClick(view(), Qt::Key(key));
    }
    QCOMPARE(requests.size(), size_t(1));
    auto *element = dynamic_cast<Element *>(requests.front());
    QVERIFY(element);
    QCOMPARE(element->title(), QStringLiteral("anna"));
    QVERIFY(view()->selectionModel()->selectedIndexes().isEmpty());
    editor->setElement(element); // which shows the record that it has
    QCOMPARE(editor->findChild<QComboBox *>(QStringLiteral("_devicesComboBox"))->currentText(), _second);
}

void TestUsersList::aRowWithoutAnEditorOpensNothing()
{
    showThree();
    view()->setCurrentIndex(rowOf(QStringLiteral("anna")));
    _widget->choiceElement(rowOf(QStringLiteral("anna")));
    _widget->choiceElement(QModelIndex());
    QVERIFY(!view()->selectionModel()->selectedIndexes().isEmpty());
}

void TestUsersList::theFirstReadIsTheViews()
{
    QVERIFY(_module->asked.empty());
    _widget->read();
    QTRY_COMPARE(_module->asked, std::vector<OperationType>({OperationType::ReadContent}));
    _widget->read(); // it is under way
    QCoreApplication::processEvents();
    QCOMPARE(_module->asked.size(), size_t(1));
}

void TestUsersList::furtherReadsAreForStaleContent()
{
    showThree();
    QCoreApplication::processEvents();
    _module->asked.clear();
    _widget->read();
    QVERIFY(_module->asked.empty());
    _users->setContent(ContainerElement::Content::Stale);
    _widget->read();
    QCOMPARE(_module->asked, std::vector<OperationType>({OperationType::ReadContent}));
    // Stale before it was ever shown.
    _users->setContent(ContainerElement::Content::Stale);
    UsersWidget late(_module.get(), &everybodyMay);
    late.setElement(_users.get());
    _module->asked.clear();
    late.read();
    QCOMPARE(_module->asked, std::vector<OperationType>({OperationType::ReadContent}));
}

void TestUsersList::paranoidListsAreAlwaysReadAgain()
{
    showThree();
    QCoreApplication::processEvents();
    _module->setData(QStringLiteral("paranoid"), true);
    _module->asked.clear();
    _widget->read();
    QCOMPARE(_module->asked, std::vector<OperationType>({OperationType::ReadContent}));
}

void TestUsersList::theSelectionAndThePlaceSurviveANewRead()
{
    const auto readMany = [this](int first) {
        QVector<TreeNode *> users;
        for (int i = first; i < 500; ++i)
            users += AccountList::user(_module.get(), QStringLiteral("user%1").arg(i), i, {{_first, noLimits()}});
        AccountList::replace(*_users, users);
        AccountList::tellDevices(*_widget, {_first});
    };
    _widget->read();
    readMany(0);
    QTRY_VERIFY(view()->verticalScrollBar()->maximum() > 300);
    view()->setCurrentIndex(rowOf(QStringLiteral("user305")));
    view()->verticalScrollBar()->setValue(300);
    readMany(0);
    QTRY_COMPARE(view()->currentIndex().siblingAtColumn(AccountColumn::Name).data().toString(),
                 QStringLiteral("user305"));
    QVERIFY(view()->selectionModel()->isSelected(view()->currentIndex()));
    QCoreApplication::processEvents();
    QCOMPARE(view()->verticalScrollBar()->value(), 300);
    readMany(400); // it is gone
    QCoreApplication::processEvents();
    QVERIFY(view()->selectionModel()->selectedIndexes().isEmpty());
}

void TestUsersList::rowsThatGoForGoodAreNotRememberedForLater()
{
    showThree();
    QCoreApplication::processEvents();
    view()->setCurrentIndex(rowOf(QStringLiteral("anna")));
    delete _users->childNodes().at(0); // root
    QCoreApplication::processEvents();
    QCOMPARE(view()->currentIndex(), rowOf(QStringLiteral("anna")).siblingAtColumn(view()->currentIndex().column()));
    // The administrator moves on, and later somebody adds an account.
    view()->setCurrentIndex(rowOf(QStringLiteral("Berta")));
    _users->append(AccountList::user(_module.get(), QStringLiteral("carl"), 1002, {{_first, noLimits()}}));
    QCoreApplication::processEvents();
    QCOMPARE(view()->currentIndex().siblingAtColumn(AccountColumn::Name).data().toString(), QStringLiteral("Berta"));
}

void TestUsersList::rowsThatGoInSeveralRunsAreRememberedFromTheFirst()
{
    showThree();
    QCoreApplication::processEvents();
    view()->setCurrentIndex(rowOf(QStringLiteral("anna")));
    delete _users->childNodes().at(2); // anna, and with her the current row
    delete _users->childNodes().at(0);
    _users->append(AccountList::user(_module.get(), QStringLiteral("anna"), 1001, {{_first, noLimits()}}));
    QCoreApplication::processEvents();
    QCOMPARE(view()->currentIndex().siblingAtColumn(AccountColumn::Name).data().toString(), QStringLiteral("anna"));
}

void TestUsersList::rowsThatComeInRunsShowTheDevice()
{
    showThree();
    devices()->setCurrentText(_second);
    const auto limited = [this](const QString &name) {
        return AccountList::user(_module.get(), name, 1002, {{_first, limits(KiB, 0)}, {_second, limits(3 * KiB, 0)}});
    };
    _users->append(limited(QStringLiteral("carl")));
    _users->append({limited(QStringLiteral("dora")), limited(QStringLiteral("emil"))});
    QCoreApplication::processEvents();
    const int column = AccountColumn::SoftBlockLimit;
    const QString shown = rowOf(QStringLiteral("carl")).siblingAtColumn(column).data().toString();
    QVERIFY2(shown.contains(QLatin1Char('3')), qPrintable(shown));
    for (const char *name : {"dora", "emil"})
        QCOMPARE(rowOf(QLatin1String(name)).siblingAtColumn(column).data().toString(), shown);
}

void TestUsersList::theMenuComesBelowThePointer()
{
    showThree();
    QSignalSpy requests(_widget.get(), &QWidget::customContextMenuRequested);
    Q_EMIT view()->customContextMenuRequested(QPoint(3, 4));
    QCOMPARE(requests.count(), 1);
    QCOMPARE(requests.first().first().toPoint(), view()->mapToGlobal(QPoint(3, 4 + view()->header()->height())));
}

void TestUsersList::theSelectedElementIsTold()
{
    showThree();
    ContextOperation *told = nullptr;
    connect(_widget.get(), &ElementWidget::elementContextOperationChanged, this,
            [&told](ContextOperation *operation) { told = operation; });
    view()->setCurrentIndex(rowOf(QStringLiteral("anna")));
    auto *element = dynamic_cast<Element *>(told);
    QVERIFY(element);
    QCOMPARE(element->title(), QStringLiteral("anna"));
}

QTEST_MAIN(TestUsersList)
#include "tst_userslist.moc"
