// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "localaccounts.h"
#include "localcomputer.h"

#include <elementdata.h>
#include <elementeditor.h>
#include <elementwidget.h>
#include <moduletree.h>
#include <pluginloader.h>
#include <sandbox.h>
#include <taskobserver.h>

#include <QFile>
#include <QLoggingCategory>
#include <QSignalSpy>
#include <QtTest>

#include <sys/capability.h>
#include <unistd.h>

Q_DECLARE_METATYPE(OperationType)

namespace
{
/// What the host wrote about operations.
QStringList heard;

void noteMessage(QtMsgType /*type*/, const QMessageLogContext & /*context*/, const QString &message)
{
    heard += message;
}

/// As the kernel counts them for this process.
bool hasAdministratorRights()
{
    QFile status(QStringLiteral("/proc/self/status"));
    if (!status.open(QIODevice::ReadOnly))
        qFatal("no /proc");
    const QByteArray effective = QByteArray("\nCapEff:\t");
    const QByteArray text = status.readAll();
    const qulonglong capabilities = text.mid(text.indexOf(effective) + effective.size(), 16).toULongLong(nullptr, 16);
    return geteuid() == 0 || (capabilities & (1ULL << CAP_SYS_ADMIN)) != 0;
}

/// An editor that is known by the type of an account, as only elements are.
class AccountEditor : public ElementWidget
{
public:
    explicit AccountEditor(Module *module)
        : ElementWidget(module, &Module::isAdministratorHierarchy)
    {
        setElementType(QStringLiteral("LocalUser"));
    }
};
} // namespace

/// The library as the console sees it: loaded, asked whether it is valid, attached, and asked for operations.
class TestQuotaPlugin : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void aKernelWithoutTheQuotaFormat();
    void aMachineWithoutModinfo();
    void aKernelWithTheQuotaFormat();
    void theModules_data();
    void theModules();
    void theElements();
    void theEditors_data();
    void theEditors();
    void operationsStartTheirTasks_data();
    void operationsStartTheirTasks();
    void anAccountIsWrittenAsWhatItIs_data();
    void anAccountIsWrittenAsWhatItIs();
    void theListOfUsersIsRead();
    void everythingElseStartsNone();
    void anAccountGetsItsSupplement_data();
    void anAccountGetsItsSupplement();
    void twoRequestsGiveTwoSupplements();
    void theHostHearsOfASupplement();
    void anEditorGetsNoSupplement();

private:
    void load();
    Element *element(const QString &type);

    Sandbox _sandbox;
    std::unique_ptr<LocalComputer> _localComputer;
    std::unique_ptr<LocalAccounts> _localUsers;
    std::unique_ptr<LocalAccounts> _localGroups;
    std::unique_ptr<ModuleTree> _tree;
    std::unique_ptr<PluginLoader> _loader;
};

void TestQuotaPlugin::init()
{
    _sandbox.reset();
    _sandbox.standIn(QStringLiteral("blkid"));
    _sandbox.standIn(QStringLiteral("modinfo"));
    _localComputer = std::make_unique<LocalComputer>();
    _localUsers = std::make_unique<LocalAccounts>(QStringLiteral("User"));
    _localGroups = std::make_unique<LocalAccounts>(QStringLiteral("Group"));
    _tree = std::make_unique<ModuleTree>();
    for (Module *module : std::initializer_list<Module *>{_localComputer.get(), _localUsers.get(), _localGroups.get()})
        _tree->addModule(module);
    _loader = std::make_unique<PluginLoader>(*_tree);
}

void TestQuotaPlugin::cleanup()
{
    _loader.reset();
    _tree.reset();
    _localGroups.reset();
    _localUsers.reset();
    _localComputer.reset();
}

void TestQuotaPlugin::load()
{
    _loader->loadFile(QStringLiteral(KRA_QUOTA_PLUGIN));
    QCOMPARE(_loader->records().size(), std::size_t(1));
}

/// The first of its type, which is in the tree once the plug-in is loaded.
Element *TestQuotaPlugin::element(const QString &type)
{
    const QVector<TreeNode *> nodes = _tree->rootNode()->allChildNodes();
    for (TreeNode *node : nodes)
        if (node->id() == type)
            return static_cast<Element *>(node);
    qFatal("No %s is in the tree", qPrintable(type));
}

