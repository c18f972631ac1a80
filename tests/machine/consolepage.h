// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "messageboxes.h"
#include "realconsole.h"

#include <elementwidget.h>

#include <QObject>
#include <QStringList>

struct TaskReport;

/// Uses one page of the console as an administrator does: opens it, reads it again, applies it.
class ConsolePage : public QObject
{
    Q_OBJECT

public:
    /// What came of Apply.
    struct Applied
    {
        bool succeeded = false;
        QString message;     ///< of the task
        QStringList details; ///< of the task: what ran, how it ended, and what it printed
        QStringList boxes;   ///< the texts of the boxes that asked or warned
        qint64 milliseconds = 0;
    };

    /// The page that these titles lead to in the tree, see ConsoleDriver::open(); none for one that is opened
    /// otherwise.
    explicit ConsolePage(RealConsole &console, const QStringList &titles = {});

    /// Opens the page. False where it does not come.
    bool open();
    /// Reads the page again.
    bool refresh() { return _console.refresh(); }

    /// What the page says of the tasks that failed.
    QString message() const { return _console.message(); }
    /// The texts of the boxes that asked or warned since the last call, or the last Apply.
    QStringList takeBoxes() { return _boxes.takeTexts(); }
    /// Clicks Apply and waits until the page was read again. A failure with a message where there is nothing to apply.
    Applied apply();

protected:
    RealConsole &console() const { return _console; }
    MessageBoxes &boxes() { return _boxes; }

    /// A widget of the page; it must be there.
    template<class Widget>
    Widget *find(const QString &name) const
    {
        return _console.driver().editor()->findChild<Widget *>(name);
    }

private:
    void noteDetail(quint64 id, const QString &text);
    void noteEnd(const TaskReport &task);

    RealConsole &_console;
    const QStringList _titles;
    MessageBoxes _boxes;
    QStringList _details; // of all tasks since the last Apply
    Applied _applied;
};
