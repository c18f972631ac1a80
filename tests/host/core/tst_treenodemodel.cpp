// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <treenodemodel.h>

#include <QAbstractItemModelTester>
#include <QSignalSpy>
#include <QTextDocument>
#include <QtTest>

#include <array>
#include <vector>

namespace
{
class TextNode : public TreeNode
{
public:
    explicit TextNode(QString text)
        : _text(std::move(text))
    {}
    void setText(const QString &text)
    {
        _text = text;
        nodeDataChanged();
    }
    int columnCount() const override { return 3; }
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override
    {
        return orientation == Qt::Horizontal && role == Qt::DisplayRole ? QVariant(section * 10) : QVariant();
    }
    QVariant data(int column, int role) const override
    {
        const bool isText = role == Qt::DisplayRole || role == Qt::ToolTipRole;
        return isText ? QStringLiteral("%1/%2").arg(_text).arg(column) : QVariant();
    }

private:
    QString _text;
};

class TabNode : public TextNode
{
public:
    using TextNode::TextNode;
    bool isTreeRow() const override { return false; }
};

/// A node whose children come when they are asked for.
class LazyNode : public TextNode
{
public:
    using TextNode::TextNode;
    bool canFetchChildren() const override { return asked == 0; }
    void fetchChildren() override { ++asked; }

    int asked = 0;
};

QVector<TreeNode *> makeNodes(int count, const QString &prefix = QString())
{
    QVector<TreeNode *> nodes;
    for (int i = 0; i < count; ++i)
        nodes << new TextNode(prefix + QString::number(i));
    return nodes;
}

/// A model that is watched by Qt's own model test.
struct TestedModel
{
    explicit TestedModel(TreeNode *root) { model.setRootNode(root); }
    TreeNodeModel model;
    QAbstractItemModelTester tester{&model, QAbstractItemModelTester::FailureReportingMode::Fatal};
};

/// The rows of a dataChanged signal.
QString rangeOf(const QList<QVariant> &arguments)
{
    const auto topLeft = arguments.at(0).toModelIndex();
    const auto bottomRight = arguments.at(1).toModelIndex();
    return QStringLiteral("%1:%2-%3,%4-%5")
        .arg(topLeft.parent().data().toString())
        .arg(topLeft.row())
        .arg(bottomRight.row())
        .arg(topLeft.column())
        .arg(bottomRight.column());
}

QStringList rangesOf(const QSignalSpy &spy)
{
    QStringList ranges;
    for (const QList<QVariant> &arguments : spy)
        ranges << rangeOf(arguments);
    ranges.sort();
    return ranges;
}
} // namespace

class TestTreeNodeModel : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void modelWithoutRootIsEmpty();
    void showsCellsOfTheTree();
    void toolTipsShowMarkupAsItIsWritten();
    void rowsComeAndGo();
    void persistentIndexesFollowTheirNodes();
    void supplementsAreNeverSeen();
    void severalModelsShowOneTree();
    void rootMayBeDeleted();
    void rootMayBeChanged();
    void modelMayGoBeforeTheTree();
    void fetchesChildrenOnce();
    void rootIsFetchedToo();
    void changesOfOneTurnAreOneRange();
    void changesAreToldBeforeRowsMove();
    void changesOfDeletedNodesAreForgotten();
    void childrenChangeAsOneRange();
    void currentNodeRequestIsPassedOn();
    void rootSetWhileAChangeIsUnderWay();
    void rootTakenWhileAChangeIsUnderWay_data();
    void rootTakenWhileAChangeIsUnderWay();
    void viewMayDeleteNodesInAnswer();
    void hundredThousandNodes();
};

void TestTreeNodeModel::modelWithoutRootIsEmpty()
{
    TestedModel shown(nullptr);
    QCOMPARE(shown.model.rowCount(), 0);
    QCOMPARE(shown.model.columnCount(), 0);
    QVERIFY(!shown.model.hasChildren());
    QVERIFY(!shown.model.canFetchMore({}));
    QVERIFY(!shown.model.headerData(0, Qt::Horizontal, Qt::DisplayRole).isValid());
    QCOMPARE(shown.model.node({}), nullptr);
}

