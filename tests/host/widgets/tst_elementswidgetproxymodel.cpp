// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <element.h>
#include <elementswidgetproxymodel.h>
#include <module.h>
#include <treenodemodel.h>

#include <QAbstractItemModelTester>
#include <QCollator>
#include <QDateTime>
#include <QItemSelectionModel>
#include <QSignalSpy>
#include <QTest>

#include <algorithm>
#include <limits>
#include <random>

namespace
{
enum Column
{
    NameColumn,
    NumberColumn,
    DateColumn,
    Columns
};

class Row : public ContainerElement
{
public:
    Row(Module *module, const QString &title)
        : ContainerElement(QStringLiteral("Row"), QString(), title, module, Module::isAdministratorHierarchy,
                           Place::Child)
    {
        setContent(Content::Read);
    }

    int columnCount() const override { return Columns; }
    QVariant headerData(int section, Qt::Orientation /*orientation*/, int role) const override
    {
        return role == Qt::DisplayRole ? QVariant(QStringLiteral("Header %1").arg(section)) : QVariant();
    }
    QVariant data(int column, int role) const override
    {
        if (role != SortRole && role != Qt::DisplayRole)
            return {};
        switch (column) {
        case NameColumn:
            return title();
        case NumberColumn:
            return role == SortRole ? number : QVariant(number.toString());
        default:
            return role == SortRole ? QVariant(date) : QVariant(date.toString(Qt::ISODate));
        }
    }
    int treeNodeSpecialFlags() const override { return inVariant ? InChosenVariant : 0; }

    QVariant number;
    QDateTime date;
    bool inVariant = false;
};

QStringList list(std::initializer_list<const char *> texts)
{
    QStringList found;
    for (const char *text : texts)
        found.append(QString::fromUtf8(text));
    return found;
}

QString titleAt(const QModelIndex &index)
{
    return index.sibling(index.row(), NameColumn).data().toString();
}

QStringList titles(const QAbstractItemModel &model, const QModelIndex &parent = {})
{
    QStringList found;
    for (int row = 0; row < model.rowCount(parent); ++row)
        found.append(titleAt(model.index(row, 0, parent)));
    return found;
}
} // namespace

class ElementsWidgetProxyModelTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        qRegisterMetaType<QList<QPersistentModelIndex>>();
        qRegisterMetaType<QAbstractItemModel::LayoutChangeHint>();
    }
    void init()
    {
        QLocale::setDefault(QLocale(QStringLiteral("en_US")));
        module = std::make_unique<Module>(QStringLiteral("Module"), nullptr);
        root = std::make_unique<Row>(module.get(), QStringLiteral("root"));
        model = std::make_unique<TreeNodeModel>();
        model->setRootNode(root.get());
        proxy = std::make_unique<ElementsWidgetProxyModel>();
        proxy->setSourceModel(model.get());
        tester = std::make_unique<QAbstractItemModelTester>(proxy.get(),
                                                            QAbstractItemModelTester::FailureReportingMode::Fatal);
    }
    void cleanup()
    {
        tester.reset();
        proxy.reset();
        model.reset();
        root.reset();
        module.reset();
    }

    void showsTheSourcesOrderAtFirst();
    void headersAreThereWithoutRows();
    void sortsNumbersAsNumbers();
    void sorts64BitNumbersExactly();
    void sortsDatesAsDates();
    void sortsTextsInTheLanguagesOrder();
    void emptyCellsComeLastInBothDirections();
    void equalRowsKeepTheirOrderInBothDirections();
    void negativeColumnIsTheSourcesOrder();
    void filtersOnAnyCell();
    void filterMindsNoCase();
    void parentsOfMatchingRowsAreShown();
    void variantShowsFlaggedRowsOnly();
    void variantChangeIsSeenOnceTheLoopTurns();
    void changedDataMovesRows_data();
    void changedDataMovesRows();
    void changeOfOrderIsOneLayoutChange();
    void unchangedOrderIsNoChange();
    void selectionSurvivesSortingAndFiltering();
    void rowsComeInAsInsertions();
    void scatteredRowsComeInAsOneLayoutChange();
    void rowsGoAsRemovals();
    void scatteredRowsGoAsOneLayoutChange();
    void clearingIsOneRemoval();
    void parentComesAndGoesWithItsMatchingChild();
    void changedDataIsOneRange();
    void unreadContainerCanBeExpanded();
    void containerWithoutShownRowsHasNone();
    void otherRootStartsAnew();
    void deletedSourceLeavesNothing();
    void behavesLikeTheStraightforward_data();
    void behavesLikeTheStraightforward();

