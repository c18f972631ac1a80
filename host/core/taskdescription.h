// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "kraglobal.h"

#include <QString>

/// What a task says of itself. Written by the task's own thread of the moment, read by others when it has ended.
class KRA_EXPORT TaskDescription
{
public:
    enum TaskStatus
    {
        NotFinished = 0,
        Failed = 1,
        Succeeded = 2,
        Cancelled = 3 ///< stopped on the administrator's wish
    };

    TaskDescription() = default;
    TaskDescription(const TaskDescription &) = delete;
    TaskDescription &operator=(const TaskDescription &) = delete;
    virtual ~TaskDescription();

    QString description() const { return _description; }
    void setDescription(const QString &description) { _description = description; }
    /// Why the task failed, for the administrator; one line for each failure.
    QString message() const { return _message; }
    void setMessage(const QString &message) { _message = message; }
    /// Whether the message tells of nothing that is wrong: then it is shown as a note, and the task as done, though its
    /// status is Failed.
    bool isMessageNote() const { return _isMessageNote; }
    void setMessageNote(bool isNote) { _isMessageNote = isNote; }
    /// What a task that succeeded has changed, for the administrator; one line for each change.
    QString result() const { return _result; }
    void setResult(const QString &result) { _result = result; }
    TaskStatus status() const { return _status; }
    void setStatus(TaskStatus status) { _status = status; }

private:
    QString _description;
    QString _message;
    bool _isMessageNote = false;
    QString _result;
    TaskStatus _status = NotFinished;
};