void TestTreeNodeModel::showsCellsOfTheTree()
{
    TextNode root(QStringLiteral("root"));
    root.append(makeNodes(2));
    root.childNodes().at(1)->append(makeNodes(3, QStringLiteral("1.")));
    TestedModel shown(&root);
    const TreeNodeModel &model = shown.model;

    QCOMPARE(model.rowCount(), 2);
    QCOMPARE(model.columnCount(), 3);
    QCOMPARE(model.headerData(2, Qt::Horizontal, Qt::DisplayRole).toInt(), 20);
    const QModelIndex parent = model.index(1, 0);
    const QModelIndex cell = model.index(2, 1, parent);
    QCOMPARE(cell.data().toString(), QStringLiteral("1.2/1"));
    QVERIFY(!cell.data(Qt::DecorationRole).isValid());
    QCOMPARE(cell.parent(), parent);
    QCOMPARE(model.rowCount(parent), 3);
    QCOMPARE(model.rowCount(model.index(1, 1)), 0);
    QVERIFY(model.hasChildren(parent));
    QVERIFY(!model.hasChildren(model.index(0, 0)));
    QVERIFY(!model.index(3, 0, parent).isValid());
    QVERIFY(!model.index(0, 3, parent).isValid());

    TreeNode *node = root.childNodes().at(1)->childNodes().at(2);
    QCOMPARE(model.node(cell), node);
    QCOMPARE(model.indexOf(node, 1), cell);
    QVERIFY(!model.indexOf(&root).isValid());
    QVERIFY(!model.indexOf(nullptr).isValid());
    const TextNode stranger(QStringLiteral("stranger"));
    QVERIFY(!model.indexOf(&stranger).isValid());
}

void TestTreeNodeModel::toolTipsShowMarkupAsItIsWritten()
{
    TreeNode root;
    root.append(
        QVector<TreeNode *>{new TextNode(QStringLiteral("a < b")), new TextNode(QStringLiteral("<h1>eve</h1>"))});
    const TestedModel tested(&root);
    const QModelIndex plain = tested.model.index(0, 0);
    const QModelIndex marked = tested.model.index(1, 0);
    QCOMPARE(plain.data(Qt::ToolTipRole).toString(), QStringLiteral("a < b/0"));
    QCOMPARE(marked.data().toString(), QStringLiteral("<h1>eve</h1>/0"));
    QTextDocument shown;
    shown.setHtml(marked.data(Qt::ToolTipRole).toString());
    QCOMPARE(shown.toPlainText(), QStringLiteral("<h1>eve</h1>/0"));
}

void TestTreeNodeModel::rowsComeAndGo()
{
    TextNode root(QStringLiteral("root"));
    TestedModel shown(&root);
    QSignalSpy inserted(&shown.model, &QAbstractItemModel::rowsInserted);
    QSignalSpy removed(&shown.model, &QAbstractItemModel::rowsRemoved);

    root.append(makeNodes(5));
    TreeNode *parent = root.childNodes().at(2);
    parent->append(makeNodes(4));
    QCOMPARE(inserted.size(), 2);
    QCOMPARE(inserted.at(1).at(0).toModelIndex(), shown.model.index(2, 0));
    QCOMPARE(inserted.at(1).at(2).toInt(), 3);

    delete parent->childNodes().at(1);
    QCOMPARE(removed.size(), 1);
    QCOMPARE(removed.at(0).at(1).toInt(), 1);
    QCOMPARE(removed.at(0).at(2).toInt(), 1);
    QCOMPARE(shown.model.rowCount(shown.model.index(2, 0)), 3);
    delete parent; // with what is below
    QCOMPARE(removed.size(), 2);
    root.clearDelete();
    QCOMPARE(removed.size(), 3);
    QCOMPARE(removed.at(2).at(2).toInt(), 3);
    QCOMPARE(shown.model.rowCount(), 0);
}

void TestTreeNodeModel::persistentIndexesFollowTheirNodes()
{
    TextNode root(QStringLiteral("root"));
    TestedModel shown(&root);
    root.append(makeNodes(5));
    root.childNodes().at(3)->append(makeNodes(2, QStringLiteral("below")));
    const QPersistentModelIndex first(shown.model.index(0, 0));
    const QPersistentModelIndex fourth(shown.model.index(3, 1));
    const QPersistentModelIndex below(shown.model.index(1, 2, shown.model.index(3, 0)));
    delete root.childNodes().at(0);
    QVERIFY(!first.isValid());
    QCOMPARE(fourth.row(), 2);
    QCOMPARE(fourth.data().toString(), QStringLiteral("3/1"));
    QCOMPARE(below.data().toString(), QStringLiteral("below1/2"));
    QCOMPARE(below.parent().row(), 2);
    root.clearDelete();
    QVERIFY(!fourth.isValid());
    QVERIFY(!below.isValid());
}