private:
    /// A turn of the event loop for each slice, and one more.
    static void turnLoop(int turns)
    {
        for (int turn = 0; turn <= turns; ++turn)
            QCoreApplication::processEvents();
    }
    Row *add(TreeNode *parent, const QString &title, const QVariant &number = {}, const QDateTime &date = {})
    {
        Row *row = make(title, number, date);
        parent->append(row);
        return row;
    }
    Row *make(const QString &title, const QVariant &number = {}, const QDateTime &date = {})
    {
        auto *row = new Row(module.get(), title);
        row->number = number;
        row->date = date;
        return row;
    }
    QStringList expected(const Row *parent, int column, Qt::SortOrder order) const;
    bool isShown(const Row *parent, const Row *row) const;
    void compareAll(const Row *parent, const QModelIndex &proxyParent, int column, Qt::SortOrder order);

    std::unique_ptr<Module> module;
    std::unique_ptr<Row> root;
    std::unique_ptr<TreeNodeModel> model;
    std::unique_ptr<ElementsWidgetProxyModel> proxy;
    std::unique_ptr<QAbstractItemModelTester> tester;
};

void ElementsWidgetProxyModelTest::showsTheSourcesOrderAtFirst()
{
    for (const char *title : {"c", "a", "b"})
        add(root.get(), QLatin1String(title));
    QCOMPARE(titles(*proxy), list({"c", "a", "b"}));
}

void ElementsWidgetProxyModelTest::headersAreThereWithoutRows()
{
    QCOMPARE(proxy->columnCount(), int(Columns));
    QCOMPARE(proxy->headerData(2, Qt::Horizontal, Qt::DisplayRole).toString(), QStringLiteral("Header 2"));
}

void ElementsWidgetProxyModelTest::sortsNumbersAsNumbers()
{
    add(root.get(), QStringLiteral("ten"), 10);
    add(root.get(), QStringLiteral("nine and a half"), 9.5);
    add(root.get(), QStringLiteral("minus"), -3);
    add(root.get(), QStringLiteral("nine"), 9U);
    proxy->sort(NumberColumn);
    QCOMPARE(titles(*proxy), list({"minus", "nine", "nine and a half", "ten"}));
    proxy->sort(NumberColumn, Qt::DescendingOrder);
    QCOMPARE(titles(*proxy), list({"ten", "nine and a half", "nine", "minus"}));
}

void ElementsWidgetProxyModelTest::sorts64BitNumbersExactly()
{
    // All of these are the same double, or its neighbour.
    const quint64 large = std::numeric_limits<quint64>::max();
    add(root.get(), QStringLiteral("max"), QVariant::fromValue(large));
    add(root.get(), QStringLiteral("max-2"), QVariant::fromValue(large - 2));
    add(root.get(), QStringLiteral("max-1"), QVariant::fromValue(large - 1));
    add(root.get(), QStringLiteral("min+1"), QVariant::fromValue(std::numeric_limits<qint64>::min() + 1));
    add(root.get(), QStringLiteral("min"), QVariant::fromValue(std::numeric_limits<qint64>::min()));
    proxy->sort(NumberColumn);
    QCOMPARE(titles(*proxy), list({"min", "min+1", "max-2", "max-1", "max"}));
}

void ElementsWidgetProxyModelTest::sortsDatesAsDates()
{
    // As ISO text the local one would come first.
    add(root.get(), QStringLiteral("later"), {}, QDateTime(QDate(2026, 1, 1), QTime(1, 0), Qt::OffsetFromUTC, -36000));
    add(root.get(), QStringLiteral("earlier"), {}, QDateTime(QDate(2026, 1, 1), QTime(9, 0), Qt::UTC));
    proxy->sort(DateColumn);
    QCOMPARE(titles(*proxy), list({"earlier", "later"}));
}

