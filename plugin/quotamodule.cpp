// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "quotamodule.h"

#include "taskmakers.h"

#include <abstracttask.h>
#include <elementdata.h>
#include <groupqelement.h>
#include <localgroupquotaelement.h>
#include <localuserquotaelement.h>
#include <readgroupdata.h>
#include <readuserdata.h>
#include <taskobserver.h>
#include <updategroupdata.h>
#include <updateuserdata.h>
#include <userelement.h>

#include <algorithm>

namespace
{

/// An account's quota is read and applied alike in the lists and on the console's own pages.
void addAccountRules(QuotaModule::TaskRules &rules)
{
    for (const QString &type : {UserElement::typeName(), LocalUserQuotaElement::typeName()}) {
        rules.push_back({type, OperationType::Read, &readTask<ReadUserData>});
        rules.push_back({type, OperationType::Write, &updateTask<UpdateUserData>});
    }
    for (const QString &type : {GroupQElement::typeName(), LocalGroupQuotaElement::typeName()}) {
        rules.push_back({type, OperationType::Read, &readTask<ReadGroupData>});
        rules.push_back({type, OperationType::Write, &updateTask<UpdateGroupData>});
    }
}

} // namespace

QuotaModule::QuotaModule(const QString &name, const QString &attachName, Kind kind, const QString &description,
                         TaskRules rules, QObject *parent)
    : Module(name, parent)
    , _rules(std::move(rules))
{
    addAccountRules(_rules);
    setAttachName(attachName);
    setKind(kind);
    setData(QStringLiteral("description"), description);
    setData(QStringLiteral("administrator"), isAdministrator(*this));
}

void QuotaModule::performOperation(ContextOperation *operation, OperationType type, ElementData *data, int extra)
{
    const TaskRule *rule = findRule(*operation, type);
    if (!rule) {
        Module::performOperation(operation, type, data, extra);
        return;
    }
    std::unique_ptr<ElementData> taken(type == OperationType::Write ? data : nullptr);
    std::unique_ptr<AbstractTask> task = rule->makeTask(static_cast<Element *>(operation), std::move(taken));
    Module::performOperation(operation, type, nullptr, extra); // hears of every operation, but the record is taken
    TaskObserver::instance()->performTask(task.release());
}

const QuotaModule::TaskRule *QuotaModule::findRule(const ContextOperation &operation, OperationType type) const
{
    if (operation.contextType() != ContextOperation::ElementContext)
        return nullptr;
    const QString elementType = operation.elementType();
    const auto found = std::find_if(_rules.begin(), _rules.end(), [&](const TaskRule &rule) {
        return rule.operation == type && rule.elementType == elementType;
    });
    return found == _rules.end() ? nullptr : &*found;
}
