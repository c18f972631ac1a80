// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <treenode.h>

#include <QtTest>

#include <functional>

namespace
{
class NamedNode : public TreeNode
{
public:
    explicit NamedNode(QString name)
        : _name(std::move(name))
    {
        ++living;
    }
    ~NamedNode() override
    {
        --living;
        if (onDestruction)
            onDestruction();
    }
    QString id() const override { return _name; }

    std::function<void()> onDestruction;
    static inline int living = 0;

private:
    QString _name;
};

class TabNode : public NamedNode
{
public:
    using NamedNode::NamedNode;
    bool isTreeRow() const override { return false; }
};

QStringList idsOf(const QVector<TreeNode *> &nodes)
{
    QStringList ids;
    for (const TreeNode *node : nodes)
        ids << node->id();
    return ids;
}

QVector<int> rowsOf(const QVector<TreeNode *> &nodes)
{
    QVector<int> rows;
    for (const TreeNode *node : nodes)
        rows << node->row();
    return rows;
}

/// Writes down what it hears, with the ids that the parent's rows had at that moment, and answers as it is told to.
class Recorder : public TreeNodeObserver
{
public:
    explicit Recorder(TreeNode *node) { listenTo(node); }
    Recorder() = default;
    ~Recorder() override
    {
        if (_node)
            _node->removeObserver(this);
    }
    void listenTo(TreeNode *node)
    {
        _node = node;
        node->addObserver(this);
    }

    void rowsAboutToBeInserted(TreeNode *parent, int first, int last) override
    {
        note(QStringLiteral("insert %1-%2 into %3").arg(first).arg(last).arg(describe(parent)), onAboutToInsert);
    }
    void rowsInserted(TreeNode *parent) override
    {
        note(parentMayBeGone ? QStringLiteral("inserted") : QStringLiteral("inserted: %1").arg(describe(parent)));
    }
    void rowsAboutToBeRemoved(TreeNode *parent, int first, int last) override
    {
        note(QStringLiteral("remove %1-%2 of %3").arg(first).arg(last).arg(describe(parent)), onAboutToRemove);
    }
    void rowsRemoved(TreeNode *parent) override
    {
        note(parentMayBeGone ? QStringLiteral("removed") : QStringLiteral("removed: %1").arg(describe(parent)),
             onRemoved);
    }
    void nodeDataChanged(TreeNode *node) override { note(QStringLiteral("changed %1").arg(node->id())); }
    void childrenDataChanged(TreeNode *parent) override { note(QStringLiteral("children of %1").arg(parent->id())); }
    void currentNodeRequested(TreeNode *node) override { note(QStringLiteral("current %1").arg(node->id())); }
    void observedNodeDestroyed(TreeNode * /*node*/) override { note(QStringLiteral("destroyed"), onDestroyed); }

    QStringList heard;
    std::function<void()> onAboutToInsert;
    std::function<void()> onAboutToRemove;
    std::function<void()> onRemoved;
    std::function<void()> onDestroyed;
    bool parentMayBeGone = false; // then the parent is not looked at when a change has ended

private:
    NodePointer<TreeNode> _node;

    static QString describe(TreeNode *parent)
    {
        return QStringLiteral("%1(%2)").arg(parent->id(), idsOf(parent->childNodes()).join(QLatin1Char(' ')));
    }
    void note(const QString &text, const std::function<void()> &answer = {})
    {
        heard << text;
        if (answer)
            answer();
    }
};

class Counter : public TreeNodeObserver
{
public:
    explicit Counter(TreeNode *node)
        : _node(node)
    {
        node->addObserver(this);
    }
    ~Counter() override { _node->removeObserver(this); }
    void rowsAboutToBeInserted(TreeNode * /*parent*/, int /*first*/, int /*last*/) override { ++heard; }
    void rowsInserted(TreeNode * /*parent*/) override { ++heard; }
    void rowsAboutToBeRemoved(TreeNode * /*parent*/, int /*first*/, int /*last*/) override { ++heard; }
    void rowsRemoved(TreeNode * /*parent*/) override { ++heard; }
    void nodeDataChanged(TreeNode * /*node*/) override { ++heard; }
    void childrenDataChanged(TreeNode * /*parent*/) override { ++heard; }
    void currentNodeRequested(TreeNode * /*node*/) override { ++heard; }
    void observedNodeDestroyed(TreeNode * /*node*/) override {}

    int heard = 0;

private:
    TreeNode *_node;
};

QVector<TreeNode *> makeNodes(const QStringList &names)
{
    QVector<TreeNode *> nodes;
    for (const QString &name : names)
        nodes << new NamedNode(name);
    return nodes;
}

QStringList words(const char *text)
{
    return QString::fromLatin1(text).split(QLatin1Char(' '));
}
} // namespace