void ElementsWidgetProxyModelTest::sortsTextsInTheLanguagesOrder()
{
    for (const char *title : {"Zoe", "user10", "anna", "\xc3\xa4rger", "user9", "Bob"})
        add(root.get(), QString::fromUtf8(title));
    proxy->sort(NameColumn);
    QCOMPARE(titles(*proxy), list({"anna", "\xc3\xa4rger", "Bob", "user9", "user10", "Zoe"}));
}

void ElementsWidgetProxyModelTest::emptyCellsComeLastInBothDirections()
{
    add(root.get(), QStringLiteral("empty 1"));
    add(root.get(), QStringLiteral("two"), 2);
    add(root.get(), QStringLiteral("empty 2"));
    add(root.get(), QStringLiteral("one"), 1);
    proxy->sort(NumberColumn);
    QCOMPARE(titles(*proxy), list({"one", "two", "empty 1", "empty 2"}));
    proxy->sort(NumberColumn, Qt::DescendingOrder);
    QCOMPARE(titles(*proxy), list({"two", "one", "empty 1", "empty 2"}));
}

void ElementsWidgetProxyModelTest::equalRowsKeepTheirOrderInBothDirections()
{
    for (const char *title : {"b", "a", "c"})
        add(root.get(), QLatin1String(title), 1);
    add(root.get(), QStringLiteral("x"), 0);
    proxy->sort(NumberColumn);
    QCOMPARE(titles(*proxy), list({"x", "b", "a", "c"}));
    proxy->sort(NumberColumn, Qt::DescendingOrder);
    QCOMPARE(titles(*proxy), list({"b", "a", "c", "x"}));
}

void ElementsWidgetProxyModelTest::negativeColumnIsTheSourcesOrder()
{
    for (const char *title : {"b", "c", "a"})
        add(root.get(), QLatin1String(title));
    proxy->sort(NameColumn);
    QCOMPARE(titles(*proxy), list({"a", "b", "c"}));
    proxy->sort(-1);
    QCOMPARE(titles(*proxy), list({"b", "c", "a"}));
}

void ElementsWidgetProxyModelTest::filtersOnAnyCell()
{
    add(root.get(), QStringLiteral("anna"), 12);
    add(root.get(), QStringLiteral("bob"), 34);
    add(root.get(), QStringLiteral("user12"), 5);
    proxy->setFilterText(QStringLiteral("12"));
    QCOMPARE(titles(*proxy), list({"anna", "user12"}));
    QCOMPARE(proxy->filterText(), QStringLiteral("12"));
    proxy->setFilterText(QStringLiteral("a12")); // no match reaches from one cell into the next
    QCOMPARE(titles(*proxy), QStringList());
    proxy->setFilterText(QString());
    QCOMPARE(titles(*proxy), list({"anna", "bob", "user12"}));
}

void ElementsWidgetProxyModelTest::filterMindsNoCase()
{
    add(root.get(), QString::fromUtf8("\xc3\x84nne"));
    add(root.get(), QString::fromUtf8("m\xc3\xa4nn"));
    proxy->setFilterText(QString::fromUtf8("\xc3\xa4nn"));
    QCOMPARE(proxy->rowCount(), 2);
}

void ElementsWidgetProxyModelTest::parentsOfMatchingRowsAreShown()
{
    Row *users = add(root.get(), QStringLiteral("Users"));
    Row *system = add(users, QStringLiteral("System"));
    add(system, QStringLiteral("daemon"));
    add(users, QStringLiteral("anna"));
    add(root.get(), QStringLiteral("Groups"));
    proxy->setFilterText(QStringLiteral("daem"));
    QCOMPARE(titles(*proxy), list({"Users"}));
    const QModelIndex shownUsers = proxy->index(0, 0);
    QCOMPARE(titles(*proxy, shownUsers), list({"System"}));
    QCOMPARE(titles(*proxy, proxy->index(0, 0, shownUsers)), list({"daemon"}));
}

