// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <element.h>
#include <elementdata.h>
#include <module.h>
#include <treenodemodel.h>

#include <QAbstractItemModelTester>
#include <QIconEngine>
#include <QSignalSpy>
#include <QtTest>

#include <functional>

namespace
{
bool allowed(const Module & /*module*/)
{
    return true;
}
bool forbidden(const Module & /*module*/)
{
    return false;
}

/// Writes down what it is asked for, and answers as the test says.
class AskedModule : public Module
{
public:
    explicit AskedModule(const QString &name)
        : Module(name, nullptr)
    {}
    void performOperation(ContextOperation *operation, OperationType type, ElementData *data, int extra) override
    {
        asked << QStringLiteral("%1 %2 %3").arg(static_cast<int>(type)).arg(operation->elementType()).arg(extra);
        const std::unique_ptr<ElementData> owned(type == OperationType::Write ? data : nullptr);
        if (answer)
            answer(operation, type);
    }

    QStringList asked;
    std::function<void(ContextOperation *, OperationType)> answer;
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

class Supplement : public SupplementElement
{
public:
    explicit Supplement(Module *module)
        : SupplementElement(QStringLiteral("Tab"), QString(), QStringLiteral("tab"), module, allowed, Place::Child)
    {
        ++living;
    }
    ~Supplement() override { --living; }
    static inline int living = 0;
};

/// An icon that is there, without the screen that a pixmap would need.
class BlankIcon : public QIconEngine
{
public:
    void paint(QPainter * /*painter*/, const QRect & /*rect*/, QIcon::Mode /*mode*/, QIcon::State /*state*/) override {}
    QIconEngine *clone() const override { return new BlankIcon; }
};

class IconElement : public OrdinaryElement
{
public:
    using OrdinaryElement::OrdinaryElement;
    QIcon icon() const override { return QIcon(new BlankIcon); }
};

/// The module that extends: hangs a supplement under each element it is asked for, and deletes it when asked to.
std::unique_ptr<AskedModule> makeExtending(Module &extended)
{
    auto module = std::make_unique<AskedModule>(QStringLiteral("Extending"));
    module->setKind(Module::ExtendingKind);
    module->setAttachedTo(&extended);
    module->answer = [made = module.get()](ContextOperation *operation, OperationType type) {
        if (type == OperationType::CreateSupplement)
            static_cast<Element *>(operation)->append(new Supplement(made));
        else if (type == OperationType::RemoveSupplement)
            delete static_cast<Element *>(operation);
    };
    return module;
}

template<typename Kind>
std::unique_ptr<Kind> makeElement(Module &module, const QString &title = QStringLiteral("title"))
{
    return std::make_unique<Kind>(QStringLiteral("Thing"), QStringLiteral("Owner"), title, &module, allowed,
                                  Element::Place::Child);
}
} // namespace

Q_DECLARE_METATYPE(ContainerElement::Content)

class TestElement : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup()
    {
        QCOMPARE(Supplement::living, 0);
        QCOMPARE(CountedData::living, 0);
    }

    void saysWhatItIs();
    void kindsOfferTheirOperations();
    void cellsAndHeader();
    void titleAndRecordTellThatCellsChanged();
    void accessIsAskedOfTheCheck();
    void operationsGoToTheModule();
    void containerIsReadOnFirstLook();
    void containerSaysNotThatItMayHaveRowsOnceRead_data();
    void containerSaysNotThatItMayHaveRowsOnceRead();
    void listOverAContainerStartsItsFirstRead();
    void supplementsAreRequestedOnce();
    void laterModuleExtendsElementsNotShownYet();
    void moduleMayDeleteTheElementItIsToExtend();
    void supplementsAreRemovedByTheirModule_data();
    void supplementsAreRemovedByTheirModule();
    void supplementThatItsModuleKeepsGoesWithTheElement();
    void removalMayTakeASiblingAlong();
    void displayVariant();
    void recordIsCopiedWhole();
};

void TestElement::saysWhatItIs()
{
    AskedModule module(QStringLiteral("Module"));
    const auto element = makeElement<OrdinaryElement>(module);
    QCOMPARE(element->contextType(), ContextOperation::ElementContext);
    QCOMPARE(int(element->contextType()), 0);
    QCOMPARE(element->elementType(), QStringLiteral("Thing"));
    QCOMPARE(element->id(), QStringLiteral("Thing"));
    QCOMPARE(element->parentType(), QStringLiteral("Owner"));
    QCOMPARE(element->module(), &module);
    QCOMPARE(element->title(), QStringLiteral("title"));
    QCOMPARE(element->caption(), QStringLiteral("title"));
    QVERIFY(element->isTreeRow());
    QVERIFY(module.topElements().empty());
    QVERIFY(!makeElement<SupplementElement>(module)->isTreeRow());
}