class TestTreeNode : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { NamedNode::living = 0; }
    void cleanup() { QCOMPARE(NamedNode::living, 0); }

    void bareNodeIsALeafOfOneColumn();
    void listIsAppendedAsOneInsertion();
    void observerHearsOnlyWhatIsBelow();
    void removalRenumbers();
    void childIsWholeUntilItLeft();
    void clearDeleteIsOneRemovalOfWholeChildren();
    void clearDeleteKeepsSupplements();
    void supplementsStandApart();
    void allChildNodesHasParentsBeforeChildren();
    void messagesCarryTheirNode();
    void pointerEndsWhenTheDeletionBegins();
    void observerHearsOfTheEndOfItsNode();
    void observerBelowHearsWhenAnAncestorIsDeleted();
    void observerMayTakeAnotherOff();
    void observerThatComesInBetweenHearsTheEnd();
    void observerMayDeleteASibling_data();
    void observerMayDeleteASibling();
    void observerMayDeleteTheParentOfTheLeavingNode();
    void observerMayDeleteTheNodeThatIsAppendedTo();
    void observerMayDeleteTheClearedNode_data();
    void observerMayDeleteTheClearedNode();
    void childMayDeleteASiblingAtItsEnd();
    void hundredThousandNodes();
};

void TestTreeNode::bareNodeIsALeafOfOneColumn()
{
    TreeNode node;
    QCOMPARE(node.parentNode(), nullptr);
    QCOMPARE(node.row(), 0);
    QCOMPARE(node.columnCount(), 1);
    QCOMPARE(node.treeNodeSpecialFlags(), 0);
    QVERIFY(node.isTreeRow());
    QVERIFY(!node.canFetchChildren());
    QVERIFY(!node.data(0, Qt::DisplayRole).isValid());
    QVERIFY(!node.headerData(0, Qt::Horizontal, Qt::DisplayRole).isValid());
    QVERIFY(node.allChildNodes().isEmpty());
    QVERIFY(node.supplementNodes().isEmpty());
    node.clearDelete();
}

void TestTreeNode::listIsAppendedAsOneInsertion()
{
    NamedNode root(QStringLiteral("root"));
    Recorder recorder(&root);
    root.append(new NamedNode(QStringLiteral("a")));
    root.append(makeNodes(words("b c d")));
    root.append(QVector<TreeNode *>());
    QCOMPARE(recorder.heard,
             QStringList({QStringLiteral("insert 0-0 into root()"), QStringLiteral("inserted: root(a)"),
                          QStringLiteral("insert 1-3 into root(a)"), QStringLiteral("inserted: root(a b c d)")}));
    QCOMPARE(rowsOf(root.childNodes()), QVector<int>({0, 1, 2, 3}));
    for (const TreeNode *child : root.childNodes())
        QCOMPARE(child->parentNode(), &root);
    root.removeObserver(&recorder);
}

void TestTreeNode::observerHearsOnlyWhatIsBelow()
{
    NamedNode root(QStringLiteral("root"));
    root.append(makeNodes(words("left right")));
    TreeNode *left = root.childNodes().at(0);
    TreeNode *right = root.childNodes().at(1);
    Recorder atRoot(&root);
    Recorder atRight(right);
    left->append(new NamedNode(QStringLiteral("leaf")));
    left->childNodes().first()->nodeDataChanged();
    QCOMPARE(atRoot.heard, QStringList({QStringLiteral("insert 0-0 into left()"),
                                        QStringLiteral("inserted: left(leaf)"), QStringLiteral("changed leaf")}));
    QVERIFY(atRight.heard.isEmpty());
    root.removeObserver(&atRoot);
    left->clearDelete();
    QCOMPARE(atRoot.heard.size(), 3);
}

void TestTreeNode::removalRenumbers()
{
    NamedNode root(QStringLiteral("root"));
    root.append(makeNodes(words("a b c d e")));
    delete root.childNodes().at(1);
    delete root.childNodes().at(3);
    QCOMPARE(idsOf(root.childNodes()), words("a c d"));
    QCOMPARE(rowsOf(root.childNodes()), QVector<int>({0, 1, 2}));
}