void ElementsWidgetProxyModelTest::variantShowsFlaggedRowsOnly()
{
    add(root.get(), QStringLiteral("anna"))->inVariant = true;
    add(root.get(), QStringLiteral("hanna"))->inVariant = false;
    add(root.get(), QStringLiteral("bob"))->inVariant = true;
    QCOMPARE(proxy->rowCount(), 3);
    root->setDisplayChildrenVariant(1);
    root->emitNodeChildsDataChanged();
    QTRY_COMPARE(titles(*proxy), list({"anna", "bob"}));
    proxy->setFilterText(QStringLiteral("anna"));
    QCOMPARE(titles(*proxy), list({"anna"}));
    root->setDisplayChildrenVariant(0);
    root->emitNodeChildsDataChanged();
    QTRY_COMPARE(titles(*proxy), list({"anna", "hanna"}));
}

void ElementsWidgetProxyModelTest::variantChangeIsSeenOnceTheLoopTurns()
{
    QVector<TreeNode *> rows;
    for (int i = 0; i < 1000; ++i) {
        Row *row = make(QStringLiteral("row %1").arg(i));
        row->inVariant = i % 2 == 0;
        rows.append(row);
    }
    root->append(rows);
    QCOMPARE(proxy->rowCount(), 1000);
    QSignalSpy layouts(proxy.get(), &QAbstractItemModel::layoutChanged);
    root->setDisplayChildrenVariant(1);
    root->emitNodeChildsDataChanged();
    QTRY_COMPARE(proxy->rowCount(), 500);
    QCOMPARE(layouts.count(), 1);
}

void ElementsWidgetProxyModelTest::changedDataMovesRows_data()
{
    QTest::addColumn<int>("column");
    QTest::newRow("first of the changed columns") << int(NameColumn);
    QTest::newRow("between them") << int(NumberColumn);
    QTest::newRow("last of them") << int(DateColumn);
}

void ElementsWidgetProxyModelTest::changedDataMovesRows()
{
    QFETCH(const int, column);
    Row *moving = add(root.get(), QStringLiteral("a"), 1);
    Row *staying = add(root.get(), QStringLiteral("b"), 2);
    moving->date = QDateTime::fromSecsSinceEpoch(1);
    staying->date = QDateTime::fromSecsSinceEpoch(2);
    proxy->sort(column);
    QCOMPARE(titles(*proxy), list({"a", "b"}));
    moving->number = 3;
    moving->date = QDateTime::fromSecsSinceEpoch(3);
    moving->setTitle(QStringLiteral("c"));
    QTRY_COMPARE(titles(*proxy), list({"b", "c"}));
}

void ElementsWidgetProxyModelTest::changeOfOrderIsOneLayoutChange()
{
    for (int i = 0; i < 100; ++i)
        add(root.get(), QStringLiteral("row %1").arg(i), (i * 37) % 100);
    QCOMPARE(proxy->rowCount(), 100);
    QSignalSpy layouts(proxy.get(), &QAbstractItemModel::layoutChanged);
    QSignalSpy resets(proxy.get(), &QAbstractItemModel::modelReset);
    proxy->sort(NumberColumn);
    QCOMPARE(layouts.count(), 1);
    proxy->setFilterText(QStringLiteral("1"));
    QCOMPARE(layouts.count(), 2);
    QCOMPARE(resets.count(), 0);
}

void ElementsWidgetProxyModelTest::unchangedOrderIsNoChange()
{
    for (int i = 0; i < 10; ++i)
        add(root.get(), QStringLiteral("row %1").arg(i), i);
    QCOMPARE(proxy->rowCount(), 10);
    QSignalSpy layouts(proxy.get(), &QAbstractItemModel::layoutChanged);
    proxy->sort(NumberColumn);
    proxy->setFilterText(QStringLiteral("row"));
    QCOMPARE(layouts.count(), 0);
}

