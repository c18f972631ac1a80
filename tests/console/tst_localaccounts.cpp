// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <accountelements.h>
#include <accountmodule.h>
#include <accountrules.h>
#include <localcomputermodule.h>

#include <elementswidgetproxymodel.h>
#include <listelementwidget.h>
#include <moduletree.h>
#include <taskobserver.h>
#include <treenodemodel.h>

#include <QAbstractItemModelTester>
#include <QHeaderView>
#include <QLabel>
#include <QSettings>
#include <QSignalSpy>
#include <QTreeView>
#include <QtTest>

#include <grp.h>
#include <pwd.h>
#include <unistd.h>

/// The console's own three modules against the account files of the machine that runs the test.
class LocalAccountsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();
    void modulesStandUnderTheComputer();
    void computerTellsOfItself();
    void usersAreThoseOfTheFile();
    void groupsAreThoseOfTheFile();
    void listIsReadOnceUntilItIsStale();
    void variantsSplitTheAccounts();
    void systemAccountIsToldByItsId_data();
    void systemAccountIsToldByItsId();
    void cellsSortByValue();
    void listNarrows();
    void columnsSurviveARestart_data();
    void columnsSurviveARestart();
    void doubleClickAsksForThePage();
    void pageShowsTheAccount();
    void goneAccountIsSaid();
    void manyAccountsAreListed();

private:
    void start();
    void close();
    Element *child(const char *type) const;
    ListElementWidget *showList(const char *type);
    Element *readList(const char *type);
    static Element *named(const Element *container, const QString &title);

    std::unique_ptr<QObject> _owner;
    std::unique_ptr<ModuleTree> _tree;
    Element *_computer = nullptr;
};

void LocalAccountsTest::initTestCase()
{
    QStandardPaths::setTestModeEnabled(true);
    QCoreApplication::setOrganizationName(QStringLiteral("kra-test"));
    QCoreApplication::setApplicationName(QStringLiteral("tst_localaccounts"));
}

void LocalAccountsTest::init()
{
    QSettings().clear();
    start();
}

void LocalAccountsTest::cleanup()
{
    close();
}

void LocalAccountsTest::start()
{
    _owner = std::make_unique<QObject>();
    _tree = std::make_unique<ModuleTree>();
    // In an order in which the two wait for the first.
    _tree->addModule(new AccountModule(localUserKind(), _owner.get()));
    _tree->addModule(new AccountModule(localGroupKind(), _owner.get()));
    _tree->addModule(new LocalComputerModule(_owner.get()));
    _computer = dynamic_cast<Element *>(_tree->rootNode()->childNodes().value(0));
    QVERIFY(_computer);
}

/// Elements go before their editors, as when the console ends.
void LocalAccountsTest::close()
{
    QTRY_VERIFY(!TaskObserver::instance()->isBusy());
    _tree.reset();
    _owner.reset();
}

Element *LocalAccountsTest::child(const char *type) const
{
    for (TreeNode *node : _computer->childNodes()) {
        if (node->id() == QLatin1String(type))
            return dynamic_cast<Element *>(node);
    }
    return nullptr;
}

Element *LocalAccountsTest::readList(const char *type)
{
    Element *list = child(type);
    list->fetchChildren();
    if (!QTest::qWaitFor([] { return !TaskObserver::instance()->isBusy(); }))
        qFatal("the list was not read");
    return list;
}

ListElementWidget *LocalAccountsTest::showList(const char *type)
{
    Element *list = readList(type);
    auto *editor = dynamic_cast<ListElementWidget *>(list->elementWidget(ElementEditor::MainRole));
    editor->setElement(list);
    editor->show();
    if (!QTest::qWaitForWindowExposed(editor))
        qFatal("the list was not shown");
    return editor;
}

Element *LocalAccountsTest::named(const Element *container, const QString &title)
{
    for (TreeNode *node : container->childNodes()) {
        auto *element = dynamic_cast<Element *>(node);
        if (element->title() == title)
            return element;
    }
    return nullptr;
}

void LocalAccountsTest::modulesStandUnderTheComputer()
{
    QCOMPARE(_computer->elementType(), QStringLiteral("LocalComputer"));
    QCOMPARE(_computer->title(), QSysInfo::machineHostName());
    QVERIFY(!_computer->caption().isEmpty());
    QCOMPARE(_computer->childNodes().size(), 2);
    QCOMPARE(child("LocalUsers")->title(), QStringLiteral("Local users"));
    QCOMPARE(child("LocalGroups")->title(), QStringLiteral("Local groups"));
    QCOMPARE(child("LocalUsers")->parentType(), QStringLiteral("LocalComputer"));
    for (const char *name : {"LocalComputerModule", "LocalUserModule", "LocalGroupModule"}) {
        const Module *module = _tree->module(QLatin1String(name));
        QVERIFY(module);
        QVERIFY(!module->getData(QStringLiteral("description")).toString().isEmpty());
        QCOMPARE(module->getData(QStringLiteral("administrator")).toBool(), Module::isAdministrator(*module));
    }
}