void TestTreeNodeModel::supplementsAreNeverSeen()
{
    TextNode root(QStringLiteral("root"));
    root.append(makeNodes(1));
    TestedModel shown(&root);
    QSignalSpy inserted(&shown.model, &QAbstractItemModel::rowsInserted);
    QSignalSpy removed(&shown.model, &QAbstractItemModel::rowsRemoved);
    QSignalSpy changed(&shown.model, &QAbstractItemModel::dataChanged);

    TreeNode *parent = root.childNodes().first();
    auto *tab = new TabNode(QStringLiteral("tab"));
    parent->append(tab);
    QCOMPARE(shown.model.rowCount(shown.model.index(0, 0)), 0);
    QVERIFY(!shown.model.hasChildren(shown.model.index(0, 0)));
    QVERIFY(!shown.model.indexOf(tab).isValid());
    // What hangs below a supplement is not seen either.
    tab->append(makeNodes(2));
    QVERIFY(!shown.model.indexOf(tab->childNodes().first()).isValid());
    tab->nodeDataChanged();
    tab->emitNodeChildsDataChanged();
    tab->childNodes().first()->nodeDataChanged();
    delete tab->childNodes().first();
    QCoreApplication::processEvents();
    delete tab;
    QVERIFY(inserted.isEmpty());
    QVERIFY(removed.isEmpty());
    QVERIFY(changed.isEmpty());

    // A model whose root is the supplement shows it.
    tab = new TabNode(QStringLiteral("tab"));
    parent->append(tab);
    TestedModel below(tab);
    tab->append(makeNodes(2));
    QCOMPARE(below.model.rowCount(), 2);
    QVERIFY(inserted.isEmpty());
}

void TestTreeNodeModel::severalModelsShowOneTree()
{
    TextNode root(QStringLiteral("root"));
    root.append(makeNodes(3));
    TreeNode *branch = root.childNodes().at(1);
    TestedModel whole(&root);
    TestedModel again(&root);
    TestedModel part(branch);
    QSignalSpy partRemoved(&part.model, &QAbstractItemModel::rowsRemoved);

    branch->append(makeNodes(4, QStringLiteral("b")));
    QCOMPARE(whole.model.rowCount(whole.model.index(1, 0)), 4);
    QCOMPARE(again.model.rowCount(again.model.index(1, 0)), 4);
    QCOMPARE(part.model.rowCount(), 4);
    QCOMPARE(part.model.indexOf(branch->childNodes().at(2)).parent(), QModelIndex());
    QCOMPARE(whole.model.indexOf(branch->childNodes().at(2)).parent(), whole.model.index(1, 0));
    QVERIFY(!part.model.indexOf(root.childNodes().at(0)).isValid());

    QSignalSpy partChanged(&part.model, &QAbstractItemModel::dataChanged);
    QSignalSpy wholeChanged(&whole.model, &QAbstractItemModel::dataChanged);
    branch->childNodes().at(2)->nodeDataChanged();
    branch->nodeDataChanged(); // no row of the second model
    QTRY_COMPARE(rangesOf(wholeChanged), QStringList({QStringLiteral("1/0:2-2,0-2"), QStringLiteral(":1-1,0-2")}));
    QTRY_COMPARE(rangesOf(partChanged), QStringList(QStringLiteral(":2-2,0-2")));

    delete root.childNodes().at(0);
    QVERIFY(partRemoved.isEmpty());
    branch->clearDelete();
    QCOMPARE(partRemoved.size(), 1);
    QCOMPARE(whole.model.rowCount(whole.model.index(0, 0)), 0);
}

void TestTreeNodeModel::rootMayBeDeleted()
{
    auto *root = new TextNode(QStringLiteral("root"));
    auto *branch = new TextNode(QStringLiteral("branch"));
    root->append(branch);
    branch->append(makeNodes(3));
    TestedModel whole(root);
    TestedModel part(branch);
    QSignalSpy reset(&part.model, &QAbstractItemModel::modelReset);
    branch->childNodes().first()->nodeDataChanged(); // told to nobody any more
    root->clearDelete();
    QCOMPARE(reset.size(), 1);
    QCOMPARE(part.model.rootNode(), nullptr);
    QCOMPARE(part.model.rowCount(), 0);
    QCOMPARE(whole.model.rowCount(), 0);
    delete root;
    QCOMPARE(whole.model.rootNode(), nullptr);
    QCOMPARE(whole.model.columnCount(), 0);
    QCoreApplication::processEvents();
}