void ElementsWidgetProxyModelTest::selectionSurvivesSortingAndFiltering()
{
    Row *parent = nullptr;
    for (int i = 0; i < 20; ++i)
        parent = add(root.get(), QStringLiteral("row %1").arg(i), -i);
    add(parent, QStringLiteral("child"));
    QItemSelectionModel selection(proxy.get());
    selection.setCurrentIndex(proxy->index(7, 0), QItemSelectionModel::Select);
    const QPersistentModelIndex child = proxy->index(0, 1, proxy->index(19, 0));
    const QPersistentModelIndex filteredOut = proxy->index(3, 2);

    proxy->sort(NumberColumn);
    QCOMPARE(titleAt(selection.currentIndex()), QStringLiteral("row 7"));
    QVERIFY(selection.isSelected(selection.currentIndex()));
    QCOMPARE(selection.currentIndex().row(), 12);
    QCOMPARE(titleAt(child), QStringLiteral("child"));
    QCOMPARE(titleAt(child.parent()), QStringLiteral("row 19"));
    QCOMPARE(child.parent().row(), 0);

    proxy->setFilterText(QStringLiteral("7"));
    QCOMPARE(titles(*proxy), list({"row 17", "row 7"}));
    QCOMPARE(titleAt(selection.currentIndex()), QStringLiteral("row 7"));
    QVERIFY(!filteredOut.isValid());
    QVERIFY(!child.isValid());
}

void ElementsWidgetProxyModelTest::rowsComeInAsInsertions()
{
    for (int i = 0; i < 6; i += 2)
        add(root.get(), QString::number(i), i);
    proxy->sort(NumberColumn, Qt::DescendingOrder);
    QCOMPARE(titles(*proxy), list({"4", "2", "0"}));
    QSignalSpy insertions(proxy.get(), &QAbstractItemModel::rowsInserted);
    QSignalSpy layouts(proxy.get(), &QAbstractItemModel::layoutChanged);
    root->append({make(QStringLiteral("1"), 1), make(QStringLiteral("7"), 7), make(QStringLiteral("6"), 6)});
    QCOMPARE(titles(*proxy), list({"7", "6", "4", "2", "1", "0"}));
    QCOMPARE(insertions.count(), 2);
    QCOMPARE(layouts.count(), 0);
}

void ElementsWidgetProxyModelTest::scatteredRowsComeInAsOneLayoutChange()
{
    QVector<TreeNode *> even;
    QVector<TreeNode *> odd;
    for (int i = 0; i < 200; ++i)
        (i % 2 ? odd : even).append(make(QString::number(i), i));
    root->append(even);
    proxy->sort(NumberColumn);
    QCOMPARE(proxy->rowCount(), 100);
    const QPersistentModelIndex last = proxy->index(99, 0);
    QSignalSpy insertions(proxy.get(), &QAbstractItemModel::rowsInserted);
    QSignalSpy layouts(proxy.get(), &QAbstractItemModel::layoutChanged);
    root->append(odd);
    QCOMPARE(proxy->rowCount(), 200);
    QCOMPARE(insertions.count(), 0);
    QCOMPARE(layouts.count(), 1);
    QCOMPARE(last.row(), 198);
    QCOMPARE(titleAt(proxy->index(101, 0)), QStringLiteral("101"));
}

void ElementsWidgetProxyModelTest::rowsGoAsRemovals()
{
    std::vector<Row *> rows;
    rows.reserve(6);
    for (int i = 0; i < 6; ++i)
        rows.push_back(add(root.get(), QString::number(i), i));
    proxy->sort(NumberColumn, Qt::DescendingOrder);
    QSignalSpy removals(proxy.get(), &QAbstractItemModel::rowsRemoved);
    delete rows[2];
    QCOMPARE(titles(*proxy), list({"5", "4", "3", "1", "0"}));
    QCOMPARE(removals.count(), 1);
    proxy->setFilterText(QStringLiteral("4"));
    delete rows[0];
    QCOMPARE(removals.count(), 1);
    QCOMPARE(titles(*proxy), list({"4"}));
    proxy->setFilterText(QString());
    QCOMPARE(titles(*proxy), list({"5", "4", "3", "1"}));
}

