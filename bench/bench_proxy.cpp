// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

// What sorting, filtering and switching the variant of a list cost, and how that grows with the number of rows.

#include <element.h>
#include <elementswidgetproxymodel.h>
#include <module.h>
#include <treenodemodel.h>

#include <QCoreApplication>
#include <QElapsedTimer>

#include <cstdio>
#include <functional>
#include <vector>

namespace
{
constexpr int columns = 13;
enum Column
{
    NameColumn = 1,
    NumberColumn = 3
};

/// A row like an account's: a name and eleven numbers, which it formats each time it is asked.
class Row : public OrdinaryElement
{
public:
    Row(Module *module, int number)
        : OrdinaryElement(QStringLiteral("Row"), QString(), QStringLiteral("user%1").arg(number * 7919 % 1000003),
                          module, Module::isAdministratorHierarchy, Place::Child)
        , _number(number)
    {}
    QVariant data(int column, int role) const override
    {
        if (role != Qt::DisplayRole && role != SortRole)
            return {};
        if (column <= NameColumn)
            return column == NameColumn ? QVariant(title()) : QVariant();
        const int value = _number * 31337 % 65521 + column;
        return role == SortRole ? QVariant(value) : QVariant(QString::number(value));
    }
    int treeNodeSpecialFlags() const override { return _number % 10 == 0 ? InChosenVariant : 0; }

private:
    int _number;
};

class List : public ContainerElement
{
public:
    using ContainerElement::ContainerElement;
    int columnCount() const override { return columns; }
};

using Times = std::vector<std::pair<const char *, double>>;

Times measure(int rows)
{
    Module module(QStringLiteral("Module"), nullptr);
    List list(QStringLiteral("List"), QString(), QStringLiteral("List"), &module, Module::isAdministratorHierarchy,
              Element::Place::Child);
    list.setContent(ContainerElement::Content::Read);
    QVector<TreeNode *> children;
    for (int i = 0; i < rows; ++i)
        children.append(new Row(&module, i));
    list.append(children);
    TreeNodeModel model;
    model.setRootNode(&list);
    ElementsWidgetProxyModel proxy;
    proxy.setSourceModel(&model);

    Times times;
    const auto step = [&times](const char *name, const std::function<void()> &action) {
        QElapsedTimer timer;
        timer.start();
        action();
        times.emplace_back(name, double(timer.nsecsElapsed()) / 1e6);
    };
    const auto turnLoop = [] {
        QCoreApplication::processEvents();
        QCoreApplication::processEvents();
    };
    step("first build", [&] { proxy.rowCount(); });
    step("sort by text", [&] { proxy.sort(NameColumn); });
    step("turn the order round", [&] { proxy.sort(NameColumn, Qt::DescendingOrder); });
    step("sort by number", [&] { proxy.sort(NumberColumn); });
    step("turn the order round", [&] { proxy.sort(NumberColumn, Qt::DescendingOrder); });
    step("filter, few rows match", [&] { proxy.setFilterText(QStringLiteral("user999")); });
    step("filter, half match", [&] { proxy.setFilterText(QStringLiteral("11")); });
    step("filter cleared", [&] { proxy.setFilterText(QString()); });
    step("variant chosen", [&] {
        list.setDisplayChildrenVariant(1);
        list.emitNodeChildsDataChanged();
        turnLoop();
    });
    step("variant of all", [&] {
        list.setDisplayChildrenVariant(0);
        list.emitNodeChildsDataChanged();
        turnLoop();
    });
    step("data of all rows changed", [&] {
        list.emitNodeChildsDataChanged();
        turnLoop();
    });
    step("cleared", [&] { list.clearDelete(); });
    return times;
}
} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    const std::vector<int> sizes{1000, 10000, 100000};
    std::vector<Times> all;
    all.reserve(sizes.size());
    for (const int rows : sizes)
        all.push_back(measure(rows));
    std::printf("%-26s %10s %10s %10s   %s\n", "milliseconds for rows:", "1,000", "10,000", "100,000", "growth");
    for (size_t i = 0; i < all[0].size(); ++i)
        std::printf("%-26s %10.2f %10.2f %10.2f   x%.1f x%.1f\n", all[0][i].first, all[0][i].second, all[1][i].second,
                    all[2][i].second, all[1][i].second / all[0][i].second, all[2][i].second / all[1][i].second);
    return 0;
}