void TestElement::kindsOfferTheirOperations()
{
    AskedModule module(QStringLiteral("Module"));
    QCOMPARE(int(makeElement<OrdinaryElement>(module)->availableOperations()), 32 + 64);
    QCOMPARE(int(makeElement<SupplementElement>(module)->availableOperations()), 32 + 64);
    QCOMPARE(int(makeElement<ContainerElement>(module)->availableOperations()), 8 + 32);
}

void TestElement::cellsAndHeader()
{
    AskedModule module(QStringLiteral("Module"));
    const auto plain = makeElement<OrdinaryElement>(module);
    QCOMPARE(plain->columnCount(), 1);
    QCOMPARE(plain->data(0, Qt::DisplayRole).toString(), QStringLiteral("title"));
    QCOMPARE(plain->data(0, Qt::ToolTipRole).toString(), QStringLiteral("title"));
    QCOMPARE(plain->data(0, SortRole).toString(), QStringLiteral("title"));
    QVERIFY(!plain->data(0, Qt::DecorationRole).isValid());
    QVERIFY(!plain->data(0, Qt::EditRole).isValid());
    QVERIFY(!plain->data(1, Qt::DisplayRole).isValid());
    QVERIFY(!plain->data(1, SortRole).isValid());
    QVERIFY(!plain->headerData(0, Qt::Horizontal, Qt::DisplayRole).toString().isEmpty());
    QVERIFY(!plain->headerData(1, Qt::Horizontal, Qt::DisplayRole).isValid());
    QVERIFY(!plain->headerData(0, Qt::Vertical, Qt::DisplayRole).isValid());

    const auto shown = makeElement<IconElement>(module);
    QVERIFY(!shown->data(0, Qt::DecorationRole).value<QIcon>().isNull());
    QCOMPARE(int(IconRole), 263);
    QVERIFY(!shown->data(0, 263).value<QIcon>().isNull());
    QVERIFY(!shown->data(1, Qt::DecorationRole).isValid());
}

void TestElement::titleAndRecordTellThatCellsChanged()
{
    AskedModule module(QStringLiteral("Module"));
    TreeNode root;
    TreeNodeModel model;
    model.setRootNode(&root);
    auto *element = makeElement<OrdinaryElement>(module).release();
    root.append(element);
    QSignalSpy changed(&model, &QAbstractItemModel::dataChanged);
    element->setTitle(QStringLiteral("title"));
    QCoreApplication::processEvents();
    QVERIFY(changed.isEmpty());
    element->setTitle(QStringLiteral("other"));
    QTRY_COMPARE(changed.size(), 1);
    QCOMPARE(model.index(0, 0).data().toString(), QStringLiteral("other"));

    QCOMPARE(element->record(), nullptr);
    element->setRecord(std::make_unique<CountedData>());
    auto second = std::make_unique<CountedData>();
    ElementData *record = second.get();
    element->setRecord(std::move(second));
    QCOMPARE(element->record(), record);
    QCOMPARE(CountedData::living, 1);
    QTRY_COMPARE(changed.size(), 2);

    std::unique_ptr<ElementData> taken = element->takeRecord();
    QCOMPARE(taken.get(), record);
    QCOMPARE(element->record(), nullptr);
    QCOMPARE(CountedData::living, 1);
    taken.reset();
    QCOMPARE(CountedData::living, 0);
}

void TestElement::accessIsAskedOfTheCheck()
{
    AskedModule module(QStringLiteral("Module"));
    const OrdinaryElement may({}, {}, {}, &module, allowed, Element::Place::Child);
    const OrdinaryElement mayNot({}, {}, {}, &module, forbidden, Element::Place::Child);
    QVERIFY(may.isAccessible());
    QVERIFY(!mayNot.isAccessible());
}

void TestElement::operationsGoToTheModule()
{
    AskedModule module(QStringLiteral("Module"));
    const auto element = makeElement<OrdinaryElement>(module);
    CountedData kept;
    element->performOperation(OperationType::Read, &kept, 3);
    element->performOperation(OperationType::Write, new CountedData, 0);
    QCOMPARE(module.asked, QStringList({QStringLiteral("32 Thing 3"), QStringLiteral("64 Thing 0")}));
    QCOMPARE(CountedData::living, 1);
}

