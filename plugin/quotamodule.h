// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <module.h>
#include <operationtype.h>

#include <memory>
#include <vector>

class AbstractTask;
class ElementData;

/// What the modules of this plug-in have in common: they know by a table which task an operation on an element needs.
/// All of them know it for the quota of an account.
class QuotaModule : public Module
{
    Q_OBJECT

public:
    /// Makes the task for one kind of operation on one type of element.
    struct TaskRule
    {
        QString elementType;
        OperationType operation;
        /// `data` is the record of a write; null for every other operation.
        std::unique_ptr<AbstractTask> (*makeTask)(Element *element, std::unique_ptr<ElementData> data);
    };
    using TaskRules = std::vector<TaskRule>;

    /// Starts the task of the rule that fits. Everything that no rule fits, and everything asked of an editor rather
    /// than of an element, goes to the host unchanged.
    void performOperation(ContextOperation *operation, OperationType type, ElementData *data, int extra) override;

protected:
    /// The rules are those that the module knows besides.
    QuotaModule(const QString &name, const QString &attachName, Kind kind, const QString &description, TaskRules rules,
                QObject *parent);

private:
    const TaskRule *findRule(const ContextOperation &operation, OperationType type) const;

    TaskRules _rules;
};
