// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "appliedchanges.h"
#include "managerrun.h"

#include <elementtask.h>

/// Applies a record through the back end. What follows an update, the new read and the word to the editor, is the
/// host's.
class AbstractUpdateTask : public UpdateTask
{
protected:
    using UpdateTask::UpdateTask;

    /// What run() of a leaf does: `work(manager, record)` with the task's record, or a failure without a message where
    /// there is none or it is of another kind.
    template<typename Record, typename Work>
    void apply(Work work)
    {
        if (const auto *record = dynamic_cast<const Record *>(elementData())) {
            runWithManager(*this, [&work, record](QuotaManager &manager) { work(manager, *record); });
            setResult(AppliedChanges::of(*record));
        } else {
            setStatus(Failed);
        }
        UpdateTask::run();
    }
};
