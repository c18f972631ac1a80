// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "accountmodule.h"

#include <QCoreApplication>

#include <tuple>

namespace
{
struct LocalUserData : AccountData
{
    bool equals(const AccountData &other) const override
    {
        const auto &user = static_cast<const LocalUserData &>(other);
        return AccountData::equals(other) &&
               std::tie(group, fullName, home, shell, groups) ==
                   std::tie(user.group, user.fullName, user.home, user.shell, user.groups);
    }

    QString group;
    QString fullName;
    QString home;
    QString shell;
    QStringList groups; ///< beside the primary one
};

struct Texts
{
    Q_DECLARE_TR_FUNCTIONS(LocalUserModule)
};

QVariant textOrNothing(const QString &text)
{
    return text.isEmpty() ? QVariant() : QVariant(text);
}

template<QString LocalUserData::*field>
QVariant text(const AccountData &data)
{
    return textOrNothing(static_cast<const LocalUserData &>(data).*field);
}

AccountKind::Records userRecords(const LocalAccounts &accounts)
{
    const QHash<quint32, QString> groupNames = accounts.groupNames();
    QHash<QString, QStringList> groupsOfUser;
    for (const LocalAccounts::Group &group : accounts.groups) {
        for (const QString &member : group.members)
            groupsOfUser[member].append(group.name);
    }

    AccountKind::Records records;
    records.reserve(static_cast<size_t>(accounts.users.size()));
    for (const LocalAccounts::User &user : accounts.users) {
        auto record = std::make_unique<LocalUserData>();
        record->name = user.name;
        record->id = user.id;
        record->group = groupNames.value(user.groupId, QString::number(user.groupId));
        // The first of the comment's fields; the others are rooms and telephone numbers.
        record->fullName = user.comment.section(QLatin1Char(','), 0, 0);
        record->home = user.home;
        record->shell = user.shell;
        record->groups = groupsOfUser.value(user.name);
        records.push_back(std::move(record));
    }
    return records;
}
} // namespace

AccountKind localUserKind()
{
    AccountKind kind;
    kind.moduleName = QStringLiteral("LocalUserModule");
    kind.moduleDescription = Texts::tr("The users of this computer");
    kind.containerType = QStringLiteral("LocalUsers");
    kind.containerTitle = Texts::tr("Local users");
    kind.containerCaption = Texts::tr("Users of this computer");
    kind.containerIcon = QIcon::fromTheme(QStringLiteral("kra-users"));
    kind.accountType = QStringLiteral("LocalUser");
    kind.accountCaption = Texts::tr("Local user: %1");
    kind.accountIcon = QIcon::fromTheme(QStringLiteral("kra-user"));
    kind.readAllDescription = Texts::tr("Read local users");
    kind.readDescription = Texts::tr("Read local user %1");
    kind.goneMessage = Texts::tr("There is no user %1 any more");
    kind.records = &userRecords;
    kind.properties = {
        {Texts::tr("Name"), AccountProperty::ListAndPage, AccountProperty::Text,
         [](const AccountData &data) { return QVariant(data.name); }},
        {Texts::tr("User id"), AccountProperty::ListAndPage, AccountProperty::Number,
         [](const AccountData &data) { return QVariant(data.id); }},
        {Texts::tr("Primary group"), AccountProperty::ListAndPage, AccountProperty::Text, &text<&LocalUserData::group>},
        {Texts::tr("Full name"), AccountProperty::ListAndPage, AccountProperty::Text, &text<&LocalUserData::fullName>},
        {Texts::tr("Home folder"), AccountProperty::ListAndPage, AccountProperty::Text, &text<&LocalUserData::home>},
        {Texts::tr("Shell"), AccountProperty::ListAndPage, AccountProperty::Text, &text<&LocalUserData::shell>},
        {Texts::tr("Further groups"), AccountProperty::PageOnly, AccountProperty::Text,
         [](const AccountData &data) {
             return textOrNothing(static_cast<const LocalUserData &>(data).groups.join(QLatin1String(", ")));
         }},
    };
    return kind;
}
