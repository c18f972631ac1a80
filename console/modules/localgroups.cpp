// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "accountmodule.h"

#include <QCoreApplication>

namespace
{
struct LocalGroupData : AccountData
{
    bool equals(const AccountData &other) const override
    {
        const auto &group = static_cast<const LocalGroupData &>(other);
        return AccountData::equals(other) && members == group.members && primaryMembers == group.primaryMembers;
    }

    QStringList members;        ///< that the group's line names
    QStringList primaryMembers; ///< whose primary group it is
};

struct Texts
{
    Q_DECLARE_TR_FUNCTIONS(LocalGroupModule)
};

template<QStringList LocalGroupData::*names>
QVariant count(const AccountData &data)
{
    return (static_cast<const LocalGroupData &>(data).*names).size();
}

/// The names in one text. It is cut where nobody would read on: a group may have all accounts of a large site.
template<QStringList LocalGroupData::*field>
QVariant names(const AccountData &data)
{
    constexpr int shown = 200;
    const QStringList &all = static_cast<const LocalGroupData &>(data).*field;
    if (all.isEmpty())
        return {};
    QString text = QStringList(all.mid(0, shown)).join(QLatin1String(", "));
    if (all.size() > shown)
        text += Texts::tr(" and %n more", nullptr, all.size() - shown);
    return text;
}

AccountKind::Records groupRecords(const LocalAccounts &accounts)
{
    QHash<quint32, QStringList> primaryMembers;
    for (const LocalAccounts::User &user : accounts.users)
        primaryMembers[user.groupId].append(user.name);

    AccountKind::Records records;
    records.reserve(static_cast<size_t>(accounts.groups.size()));
    for (const LocalAccounts::Group &group : accounts.groups) {
        auto record = std::make_unique<LocalGroupData>();
        record->name = group.name;
        record->id = group.id;
        record->members = group.members;
        record->primaryMembers = primaryMembers.value(group.id);
        records.push_back(std::move(record));
    }
    return records;
}
} // namespace

AccountKind localGroupKind()
{
    AccountKind kind;
    kind.moduleName = QStringLiteral("LocalGroupModule");
    kind.moduleDescription = Texts::tr("The groups of this computer");
    kind.containerType = QStringLiteral("LocalGroups");
    kind.containerTitle = Texts::tr("Local groups");
    kind.containerCaption = Texts::tr("Groups of this computer");
    kind.containerIcon = QIcon::fromTheme(QStringLiteral("kra-user-groups"));
    kind.accountType = QStringLiteral("LocalGroup");
    kind.accountCaption = Texts::tr("Local group: %1");
    kind.accountIcon = QIcon::fromTheme(QStringLiteral("kra-user-group"));
    kind.readAllDescription = Texts::tr("Read local groups");
    kind.readDescription = Texts::tr("Read local group %1");
    kind.goneMessage = Texts::tr("There is no group %1 any more");
    kind.records = &groupRecords;
    kind.properties = {
        {Texts::tr("Name"), AccountProperty::ListAndPage, AccountProperty::Text,
         [](const AccountData &data) { return QVariant(data.name); }},
        {Texts::tr("Group id"), AccountProperty::ListAndPage, AccountProperty::Number,
         [](const AccountData &data) { return QVariant(data.id); }},
        {Texts::tr("Primary members"), AccountProperty::ListAndPage, AccountProperty::Number,
         &count<&LocalGroupData::primaryMembers>},
        {Texts::tr("Further members"), AccountProperty::ListAndPage, AccountProperty::Number,
         &count<&LocalGroupData::members>},
        {Texts::tr("Names"), AccountProperty::ListAndPage, AccountProperty::Text, &names<&LocalGroupData::members>},
        {Texts::tr("Primary group of"), AccountProperty::PageOnly, AccountProperty::Text,
         &names<&LocalGroupData::primaryMembers>},
    };
    return kind;
}