void LocalAccountsTest::computerTellsOfItself()
{
    auto *page = dynamic_cast<ElementWidget *>(_computer->elementWidget(ElementEditor::MainRole));
    QVERIFY(page);
    page->setElement(_computer);
    page->read();
    QTRY_VERIFY(_computer->record());
    QStringList shown;
    for (const QLabel *label : page->findChildren<QLabel *>())
        shown.append(label->text());
    QVERIFY(shown.contains(QSysInfo::machineHostName()));
    QVERIFY(shown.contains(QSysInfo::prettyProductName()));
    QVERIFY(shown.filter(QSysInfo::kernelVersion()).size() == 1);
    const QString rights = Module::isAdministrator(*_computer->module())
                               ? QStringLiteral(", with administrator rights")
                               : QStringLiteral(", without administrator rights");
    QCOMPARE(shown.filter(rights).size(), 1);
    QVERIFY(!page->isContentChanged());
}

void LocalAccountsTest::usersAreThoseOfTheFile()
{
    const Element *list = readList("LocalUsers");
    QStringList expected;
    setpwent();
    FILE *file = fopen("/etc/passwd", "re");
    QVERIFY(file);
    while (const passwd *entry = fgetpwent(file))
        expected.append(QString::fromLocal8Bit(entry->pw_name));
    fclose(file);
    QStringList found;
    for (TreeNode *node : list->childNodes()) {
        QCOMPARE(node->id(), QStringLiteral("LocalUser"));
        found.append(dynamic_cast<Element *>(node)->title());
    }
    QCOMPARE(found, expected);

    Element *root = named(list, QStringLiteral("root"));
    QVERIFY(root);
    QCOMPARE(root->caption(), QStringLiteral("Local user: root"));
    const passwd *entry = getpwuid(0);
    QCOMPARE(root->data(0, Qt::DisplayRole).toString(), QStringLiteral("root"));
    QCOMPARE(root->data(1, Qt::DisplayRole), QVariant(0U));
    QCOMPARE(root->data(2, Qt::DisplayRole).toString(), QString::fromLocal8Bit(getgrgid(entry->pw_gid)->gr_name));
    QCOMPARE(root->data(4, Qt::DisplayRole).toString(), QString::fromLocal8Bit(entry->pw_dir));
    QCOMPARE(root->data(5, Qt::DisplayRole).toString(), QString::fromLocal8Bit(entry->pw_shell));
    QCOMPARE(list->columnCount(), 6);
    QCOMPARE(list->headerData(1, Qt::Horizontal, Qt::DisplayRole).toString(), QStringLiteral("User id"));
    QCOMPARE(list->headerData(5, Qt::Horizontal, Qt::DisplayRole).toString(), QStringLiteral("Shell"));
    QCOMPARE(root->availableOperations(), OperationTypes(OperationType::Read));
}

void LocalAccountsTest::groupsAreThoseOfTheFile()
{
    const Element *list = readList("LocalGroups");
    FILE *file = fopen("/etc/group", "re");
    QVERIFY(file);
    int row = 0;
    while (const group *entry = fgetgrent(file)) {
        QVERIFY(row < list->childNodes().size());
        const TreeNode *node = list->childNodes().at(row++);
        QStringList members;
        for (char **member = entry->gr_mem; *member; ++member)
            members.append(QString::fromLocal8Bit(*member));
        QCOMPARE(node->data(0, Qt::DisplayRole).toString(), QString::fromLocal8Bit(entry->gr_name));
        QCOMPARE(node->data(1, Qt::DisplayRole), QVariant(quint32(entry->gr_gid)));
        QCOMPARE(node->data(3, Qt::DisplayRole).toInt(), members.size());
        QCOMPARE(node->data(4, Qt::DisplayRole).toString(), members.join(QLatin1String(", ")));
    }
    fclose(file);
    QCOMPARE(row, list->childNodes().size());
    const TreeNode *root = list->childNodes().constFirst();
    QVERIFY2(root->data(2, Qt::DisplayRole).toInt() >= 1, "root's primary group has root in it");
}

