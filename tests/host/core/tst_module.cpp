// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <elementdata.h>
#include <elementeditor.h>
#include <module.h>

#include <QFile>
#include <QLoggingCategory>
#include <QScopeGuard>
#include <QtTest>

#include <stdexcept>

#include <sys/capability.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace
{
bool allowed(const Module & /*module*/)
{
    return true;
}

class Editor : public QObject, public ElementEditor
{
    Q_OBJECT

public:
    explicit Editor(const char *type, int role = MainRole)
        : _type(QString::fromLatin1(type))
        , _role(role)
    {
        ++living;
    }
    ~Editor() override { --living; }

    QString elementType() const override { return _type; }
    Module *module() const override { return nullptr; }
    OperationTypes availableOperations() const override { return {}; }
    int role() const override { return _role; }
    Element *element() const override { return nullptr; }
    QObject *object() override { return this; }
    void connectToModule(Module *module) override
    {
        connect(this, &Editor::contextChanged, module, &Module::elementContextOperationChanged, Qt::UniqueConnection);
    }
    void afterSuccessfulRead(Element * /*element*/, ElementData * /*data*/) override {}
    void afterSuccessfulUpdate() override {}
    void setUnchanged() override {}

    static inline int living = 0;

Q_SIGNALS:
    void contextChanged(ContextOperation *);

private:
    QString _type;
    int _role;
};

class CountedElement : public OrdinaryElement
{
public:
    CountedElement(Module *module, Place place)
        : OrdinaryElement(QStringLiteral("Thing"), QString(), QStringLiteral("title"), module, allowed, place)
    {
        ++living;
    }
    ~CountedElement() override { --living; }
    static inline int living = 0;
};

class CountedData : public ElementData
{
public:
    CountedData() { ++living; }
    CountedData(const CountedData &) = delete;
    CountedData &operator=(const CountedData &) = delete;
    ~CountedData() override { --living; }
    static inline int living = 0;
};

/// Deletes its supplements itself, as a module is asked to.
class ExtendingModule : public Module
{
public:
    explicit ExtendingModule(Module *extended)
        : Module(QStringLiteral("Extending"), nullptr)
    {
        setKind(ExtendingKind);
        setAttachedTo(extended);
    }
    void performOperation(ContextOperation *operation, OperationType type, ElementData * /*data*/,
                          int /*extra*/) override
    {
        auto *element = static_cast<Element *>(operation);
        if (type == OperationType::CreateSupplement) {
            element->append(new SupplementElement(QStringLiteral("Tab"), QString(), element->title(), this, allowed,
                                                  Element::Place::Child));
        } else if (type == OperationType::RemoveSupplement) {
            ++removed;
            delete element;
        }
    }

    int removed = 0;
};

/// Runs a check in a child process, whose rights it may change.
template<typename Check>
bool holdsInChild(const Check &check)
{
    const pid_t child = fork();
    if (child == 0)
        _exit(check() ? 0 : 1);
    int status = -1;
    return waitpid(child, &status, 0) == child && WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

/// The effective capabilities of this process, as the kernel lists them.
quint64 effectiveCapabilities()
{
    QFile status(QStringLiteral("/proc/self/status"));
    if (!status.open(QIODevice::ReadOnly))
        return 0;
    for (const QByteArray &line : status.readAll().split('\n')) {
        if (line.startsWith("CapEff:"))
            return line.mid(7).trimmed().toULongLong(nullptr, 16);
    }
    return 0;
}

constexpr quint64 SystemAdministration = quint64(1) << CAP_SYS_ADMIN;
} // namespace

class TestModule : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup()
    {
        QCOMPARE(Editor::living, 0);
        QCOMPARE(CountedElement::living, 0);
        QCOMPARE(CountedData::living, 0);
    }

    void keepsWhatItIsTold();
    void findsEditorsByTypeAndRole();
    void secondEditorOfATypeIsRefused();
    void editorMayDieBeforeItsModule();
    void hearsOfItsEditorsOnceConnected();
    void knowsWhoExtendsIt();
    void relationEndsWithEitherModule();
    void elementFindsItsEditorInTheExtendingModuleToo();
    void unplacedElementsDieWithTheModule();
    void placedElementsLeaveTheTreeWithTheModule();
    void supplementsLeaveWithTheModuleThatMadeThem();
    void supplementsAreRemovedThroughTheLivingModule();
    void defaultHandlingIsALineInTheLog();
    void administratorIsWhoTheKernelSays();
    void administratorWithoutRoot();
    void hierarchyAsksEveryModule();
};