void TestTreeNodeModel::rootMayBeChanged()
{
    TextNode first(QStringLiteral("first"));
    TextNode second(QStringLiteral("second"));
    first.append(makeNodes(2));
    second.append(makeNodes(3));
    TestedModel shown(&first);
    QSignalSpy reset(&shown.model, &QAbstractItemModel::modelReset);
    QSignalSpy inserted(&shown.model, &QAbstractItemModel::rowsInserted);
    QSignalSpy changed(&shown.model, &QAbstractItemModel::dataChanged);
    first.childNodes().first()->nodeDataChanged();
    shown.model.setRootNode(&second);
    QCOMPARE(reset.size(), 1);
    QCOMPARE(shown.model.rowCount(), 3);
    shown.model.setRootNode(&second);
    QCOMPARE(reset.size(), 1);
    first.append(makeNodes(2));
    QCoreApplication::processEvents();
    QVERIFY(inserted.isEmpty());
    QVERIFY(changed.isEmpty());
    shown.model.setRootNode(nullptr);
    QCOMPARE(shown.model.rowCount(), 0);
}

void TestTreeNodeModel::modelMayGoBeforeTheTree()
{
    TextNode root(QStringLiteral("root"));
    {
        TestedModel shown(&root);
        root.append(makeNodes(2));
        root.childNodes().first()->nodeDataChanged();
    }
    root.append(makeNodes(2));
    root.childNodes().first()->nodeDataChanged();
    QCoreApplication::processEvents();
}

void TestTreeNodeModel::fetchesChildrenOnce()
{
    TextNode root(QStringLiteral("root"));
    TreeNodeModel model; // without Qt's test, which fetches what it can
    model.setRootNode(&root);
    auto *lazy = new LazyNode(QStringLiteral("lazy"));
    root.append(lazy);
    const QModelIndex index = model.index(0, 0);
    QVERIFY(!model.canFetchMore({}));
    QVERIFY(model.hasChildren(index));
    QVERIFY(model.canFetchMore(index));
    QVERIFY(!model.canFetchMore(model.index(0, 1)));
    model.fetchMore(model.index(0, 1));
    QCOMPARE(lazy->asked, 0);
    model.fetchMore(index);
    QCOMPARE(lazy->asked, 1);
    QVERIFY(!model.canFetchMore(index));
    QVERIFY(!model.hasChildren(index));
    model.fetchMore(index);
    QCOMPARE(lazy->asked, 1);
    const QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::Fatal);
    lazy->append(makeNodes(3));
    QVERIFY(model.hasChildren(index));
    QCOMPARE(model.rowCount(index), 3);
}

void TestTreeNodeModel::rootIsFetchedToo()
{
    LazyNode root(QStringLiteral("root"));
    TreeNodeModel model;
    model.setRootNode(&root);
    QVERIFY(model.hasChildren());
    QVERIFY(model.canFetchMore({}));
    model.fetchMore({});
    QCOMPARE(root.asked, 1);
    QVERIFY(!model.canFetchMore({}));
    QVERIFY(!model.hasChildren());
}

void TestTreeNodeModel::changesOfOneTurnAreOneRange()
{
    TextNode root(QStringLiteral("root"));
    root.append(makeNodes(10));
    TreeNode *branch = root.childNodes().at(9);
    branch->append(makeNodes(10));
    TestedModel shown(&root);
    QSignalSpy changed(&shown.model, &QAbstractItemModel::dataChanged);
    for (const int row : {6, 3, 4, 3})
        root.childNodes().at(row)->nodeDataChanged();
    for (TreeNode *child : branch->childNodes())
        child->nodeDataChanged();
    root.nodeDataChanged(); // the root is no row
    QVERIFY(changed.isEmpty());
    QTRY_COMPARE(rangesOf(changed), QStringList({QStringLiteral("9/0:0-9,0-2"), QStringLiteral(":3-6,0-2")}));
    changed.clear();
    root.childNodes().at(1)->nodeDataChanged();
    QTRY_COMPARE(rangesOf(changed), QStringList(QStringLiteral(":1-1,0-2")));
    QCoreApplication::processEvents();
    QCOMPARE(changed.size(), 1);
}