void TestQuotaPlugin::aKernelWithoutTheQuotaFormat()
{
    _sandbox.standIn(QStringLiteral("modinfo")).complains("modinfo: ERROR: Module quota_v2 not found.\n").exits(1);
    load();
    const PluginRecord &record = _loader->records().front();
    QCOMPARE(record.state, PluginRecord::State::Invalid);
    QCOMPARE(record.programOutput.size(), 1);
    QVERIFY(record.programOutput.first().contains(QStringLiteral("modinfo quota_v2")));
    QVERIFY(record.programOutput.first().contains(QStringLiteral("Module quota_v2 not found.")));
    QVERIFY(!_tree->module(QStringLiteral("QuotaGeneralModule")));
}

void TestQuotaPlugin::aMachineWithoutModinfo()
{
    _sandbox.standIn(QStringLiteral("modinfo")).cannotBeStarted();
    load();
    QCOMPARE(_loader->records().front().state, PluginRecord::State::Invalid);
}

void TestQuotaPlugin::aKernelWithTheQuotaFormat()
{
    _sandbox.standIn(QStringLiteral("modinfo")).prints("not looked at\n");
    load();
    const PluginRecord &record = _loader->records().front();
    QVERIFY2(record.state == PluginRecord::State::Attached, qPrintable(record.explanation));
    QCOMPARE(record.title, QStringLiteral("LocalQuotaPlugin"));
    QCOMPARE(record.description, QStringLiteral("Support quota for users and groups"));
    QCOMPARE(record.moduleNames,
             QStringList({QStringLiteral("QuotaGeneralModule"), QStringLiteral("LocalUserQuotaModule"),
                          QStringLiteral("LocalGroupQuotaModule")}));
    const QList<StandInCall> calls = _sandbox.calls();
    QCOMPARE(calls.size(), 1);
    QCOMPARE(calls.first().program, QStringLiteral("modinfo"));
    QCOMPARE(calls.first().arguments, QByteArrayList({"quota_v2"}));
}

void TestQuotaPlugin::theModules_data()
{
    QTest::addColumn<QString>("attachedTo");
    QTest::addColumn<int>("kind");
    QTest::addColumn<QString>("description");
    QTest::newRow("QuotaGeneralModule") << QStringLiteral("LocalComputerModule") << 2
                                        << QStringLiteral("Support system quota");
    QTest::newRow("LocalUserQuotaModule")
        << QStringLiteral("LocalUserModule") << 3 << QStringLiteral("Support user quota settings");
    QTest::newRow("LocalGroupQuotaModule")
        << QStringLiteral("LocalGroupModule") << 3 << QStringLiteral("Support group quota settings");
}

void TestQuotaPlugin::theModules()
{
    QFETCH(QString, attachedTo);
    QFETCH(int, kind);
    QFETCH(QString, description);
    load();
    const Module *module = _tree->module(QString::fromLatin1(QTest::currentDataTag()));
    QVERIFY(module);
    QCOMPARE(module->attachName(), attachedTo);
    QCOMPARE(int(module->kind()), kind);
    QCOMPARE(module->getData(QStringLiteral("description")), QVariant(description));
    QCOMPARE(module->getData(QStringLiteral("administrator")), QVariant(hasAdministratorRights()));
    QVERIFY(module->attachedTo());
    QCOMPARE(module->attachedTo()->name(), attachedTo);
}

void TestQuotaPlugin::theElements()
{
    load();
    const Element *general = element(QStringLiteral("QuotaGeneralElement"));
    QCOMPARE(general->parentNode()->id(), QStringLiteral("LocalComputer"));
    QCOMPARE(general->title(), QStringLiteral("Quota management"));
    QStringList below;
    for (const TreeNode *node : general->childNodes())
        below += node->id();
    QCOMPARE(below, QStringList({QStringLiteral("QuotaNotificationsElement"), QStringLiteral("QuotaUsersElement"),
                                 QStringLiteral("QuotaGroupsElement")}));
}