void TestTreeNode::childIsWholeUntilItLeft()
{
    NamedNode root(QStringLiteral("root"));
    root.append(makeNodes(words("a b c")));
    Recorder recorder(&root);
    auto *leaving = root.childNodes().at(1);
    leaving->append(new NamedNode(QStringLiteral("below")));
    recorder.heard.clear();
    recorder.onAboutToRemove = [&] { QCOMPARE(idsOf(leaving->childNodes()), words("below")); };
    recorder.onRemoved = [&] { QCOMPARE(leaving->parentNode(), nullptr); };
    delete leaving;
    // The node itself is a bare one by then, whoever deletes it; its place and all that is below it are there.
    QCOMPARE(recorder.heard,
             QStringList({QStringLiteral("remove 1-1 of root(a  c)"), QStringLiteral("removed: root(a c)")}));
}

void TestTreeNode::clearDeleteIsOneRemovalOfWholeChildren()
{
    NamedNode root(QStringLiteral("root"));
    root.append(makeNodes(words("a b c")));
    root.childNodes().at(1)->append(makeNodes(words("x y")));
    Recorder recorder(&root);
    recorder.onAboutToRemove = [] { QCOMPARE(NamedNode::living, 6); };
    recorder.onRemoved = [] { QCOMPARE(NamedNode::living, 6); };
    root.clearDelete();
    QCOMPARE(recorder.heard,
             QStringList({QStringLiteral("remove 0-2 of root(a b c)"), QStringLiteral("removed: root()")}));
    QCOMPARE(NamedNode::living, 1);
    root.clearDelete();
    QCOMPARE(recorder.heard.size(), 2);
}

void TestTreeNode::clearDeleteKeepsSupplements()
{
    NamedNode root(QStringLiteral("root"));
    auto *tab = new TabNode(QStringLiteral("tab"));
    root.append({new NamedNode(QStringLiteral("a")), tab});
    root.clearDelete();
    QVERIFY(root.childNodes().isEmpty());
    QCOMPARE(root.supplementNodes(), QVector<TreeNode *>({tab}));
}

void TestTreeNode::supplementsStandApart()
{
    NamedNode root(QStringLiteral("root"));
    Recorder recorder(&root);
    auto *tab = new TabNode(QStringLiteral("tab"));
    auto *second = new TabNode(QStringLiteral("second"));
    root.append(tab);
    root.append(second);
    QVERIFY(recorder.heard.isEmpty());
    QCOMPARE(tab->parentNode(), &root);
    QCOMPARE(tab->row(), 0);
    QVERIFY(root.childNodes().isEmpty());
    QCOMPARE(idsOf(root.supplementNodes()), words("tab second"));
    QCOMPARE(idsOf(root.allChildNodes()), words("tab second"));

    root.append({new TabNode(QStringLiteral("third")), new NamedNode(QStringLiteral("row"))});
    QCOMPARE(recorder.heard,
             QStringList({QStringLiteral("insert 0-0 into root()"), QStringLiteral("inserted: root(row)")}));
    QCOMPARE(root.childNodes().first()->row(), 0);

    recorder.heard.clear();
    delete tab;
    QVERIFY(recorder.heard.isEmpty());
    QCOMPARE(idsOf(root.supplementNodes()), words("second third"));
}

void TestTreeNode::allChildNodesHasParentsBeforeChildren()
{
    NamedNode root(QStringLiteral("root"));
    root.append(makeNodes(words("a b")));
    TreeNode *a = root.childNodes().at(0);
    a->append(makeNodes(words("a1 a2")));
    a->childNodes().at(0)->append(new NamedNode(QStringLiteral("a1x")));
    a->append(new TabNode(QStringLiteral("tab")));
    root.childNodes().at(1)->append(new NamedNode(QStringLiteral("b1")));
    QCOMPARE(idsOf(root.allChildNodes()), words("a a1 a1x a2 tab b b1"));
}

void TestTreeNode::messagesCarryTheirNode()
{
    NamedNode root(QStringLiteral("root"));
    root.append(makeNodes(words("a")));
    auto *tab = new TabNode(QStringLiteral("tab"));
    root.append(tab);
    Recorder recorder(&root);
    root.childNodes().first()->nodeDataChanged();
    root.emitNodeChildsDataChanged();
    root.childNodes().first()->emitSetCurrentNode();
    tab->nodeDataChanged();
    QCOMPARE(recorder.heard, QStringList({QStringLiteral("changed a"), QStringLiteral("children of root"),
                                          QStringLiteral("current a"), QStringLiteral("changed tab")}));
}

