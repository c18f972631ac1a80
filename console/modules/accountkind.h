// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "localaccounts.h"

#include <elementdata.h>

#include <QIcon>
#include <QVariant>

#include <memory>
#include <vector>

/// What every record of an account has.
struct AccountData : ElementData
{
    /// Whether the other one, of the same kind, says the same.
    virtual bool equals(const AccountData &other) const { return name == other.name && id == other.id; }

    QString name;
    quint32 id = 0;
};

/// One property of an account: a column of the list, a line of the account's page, or both.
struct AccountProperty
{
    enum Place
    {
        ListAndPage,
        PageOnly
    };
    enum Kind
    {
        Text,
        Number
    };

    QString label;
    Place place;
    Kind kind;
    /// A number or a text: what is shown, and what the list sorts by. Invalid for nothing to show.
    QVariant (*value)(const AccountData &data);
};

/// What differs between users and groups. All else is the same code for both.
struct AccountKind
{
    using Records = std::vector<std::unique_ptr<AccountData>>;

    QString moduleName;
    QString moduleDescription;
    QString containerType;
    QString containerTitle;
    QString containerCaption;
    QIcon containerIcon;
    QString accountType;
    QString accountCaption; ///< with %1 for the account's name
    QIcon accountIcon;
    QString readAllDescription; ///< of the task that reads the list
    QString readDescription;    ///< of the task that reads one account, with %1 for its name
    QString goneMessage;        ///< of the same task where the account is no more, with %1 for its name
    /// Those in the list come first: the property numbered i is column i of the list, whose column 0 is the name.
    std::vector<AccountProperty> properties;
    /// The records of all accounts of this kind, in the order of their file. Any thread.
    Records (*records)(const LocalAccounts &accounts);
};