void TestTreeNodeModel::changesAreToldBeforeRowsMove()
{
    TextNode root(QStringLiteral("root"));
    root.append(makeNodes(6));
    TestedModel shown(&root);
    QStringList told;
    connect(&shown.model, &QAbstractItemModel::dataChanged, this, [&](const QModelIndex &from, const QModelIndex &to) {
        told << QStringLiteral("%1..%2").arg(from.data().toString(), to.data().toString());
    });
    root.childNodes().at(4)->nodeDataChanged();
    delete root.childNodes().at(0);
    QCOMPARE(told, QStringList(QStringLiteral("4/0..4/2")));
    root.childNodes().at(4)->nodeDataChanged();
    root.append(makeNodes(1));
    QCOMPARE(told.size(), 2);
    QCOMPARE(told.last(), QStringLiteral("5/0..5/2"));
    QCoreApplication::processEvents();
    QCOMPARE(told.size(), 2);
}

void TestTreeNodeModel::changesOfDeletedNodesAreForgotten()
{
    TextNode root(QStringLiteral("root"));
    root.append(makeNodes(3));
    TreeNode *branch = root.childNodes().at(1);
    branch->append(makeNodes(3));
    TestedModel shown(&root);
    QSignalSpy changed(&shown.model, &QAbstractItemModel::dataChanged);
    branch->childNodes().first()->nodeDataChanged();
    delete branch;
    changed.clear(); // it may have been told while the node was there
    QCoreApplication::processEvents();
    QVERIFY(changed.isEmpty());

    // A view that answers the first range by deleting the rows of the second one.
    root.childNodes().at(0)->append(makeNodes(3));
    root.childNodes().at(1)->append(makeNodes(3));
    bool isCleared = false;
    connect(&shown.model, &QAbstractItemModel::dataChanged, this, [&](const QModelIndex &from) {
        if (!std::exchange(isCleared, true))
            delete root.childNodes().at(from.parent().row() == 0 ? 1 : 0);
    });
    root.childNodes().at(0)->childNodes().first()->nodeDataChanged();
    root.childNodes().at(1)->childNodes().first()->nodeDataChanged();
    QTRY_VERIFY(isCleared);
    QCOMPARE(shown.model.rowCount(), 1);
}

void TestTreeNodeModel::childrenChangeAsOneRange()
{
    TextNode root(QStringLiteral("root"));
    root.append(makeNodes(5));
    TestedModel shown(&root);
    QSignalSpy changed(&shown.model, &QAbstractItemModel::dataChanged);
    root.childNodes().at(2)->nodeDataChanged();
    root.emitNodeChildsDataChanged();
    root.childNodes().at(2)->emitNodeChildsDataChanged(); // has none
    QTRY_COMPARE(rangesOf(changed), QStringList(QStringLiteral(":0-4,0-2")));
}

void TestTreeNodeModel::currentNodeRequestIsPassedOn()
{
    TextNode root(QStringLiteral("root"));
    root.append(makeNodes(2));
    TestedModel shown(&root);
    QVector<TreeNode *> asked;
    connect(&shown.model, &TreeNodeModel::currentNodeRequested, this, [&](TreeNode *node) { asked << node; });
    root.childNodes().at(1)->emitSetCurrentNode();
    root.emitSetCurrentNode();
    QCOMPARE(asked, QVector<TreeNode *>({root.childNodes().at(1)}));
}

void TestTreeNodeModel::rootSetWhileAChangeIsUnderWay()
{
    // The view over the whole tree answers that a list goes by showing that list: its model hears the end only.
    TextNode root(QStringLiteral("root"));
    auto *branch = new TextNode(QStringLiteral("branch"));
    root.append(branch);
    branch->append(makeNodes(3));
    TestedModel whole(&root);
    TreeNodeModel part;
    connect(&whole.model, &QAbstractItemModel::rowsAboutToBeRemoved, this, [&] { part.setRootNode(branch); });
    QSignalSpy reset(&part, &QAbstractItemModel::modelReset);
    branch->clearDelete();
    QCOMPARE(part.rootNode(), branch);
    QCOMPARE(part.rowCount(), 0);
    QCOMPARE(reset.size(), 2);
    const QAbstractItemModelTester tester(&part, QAbstractItemModelTester::FailureReportingMode::Fatal);
    branch->append(makeNodes(2));
    QCOMPARE(part.rowCount(), 2);
}

