// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QStringList>

class ElementPages;
class ElementTreeView;
class ElementWidget;
class QModelIndex;
class QWidget;

/// Uses the console's window as a person does, with the mouse and the keys.
class ConsoleDriver
{
public:
    explicit ConsoleDriver(QWidget &window);

    /// Chooses an element in the tree by the titles that lead to it, from below the computer on, and waits until its
    /// page is up and read. False when a title is not there or nothing came within three minutes.
    bool open(const QStringList &titles);
    /// Waits until no task waits or runs and what it brought is shown.
    bool settle();

    /// The editor of the page in front; null when there is none.
    ElementWidget *editor() const;

private:
    bool unfold(const QModelIndex &parent);
    QModelIndex child(const QModelIndex &parent, const QString &title) const;

    ElementTreeView *_tree;
    ElementPages *_pages;
};