void ElementsWidgetProxyModelTest::scatteredRowsGoAsOneLayoutChange()
{
    // A source that removes a stretch which the order scatters among the others.
    class Source : public QAbstractListModel
    {
    public:
        int rowCount(const QModelIndex &parent) const override { return parent.isValid() ? 0 : values.size(); }
        QVariant data(const QModelIndex &index, int role) const override
        {
            return role == SortRole || role == Qt::DisplayRole ? QVariant(values.at(index.row())) : QVariant();
        }
        void removeFirst(int count)
        {
            beginRemoveRows({}, 0, count - 1);
            values.remove(0, count);
            endRemoveRows();
        }
        QVector<int> values;
    } source;
    for (int i = 0; i < 100; ++i)
        source.values.append(2 * i);
    for (int i = 0; i < 100; ++i)
        source.values.append(2 * i + 1);
    proxy->setSourceModel(&source);
    proxy->sort(0);
    const QPersistentModelIndex stays = proxy->index(199, 0);
    const QPersistentModelIndex goes = proxy->index(198, 0);
    QSignalSpy removals(proxy.get(), &QAbstractItemModel::rowsRemoved);
    QSignalSpy layouts(proxy.get(), &QAbstractItemModel::layoutChanged);
    source.removeFirst(100);
    QCOMPARE(removals.count(), 0);
    QCOMPARE(layouts.count(), 1);
    QCOMPARE(proxy->rowCount(), 100);
    QCOMPARE(stays.data().toInt(), 199);
    QVERIFY(!goes.isValid());
    proxy->setSourceModel(nullptr);
}

void ElementsWidgetProxyModelTest::clearingIsOneRemoval()
{
    for (int i = 0; i < 100; ++i)
        add(root.get(), QString::number(i), (i * 37) % 100);
    proxy->sort(NumberColumn);
    QSignalSpy removals(proxy.get(), &QAbstractItemModel::rowsRemoved);
    root->clearDelete();
    QCOMPARE(removals.count(), 1);
    QCOMPARE(proxy->rowCount(), 0);
}

void ElementsWidgetProxyModelTest::parentComesAndGoesWithItsMatchingChild()
{
    Row *users = add(root.get(), QStringLiteral("Users"));
    Row *inner = add(users, QStringLiteral("Inner"));
    proxy->setFilterText(QStringLiteral("anna"));
    QCOMPARE(proxy->rowCount(), 0);
    Row *anna = add(inner, QStringLiteral("anna"));
    QCOMPARE(titles(*proxy), list({"Users"}));
    QCOMPARE(titles(*proxy, proxy->index(0, 0, proxy->index(0, 0))), list({"anna"}));
    delete anna;
    QCOMPARE(proxy->rowCount(), 0);
    Row *other = add(inner, QStringLiteral("other"));
    QCOMPARE(proxy->rowCount(), 0);
    other->setTitle(QStringLiteral("hanna"));
    QTRY_COMPARE(titles(*proxy), list({"Users"}));
}

void ElementsWidgetProxyModelTest::changedDataIsOneRange()
{
    for (int i = 0; i < 10; ++i)
        add(root.get(), QString::number(i), i);
    proxy->sort(NumberColumn, Qt::DescendingOrder);
    QCOMPARE(proxy->rowCount(), 10);
    QSignalSpy changes(proxy.get(), &QAbstractItemModel::dataChanged);
    static_cast<Row *>(root->childNodes().at(2))->nodeDataChanged();
    static_cast<Row *>(root->childNodes().at(5))->nodeDataChanged();
    QTRY_COMPARE(changes.count(), 1);
    const QModelIndex topLeft = changes.at(0).at(0).toModelIndex();
    const QModelIndex bottomRight = changes.at(0).at(1).toModelIndex();
    QCOMPARE(topLeft.row(), 4);
    QCOMPARE(bottomRight.row(), 7);
    QCOMPARE(topLeft.model(), static_cast<const QAbstractItemModel *>(proxy.get()));
}

void ElementsWidgetProxyModelTest::unreadContainerCanBeExpanded()
{
    Row *users = add(root.get(), QStringLiteral("Users"));
    QVERIFY(!proxy->hasChildren(proxy->index(0, 0)));
    users->setContent(ContainerElement::Content::NeverRead);
    QVERIFY(proxy->hasChildren(proxy->index(0, 0)));
    QVERIFY(proxy->canFetchMore(proxy->index(0, 0)));
    proxy->fetchMore(proxy->index(0, 0));
    QVERIFY(!proxy->canFetchMore(proxy->index(0, 0)));
    QCOMPARE(users->content(), ContainerElement::Content::Reading);
}

