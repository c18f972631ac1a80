// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <treenode.h>
#include <treenodemodel.h>

#include <QAbstractItemModelTester>
#include <QSignalSpy>
#include <QTest>

#include <algorithm>
#include <cstdio>
#include <memory>
#include <random>

namespace
{
class Node : public TreeNode
{
public:
    Node(QString id, QString key)
        : _id(std::move(id))
        , _key(std::move(key))
    {
        ++living;
    }
    ~Node() override { --living; }
    QString id() const override { return _id; }
    QString key() const override { return _key; }

    static int living;
    int value = 0;

private:
    QString _id;
    QString _key;
};
int Node::living = 0;
} // namespace

/// The rows of a parent that was read again.
class ReplaceChildrenTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void equalRowsStayWithoutAWord();
    void rowsComeAndGo_data();
    void rowsComeAndGo();
    void anotherIdIsAnotherNode();
    void changedCellsAreTold();
    void manyChangedCellsAreToldAtOnce();
    void observerThatDeletesARowGetsThemAll();
    void observerMayDeleteTheParent();
    void anyTwoReadingsMeet();

private:
    static Node *node(const TreeNode *parent, int row) { return static_cast<Node *>(parent->childNodes().at(row)); }
    void read(const QStringList &keys, const QSet<int> &changed = {})
    {
        _root->replaceChildren(
            QStringLiteral("a"), keys, [&keys](int place) { return new Node(QStringLiteral("a"), keys.at(place)); },
            [&changed](TreeNode &child, int place) {
                static_cast<Node &>(child).value = place;
                return changed.contains(place);
            });
    }
    QStringList keys() const
    {
        QStringList found;
        for (int row = 0; row < _root->childNodes().size(); ++row) {
            found += node(_root.get(), row)->key();
            if (node(_root.get(), row)->row() != row)
                found += QStringLiteral("is at the wrong row");
        }
        return found;
    }

    std::unique_ptr<TreeNode> _root;
    std::unique_ptr<TreeNodeModel> _model;
};

void ReplaceChildrenTest::init()
{
    _root = std::make_unique<TreeNode>();
    _model = std::make_unique<TreeNodeModel>();
    _model->setRootNode(_root.get());
    new QAbstractItemModelTester(_model.get(), QAbstractItemModelTester::FailureReportingMode::QtTest, _model.get());
    read({QStringLiteral("ann"), QStringLiteral("bob"), QStringLiteral("eve")});
}

void ReplaceChildrenTest::cleanup()
{
    _model.reset();
    _root.reset();
    QCOMPARE(Node::living, 0);
}

void ReplaceChildrenTest::equalRowsStayWithoutAWord()
{
    const QVector<TreeNode *> before = _root->childNodes();
    QSignalSpy inserted(_model.get(), &QAbstractItemModel::rowsInserted);
    QSignalSpy removed(_model.get(), &QAbstractItemModel::rowsRemoved);
    QSignalSpy reset(_model.get(), &QAbstractItemModel::modelReset);
    QSignalSpy changed(_model.get(), &QAbstractItemModel::dataChanged);
    read(keys());
    QCoreApplication::processEvents();
    QCOMPARE(_root->childNodes(), before);
    QCOMPARE(node(_root.get(), 2)->value, 2);
    QCOMPARE(inserted.count() + removed.count() + reset.count() + changed.count(), 0);
    QCOMPARE(Node::living, 3);
}

void ReplaceChildrenTest::rowsComeAndGo_data()
{
    QTest::addColumn<QString>("after");
    QTest::addColumn<QString>("stay");
    QTest::newRow("first goes") << "bob eve"
                                << "bob eve";
    QTest::newRow("last goes") << "ann bob"
                               << "ann bob";
    QTest::newRow("one between comes") << "ann ben bob eve"
                                       << "ann bob eve";
    QTest::newRow("one at each end comes") << "aaa ann bob eve zoe"
                                           << "ann bob eve";
    QTest::newRow("others altogether") << "dan zoe"
                                       << "";
    QTest::newRow("nothing") << ""
                             << "";
    QTest::newRow("another order") << "eve ann bob"
                                   << "ann bob";
    QTest::newRow("one twice") << "ann ann bob eve"
                               << "ann bob eve";
}