void TestModule::keepsWhatItIsTold()
{
    QObject owner;
    auto *module = new Module(QStringLiteral("Name"), &owner);
    QCOMPARE(module->parent(), &owner);
    QCOMPARE(module->name(), QStringLiteral("Name"));
    QCOMPARE(module->attachName(), QString());
    QCOMPARE(module->kind(), Module::RootKind);
    module->setAttachName(QStringLiteral("Other"));
    module->setKind(Module::BranchKind);
    QCOMPARE(module->attachName(), QStringLiteral("Other"));
    QCOMPARE(int(module->kind()), 2);

    QVERIFY(!module->getData(QStringLiteral("paranoid")).isValid());
    module->setData(QStringLiteral("paranoid"), true);
    module->setData(QStringLiteral("description"), QStringLiteral("old"));
    module->setData(QStringLiteral("description"), QStringLiteral("new"));
    QCOMPARE(module->getData(QStringLiteral("paranoid")), QVariant(true));
    QCOMPARE(module->getData(QStringLiteral("description")), QVariant(QStringLiteral("new")));
}

void TestModule::findsEditorsByTypeAndRole()
{
    Module module(QStringLiteral("Module"), nullptr);
    auto *first = new Editor("First");
    auto *second = new Editor("Second");
    auto *other = new Editor("First", 2);
    for (Editor *editor : {first, second, other})
        module.insertElementWidget(editor);
    QCOMPARE(module.elementWidget(QStringLiteral("First"), 1), first);
    QCOMPARE(module.elementWidget(QStringLiteral("First"), 2), other);
    QCOMPARE(module.elementWidget(QStringLiteral("Second"), 1), second);
    QCOMPARE(module.elementWidget(QStringLiteral("Second"), 2), nullptr);
    QCOMPARE(module.elementWidget(QStringLiteral("Third"), 1), nullptr);
    QVERIFY(module.elementWidgets() == std::vector<ElementEditor *>({first, second, other}));
}

void TestModule::secondEditorOfATypeIsRefused()
{
    Module module(QStringLiteral("Module"), nullptr);
    auto *first = new Editor("First");
    module.insertElementWidget(first);
    QVERIFY_EXCEPTION_THROWN(module.insertElementWidget(new Editor("First")), std::logic_error);
    QCOMPARE(Editor::living, 1);
    QCOMPARE(module.elementWidget(QStringLiteral("First"), 1), first);
}

void TestModule::editorMayDieBeforeItsModule()
{
    Module module(QStringLiteral("Module"), nullptr);
    auto *first = new Editor("First");
    auto *second = new Editor("Second");
    module.insertElementWidget(first);
    module.insertElementWidget(second);
    delete first;
    QCOMPARE(module.elementWidget(QStringLiteral("First"), 1), nullptr);
    QVERIFY(module.elementWidgets() == std::vector<ElementEditor *>({second}));
    module.connectElementWidgets();
    auto *again = new Editor("First");
    module.insertElementWidget(again);
    QCOMPARE(module.elementWidget(QStringLiteral("First"), 1), again);
}

void TestModule::hearsOfItsEditorsOnceConnected()
{
    Module module(QStringLiteral("Module"), nullptr);
    auto *editor = new Editor("First");
    module.insertElementWidget(editor);
    int heard = 0;
    connect(&module, &Module::elementContextOperationChanged, this, [&](ContextOperation *operation) {
        QCOMPARE(operation, editor);
        ++heard;
    });
    Q_EMIT editor->contextChanged(editor);
    QCOMPARE(heard, 0);
    module.connectElementWidgets();
    module.connectElementWidgets();
    Q_EMIT editor->contextChanged(editor);
    QCOMPARE(heard, 1);
}

