// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <module.h>
#include <moduletree.h>
#include <treenodemodel.h>

#include <QAbstractItemModelTester>
#include <QtTest>

namespace
{
bool allowed(const Module & /*module*/)
{
    return true;
}

class CountedElement : public OrdinaryElement
{
public:
    CountedElement(Module *module, const QString &type, const QString &parentType, Place place = Place::Top)
        : OrdinaryElement(type, parentType, type, module, allowed, place)
    {
        ++living;
    }
    ~CountedElement() override { --living; }
    static inline int living = 0;
};

std::unique_ptr<Module> makeModule(const char *name, const char *attachName = "")
{
    auto module = std::make_unique<Module>(QString::fromLatin1(name), nullptr);
    module->setAttachName(QString::fromLatin1(attachName));
    module->setKind(module->attachName().isEmpty() ? Module::RootKind : Module::BranchKind);
    return module;
}

Element *addElement(const std::unique_ptr<Module> &module, const char *type, const char *parentType = "")
{
    return new CountedElement(module.get(), QString::fromLatin1(type), QString::fromLatin1(parentType));
}

/// The tree in one line: "a(b c(d))".
QString shapeOf(const TreeNode *node)
{
    QStringList children;
    for (const TreeNode *child : node->childNodes())
        children << shapeOf(child);
    return children.isEmpty() ? node->id() : QStringLiteral("%1(%2)").arg(node->id(), children.join(QLatin1Char(' ')));
}
QString shapeOf(ModuleTree &tree)
{
    return shapeOf(tree.rootNode());
}

QStringList namesOf(const std::vector<Module *> &modules)
{
    QStringList names;
    for (const Module *module : modules)
        names << module->name();
    return names;
}

QStringList words(const char *text)
{
    return QString::fromLatin1(text).split(QLatin1Char(' '), Qt::SkipEmptyParts);
}

/// The console's three modules as far as the tree is concerned.
struct Console
{
    Console()
    {
        addElement(computer, "LocalComputer");
        addElement(users, "LocalUsers", "LocalComputer");
        addElement(groups, "LocalGroups", "LocalComputer");
    }
    void addTo(ModuleTree &tree) const
    {
        for (const auto &module : {computer.get(), users.get(), groups.get()})
            tree.addModule(module);
    }
    std::unique_ptr<Module> computer = makeModule("LocalComputerModule");
    std::unique_ptr<Module> users = makeModule("LocalUserModule", "LocalComputerModule");
    std::unique_ptr<Module> groups = makeModule("LocalGroupModule", "LocalComputerModule");
};

std::unique_ptr<Module> makeQuotaModule()
{
    auto module = makeModule("QuotaGeneralModule", "LocalComputerModule");
    addElement(module, "QuotaGeneralElement", "LocalComputer");
    addElement(module, "QuotaNotificationsElement", "QuotaGeneralElement");
    addElement(module, "QuotaUsersElement");
    addElement(module, "QuotaGroupsElement");
    return module;
}

const QString WholeTree = QStringLiteral("(LocalComputer(LocalUsers LocalGroups QuotaGeneralElement("
                                         "QuotaNotificationsElement QuotaUsersElement QuotaGroupsElement)))");
} // namespace

class TestModuleTree : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup() { QCOMPARE(CountedElement::living, 0); }

    void hangsElementsWhereTheyBelong();
    void placesInAnyOrder();
    void rootModulesHangUnderTheRoot();
    void elementMayBelongUnderALaterOneOfItsModule();
    void statedParentIsLookedForBelowTheTargetOnly();
    void elementWithoutItsStatedParentIsNotLost();
    void targetWithoutElementsLosesNothing();
    void extendingModuleIsAttached();
    void extendingModuleWaitsToo();
    void firstModuleOfANameIsTheTarget();
    void moduleMayDieBeforeTheTree();
    void waitingModuleMayDie();
    void modulesWaitAgainWhenTheirTargetDies();
    void treeMayDieBeforeTheModules();
    void elementsAlreadyHungStayWhereTheyAre();
};

void TestModuleTree::hangsElementsWhereTheyBelong()
{
    ModuleTree tree;
    TreeNodeModel model;
    model.setRootNode(tree.rootNode());
    const QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::Fatal);
    const Console console;
    console.addTo(tree);
    const auto quota = makeQuotaModule();
    tree.addModule(quota.get());
    QCOMPARE(shapeOf(tree), WholeTree);
    QCOMPARE(namesOf(tree.modules()), words("LocalComputerModule LocalUserModule LocalGroupModule QuotaGeneralModule"));
    QVERIFY(tree.waitingModules().empty());
    QCOMPARE(tree.module(QStringLiteral("QuotaGeneralModule")), quota.get());
    QCOMPARE(tree.module(QStringLiteral("Nothing")), nullptr);
    QCOMPARE(quota->attachedTo(), console.computer.get());
    QCOMPARE(console.computer->attachedTo(), nullptr);
    QCOMPARE(model.rowCount(model.index(0, 0)), 3);
}