void TestElement::containerIsReadOnFirstLook()
{
    AskedModule module(QStringLiteral("Module"));
    TreeNode root;
    auto *container = makeElement<ContainerElement>(module).release();
    root.append(container);
    TreeNodeModel model;
    model.setRootNode(&root);
    const QModelIndex index = model.index(0, 0);

    QCOMPARE(container->content(), ContainerElement::Content::NeverRead);
    QVERIFY(container->needsContentRead());
    QVERIFY(model.hasChildren(index));
    QVERIFY(model.canFetchMore(index));
    QVERIFY(module.asked.isEmpty());
    model.fetchMore(index);
    QCOMPARE(module.asked, QStringList(QStringLiteral("8 Thing 0")));
    QCOMPARE(container->content(), ContainerElement::Content::Reading);
    QVERIFY(!container->needsContentRead());
    QVERIFY(!model.canFetchMore(index));
    QVERIFY(!model.hasChildren(index));
    model.fetchMore(index);
    QCOMPARE(module.asked.size(), 1);

    // Whoever asks for the content: the tree does not ask again.
    const auto other = makeElement<ContainerElement>(module);
    other->performOperation(OperationType::Read, nullptr, 0);
    QVERIFY(other->canFetchChildren());
    other->performOperation(OperationType::ReadContent, nullptr, 0);
    QVERIFY(!other->canFetchChildren());
}

void TestElement::containerSaysNotThatItMayHaveRowsOnceRead_data()
{
    QTest::addColumn<ContainerElement::Content>("content");
    QTest::addColumn<bool>("needsRead");
    QTest::newRow("reading") << ContainerElement::Content::Reading << false;
    QTest::newRow("read") << ContainerElement::Content::Read << false;
    QTest::newRow("stale") << ContainerElement::Content::Stale << true;
}

void TestElement::containerSaysNotThatItMayHaveRowsOnceRead()
{
    QFETCH(ContainerElement::Content, content);
    QFETCH(bool, needsRead);
    AskedModule module(QStringLiteral("Module"));
    const auto container = makeElement<ContainerElement>(module);
    container->setContent(content);
    TreeNodeModel model;
    model.setRootNode(container.get());
    QVERIFY(!model.canFetchMore({}));
    QVERIFY(!model.hasChildren());
    model.fetchMore({});
    QVERIFY(module.asked.isEmpty());
    QCOMPARE(container->needsContentRead(), needsRead);
}

void TestElement::listOverAContainerStartsItsFirstRead()
{
    AskedModule module(QStringLiteral("Module"));
    const auto container = makeElement<ContainerElement>(module);
    module.answer = [&](ContextOperation * /*operation*/, OperationType /*type*/) {
        container->append(
            {makeElement<OrdinaryElement>(module).release(), makeElement<OrdinaryElement>(module).release()});
    };
    TreeNodeModel model;
    model.setRootNode(container.get());
    const QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::Fatal);
    model.fetchMore({});
    QCOMPARE(module.asked.size(), 1);
    QCOMPARE(model.rowCount(), 2);
}

void TestElement::supplementsAreRequestedOnce()
{
    AskedModule module(QStringLiteral("Module"));
    const auto extending = makeExtending(module);
    const auto element = makeElement<OrdinaryElement>(module);
    QVERIFY(extending->asked.isEmpty());
    element->requestSupplements();
    element->requestSupplements();
    QCOMPARE(extending->asked, QStringList(QStringLiteral("1 Thing 0")));
    QVERIFY(module.asked.isEmpty());
    QCOMPARE(element->supplementNodes().size(), 1);
    QVERIFY(element->childNodes().isEmpty());
    QCOMPARE(element->supplementNodes().first()->parentNode(), element.get());
}

void TestElement::laterModuleExtendsElementsNotShownYet()
{
    AskedModule module(QStringLiteral("Module"));
    std::unique_ptr<AskedModule> extending;
    const auto shown = makeElement<OrdinaryElement>(module);
    const auto unseen = makeElement<OrdinaryElement>(module);
    shown->requestSupplements();
    extending = makeExtending(module);
    shown->requestSupplements();
    unseen->requestSupplements();
    QVERIFY(shown->supplementNodes().isEmpty());
    QCOMPARE(unseen->supplementNodes().size(), 1);
}

