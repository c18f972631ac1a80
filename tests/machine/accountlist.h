// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <accountcolumn.h>
#include <quotakind.h>

#include <QStringList>
#include <QVariant>

class ElementTreeView;
class QModelIndex;
class RealConsole;

/// Uses the list of all users or of all groups as an administrator does, and says what it shows.
class AccountList
{
public:
    AccountList(RealConsole &console, QuotaKind kind);

    /// Opens the list. False where it does not come.
    bool open();

    QStringList devices() const;
    /// Chooses the device with the arrow keys. False where it is not listed.
    bool choose(const QString &device);

    /// The names of the rows, as they are sorted.
    QStringList accounts() const;
    /// What a cell of an account's row shows; nothing where it is empty, or where there is no such account.
    QVariant cell(const QString &account, AccountColumn::Column column) const;
    /// Opens an account's limits with a double click. False where it is not listed or its page does not come.
    bool openAccount(const QString &account);

private:
    template<class Widget>
    Widget *find(const char *name) const;
    ElementTreeView *view() const;
    QModelIndex row(const QString &account) const;

    RealConsole &_console;
    QString _title;
};