void TestModuleTree::placesInAnyOrder()
{
    ModuleTree tree;
    const auto leaf = makeModule("Leaf", "QuotaGeneralModule");
    addElement(leaf, "LeafElement", "QuotaUsersElement");
    const auto quota = makeQuotaModule();
    const Console console;
    tree.addModule(leaf.get());
    tree.addModule(quota.get());
    QCOMPARE(shapeOf(tree), QString());
    QVERIFY(tree.modules().empty());
    QCOMPARE(namesOf(tree.waitingModules()), words("Leaf QuotaGeneralModule"));
    QCOMPARE(tree.module(QStringLiteral("Leaf")), nullptr);

    tree.addModule(console.computer.get());
    QCOMPARE(shapeOf(tree), QStringLiteral("(LocalComputer(QuotaGeneralElement(QuotaNotificationsElement "
                                           "QuotaUsersElement(LeafElement) QuotaGroupsElement)))"));
    QVERIFY(tree.waitingModules().empty());
    QCOMPARE(namesOf(tree.modules()), words("LocalComputerModule QuotaGeneralModule Leaf"));
}

void TestModuleTree::rootModulesHangUnderTheRoot()
{
    ModuleTree tree;
    const auto first = makeModule("First");
    addElement(first, "a");
    addElement(first, "b");
    addElement(first, "c", "a");
    const auto second = makeModule("Second");
    addElement(second, "d");
    tree.addModule(first.get());
    tree.addModule(second.get());
    QCOMPARE(shapeOf(tree), QStringLiteral("(a(c) b d)"));
}

void TestModuleTree::elementMayBelongUnderALaterOneOfItsModule()
{
    ModuleTree tree;
    const Console console;
    tree.addModule(console.computer.get());
    const auto module = makeModule("Module", "LocalComputerModule");
    addElement(module, "top", "LocalComputer");
    addElement(module, "leaf", "late");
    addElement(module, "late", "later");
    addElement(module, "later");
    tree.addModule(module.get());
    QCOMPARE(shapeOf(tree), QStringLiteral("(LocalComputer(top(later(late(leaf)))))"));
}

void TestModuleTree::statedParentIsLookedForBelowTheTargetOnly()
{
    ModuleTree tree;
    const auto first = makeModule("First");
    addElement(first, "top");
    addElement(first, "branch", "top");
    const auto second = makeModule("Second");
    Element *target = addElement(second, "other");
    target->append(new CountedElement(second.get(), QStringLiteral("branch"), QString(), Element::Place::Child));
    target->append(new CountedElement(second.get(), QStringLiteral("branch"), QString(), Element::Place::Child));
    const auto module = makeModule("Module", "Second");
    addElement(module, "leaf", "branch");
    tree.addModule(first.get());
    tree.addModule(second.get());
    tree.addModule(module.get());
    QCOMPARE(shapeOf(tree), QStringLiteral("(top(branch) other(branch(leaf) branch))"));
}

void TestModuleTree::elementWithoutItsStatedParentIsNotLost()
{
    ModuleTree tree;
    const Console console;
    tree.addModule(console.computer.get());
    const auto module = makeModule("Module", "LocalComputerModule");
    addElement(module, "first", "Missing");
    addElement(module, "second", "MissingToo");
    addElement(module, "third");
    QTest::ignoreMessage(QtWarningMsg, "Module has an element first that belongs under Missing but there is none");
    QTest::ignoreMessage(QtWarningMsg, "Module has an element second that belongs under MissingToo but there is none");
    tree.addModule(module.get());
    QCOMPARE(shapeOf(tree), QStringLiteral("(LocalComputer(first(third second)))"));

    const auto root = makeModule("Root");
    addElement(root, "fourth", "Missing");
    QTest::ignoreMessage(QtWarningMsg, "Root has an element fourth that belongs under Missing but there is none");
    tree.addModule(root.get());
    QCOMPARE(shapeOf(tree), QStringLiteral("(LocalComputer(first(third second)) fourth)"));
}

void TestModuleTree::targetWithoutElementsLosesNothing()
{
    ModuleTree tree;
    const auto target = makeModule("Target");
    const auto module = makeModule("Module", "Target");
    addElement(module, "first");
    addElement(module, "second");
    tree.addModule(target.get());
    tree.addModule(module.get());
    QCOMPARE(shapeOf(tree), QStringLiteral("(first(second))"));
}

