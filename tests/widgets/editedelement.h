// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <elementdata.h>
#include <module.h>

#include <vector>

/// A module that notes what it is asked and does nothing.
class RecordingModule : public Module
{
public:
    RecordingModule()
        : Module(QStringLiteral("RecordingModule"), nullptr)
    {}

    void performOperation(ContextOperation * /*operation*/, OperationType type, ElementData *data,
                          int /*extra*/) override
    {
        asked.push_back(type);
        if (type == OperationType::Write)
            delete data;
    }

    std::vector<OperationType> asked;
};

inline bool everybodyMay(const Module & /*module*/)
{
    return true;
}

inline bool nobodyMay(const Module & /*module*/)
{
    return false;
}

/// An element of any type that can be read and written.
class EditedElement : public OrdinaryElement
{
public:
    EditedElement(const QString &type, Module *module)
        : OrdinaryElement(type, QString(), type, module, &everybodyMay, Place::Child)
    {}
};