void LocalAccountsTest::listIsReadOnceUntilItIsStale()
{
    Element *list = child("LocalUsers");
    auto *editor = dynamic_cast<ListElementWidget *>(list->elementWidget(ElementEditor::MainRole));
    QVERIFY(editor);
    QSignalSpy finished(TaskObserver::instance(), &TaskObserver::taskFinished);
    editor->setElement(list);
    editor->read();
    QTRY_COMPARE(finished.count(), 1);
    editor->read();
    QVERIFY(!TaskObserver::instance()->isBusy());
    editor->refresh();
    QTRY_COMPARE(finished.count(), 2);
    list->module()->setData(QStringLiteral("paranoid"), true);
    editor->read();
    QTRY_COMPARE(finished.count(), 3);
}

void LocalAccountsTest::variantsSplitTheAccounts()
{
    Element *list = readList("LocalUsers");
    QCOMPARE(list->displayChildrenVariants(), QStringList({QStringLiteral("System"), QStringLiteral("Ordinary")}));
    const TreeNode *root = named(list, QStringLiteral("root"));
    QCOMPARE(root->treeNodeSpecialFlags() & InChosenVariant, 0);
    ChangeDisplayElementData system(1);
    list->performOperation(OperationType::ChangeDisplay, &system, 0);
    QCOMPARE(list->displayChildrenVariant(), 1);
    QCOMPARE(root->treeNodeSpecialFlags() & InChosenVariant, int(InChosenVariant));
    ChangeDisplayElementData ordinary(2);
    list->performOperation(OperationType::ChangeDisplay, &ordinary, 0);
    QCOMPARE(root->treeNodeSpecialFlags() & InChosenVariant, 0);
}

void LocalAccountsTest::systemAccountIsToldByItsId_data()
{
    QTest::addColumn<quint32>("id");
    QTest::addColumn<bool>("system");
    QTest::newRow("root") << 0U << true;
    QTest::newRow("last") << 999U << true;
    QTest::newRow("first ordinary") << 1000U << false;
    QTest::newRow("before nobody") << 65533U << false;
    QTest::newRow("nobody") << 65534U << true;
    QTest::newRow("after nobody") << 65535U << false;
    QTest::newRow("largest") << 4294967294U << false;
}

void LocalAccountsTest::systemAccountIsToldByItsId()
{
    QFETCH(quint32, id);
    QFETCH(bool, system);
    QCOMPARE(AccountRules::isSystemId(id), system);
}

void LocalAccountsTest::cellsSortByValue()
{
    const Element *list = readList("LocalUsers");
    for (const TreeNode *node : list->childNodes()) {
        const QVariant id = node->data(1, SortRole);
        QCOMPARE(id.type(), QVariant::UInt);
        QCOMPARE(id, node->data(1, Qt::DisplayRole));
        for (int column = 0; column < list->columnCount(); ++column)
            QCOMPARE(node->data(column, Qt::TextAlignmentRole),
                     list->headerData(column, Qt::Horizontal, Qt::TextAlignmentRole));
        QCOMPARE(node->data(1, Qt::TextAlignmentRole).toInt(), int(Qt::AlignRight | Qt::AlignVCenter));
        const QVariant fullName = node->data(3, SortRole);
        QVERIFY2(!fullName.isValid() || !fullName.toString().isEmpty(), "an empty cell has no value");
    }
}

void LocalAccountsTest::listNarrows()
{
    Element *list = readList("LocalUsers");
    auto *editor = dynamic_cast<ListElementWidget *>(list->elementWidget(ElementEditor::MainRole));
    editor->setElement(list);
    const QAbstractItemModel *rows = editor->findChild<QTreeView *>()->model();
    QCOMPARE(rows->rowCount(), list->childNodes().size());
    editor->setFilterText(QStringLiteral("NoSuchAccountAnywhere"));
    QTRY_COMPARE(rows->rowCount(), 0);
    editor->setFilterText(QStringLiteral("ROOT"));
    QTRY_VERIFY(rows->rowCount() >= 1 && rows->rowCount() < list->childNodes().size());
    editor->setFilterText({});
    QTRY_COMPARE(rows->rowCount(), list->childNodes().size());
}

void LocalAccountsTest::columnsSurviveARestart_data()
{
    QTest::addColumn<QString>("type");
    QTest::newRow("users") << QStringLiteral("LocalUsers");
    QTest::newRow("groups") << QStringLiteral("LocalGroups");
}

void LocalAccountsTest::columnsSurviveARestart()
{
    QFETCH(QString, type);
    ListElementWidget *editor = showList(qPrintable(type));
    Element *list = editor->element();
    const auto header = [&editor] { return editor->findChild<QTreeView *>()->header(); };
    const int unfitted = header()->defaultSectionSize();
    QTRY_VERIFY(header()->sectionSize(1) != unfitted);
    header()->moveSection(3, 1);
    header()->resizeSection(2, 234);
    editor->findChild<QTreeView *>()->sortByColumn(1, Qt::DescendingOrder);
    const auto isAsLeft = [&header] {
        QCOMPARE(header()->visualIndex(3), 1);
        QCOMPARE(header()->sectionSize(2), 234);
        QCOMPARE(header()->sortIndicatorSection(), 1);
        QCOMPARE(header()->sortIndicatorOrder(), Qt::DescendingOrder);
    };
    editor->setElement(nullptr); // as when another page is shown instead of a changed one
    editor->setElement(list);
    isAsLeft();
    for (int restart = 0; restart < 2; ++restart) {
        close();
        start();
        editor = showList(qPrintable(type));
        isAsLeft();
    }
}