void TestQuotaPlugin::theEditors_data()
{
    QTest::addColumn<QString>("module");
    QTest::addColumn<QString>("editorClass");
    const QString general = QStringLiteral("QuotaGeneralModule");
    QTest::newRow("QuotaGeneralElement") << general << QStringLiteral("GeneralWidget");
    QTest::newRow("QuotaNotificationsElement") << general << QStringLiteral("NotificationsWidget");
    QTest::newRow("QuotaUsersElement") << general << QStringLiteral("UsersWidget");
    QTest::newRow("QuotaGroupsElement") << general << QStringLiteral("GroupsWidget");
    QTest::newRow("QuotaUserElement") << general << QStringLiteral("UserWidget");
    QTest::newRow("QuotaGroupElement") << general << QStringLiteral("GroupWidget");
    QTest::newRow("LocalUserQuotaElement")
        << QStringLiteral("LocalUserQuotaModule") << QStringLiteral("LocalUserQuotaWidget");
    QTest::newRow("LocalGroupQuotaElement")
        << QStringLiteral("LocalGroupQuotaModule") << QStringLiteral("LocalGroupQuotaWidget");
}

void TestQuotaPlugin::theEditors()
{
    QFETCH(QString, module);
    QFETCH(QString, editorClass);
    load();
    ElementEditor *editor =
        _tree->module(module)->elementWidget(QString::fromLatin1(QTest::currentDataTag()), ElementEditor::MainRole);
    QVERIFY(editor);
    QCOMPARE(QString::fromLatin1(editor->object()->metaObject()->className()), editorClass);
}

void TestQuotaPlugin::operationsStartTheirTasks_data()
{
    QTest::addColumn<QString>("module");
    QTest::addColumn<QString>("type");
    QTest::addColumn<OperationType>("operation");
    QTest::addColumn<QString>("description");

    const QString general = QStringLiteral("QuotaGeneralModule");
    const auto add = [](const QString &module, const char *type, OperationType operation, const char *description) {
        QTest::newRow(QByteArray(type) + ' ' + QByteArray::number(static_cast<int>(operation)))
            << module << QString::fromLatin1(type) << operation << QString::fromLatin1(description);
    };
    add(general, "QuotaGeneralElement", OperationType::Read, "Read genaral quota settings");
    add(general, "QuotaGeneralElement", OperationType::Write, "Update general settings");
    add(general, "QuotaNotificationsElement", OperationType::Read, "Update notifications settings");
    add(general, "QuotaNotificationsElement", OperationType::Write, "Update notifications settings");
    add(general, "QuotaUsersElement", OperationType::ReadContent, "Read all users list");
    add(general, "QuotaGroupsElement", OperationType::ReadContent, "Read all groups list");
    const std::pair<QString, const char *> users[] = {
        {general, "QuotaUserElement"}, {QStringLiteral("LocalUserQuotaModule"), "LocalUserQuotaElement"}};
    for (const auto &[module, type] : users) {
        add(module, type, OperationType::Read, "Read user quota settings");
        add(module, type, OperationType::Write, "Update user settings");
    }
    const std::pair<QString, const char *> groups[] = {
        {general, "QuotaGroupElement"}, {QStringLiteral("LocalGroupQuotaModule"), "LocalGroupQuotaElement"}};
    for (const auto &[module, type] : groups) {
        add(module, type, OperationType::Read, "Read group quota settings");
        add(module, type, OperationType::Write, "Update user settings"); // as for users
    }
}

void TestQuotaPlugin::operationsStartTheirTasks()
{
    QFETCH(QString, module);
    QFETCH(QString, type);
    QFETCH(OperationType, operation);
    QFETCH(QString, description);
    load();
    // Not in the tree: which element it is tells its type alone.
    OrdinaryElement asked(type, QString(), QStringLiteral("root"), _tree->module(module),
                          &Module::isAdministratorHierarchy, Element::Place::Child);
    QSignalSpy queued(TaskObserver::instance(), &TaskObserver::taskQueued);
    asked.performOperation(operation, nullptr, 0);
    QCOMPARE(queued.size(), 1);
    QCOMPARE(queued.first().first().value<TaskReport>().description, description);
    QTRY_VERIFY(!TaskObserver::instance()->isBusy());
}

