// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

// What nodes and elements cost: time per node for each thing that is done to a whole list, and bytes per node.

#include <element.h>
#include <module.h>
#include <treenodemodel.h>

#include <QCoreApplication>
#include <QElapsedTimer>

#include <algorithm>
#include <cstdio>
#include <functional>
#include <limits>
#include <vector>

#include <malloc.h>

namespace
{
using MakeNode = std::function<TreeNode *(int)>;

const char *const StepNames[] = {"create", "append as one list", "read one column", "nodeDataChanged on all",
                                 "clearDelete"};
constexpr int StepCount = sizeof(StepNames) / sizeof(*StepNames);

struct Cost
{
    int count;
    double nanoseconds[StepCount]; // per node, the best of the runs
    double bytes;                  // per node
};

std::size_t allocatedBytes()
{
    const struct mallinfo2 info = mallinfo2();
    return info.uordblks + info.hblkhd;
}

/// One list of `count` nodes from its making to its end, under a model.
void runOnce(Cost &cost, const MakeNode &makeNode)
{
    TreeNode root;
    TreeNodeModel model;
    model.setRootNode(&root);
    QVector<TreeNode *> nodes;
    nodes.reserve(cost.count);
    QElapsedTimer timer;
    int step = 0;
    const auto measure = [&](const auto &work) {
        timer.start();
        work();
        const double perNode = double(timer.nsecsElapsed()) / cost.count;
        cost.nanoseconds[step] = std::min(cost.nanoseconds[step], perNode);
        ++step;
    };

    const std::size_t bytesBefore = allocatedBytes();
    measure([&] {
        for (int i = 0; i < cost.count; ++i)
            nodes.append(makeNode(i));
    });
    cost.bytes = double(allocatedBytes() - bytesBefore) / cost.count;
    measure([&] { root.append(nodes); });
    nodes.clear();
    measure([&] {
        int shown = 0;
        for (int row = 0; row < cost.count; ++row)
            shown += model.index(row, 0).data().isValid() ? 1 : 0;
        if (shown != 0 && shown != cost.count)
            std::abort();
    });
    measure([&] {
        for (TreeNode *node : root.childNodes())
            node->nodeDataChanged();
        QCoreApplication::processEvents(); // the one range that the views hear of
    });
    measure([&] { root.clearDelete(); });
}

void printTable(const char *kind, const std::vector<Cost> &costs)
{
    std::printf("%s: ns per node (times the smallest list's)\n%-26s", kind, "nodes");
    for (const Cost &cost : costs)
        std::printf("%18d", cost.count);
    for (int step = 0; step < StepCount; ++step) {
        std::printf("\n%-26s", StepNames[step]);
        for (const Cost &cost : costs) {
            const double ratio = cost.nanoseconds[step] / costs.front().nanoseconds[step];
            std::printf("%10.1f (%5.2f)", cost.nanoseconds[step], ratio);
        }
    }
    std::printf("\n%-26s", "bytes per node");
    for (const Cost &cost : costs)
        std::printf("%18.1f", cost.bytes);
    std::printf("\n\n");
}

void benchmark(const char *kind, const MakeNode &makeNode)
{
    std::vector<Cost> costs;
    for (const int count : {1000, 10000, 100000}) {
        Cost cost{count, {}, 0};
        std::fill_n(cost.nanoseconds, StepCount, std::numeric_limits<double>::max());
        for (int run = 0; run < 1000000 / count; ++run)
            runOnce(cost, makeNode);
        costs.push_back(cost);
    }
    printTable(kind, costs);
}
} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    Module module(QStringLiteral("Module"), nullptr);
    const QString type = QStringLiteral("Thing");
    std::printf("sizeof(TreeNode) %zu, sizeof(OrdinaryElement) %zu\n\n", sizeof(TreeNode), sizeof(OrdinaryElement));
    benchmark("Bare nodes", [](int /*number*/) { return new TreeNode; });
    benchmark("Elements, each with a title of its own", [&](int number) {
        return new OrdinaryElement(type, QString(), QStringLiteral("user%1").arg(number), &module,
                                   Module::isAdministratorHierarchy, Element::Place::Child);
    });
    return 0;
}
