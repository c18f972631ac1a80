// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "treenode.h"

#include <QHash>

#include <algorithm>
#include <vector>

namespace
{
constexpr std::size_t maximumRuns = 64; // of rows that come or go; with more, all at once is quicker for every view
constexpr int maximumChanges = 256;     // of cells, likewise

/// Neighbouring rows.
struct Run
{
    int first;
    int count;
};

using Rows = std::vector<int>;

/// The row of the present child for each place; -1 where there is none.
Rows presentRows(const QVector<TreeNode *> &children, const QString &id, const QStringList &keys)
{
    Rows rows(std::size_t(keys.size()), -1);
    const int common = std::min(keys.size(), children.size());
    int place = 0;
    while (place < common && children.at(place)->key() == keys.at(place) && children.at(place)->id() == id) {
        rows[std::size_t(place)] = place;
        ++place;
    }
    if (place == keys.size())
        return rows;
    QHash<QString, int> rowOfKey;
    for (int row = children.size() - 1; row >= place; --row)
        if (children.at(row)->id() == id)
            rowOfKey.insert(children.at(row)->key(), row);
    for (; place < keys.size(); ++place) {
        const auto found = rowOfKey.find(keys.at(place));
        if (found != rowOfKey.end()) {
            rows[std::size_t(place)] = *found;
            rowOfKey.erase(found);
        }
    }
    return rows;
}

/// Keeps as many of the rows as can stay without changing their order; -1 for the others.
Rows keptInOrder(const Rows &rows)
{
    Rows tails;                   // places: the last of the best sequence of each length
    Rows before(rows.size(), -1); // the place before each in its sequence
    Rows kept(rows.size(), -1);
    for (std::size_t place = 0; place < rows.size(); ++place) {
        if (rows[place] < 0)
            continue;
        const auto tail = std::lower_bound(tails.begin(), tails.end(), rows[place],
                                           [&rows](int other, int row) { return rows[std::size_t(other)] < row; });
        before[place] = tail == tails.begin() ? -1 : *(tail - 1);
        if (tail == tails.end())
            tails.push_back(int(place));
        else
            *tail = int(place);
    }
    for (int place = tails.empty() ? -1 : tails.back(); place >= 0; place = before[std::size_t(place)])
        kept[std::size_t(place)] = rows[std::size_t(place)];
    return kept;
}

std::vector<Run> runsOf(const std::vector<char> &wanted)
{
    std::vector<Run> runs;
    for (std::size_t i = 0; i < wanted.size(); ++i) {
        if (!wanted[i])
            continue;
        if (i > 0 && wanted[i - 1])
            ++runs.back().count;
        else
            runs.push_back({int(i), 1});
    }
    return runs;
}
} // namespace

void TreeNode::replaceChildren(const QString &id, const QStringList &keys, const std::function<TreeNode *(int)> &make,
                               const std::function<bool(TreeNode &, int)> &update)
{
    const Rows kept = keptInOrder(presentRows(_children, id, keys));
    std::vector<char> goes(std::size_t(_children.size()), 1);
    std::vector<char> comes(kept.size(), 0);
    for (std::size_t place = 0; place < kept.size(); ++place) {
        comes[place] = kept[place] < 0;
        if (kept[place] >= 0)
            goes[std::size_t(kept[place])] = 0;
    }
    std::vector<Run> going = runsOf(goes);
    std::vector<Run> coming = runsOf(comes);
    if (going.size() + coming.size() > maximumRuns) {
        going = {{0, _children.size()}};
        coming = {{0, keys.size()}};
        std::fill(comes.begin(), comes.end(), 1);
    }

    // An observer may delete nodes in answer. Whatever it did, the rows are those of the reading in the end.
    const NodePointer<TreeNode> self(this);
    int expected = _children.size();
    for (auto run = going.rbegin(); run != going.rend() && self && _children.size() == expected; ++run) {
        removeRows(run->first, run->first + run->count - 1);
        expected -= run->count;
    }
    const auto insert = [&](const Run &run) {
        QVector<TreeNode *> nodes;
        nodes.reserve(run.count);
        for (int place = run.first; place < run.first + run.count; ++place)
            nodes.append(make(place));
        insertRows(run.first, nodes);
    };
    for (auto run = coming.begin(); run != coming.end() && self && _children.size() == expected; ++run) {
        insert(*run);
        expected += run->count;
    }
    if (!self)
        return;
    if (_children.size() != keys.size()) {
        clearDelete();
        if (self)
            insert({0, keys.size()});
        return;
    }

    QVector<TreeNode *> changed;
    for (int place = 0; place < keys.size(); ++place)
        if (!comes[std::size_t(place)] && update(*_children.at(place), place))
            changed.append(_children.at(place));
    if (changed.size() > maximumChanges) {
        emitNodeChildsDataChanged();
        return;
    }
    const std::vector<NodePointer<TreeNode>> toTell(changed.begin(), changed.end());
    for (const NodePointer<TreeNode> &node : toTell)
        if (node)
            node->nodeDataChanged();
}