void ElementsWidgetProxyModelTest::containerWithoutShownRowsHasNone()
{
    Row *users = add(root.get(), QStringLiteral("Users"));
    add(users, QStringLiteral("anna"));
    QVERIFY(proxy->hasChildren(proxy->index(0, 0)));
    proxy->setFilterText(QStringLiteral("Users"));
    QVERIFY(!proxy->hasChildren(proxy->index(0, 0)));
}

void ElementsWidgetProxyModelTest::otherRootStartsAnew()
{
    Row *users = add(root.get(), QStringLiteral("Users"));
    add(users, QStringLiteral("anna"));
    proxy->sort(NameColumn);
    QCOMPARE(titles(*proxy), list({"Users"}));
    model->setRootNode(users);
    QCOMPARE(titles(*proxy), list({"anna"}));
}

void ElementsWidgetProxyModelTest::deletedSourceLeavesNothing()
{
    add(root.get(), QStringLiteral("anna"));
    proxy->sort(NameColumn);
    QCOMPARE(proxy->rowCount(), 1);
    model.reset();
    QCOMPARE(proxy->rowCount(), 0);
    QCOMPARE(proxy->columnCount(), 0);
    proxy->setFilterText(QStringLiteral("x"));
    proxy->sort(1);
}

bool ElementsWidgetProxyModelTest::isShown(const Row *parent, const Row *row) const
{
    if (parent->displayChildrenVariant() != 0 && !row->inVariant)
        return false;
    bool matches = proxy->filterText().isEmpty();
    for (int column = 0; column < Columns; ++column)
        matches =
            matches || row->data(column, Qt::DisplayRole).toString().contains(proxy->filterText(), Qt::CaseInsensitive);
    for (const TreeNode *child : row->childNodes())
        matches = matches || isShown(row, static_cast<const Row *>(child));
    return matches;
}

QStringList ElementsWidgetProxyModelTest::expected(const Row *parent, int column, Qt::SortOrder order) const
{
    std::vector<const Row *> rows;
    for (const TreeNode *node : parent->childNodes())
        if (isShown(parent, static_cast<const Row *>(node)))
            rows.push_back(static_cast<const Row *>(node));
    QCollator collator;
    collator.setNumericMode(true);
    std::stable_sort(rows.begin(), rows.end(), [&](const Row *left, const Row *right) {
        if (column < 0)
            return false;
        if (column == NameColumn) {
            const int compared = collator.compare(left->title(), right->title());
            return order == Qt::AscendingOrder ? compared < 0 : compared > 0;
        }
        const QVariant leftValue = left->data(column, SortRole);
        const QVariant rightValue = right->data(column, SortRole);
        const bool leftEmpty = column == DateColumn ? !leftValue.toDateTime().isValid() : !leftValue.isValid();
        const bool rightEmpty = column == DateColumn ? !rightValue.toDateTime().isValid() : !rightValue.isValid();
        if (leftEmpty || rightEmpty)
            return !leftEmpty && rightEmpty;
        if (column == DateColumn)
            return order == Qt::AscendingOrder ? leftValue.toDateTime() < rightValue.toDateTime()
                                               : leftValue.toDateTime() > rightValue.toDateTime();
        return order == Qt::AscendingOrder ? leftValue.toInt() < rightValue.toInt()
                                           : leftValue.toInt() > rightValue.toInt();
    });
    QStringList found;
    for (const Row *row : rows)
        found.append(row->title());
    return found;
}

void ElementsWidgetProxyModelTest::compareAll(const Row *parent, const QModelIndex &proxyParent, int column,
                                              Qt::SortOrder order)
{
    QCOMPARE(titles(*proxy, proxyParent), expected(parent, column, order));
    for (int row = 0; row < proxy->rowCount(proxyParent); ++row) {
        const QModelIndex index = proxy->index(row, 0, proxyParent);
        const auto *child = static_cast<const Row *>(model->node(proxy->mapToSource(index)));
        QCOMPARE(proxy->mapFromSource(model->indexOf(child)), index);
        compareAll(child, index, column, order);
        if (QTest::currentTestFailed())
            return;
    }
}

void ElementsWidgetProxyModelTest::behavesLikeTheStraightforward_data()
{
    QTest::addColumn<unsigned>("seed");
    QTest::addColumn<int>("slice");
    for (unsigned seed = 1; seed <= 12; ++seed)
        QTest::addRow("seed %u", seed) << seed << std::numeric_limits<int>::max();
    for (unsigned seed = 13; seed <= 24; ++seed)
        QTest::addRow("in slices, seed %u", seed) << seed << int(seed % 6) + 2;
}

