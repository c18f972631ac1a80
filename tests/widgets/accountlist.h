// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "editedelement.h"
#include "madeupaccounts.h"

#include <abstractcontainerelement.h>
#include <groupqelement.h>
#include <groupselement.h>
#include <userelement.h>
#include <userselement.h>

/// A list of users as a read leaves it: its elements with their records.
namespace AccountList
{

inline UserElement *user(Module *module, const QString &name, qint32 id, const QMap<QString, DeviceQuota> &quotas)
{
    auto *element = new UserElement(name, module, &everybodyMay);
    element->setRecord(std::make_unique<UserData>(MadeUpAccounts::account(quotas, name, id)));
    return element;
}

/// Puts other users in the place of those that are there.
inline void replace(ContainerElement &list, const QVector<TreeNode *> &users)
{
    list.clearDelete();
    list.append(users);
    list.setContent(ContainerElement::Content::Read);
}

/// What the read hands the list's editor when its rows stand.
inline void tellDevices(ContextOperation &editor, const QStringList &devices)
{
    ElementData record;
    record.params.insert(AbstractContainerElement::devicesKey(), devices);
    editor.performOperation(OperationType::Read, &record, 0);
}

} // namespace AccountList
