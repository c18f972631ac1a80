// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <element.h>
#include <elementswidgetproxymodel.h>
#include <module.h>
#include <treenodemodel.h>

#include <QAbstractItemModelTester>
#include <QSignalSpy>
#include <QTest>

namespace
{
enum Column
{
    NameColumn,
    NumberColumn,
    Columns
};

class Row : public OrdinaryElement
{
public:
    Row(Module *module, const QString &title, int number)
        : OrdinaryElement(QStringLiteral("Row"), QString(), title, module, Module::isAdministratorHierarchy,
                          Place::Child)
        , _number(number)
    {}
    QVariant data(int column, int role) const override
    {
        if (role != SortRole && role != Qt::DisplayRole)
            return {};
        return column == NameColumn ? QVariant(title()) : QVariant(_number);
    }

private:
    int _number;
};

class List : public ContainerElement
{
public:
    using ContainerElement::ContainerElement;
    int columnCount() const override { return Columns; }
};

QStringList list(std::initializer_list<const char *> texts)
{
    QStringList found;
    for (const char *text : texts)
        found.append(QString::fromUtf8(text));
    return found;
}

/// A turn of the event loop for each slice, and one more.
void turnLoop(int turns)
{
    for (int turn = 0; turn <= turns; ++turn)
        QCoreApplication::processEvents();
}
} // namespace

/// Long lists are sorted and filtered in slices, between which anything may happen.
class ProxySlicesTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        root = std::make_unique<List>(QStringLiteral("List"), QString(), QStringLiteral("List"), &module,
                                      Module::isAdministratorHierarchy, Element::Place::Child);
        root->setContent(ContainerElement::Content::Read);
        model = std::make_unique<TreeNodeModel>();
        model->setRootNode(root.get());
        proxy = std::make_unique<ElementsWidgetProxyModel>();
        proxy->setSourceModel(model.get());
        new QAbstractItemModelTester(proxy.get(), QAbstractItemModelTester::FailureReportingMode::Fatal, proxy.get());
    }
    void cleanup()
    {
        proxy.reset();
        model.reset();
        root.reset();
    }

    void slicesShowTheRowsAsBeforeUntilAllAreDone();
    void lastOrderAskedForInMidSliceCounts();
    void rowsThatChangeInMidSliceComeOutRight();
    void modelCanGoInMidSlice();

private:
    void add(const QString &title, int number = 0) { root->append(new Row(&module, title, number)); }
    QStringList titles() const
    {
        QStringList found;
        for (int row = 0; row < proxy->rowCount(); ++row)
            found.append(proxy->index(row, NameColumn).data().toString());
        return found;
    }

    Module module{QStringLiteral("Module"), nullptr};
    std::unique_ptr<List> root;
    std::unique_ptr<TreeNodeModel> model;
    std::unique_ptr<ElementsWidgetProxyModel> proxy;
};

void ProxySlicesTest::slicesShowTheRowsAsBeforeUntilAllAreDone()
{
    proxy->workInSlices(2);
    for (const char *title : {"e", "b", "d", "a", "c"})
        add(QLatin1String(title));
    const QPersistentModelIndex held = proxy->index(2, NameColumn);
    QSignalSpy changed(proxy.get(), &QAbstractItemModel::layoutChanged);
    proxy->sort(NameColumn, Qt::DescendingOrder);
    QCOMPARE(titles(), list({"e", "b", "d", "a", "c"}));
    turnLoop(1);
    QCOMPARE(titles(), list({"e", "b", "d", "a", "c"}));
    turnLoop(10);
    QCOMPARE(titles(), list({"e", "d", "c", "b", "a"}));
    QCOMPARE(changed.count(), 1);
    QCOMPARE(held.data().toString(), QStringLiteral("d"));

    proxy->setFilterText(QStringLiteral("a"));
    QCOMPARE(proxy->filterText(), QStringLiteral("a"));
    QCOMPARE(titles(), list({"e", "d", "c", "b", "a"}));
    turnLoop(10);
    QCOMPARE(titles(), list({"a"}));
    QCOMPARE(changed.count(), 2);
}

void ProxySlicesTest::lastOrderAskedForInMidSliceCounts()
{
    proxy->workInSlices(2);
    for (int number : {3, 1, 4, 5, 2})
        add(QString(QLatin1Char(char('a' + number))), 10 - number);
    proxy->sort(NameColumn);
    turnLoop(1);
    proxy->sort(NumberColumn);
    turnLoop(10);
    QCOMPARE(titles(), list({"f", "e", "d", "c", "b"}));
    proxy->sort(NameColumn);
    turnLoop(1);
    proxy->sort(NumberColumn); // which is still shown
    turnLoop(10);
    QCOMPARE(titles(), list({"f", "e", "d", "c", "b"}));
    proxy->setFilterText(QStringLiteral("b"));
    turnLoop(1);
    proxy->setFilterText(QStringLiteral("c"));
    turnLoop(10);
    QCOMPARE(titles(), list({"c"}));
}

void ProxySlicesTest::rowsThatChangeInMidSliceComeOutRight()
{
    proxy->workInSlices(2);
    for (const char *title : {"e", "b", "d", "a", "c", "g"})
        add(QLatin1String(title));
    proxy->sort(NameColumn);
    turnLoop(1);
    delete root->childNodes().at(1);
    QCOMPARE(titles(), list({"e", "d", "a", "c", "g"}));
    turnLoop(1);
    add(QStringLiteral("f"));
    QCOMPARE(titles(), list({"e", "d", "a", "c", "g", "f"}));
    turnLoop(1);
    static_cast<Row *>(root->childNodes().first())->setTitle(QStringLiteral("h"));
    turnLoop(20);
    QCOMPARE(titles(), list({"a", "c", "d", "f", "g", "h"}));
}

void ProxySlicesTest::modelCanGoInMidSlice()
{
    proxy->workInSlices(1);
    for (const char *title : {"c", "b", "a"})
        add(QLatin1String(title));
    proxy->sort(NameColumn);
    turnLoop(1);
    model->setRootNode(nullptr);
    turnLoop(5);
    QCOMPARE(proxy->rowCount(), 0);
    model->setRootNode(root.get());
    QCOMPARE(titles(), list({"a", "b", "c"}));
    proxy->setFilterText(QStringLiteral("b"));
    proxy.reset();
    turnLoop(5);
}

QTEST_MAIN(ProxySlicesTest)
#include "tst_proxyslices.moc"