void LocalAccountsTest::doubleClickAsksForThePage()
{
    Element *list = readList("LocalUsers");
    auto *editor = dynamic_cast<ListElementWidget *>(list->elementWidget(ElementEditor::MainRole));
    editor->setElement(list);
    TreeNodeModel whole;
    whole.setRootNode(_tree->rootNode());
    const TreeNode *requested = nullptr;
    connect(&whole, &TreeNodeModel::currentNodeRequested, this, [&requested](TreeNode *node) { requested = node; });
    auto *view = editor->findChild<QTreeView *>();
    Q_EMIT view->doubleClicked(view->model()->index(0, 3));
    QCOMPARE(requested, list->childNodes().at(0));
}

void LocalAccountsTest::pageShowsTheAccount()
{
    const Element *list = readList("LocalUsers");
    Element *root = named(list, QStringLiteral("root"));
    auto *page = dynamic_cast<ElementWidget *>(root->elementWidget(ElementEditor::MainRole));
    QVERIFY(page);
    const auto shown = [page] {
        QStringList texts;
        for (const QLabel *label : page->findChildren<QLabel *>())
            texts.append(label->text());
        return texts;
    };
    page->setElement(root);
    QVERIFY2(shown().contains(QStringLiteral("root")), "the record of the list is shown at once");
    QSignalSpy finished(TaskObserver::instance(), &TaskObserver::taskFinished);
    page->read();
    QTRY_COMPARE(finished.count(), 1);
    QCOMPARE(finished.at(0).at(0).value<TaskReport>().status, TaskDescription::Succeeded);
    QVERIFY(shown().contains(QString::fromLocal8Bit(getpwuid(0)->pw_shell)));
}

void LocalAccountsTest::goneAccountIsSaid()
{
    auto *module = static_cast<AccountModule *>(child("LocalUsers")->module());
    auto *gone = new AccountElement(module, QStringLiteral("gone"));
    child("LocalUsers")->append(gone);
    QSignalSpy finished(TaskObserver::instance(), &TaskObserver::taskFinished);
    gone->performOperation(OperationType::Read, nullptr, 0);
    QTRY_COMPARE(finished.count(), 1);
    const auto report = finished.at(0).at(0).value<TaskReport>();
    QCOMPARE(report.status, TaskDescription::Failed);
    QCOMPARE(report.message, QStringLiteral("There is no user gone any more"));
    QVERIFY(!gone->record());
}

void LocalAccountsTest::manyAccountsAreListed()
{
    constexpr int count = 100000;
    LocalAccounts accounts;
    for (int i = 0; i < count; ++i) {
        const QString name = QStringLiteral("account%1").arg(i);
        accounts.users.append({name, quint32(i), quint32(i), QStringLiteral("Some One,,,"), QStringLiteral("/home"),
                               QStringLiteral("/bin/sh")});
        accounts.groups.append({name, quint32(i), {}});
    }
    QStringList everyone;
    for (const LocalAccounts::User &user : qAsConst(accounts.users))
        everyone.append(user.name);
    accounts.groups.append({QStringLiteral("everyone"), count, everyone});

    const AccountKind users = localUserKind();
    const AccountKind::Records userRecords = users.records(accounts);
    QCOMPARE(userRecords.size(), size_t(count));
    const AccountData &last = *userRecords.back();
    QCOMPARE(users.properties.at(2).value(last).toString(), QStringLiteral("account99999"));
    QCOMPARE(users.properties.at(3).value(last).toString(), QStringLiteral("Some One"));
    QCOMPARE(users.properties.at(6).value(last).toString(), QStringLiteral("everyone"));

    const AccountKind groups = localGroupKind();
    const AccountKind::Records groupRecords = groups.records(accounts);
    QCOMPARE(groupRecords.size(), size_t(count + 1));
    const AccountData &all = *groupRecords.back();
    QCOMPARE(groups.properties.at(3).value(all).toInt(), count);
    const QString names = groups.properties.at(4).value(all).toString();
    QVERIFY(names.endsWith(QLatin1String("account199 and 99800 more")));
}

QTEST_MAIN(LocalAccountsTest)
#include "tst_localaccounts.moc"