void TestModule::knowsWhoExtendsIt()
{
    Module extended(QStringLiteral("Extended"), nullptr);
    Module branch(QStringLiteral("Branch"), nullptr);
    branch.setKind(Module::BranchKind);
    branch.setAttachedTo(&extended);
    ExtendingModule extending(&extended);
    QCOMPARE(branch.attachedTo(), &extended);
    QCOMPARE(extending.attachedTo(), &extended);
    QVERIFY(extended.extendingModules() == std::vector<Module *>({&extending}));
    extending.setAttachedTo(&branch);
    QVERIFY(extended.extendingModules().empty());
    QVERIFY(branch.extendingModules() == std::vector<Module *>({&extending}));
}

void TestModule::relationEndsWithEitherModule()
{
    auto extended = std::make_unique<Module>(QStringLiteral("Extended"), nullptr);
    auto extending = std::make_unique<ExtendingModule>(extended.get());
    extending.reset();
    QVERIFY(extended->extendingModules().empty());

    extending = std::make_unique<ExtendingModule>(extended.get());
    Module branch(QStringLiteral("Branch"), nullptr);
    branch.setAttachedTo(extended.get());
    extended.reset();
    QCOMPARE(extending->attachedTo(), nullptr);
    QCOMPARE(branch.attachedTo(), nullptr);
}

void TestModule::elementFindsItsEditorInTheExtendingModuleToo()
{
    Module extended(QStringLiteral("Extended"), nullptr);
    ExtendingModule extending(&extended);
    auto *theirs = new Editor("Thing");
    extending.insertElementWidget(theirs);
    const CountedElement element(&extended, Element::Place::Child);
    QCOMPARE(element.elementWidget(ElementEditor::MainRole), theirs);
    QCOMPARE(element.elementWidget(2), nullptr);
    auto *own = new Editor("Thing");
    extended.insertElementWidget(own);
    QCOMPARE(element.elementWidget(1), own);
}

void TestModule::unplacedElementsDieWithTheModule()
{
    auto module = std::make_unique<Module>(QStringLiteral("Module"), nullptr);
    auto *first = new CountedElement(module.get(), Element::Place::Top);
    auto *second = new CountedElement(module.get(), Element::Place::Top);
    QCOMPARE(module->topElements().size(), std::size_t(2));
    QCOMPARE(module->topElements().at(0).data(), first);
    QCOMPARE(module->topElements().at(1).data(), second);
    delete first;
    QVERIFY(!module->topElements().at(0));
    QCOMPARE(CountedElement::living, 1);
    module.reset();
    QCOMPARE(CountedElement::living, 0);
}

void TestModule::placedElementsLeaveTheTreeWithTheModule()
{
    TreeNode root;
    auto module = std::make_unique<Module>(QStringLiteral("Module"), nullptr);
    auto *top = new CountedElement(module.get(), Element::Place::Top);
    root.append(top);
    top->append(new CountedElement(module.get(), Element::Place::Child));
    root.append(new TreeNode);
    module->insertElementWidget(new Editor("Thing"));
    module.reset();
    QCOMPARE(CountedElement::living, 0);
    QCOMPARE(root.childNodes().size(), 1);
}

void TestModule::supplementsLeaveWithTheModuleThatMadeThem()
{
    Module extended(QStringLiteral("Extended"), nullptr);
    auto extending = std::make_unique<ExtendingModule>(&extended);
    ExtendingModule other(&extended);
    auto *top = new CountedElement(&extended, Element::Place::Top);
    auto *below = new CountedElement(&extended, Element::Place::Child);
    top->append(below);
    top->requestSupplements();
    below->requestSupplements();
    QCOMPARE(top->supplementNodes().size(), 2);
    extending.reset();
    for (const Element *element : {top, below}) {
        QCOMPARE(element->supplementNodes().size(), 1);
        QCOMPARE(static_cast<Element *>(element->supplementNodes().first())->module(), &other);
    }
}