void ReplaceChildrenTest::rowsComeAndGo()
{
    QFETCH(QString, after);
    QFETCH(QString, stay);
    QHash<QString, TreeNode *> before;
    for (TreeNode *child : _root->childNodes())
        before.insert(child->key(), child);
    const QStringList wanted = after.split(QLatin1Char(' '), Qt::SkipEmptyParts);
    const QStringList staying = stay.split(QLatin1Char(' '), Qt::SkipEmptyParts);
    QPersistentModelIndex bob(_model->index(1, 0));
    read(wanted);
    QCOMPARE(keys(), wanted);
    QCOMPARE(Node::living, wanted.size());
    for (const QString &key : staying)
        QVERIFY2(_root->childNodes().contains(before.value(key)), qPrintable(key));
    QCOMPARE(bob.isValid(), staying.contains(QStringLiteral("bob")));
    if (bob.isValid())
        QCOMPARE(_model->node(bob)->key(), QStringLiteral("bob"));
}

void ReplaceChildrenTest::anotherIdIsAnotherNode()
{
    const QStringList same = keys();
    _root->replaceChildren(
        QStringLiteral("b"), same, [&same](int place) { return new Node(QStringLiteral("b"), same.at(place)); },
        [](TreeNode & /*child*/, int /*place*/) { return false; });
    QCOMPARE(keys(), same);
    QVERIFY(_root->childNodes().at(0)->id() == QLatin1String("b"));
}

void ReplaceChildrenTest::changedCellsAreTold()
{
    QSignalSpy changed(_model.get(), &QAbstractItemModel::dataChanged);
    read(keys(), {1});
    QTRY_COMPARE(changed.count(), 1);
    QCOMPARE(changed.at(0).at(0).toModelIndex().row(), 1);
    QCOMPARE(changed.at(0).at(1).toModelIndex().row(), 1);
}

void ReplaceChildrenTest::manyChangedCellsAreToldAtOnce()
{
    QStringList many;
    QSet<int> all;
    for (int i = 0; i < 5000; ++i) {
        many += QString::number(i);
        all += i;
    }
    read(many);
    QSignalSpy changed(_model.get(), &QAbstractItemModel::dataChanged);
    read(many, all);
    QTRY_COMPARE(changed.count(), 1);
    QCOMPARE(changed.at(0).at(0).toModelIndex().row(), 0);
    QCOMPARE(changed.at(0).at(1).toModelIndex().row(), 4999);
}

void ReplaceChildrenTest::observerThatDeletesARowGetsThemAll()
{
    const auto once = std::make_shared<QMetaObject::Connection>();
    *once = connect(_model.get(), &QAbstractItemModel::rowsRemoved, this, [this, once] {
        disconnect(*once);
        delete _root->childNodes().last();
    });
    const QStringList wanted{QStringLiteral("bob"), QStringLiteral("dan"), QStringLiteral("eve")};
    read(wanted);
    QCOMPARE(keys(), wanted);
    QCOMPARE(Node::living, 3);
}

void ReplaceChildrenTest::observerMayDeleteTheParent()
{
    connect(_model.get(), &QAbstractItemModel::rowsRemoved, this, [this] { _root.reset(); });
    read({QStringLiteral("bob"), QStringLiteral("dan")});
    QVERIFY(!_root);
    QCOMPARE(Node::living, 0);
}

void ReplaceChildrenTest::anyTwoReadingsMeet()
{
    const uint seed =
        qEnvironmentVariableIsSet("KRA_SEED") ? qEnvironmentVariable("KRA_SEED").toUInt() : std::random_device()();
    std::printf("KRA_SEED=%u\n", seed);
    std::mt19937 random(seed);
    for (int round = 0; round < 300; ++round) {
        QStringList wanted;
        const int count = int(random() % (round % 10 == 0 ? 400 : 12));
        for (int i = 0; i < count; ++i)
            wanted += QString::number(random() % uint(2 * count));
        if (random() % 2)
            std::sort(wanted.begin(), wanted.end());
        read(wanted);
        QCOMPARE(keys(), wanted);
        QCOMPARE(_model->rowCount(), wanted.size());
        QCOMPARE(Node::living, wanted.size());
    }
}

QTEST_GUILESS_MAIN(ReplaceChildrenTest)
#include "tst_replacechildren.moc"