void TestQuotaPlugin::anAccountIsWrittenAsWhatItIs_data()
{
    QTest::addColumn<QString>("module");
    QTest::addColumn<int>("kind");
    QTest::newRow("QuotaUserElement") << QStringLiteral("QuotaGeneralModule") << USRQUOTA;
    QTest::newRow("QuotaGroupElement") << QStringLiteral("QuotaGeneralModule") << GRPQUOTA;
    QTest::newRow("LocalUserQuotaElement") << QStringLiteral("LocalUserQuotaModule") << USRQUOTA;
    QTest::newRow("LocalGroupQuotaElement") << QStringLiteral("LocalGroupQuotaModule") << GRPQUOTA;
}

/// Users and groups of one name and id: the two tasks look alike, but reach different quotas.
void TestQuotaPlugin::anAccountIsWrittenAsWhatItIs()
{
    QFETCH(QString, module);
    QFETCH(int, kind);
    const QByteArray folder = _sandbox.folder(QStringLiteral("data")).toLocal8Bit();
    _sandbox.writeEtc(QStringLiteral("fstab"), "/dev/vda " + folder + " ext4 usrquota,grpquota 0 0\n");
    _sandbox.writeEtc(QStringLiteral("mtab"), "/dev/vda " + folder + " ext4 usrquota,grpquota 0 0\n");
    _sandbox.standIn(QStringLiteral("blkid")).prints("/dev/vda: UUID=\"a\" TYPE=\"ext4\"\n");
    FakeKernel::State state;
    state.records[0].dqb_ihardlimit = 5;
    for (const int type : {USRQUOTA, GRPQUOTA})
        _sandbox.kernel().setState("/dev/vda", type, state);
    load();
    OrdinaryElement asked(QString::fromLatin1(QTest::currentDataTag()), QString(), QStringLiteral("root"),
                          _tree->module(module), &Module::isAdministratorHierarchy, Element::Place::Child);
    asked.performOperation(OperationType::Read, nullptr, 0);
    QTRY_VERIFY(!TaskObserver::instance()->isBusy());
    QVERIFY(asked.record());
    asked.performOperation(OperationType::Write, asked.takeRecord().release(), 0);
    QTRY_VERIFY(!TaskObserver::instance()->isBusy());
    QVector<int> written;
    for (const FakeKernel::Call &call : _sandbox.kernel().calls())
        if (call.command == Q_SETQUOTA)
            written += call.type;
    QCOMPARE(written, QVector<int>{kind});
}

void TestQuotaPlugin::theListOfUsersIsRead()
{
    load();
    Element *users = element(QStringLiteral("QuotaUsersElement"));
    users->performOperation(OperationType::ReadContent, nullptr, 0);
    QTRY_VERIFY(!TaskObserver::instance()->isBusy());
    QCOMPARE(users->childNodes().size(), 4); // as many accounts has the sandbox
    auto *first = static_cast<Element *>(users->childNodes().first());
    QCOMPARE(first->elementType(), QStringLiteral("QuotaUserElement"));
    QCOMPARE(first->title(), QStringLiteral("root"));
    QVERIFY(first->record());
}

void TestQuotaPlugin::everythingElseStartsNone()
{
    load();
    Element *general = element(QStringLiteral("QuotaGeneralElement"));
    QSignalSpy queued(TaskObserver::instance(), &TaskObserver::taskQueued);
    for (const OperationType type : {OperationType::CreateSupplement, OperationType::RemoveSupplement,
                                     OperationType::ReadContent, OperationType::ChangeDisplay})
        general->performOperation(type, nullptr, 0);
    general->performOperation(static_cast<OperationType>(4096), nullptr, 0);
    // Asked of the editor, not of the element.
    general->elementWidget(ElementEditor::MainRole)->performOperation(OperationType::Read, nullptr, 0);
    // The other module knows nothing of these.
    OrdinaryElement foreign(QStringLiteral("QuotaGeneralElement"), QString(), QString(),
                            _tree->module(QStringLiteral("LocalUserQuotaModule")), &Module::isAdministratorHierarchy,
                            Element::Place::Child);
    foreign.performOperation(OperationType::Read, nullptr, 0);
    QCOMPARE(queued.size(), 0);
    QVERIFY(!TaskObserver::instance()->isBusy());
}