void TestModuleTree::extendingModuleIsAttached()
{
    ModuleTree tree;
    const Console console;
    console.addTo(tree);
    const auto extending = makeModule("LocalUserQuotaModule", "LocalUserModule");
    extending->setKind(Module::ExtendingKind);
    tree.addModule(extending.get());
    QVERIFY(console.users->extendingModules() == std::vector<Module *>({extending.get()}));
    QVERIFY(console.computer->extendingModules().empty()); // those that hang under it do not extend it
    QCOMPARE(shapeOf(tree), QStringLiteral("(LocalComputer(LocalUsers LocalGroups))"));
}

void TestModuleTree::extendingModuleWaitsToo()
{
    ModuleTree tree;
    const Console console;
    const auto extending = makeModule("LocalUserQuotaModule", "LocalUserModule");
    extending->setKind(Module::ExtendingKind);
    tree.addModule(extending.get());
    QVERIFY(console.users->extendingModules().empty());
    console.addTo(tree);
    QVERIFY(console.users->extendingModules() == std::vector<Module *>({extending.get()}));
}

void TestModuleTree::firstModuleOfANameIsTheTarget()
{
    ModuleTree tree;
    const auto first = makeModule("Same");
    addElement(first, "a");
    const auto second = makeModule("Same");
    addElement(second, "b");
    const auto module = makeModule("Module", "Same");
    addElement(module, "leaf");
    tree.addModule(first.get());
    tree.addModule(second.get());
    tree.addModule(module.get());
    QCOMPARE(tree.module(QStringLiteral("Same")), first.get());
    QCOMPARE(shapeOf(tree), QStringLiteral("(a(leaf) b)"));
}

void TestModuleTree::moduleMayDieBeforeTheTree()
{
    ModuleTree tree;
    TreeNodeModel model;
    model.setRootNode(tree.rootNode());
    const QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::Fatal);
    const Console console;
    console.addTo(tree);
    auto quota = makeQuotaModule();
    tree.addModule(quota.get());
    quota.reset();
    QCOMPARE(shapeOf(tree), QStringLiteral("(LocalComputer(LocalUsers LocalGroups))"));
    QCOMPARE(namesOf(tree.modules()), words("LocalComputerModule LocalUserModule LocalGroupModule"));
    quota = makeQuotaModule();
    tree.addModule(quota.get());
    QCOMPARE(shapeOf(tree), WholeTree);
}

void TestModuleTree::waitingModuleMayDie()
{
    ModuleTree tree;
    auto quota = makeQuotaModule();
    tree.addModule(quota.get());
    quota.reset();
    QVERIFY(tree.waitingModules().empty());
    QCOMPARE(CountedElement::living, 0);
    const Console console;
    console.addTo(tree);
    QCOMPARE(shapeOf(tree), QStringLiteral("(LocalComputer(LocalUsers LocalGroups))"));
}

void TestModuleTree::modulesWaitAgainWhenTheirTargetDies()
{
    ModuleTree tree;
    auto target = makeModule("Target");
    addElement(target, "top");
    const auto module = makeModule("Module", "Target");
    addElement(module, "leaf");
    tree.addModule(target.get());
    tree.addModule(module.get());
    target.reset();
    QCOMPARE(shapeOf(tree), QString());
    QVERIFY(tree.modules().empty());
    QCOMPARE(namesOf(tree.waitingModules()), words("Module"));
    QCOMPARE(module->attachedTo(), nullptr);
    target = makeModule("Target");
    addElement(target, "top");
    tree.addModule(target.get());
    QCOMPARE(module->attachedTo(), target.get());
    QCOMPARE(namesOf(tree.modules()), words("Target Module"));
    QCOMPARE(shapeOf(tree), QStringLiteral("(top)")); // what hung below the first one went with it
}

void TestModuleTree::treeMayDieBeforeTheModules()
{
    const Console console;
    const auto quota = makeQuotaModule();
    {
        ModuleTree tree;
        console.addTo(tree);
        tree.addModule(quota.get());
    }
    QCOMPARE(CountedElement::living, 0);
    for (const NodePointer<Element> &element : quota->topElements())
        QVERIFY(!element);
}

void TestModuleTree::elementsAlreadyHungStayWhereTheyAre()
{
    ModuleTree tree;
    const Console console;
    tree.addModule(console.computer.get());
    const auto module = makeModule("Module", "LocalComputerModule");
    Element *first = addElement(module, "first");
    first->append(addElement(module, "second"));
    tree.addModule(module.get());
    QCOMPARE(shapeOf(tree), QStringLiteral("(LocalComputer(first(second)))"));
}

QTEST_GUILESS_MAIN(TestModuleTree)
#include "tst_moduletree.moc"