void ElementsWidgetProxyModelTest::behavesLikeTheStraightforward()
{
    QFETCH(unsigned, seed);
    QFETCH(int, slice);
    std::mt19937 random(seed);
    proxy->workInSlices(slice);
    const auto upTo = [&random](int last) { return std::uniform_int_distribution<int>(0, last)(random); };
    int column = -1;
    Qt::SortOrder order = Qt::AscendingOrder;
    int made = 0;
    const auto makeRandom = [&] {
        Row *row = make(QStringLiteral("%1%2").arg(QChar(ushort('a' + upTo(4)))).arg(++made),
                        upTo(3) ? QVariant(upTo(20)) : QVariant(),
                        upTo(3) ? QDateTime::fromSecsSinceEpoch(upTo(20) * 100000) : QDateTime());
        row->inVariant = upTo(1) != 0;
        return row;
    };
    const auto randomNode = [&]() -> Row * {
        const QVector<TreeNode *> all = root->allChildNodes();
        return all.isEmpty() ? root.get() : static_cast<Row *>(all.at(upTo(all.size() - 1)));
    };
    QStringList heldTitles;
    std::vector<QPersistentModelIndex> held;
    for (int step = 0; step < 120; ++step) {
        switch (upTo(9)) {
        case 0: {
            QVector<TreeNode *> rows;
            for (int i = upTo(60); i >= 0; --i)
                rows.append(makeRandom());
            (upTo(1) ? root.get() : randomNode())->append(rows);
            break;
        }
        case 1:
            randomNode()->append(makeRandom());
            break;
        case 2:
            if (Row *row = randomNode(); row != root.get() && row->allChildNodes().size() < 100)
                delete row;
            break;
        case 3:
            if (!upTo(3))
                randomNode()->clearDelete();
            break;
        case 4: {
            Row *row = randomNode();
            row->number = upTo(20);
            row->setTitle(QStringLiteral("%1%2").arg(QChar(ushort('a' + upTo(4)))).arg(++made));
            break;
        }
        case 5:
            column = upTo(Columns) - 1;
            order = upTo(1) ? Qt::AscendingOrder : Qt::DescendingOrder;
            proxy->sort(column, order);
            break;
        case 6:
            proxy->setFilterText(upTo(1) ? QString(QChar(ushort('a' + upTo(4)))) : QString::number(upTo(30)));
            break;
        case 7:
            proxy->setFilterText(QString());
            break;
        case 8: {
            Row *row = upTo(1) ? root.get() : randomNode();
            row->setDisplayChildrenVariant(upTo(1));
            row->emitNodeChildsDataChanged();
            break;
        }
        default:
            held.clear();
            heldTitles.clear();
            for (int row = 0; row < proxy->rowCount(); row += 3) {
                held.emplace_back(proxy->index(row, 0));
                heldTitles.append(titleAt(held.back()));
            }
            continue;
        }
        const bool isInSlices = slice < std::numeric_limits<int>::max();
        if (isInSlices && upTo(2)) { // the next change comes in mid-slice
            turnLoop(upTo(5));
            continue;
        }
        turnLoop(isInSlices ? 3 * root->allChildNodes().size() : 2);
        compareAll(root.get(), QModelIndex(), column, order);
        if (QTest::currentTestFailed())
            QFAIL(qPrintable(QStringLiteral("step %1").arg(step)));
        // What was held on to is the same row still, renamed ones aside, or gone.
        for (size_t i = 0; i < held.size(); ++i) {
            if (held[i].isValid())
                QCOMPARE(held[i], QPersistentModelIndex(
                                      proxy->mapFromSource(model->indexOf(model->node(proxy->mapToSource(held[i]))))));
            if (held[i].isValid() && expected(root.get(), -1, order).contains(heldTitles.at(int(i))))
                QCOMPARE(titleAt(held[i]), heldTitles.at(int(i)));
        }
    }
}

QTEST_MAIN(ElementsWidgetProxyModelTest)
#include "tst_elementswidgetproxymodel.moc"
