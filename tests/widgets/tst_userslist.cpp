// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "accountlist.h"
#include "formwidget.h"

#include <accountcolumn.h>
#include <elementtreeview.h>
#include <groupswidget.h>
#include <treenodemodel.h>
#include <userswidget.h>
#include <userwidget.h>

#include <QComboBox>
#include <QHeaderView>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QScrollBar>
#include <QSettings>
#include <QSignalSpy>
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
    void theWarningStandsWhileTheDeviceHasNoQuota();
    void theDeviceSurvivesANewRead();
    void theCellsAreTheDevices();
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
    void theMenuComesBelowThePointer();
    void theSelectedElementIsTold();

private:
    template<typename Widget>
    Widget *find(const char *name) const
    {
        return formWidget<Widget>(*_widget, name);
    }
    QComboBox *devices() const { return find<QComboBox>("_devicesComboBox"); }
    QListWidget *filters() const { return find<QListWidget>("_filtersListWidget"); }
    ElementTreeView *view() const { return find<ElementTreeView>("_elementTreeView"); }
    bool isWarned() const { return find<QLabel>("_warningLabel")->isVisible(); }
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
    QVERIFY(!QSettings().contains(QStringLiteral("filtersForQuota/QuotaUsersElement12")));

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

void TestUsersList::theDeviceSurvivesANewRead()
{
    showThree();
    devices()->setCurrentText(_second);
    showThree();
    QCOMPARE(devices()->currentText(), _second);
    QTRY_COMPARE(cell(0, AccountColumn::SoftBlockLimit), QStringLiteral("5 Kb"));
    AccountList::tellDevices(*_widget, {QStringLiteral("/dev/c"), _first});
    QCOMPARE(devices()->currentText(), QStringLiteral("/dev/c"));
    AccountList::tellDevices(*_widget, {});
    QCOMPARE(devices()->count(), 0);
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
