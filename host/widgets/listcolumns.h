// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <kraglobal.h>

#include <QByteArray>
#include <QString>
#include <QTimer>

class QTreeView;

/// The columns of a list: as wide as what is in them at first, then as the administrator left them, widths, order and
/// sorting, from one run of the application to the next.
///
/// They are kept under "lists/%1" in the application's settings, and only by who has loaded them.
class KRA_EXPORT ListColumns
{
public:
    /// The view has its model and outlives this. `listName` is the last part of the settings' key.
    ListColumns(QTreeView *view, const QString &listName);
    ~ListColumns();
    ListColumns(const ListColumns &) = delete;
    ListColumns &operator=(const ListColumns &) = delete;

    /// Once the view has its columns. A second call does nothing.
    void load();

private:
    void remember();
    void restore();
    void fit();

    QTreeView *_view;
    QString _key;
    QTimer _fitTimer;
    QByteArray _columns; // as the header last said them while it had any
    bool _isLoaded = false;
    bool _isFitted = false; // to what is in them, unless the administrator has said otherwise
};
