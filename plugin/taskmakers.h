// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <elementtask.h>

#include <memory>

/// For QuotaModule::TaskRule: makes a task that reads.
template<typename Task>
std::unique_ptr<AbstractTask> readTask(Element *element, std::unique_ptr<ElementData> /*data*/)
{
    return std::make_unique<Task>(element);
}

/// The same for a task that applies a record.
template<typename Task>
std::unique_ptr<AbstractTask> updateTask(Element *element, std::unique_ptr<ElementData> data)
{
    return std::make_unique<Task>(element, std::move(data));
}