void TestElement::moduleMayDeleteTheElementItIsToExtend()
{
    AskedModule module(QStringLiteral("Module"));
    const auto first = makeExtending(module);
    const auto second = makeExtending(module);
    auto *element = makeElement<OrdinaryElement>(module).release();
    first->answer = [&](ContextOperation * /*operation*/, OperationType /*type*/) { delete element; };
    element->requestSupplements();
    QCOMPARE(first->asked.size(), 1);
    QVERIFY(second->asked.isEmpty());
}

void TestElement::supplementsAreRemovedByTheirModule_data()
{
    QTest::addColumn<bool>("isCleared");
    QTest::newRow("element deleted") << false;
    QTest::newRow("container cleared") << true;
}

void TestElement::supplementsAreRemovedByTheirModule()
{
    QFETCH(bool, isCleared);
    AskedModule module(QStringLiteral("Module"));
    const auto extending = makeExtending(module);
    TreeNode root;
    auto *element = makeElement<OrdinaryElement>(module).release();
    root.append(element);
    element->requestSupplements();
    QCOMPARE(Supplement::living, 1);
    bool isElementThere = true;
    extending->answer = [&](ContextOperation *operation, OperationType /*type*/) {
        auto *supplement = static_cast<Element *>(operation);
        isElementThere = supplement->parentNode() == element;
        delete supplement;
    };
    if (isCleared)
        root.clearDelete();
    else
        delete element;
    QCOMPARE(extending->asked.last(), QStringLiteral("2 Tab 0"));
    QVERIFY(isElementThere);
    QCOMPARE(Supplement::living, 0);
    QVERIFY(root.childNodes().isEmpty());
}

void TestElement::supplementThatItsModuleKeepsGoesWithTheElement()
{
    AskedModule module(QStringLiteral("Module"));
    const auto extending = makeExtending(module);
    auto element = makeElement<OrdinaryElement>(module);
    element->requestSupplements();
    extending->answer = {};
    element.reset();
    QCOMPARE(extending->asked.last(), QStringLiteral("2 Tab 0"));
    QCOMPARE(Supplement::living, 0);
}

void TestElement::removalMayTakeASiblingAlong()
{
    AskedModule module(QStringLiteral("Module"));
    const auto extending = makeExtending(module);
    TreeNode root;
    for (int i = 0; i < 3; ++i) {
        auto *element = makeElement<OrdinaryElement>(module).release();
        root.append(element);
        element->requestSupplements();
        element->append(new Supplement(extending.get()));
    }
    // Asked to remove one supplement, it deletes every supplement there is, and another element with them.
    NodePointer<TreeNode> sibling = root.childNodes().at(1);
    extending->answer = [&](ContextOperation *operation, OperationType /*type*/) {
        auto *element = static_cast<Element *>(static_cast<Element *>(operation)->parentNode());
        for (TreeNode *supplement : element->supplementNodes())
            delete supplement;
        if (sibling)
            delete sibling.data();
    };
    root.clearDelete();
    QVERIFY(!sibling);
    QVERIFY(root.childNodes().isEmpty());
}

void TestElement::displayVariant()
{
    AskedModule module(QStringLiteral("Module"));
    const auto container = makeElement<ContainerElement>(module);
    QVERIFY(container->displayChildrenVariants().isEmpty());
    QCOMPARE(container->displayChildrenVariant(), 0);
    container->append(makeElement<OrdinaryElement>(module).release());
    TreeNodeModel model;
    model.setRootNode(container.get());
    QSignalSpy changed(&model, &QAbstractItemModel::dataChanged);
    ChangeDisplayElementData second(2);
    container->performOperation(OperationType::ChangeDisplay, &second, 0);
    QCOMPARE(container->displayChildrenVariant(), 2);
    QTRY_COMPARE(changed.size(), 1); // the rows are to be looked at again
    QVERIFY(module.asked.isEmpty());

    ElementData other;
    container->performOperation(OperationType::ChangeDisplay, &other, 0);
    QCOMPARE(module.asked, QStringList(QStringLiteral("2048 Thing 0")));
    QCOMPARE(container->displayChildrenVariant(), 2);
}

void TestElement::recordIsCopiedWhole()
{
    ElementData record;
    record.params.insert(QStringLiteral("devices"), QStringList(QStringLiteral("/dev/a")));
    record.text = QStringLiteral("text");
    record.number = 7;
    const ElementData copy = record;
    record.params.clear();
    QCOMPARE(copy.params.value(QStringLiteral("devices")).toStringList(), QStringList(QStringLiteral("/dev/a")));
    QCOMPARE(copy.text, QStringLiteral("text"));
    QCOMPARE(copy.number, 7);
}

QTEST_GUILESS_MAIN(TestElement)
#include "tst_element.moc"