void TestQuotaPlugin::anAccountGetsItsSupplement_data()
{
    QTest::addColumn<QString>("accountType");
    QTest::addColumn<QString>("supplementType");
    QTest::newRow("user") << QStringLiteral("LocalUser") << QStringLiteral("LocalUserQuotaElement");
    QTest::newRow("group") << QStringLiteral("LocalGroup") << QStringLiteral("LocalGroupQuotaElement");
}

void TestQuotaPlugin::anAccountGetsItsSupplement()
{
    QFETCH(QString, accountType);
    QFETCH(QString, supplementType);
    load();
    Element *account = element(accountType);
    account->requestSupplements();
    QCOMPARE(account->supplementNodes().size(), 1);
    auto *supplement = static_cast<Element *>(account->supplementNodes().first());
    QCOMPARE(supplement->elementType(), supplementType);
    QCOMPARE(supplement->title(), account->title());
    QCOMPARE(supplement->module()->attachedTo(), account->module());
    QVERIFY(supplement->elementWidget(ElementEditor::MainRole));

    // Its quota is read by the account's name.
    supplement->performOperation(OperationType::Read, nullptr, 0);
    QTRY_VERIFY(!TaskObserver::instance()->isBusy());
    QVERIFY(supplement->record());

    supplement->performOperation(OperationType::RemoveSupplement, nullptr, 0);
    QVERIFY(account->supplementNodes().isEmpty());
    delete account; // and with one
    QVERIFY(!TaskObserver::instance()->isBusy());
}

void TestQuotaPlugin::twoRequestsGiveTwoSupplements()
{
    load();
    Element *account = element(QStringLiteral("LocalUser"));
    Module *module = _tree->module(QStringLiteral("LocalUserQuotaModule"));
    module->performOperation(account, OperationType::CreateSupplement, nullptr, 0);
    module->performOperation(account, OperationType::CreateSupplement, nullptr, 0);
    QCOMPARE(account->supplementNodes().size(), 2);
    // One of another kind is nothing to extend.
    module->performOperation(element(QStringLiteral("LocalGroup")), OperationType::CreateSupplement, nullptr, 0);
    QVERIFY(element(QStringLiteral("LocalGroup"))->supplementNodes().isEmpty());
    delete account;
}

/// Of its creation, but not of its end, after which the element is no more.
void TestQuotaPlugin::theHostHearsOfASupplement()
{
    load();
    Element *account = element(QStringLiteral("LocalGroup"));
    Module *module = _tree->module(QStringLiteral("LocalGroupQuotaModule"));
    QLoggingCategory::setFilterRules(QStringLiteral("kra.module.info=true"));
    heard.clear();
    const QtMessageHandler before = qInstallMessageHandler(&noteMessage);
    module->performOperation(account, OperationType::CreateSupplement, nullptr, 0);
    module->performOperation(static_cast<Element *>(account->supplementNodes().first()),
                             OperationType::RemoveSupplement, nullptr, 0);
    qInstallMessageHandler(before);
    QCOMPARE(heard, QStringList{QStringLiteral("LocalGroupQuotaModule is asked for operation 1 on LocalGroup")});
    QVERIFY(account->supplementNodes().isEmpty());
}

void TestQuotaPlugin::anEditorGetsNoSupplement()
{
    load();
    Module *module = _tree->module(QStringLiteral("LocalUserQuotaModule"));
    AccountEditor editor(module);
    module->performOperation(&editor, OperationType::CreateSupplement, nullptr, 0);
    module->performOperation(&editor, OperationType::RemoveSupplement, nullptr, 0);
    QVERIFY(element(QStringLiteral("LocalUser"))->supplementNodes().isEmpty());
}

KRA_SANDBOX_MAIN(TestQuotaPlugin)
#include "tst_quotaplugin.moc"
