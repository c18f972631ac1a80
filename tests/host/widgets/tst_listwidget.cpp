// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "toys.h"

#include <elementswidgetproxymodel.h>
#include <elementtreeview.h>
#include <isolatingdelegate.h>
#include <treenodemodel.h>

#include <QHeaderView>
#include <QScrollBar>
#include <QSettings>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

using namespace toys;

namespace
{
/// A list page as a plug-in writes one.
class PlainList : public ListElementWidget
{
public:
    explicit PlainList(Module *module)
        : ListElementWidget(module, mayAll)
        , view(new ElementTreeView(this))
    {
        setElementType(QStringLiteral("ToyList"));
        setView(view, QStringLiteral("ToyList"));
        setWindowTitle(QStringLiteral("Toys"));
        view->resize(300, 200);
    }
    void setElement(Element *element) override
    {
        ListElementWidget::setElement(element);
        listChildren();
    }
    void completeRows(int first, int last) override { completed += last - first + 1; }

    ElementTreeView *view;
    int completed = 0; ///< rows, as they came
};
} // namespace

class ListWidgetTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();

    void rowsAreSearchedAndOpened();
    void rowsOfAnEmptyListAreSeen();
    void rowsReadAnewAreFoundAgain();
    void rowThatWentAloneIsForgotten();
    void rowsAreCompletedBeforeTheyAreSeen();
    void menuComesBelowThePointer();
    void cellsKeepTheirDirection();

private:
    void fill(int first, int last);
    QString titleAt(const QModelIndex &index) const { return index.siblingAtColumn(0).data().toString(); }

    QTemporaryDir _settings;
    std::unique_ptr<ToyModule> _module;
    std::unique_ptr<Container> _list;
    std::unique_ptr<PlainList> _page;
};

void ListWidgetTest::initTestCase()
{
    QVERIFY(_settings.isValid());
    QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, _settings.path());
    QCoreApplication::setOrganizationName(QStringLiteral("kra"));
    QCoreApplication::setApplicationName(QStringLiteral("tst_listwidget"));
}

void ListWidgetTest::init()
{
    QSettings().clear();
    _module = std::make_unique<ToyModule>();
    _list = std::make_unique<Container>(_module.get(), QStringLiteral("list"));
    _list->setContent(ContainerElement::Content::Read);
    _page = std::make_unique<PlainList>(_module.get());
    _page->setElement(_list.get());
    _page->show();
    QVERIFY(QTest::qWaitForWindowExposed(_page.get()));
}

void ListWidgetTest::cleanup()
{
    _page.reset();
    _list.reset();
    _module.reset();
}

/// As a plug-in that knows no better: all go, all come.
void ListWidgetTest::fill(int first, int last)
{
    QVector<TreeNode *> rows;
    for (int i = first; i <= last; ++i)
        rows += new Ordinary(_module.get(), QStringLiteral("row %1").arg(i));
    _list->clearDelete();
    _list->append(rows);
    QCoreApplication::processEvents();
}

void ListWidgetTest::rowsAreSearchedAndOpened()
{
    fill(0, 20);
    _page->setFilterText(QStringLiteral("ROW 13"));
    QTRY_COMPARE(_page->view->model()->rowCount(), 1);
    TreeNodeModel tree;
    tree.setRootNode(_list.get());
    QSignalSpy requests(&tree, &TreeNodeModel::currentNodeRequested);
    const QModelIndex row = _page->view->model()->index(0, 0);
    Q_EMIT _page->view->doubleClicked(row);
    QCOMPARE(requests.size(), 1);
    _page->view->setFocus();
    _page->view->setCurrentIndex(row);
    for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Enter})
        QTest::keyClick(_page->view, key);
    QTRY_COMPARE(requests.size(), 3);
    _page->choiceElement(QModelIndex());
    QCOMPARE(requests.size(), 3);
    QCOMPARE(_page->focusProxy(), static_cast<QWidget *>(_page->view));
    QCOMPARE(_page->view->accessibleName(), QStringLiteral("Toys"));
    QVERIFY(!_page->view->rootIsDecorated());
}

void ListWidgetTest::rowsOfAnEmptyListAreSeen()
{
    TreeNodeModel nodes;
    nodes.setRootNode(_list.get());
    ElementsWidgetProxyModel rows;
    rows.setSourceModel(&nodes);
    QVERIFY(!rows.hasChildren()); // as a view asks, which then does not ask how many
    QSignalSpy inserted(&rows, &QAbstractItemModel::rowsInserted);
    fill(0, 2);
    QCOMPARE(inserted.size(), 1);
}

void ListWidgetTest::rowsReadAnewAreFoundAgain()
{
    fill(0, 300);
    QScrollBar *bar = _page->view->verticalScrollBar();
    QTRY_VERIFY(bar->maximum() > 200);
    _page->view->setCurrentIndex(_page->view->model()->index(205, 0));
    bar->setValue(200);
    fill(0, 300);
    QTRY_COMPARE(titleAt(_page->view->currentIndex()), QStringLiteral("row 205"));
    QCOMPARE(bar->value(), 200);
    fill(0, 100);
    QVERIFY(titleAt(_page->view->currentIndex()) != QStringLiteral("row 205"));
}

void ListWidgetTest::rowThatWentAloneIsForgotten()
{
    fill(0, 9);
    _page->view->setCurrentIndex(_page->view->model()->index(5, 0));
    delete _list->childNodes().at(5);
    QCoreApplication::processEvents();
    _page->view->setCurrentIndex(_page->view->model()->index(1, 0));
    _list->append(new Ordinary(_module.get(), QStringLiteral("row 5"))); // by somebody else, later
    QCoreApplication::processEvents();
    QCOMPARE(titleAt(_page->view->currentIndex()), QStringLiteral("row 1"));
}

void ListWidgetTest::rowsAreCompletedBeforeTheyAreSeen()
{
    int completedWhenSeen = -1;
    connect(_page->view->model(), &QAbstractItemModel::rowsInserted, this,
            [&] { completedWhenSeen = _page->completed; });
    fill(0, 9);
    QCOMPARE(completedWhenSeen, _page->view->model()->rowCount());
    QVERIFY(completedWhenSeen > 1);
}

void ListWidgetTest::menuComesBelowThePointer()
{
    fill(0, 2);
    QSignalSpy requests(_page.get(), &QWidget::customContextMenuRequested);
    Q_EMIT _page->view->customContextMenuRequested(QPoint(3, 4));
    QCOMPARE(requests.size(), 1);
    QCOMPARE(requests.first().first().toPoint(),
             _page->view->mapToGlobal(QPoint(3, 4 + _page->view->header()->height())));
}

void ListWidgetTest::cellsKeepTheirDirection()
{
    const QString path = QStringLiteral("/dev/a/");
    QCOMPARE(IsolatingDelegate::isolated(path, Qt::LeftToRight), path);
    QCOMPARE(IsolatingDelegate::isolated(QString(), Qt::RightToLeft), QString());
    const QString isolated = QChar(0x2068) + path + QChar(0x2069);
    QCOMPARE(IsolatingDelegate::isolated(path, Qt::RightToLeft), isolated);
    QVERIFY(qobject_cast<IsolatingDelegate *>(_page->view->itemDelegate()));
}

QTEST_MAIN(ListWidgetTest)
#include "tst_listwidget.moc"