void TestModule::supplementsAreRemovedThroughTheLivingModule()
{
    auto extended = std::make_unique<Module>(QStringLiteral("Extended"), nullptr);
    ExtendingModule extending(extended.get());
    auto *top = new CountedElement(extended.get(), Element::Place::Top);
    top->requestSupplements();
    extended.reset();
    QCOMPARE(extending.removed, 1);
    QCOMPARE(CountedElement::living, 0);
}

void TestModule::defaultHandlingIsALineInTheLog()
{
    QLoggingCategory::setFilterRules(QStringLiteral("kra.module.info=true"));
    const auto shownNoLonger = qScopeGuard([] { QLoggingCategory::setFilterRules(QString()); });
    Module module(QStringLiteral("Module"), nullptr);
    CountedElement element(&module, Element::Place::Child);
    QTest::ignoreMessage(QtInfoMsg, "Module is asked for operation 32 on Thing");
    CountedData kept;
    element.performOperation(OperationType::Read, &kept, 0);
    QCOMPARE(CountedData::living, 1);
    QTest::ignoreMessage(QtInfoMsg, "Module is asked for operation 64 on Thing");
    element.performOperation(OperationType::Write, new CountedData, 0);
    QCOMPARE(CountedData::living, 1);
    // A module that has made a task for a write calls this with no data.
    QTest::ignoreMessage(QtInfoMsg, "Module is asked for operation 64 on Thing");
    module.performOperation(&element, OperationType::Write, nullptr, 0);
    QVERIFY(element.supplementNodes().isEmpty());
}

void TestModule::administratorIsWhoTheKernelSays()
{
    const Module module(QStringLiteral("Module"), nullptr);
    QCOMPARE(Module::isAdministrator(module), geteuid() == 0 || (effectiveCapabilities() & SystemAdministration) != 0);
}

void TestModule::administratorWithoutRoot()
{
    const Module module(QStringLiteral("Module"), nullptr);
    constexpr uid_t Nobody = 65534;
    QVERIFY(holdsInChild([&] {
        // An ordinary user without capabilities, whoever runs the test.
        if (geteuid() == 0 && setresuid(Nobody, Nobody, Nobody) != 0)
            return false;
        cap_t none = cap_init();
        return cap_set_proc(none) == 0 && !Module::isAdministrator(module);
    }));
    if (geteuid() != 0 || (effectiveCapabilities() & SystemAdministration) == 0)
        QSKIP("Only a process that has CAP_SYS_ADMIN can keep it without being root.");
    QVERIFY(holdsInChild([&] {
        cap_t one = cap_init();
        const cap_value_t wanted = CAP_SYS_ADMIN;
        prctl(PR_SET_KEEPCAPS, 1L);
        if (setresuid(Nobody, Nobody, Nobody) != 0)
            return false;
        const bool isWithoutBefore = !Module::isAdministrator(module); // permitted, but not in effect
        cap_set_flag(one, CAP_PERMITTED, 1, &wanted, CAP_SET);
        cap_set_flag(one, CAP_EFFECTIVE, 1, &wanted, CAP_SET);
        return isWithoutBefore && cap_set_proc(one) == 0 && geteuid() == Nobody && Module::isAdministrator(module);
    }));
}

void TestModule::hierarchyAsksEveryModule()
{
    Module root(QStringLiteral("Root"), nullptr);
    Module branch(QStringLiteral("Branch"), nullptr);
    branch.setAttachedTo(&root);
    QCOMPARE(Module::isAdministratorHierarchy(branch), Module::isAdministrator(branch));
    QCOMPARE(Module::isAdministratorHierarchy(root), Module::isAdministrator(root));
}

QTEST_GUILESS_MAIN(TestModule)
#include "tst_module.moc"