void TestTreeNodeModel::rootTakenWhileAChangeIsUnderWay_data()
{
    // Two models over one root; one of them, or a view of it, takes the root from itself or from the other one.
    QTest::addColumn<bool>("isDeleted");
    QTest::addColumn<int>("teller");
    QTest::addColumn<int>("changed");
    for (const bool isDeleted : {false, true}) {
        for (const int teller : {0, 1}) {
            for (const int changed : {0, 1}) {
                QTest::addRow("%s of model %d in answer to model %d", isDeleted ? "deletion" : "change", changed,
                              teller)
                    << isDeleted << teller << changed;
            }
        }
    }
}

void TestTreeNodeModel::rootTakenWhileAChangeIsUnderWay()
{
    QFETCH(bool, isDeleted);
    QFETCH(int, teller);
    QFETCH(int, changed);
    TextNode other(QStringLiteral("other"));
    other.append(makeNodes(2));
    auto *root = new TextNode(QStringLiteral("root"));
    root->append(makeNodes(3));
    std::array<TreeNodeModel, 2> models;
    std::vector<QPersistentModelIndex> indexes;
    for (TreeNodeModel &model : models) {
        model.setRootNode(root);
        indexes.emplace_back(model.index(2, 0));
    }
    connect(&models[teller], &QAbstractItemModel::rowsAboutToBeRemoved, this, [&] {
        if (isDeleted)
            delete std::exchange(root, nullptr);
        else
            models[changed].setRootNode(&other);
    });
    root->clearDelete();
    for (const QPersistentModelIndex &index : indexes)
        QVERIFY(!index.isValid());
    for (const TreeNodeModel &model : models)
        QCOMPARE(model.rowCount(), model.rootNode() == &other ? 2 : 0);
    if (isDeleted) {
        QCOMPARE(models[0].rootNode(), nullptr);
        QCOMPARE(models[1].rootNode(), nullptr);
    } else {
        QCOMPARE(models[changed].rootNode(), &other);
        QCOMPARE(models[1 - changed].rootNode(), root);
    }
    other.append(makeNodes(1));
    QCOMPARE(models[changed].rowCount(), isDeleted ? 0 : 3);
    delete root;
}

void TestTreeNodeModel::viewMayDeleteNodesInAnswer()
{
    TextNode root(QStringLiteral("root"));
    root.append(makeNodes(5));
    TestedModel shown(&root);
    bool isDone = false;
    connect(&shown.model, &QAbstractItemModel::rowsRemoved, this, [&] {
        if (!std::exchange(isDone, true))
            delete root.childNodes().at(0);
    });
    const QPersistentModelIndex last(shown.model.index(4, 0));
    delete root.childNodes().at(2);
    QCOMPARE(shown.model.rowCount(), 3);
    QCOMPARE(last.row(), 2);
    QCOMPARE(last.data().toString(), QStringLiteral("4/0"));
}

void TestTreeNodeModel::hundredThousandNodes()
{
    constexpr int Count = 100000;
    TextNode root(QStringLiteral("root"));
    TestedModel shown(&root);
    TreeNodeModel second;
    second.setRootNode(&root);
    QSignalSpy inserted(&shown.model, &QAbstractItemModel::rowsInserted);
    QSignalSpy removed(&shown.model, &QAbstractItemModel::rowsRemoved);
    QSignalSpy changed(&second, &QAbstractItemModel::dataChanged);
    root.append(makeNodes(Count));
    QCOMPARE(inserted.size(), 1);
    for (int row = 0; row < Count; ++row)
        QCOMPARE(second.index(row, 0).data().toString(), QString::number(row) + QLatin1String("/0"));

    for (TreeNode *node : root.childNodes())
        static_cast<TextNode *>(node)->setText(QStringLiteral("new"));
    QTRY_COMPARE(rangesOf(changed), QStringList(QStringLiteral(":0-%1,0-2").arg(Count - 1)));
    QCOMPARE(second.index(Count - 1, 0).data().toString(), QStringLiteral("new/0"));

    const QPersistentModelIndex last(second.index(Count - 1, 0));
    delete root.childNodes().at(Count / 2);
    QCOMPARE(last.row(), Count - 2);
    root.clearDelete();
    QCOMPARE(removed.size(), 2);
    QVERIFY(!last.isValid());
}

QTEST_GUILESS_MAIN(TestTreeNodeModel)
#include "tst_treenodemodel.moc"