void TestTreeNode::pointerEndsWhenTheDeletionBegins()
{
    NodePointer<NamedNode> none;
    QVERIFY(!none);
    QVERIFY(!NodePointer<NamedNode>(nullptr));

    auto *root = new NamedNode(QStringLiteral("root"));
    auto *child = new NamedNode(QStringLiteral("child"));
    auto *tab = new TabNode(QStringLiteral("tab"));
    root->append({child, tab});
    const NodePointer<NamedNode> toRoot(root);
    const NodePointer<NamedNode> toChild(child);
    const NodePointer<NamedNode> copy = toChild;
    const NodePointer<TabNode> toTab(tab);
    QCOMPARE(toChild.data(), child);
    QCOMPARE(copy->id(), QStringLiteral("child"));

    Recorder recorder(root);
    recorder.onDestroyed = [&] {
        QVERIFY(!toRoot);
        QVERIFY(!NodePointer<TreeNode>(root)); // one made now does not come to life either
        QVERIFY(toChild);
        QVERIFY(toTab);
    };
    delete root;
    QCOMPARE(recorder.heard, QStringList(QStringLiteral("destroyed")));
    QVERIFY(!toChild);
    QVERIFY(!copy);
    QVERIFY(!toTab);
}

void TestTreeNode::observerHearsOfTheEndOfItsNode()
{
    NamedNode root(QStringLiteral("root"));
    auto *child = new NamedNode(QStringLiteral("child"));
    root.append(child);
    Recorder atRoot(&root);
    Recorder first(child);
    Recorder second(child);
    first.onDestroyed = [&] {
        child->removeObserver(&second);
        QVERIFY(atRoot.heard.isEmpty()); // it still is where it was
    };
    child->append(new NamedNode(QStringLiteral("leaf")));
    atRoot.heard.clear();
    first.heard.clear();
    second.heard.clear();
    delete child;
    QCOMPARE(first.heard, QStringList(QStringLiteral("destroyed")));
    QVERIFY(second.heard.isEmpty());
    QCOMPARE(atRoot.heard.size(), 2);
}

void TestTreeNode::observerBelowHearsWhenAnAncestorIsDeleted()
{
    auto *root = new NamedNode(QStringLiteral("root"));
    auto *child = new NamedNode(QStringLiteral("child"));
    auto *leaf = new NamedNode(QStringLiteral("leaf"));
    root->append(child);
    child->append(leaf);
    Recorder atLeaf(leaf);
    Recorder atChild(child);
    root->clearDelete();
    QCOMPARE(atLeaf.heard, QStringList(QStringLiteral("destroyed")));
    // What goes with a node is no removal of its own.
    QCOMPARE(atChild.heard, QStringList(QStringLiteral("destroyed")));
    delete root;
}

void TestTreeNode::observerMayTakeAnotherOff()
{
    NamedNode root(QStringLiteral("root"));
    Recorder first(&root);
    Recorder second(&root);
    first.onAboutToInsert = [&] { root.removeObserver(&second); };
    root.append(new NamedNode(QStringLiteral("a")));
    QCOMPARE(first.heard.size(), 2);
    QVERIFY(second.heard.isEmpty());
}

void TestTreeNode::observerThatComesInBetweenHearsTheEnd()
{
    NamedNode root(QStringLiteral("root"));
    root.append(makeNodes(words("a b")));
    Recorder first(&root);
    Recorder late;
    first.onAboutToRemove = [&] { late.listenTo(&root); };
    root.clearDelete();
    QCOMPARE(first.heard.size(), 2);
    QCOMPARE(late.heard, QStringList(QStringLiteral("removed: root()")));
}

void TestTreeNode::observerMayDeleteASibling_data()
{
    QTest::addColumn<bool>("isBefore");
    QTest::addColumn<int>("sibling");
    QTest::newRow("an earlier one, before") << true << 0;
    QTest::newRow("a later one, before") << true << 3;
    QTest::newRow("an earlier one, after") << false << 0;
    QTest::newRow("a later one, after") << false << 3;
}

void TestTreeNode::observerMayDeleteASibling()
{
    QFETCH(bool, isBefore);
    QFETCH(int, sibling);
    NamedNode root(QStringLiteral("root"));
    root.append(makeNodes(words("a b c d e")));
    TreeNode *victim = root.childNodes().at(sibling);
    Recorder recorder(&root);
    const auto deleteOnce = [&] { delete std::exchange(victim, nullptr); };
    (isBefore ? recorder.onAboutToRemove : recorder.onRemoved) = deleteOnce;
    delete root.childNodes().at(1);
    QCOMPARE(idsOf(root.childNodes()), sibling == 0 ? words("c d e") : words("a c e"));
    QCOMPARE(rowsOf(root.childNodes()), QVector<int>({0, 1, 2}));
    QCOMPARE(recorder.heard.size(), 4);
}

