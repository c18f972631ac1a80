// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <functional>

class AbstractTask;
class QuotaManager;

/// Does a task's work with a quota manager that lives as long as the work, on the calling thread. What the manager
/// reports is joined, one failure a line, into the message of the task, which then has failed; without a report it has
/// succeeded. Details and progress are passed on as they come, and a long read stops when the task is
/// cancelled.
void runWithManager(AbstractTask &task, const std::function<void(QuotaManager &)> &work);
