// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "managerrun.h"

#include <backendrun.h>
#include <quotamanager.h>

void runWithManager(AbstractTask &task, const std::function<void(QuotaManager &)> &work)
{
    runWithBackEnd<QuotaManager>(task, [&](QuotaManager &manager) {
        QObject::connect(&manager, &QuotaManager::progress, [&task](quint64 done, quint64 total, const QString &unit) {
            task.reportProgress({done, total, unit});
        });
        manager.setCancelCheck([&task] { return task.isCancelled(); });
        work(manager);
    });
}