void TestTreeNode::observerMayDeleteTheParentOfTheLeavingNode()
{
    NamedNode root(QStringLiteral("root"));
    auto *parent = new NamedNode(QStringLiteral("parent"));
    root.append(parent);
    parent->append(makeNodes(words("a b c")));
    Recorder recorder(&root);
    recorder.parentMayBeGone = true;
    recorder.onAboutToRemove = [&] { delete std::exchange(parent, nullptr); };
    delete parent->childNodes().at(1);
    QVERIFY(root.childNodes().isEmpty());
    // Each beginning has its end, the inner change inside the outer one.
    QCOMPARE(recorder.heard,
             QStringList({QStringLiteral("remove 1-1 of parent(a  c)"), QStringLiteral("remove 0-0 of root()"),
                          QStringLiteral("removed"), QStringLiteral("removed")}));
    QCOMPARE(NamedNode::living, 1);
}

void TestTreeNode::observerMayDeleteTheNodeThatIsAppendedTo()
{
    NamedNode root(QStringLiteral("root"));
    auto *parent = new NamedNode(QStringLiteral("parent"));
    root.append(parent);
    Recorder recorder(&root);
    recorder.parentMayBeGone = true;
    recorder.onAboutToInsert = [&] { delete parent; };
    parent->append(makeNodes(words("a b")));
    QCOMPARE(NamedNode::living, 1); // what was handed over is deleted, not lost
    QCOMPARE(recorder.heard,
             QStringList({QStringLiteral("insert 0-1 into parent()"), QStringLiteral("remove 0-0 of root()"),
                          QStringLiteral("removed"), QStringLiteral("inserted")}));
}

void TestTreeNode::observerMayDeleteTheClearedNode_data()
{
    QTest::addColumn<bool>("isBefore");
    QTest::newRow("before") << true;
    QTest::newRow("after") << false;
}

void TestTreeNode::observerMayDeleteTheClearedNode()
{
    QFETCH(bool, isBefore);
    NamedNode root(QStringLiteral("root"));
    auto *parent = new NamedNode(QStringLiteral("parent"));
    root.append(parent);
    parent->append(makeNodes(words("a b c")));
    Recorder recorder(&root);
    recorder.parentMayBeGone = true;
    const auto deleteOnce = [&] { delete std::exchange(parent, nullptr); };
    (isBefore ? recorder.onAboutToRemove : recorder.onRemoved) = deleteOnce;
    parent->clearDelete();
    QCOMPARE(NamedNode::living, 1);
    QCOMPARE(recorder.heard.count(QStringLiteral("removed")), 2);
}

void TestTreeNode::childMayDeleteASiblingAtItsEnd()
{
    NamedNode root(QStringLiteral("root"));
    auto *other = new NamedNode(QStringLiteral("other"));
    auto *child = new NamedNode(QStringLiteral("child"));
    child->onDestruction = [&] { delete std::exchange(other, nullptr); };
    other->onDestruction = [&] { other = nullptr; };
    const auto fill = [&](TreeNode *node) {
        node->append({new NamedNode(QStringLiteral("first")), other, child, new NamedNode(QStringLiteral("last"))});
    };
    fill(&root);
    root.clearDelete();
    QCOMPARE(NamedNode::living, 1);

    // The same when all go with their parent.
    auto *parent = new NamedNode(QStringLiteral("parent"));
    other = new NamedNode(QStringLiteral("other"));
    child = new NamedNode(QStringLiteral("child"));
    child->onDestruction = [&] { delete std::exchange(other, nullptr); };
    fill(parent);
    delete parent;
    QCOMPARE(NamedNode::living, 1);
}

void TestTreeNode::hundredThousandNodes()
{
    constexpr int Count = 100000;
    NamedNode root(QStringLiteral("root"));
    Counter counter(&root);

    QVector<TreeNode *> nodes;
    for (int i = 0; i < Count; ++i)
        nodes << new NamedNode(QString::number(i));
    root.append(nodes);
    QCOMPARE(counter.heard, 2);
    for (int i = 0; i < Count; ++i)
        QCOMPARE(root.childNodes().at(i)->row(), i);

    delete root.childNodes().at(0);
    delete root.childNodes().at(50000);
    QCOMPARE(root.childNodes().size(), Count - 2);
    for (int i = 0; i < Count - 2; ++i)
        QCOMPARE(root.childNodes().at(i)->row(), i);
    QCOMPARE(root.childNodes().at(50000)->id(), QStringLiteral("50002"));

    counter.heard = 0;
    root.emitNodeChildsDataChanged();
    QCOMPARE(counter.heard, 1);
    root.clearDelete();
    QCOMPARE(counter.heard, 3);
    QCOMPARE(NamedNode::living, 1);
}

QTEST_GUILESS_MAIN(TestTreeNode)
#include "tst_treenode.moc"
