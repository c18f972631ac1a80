// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "messageboxes.h"

#include <quotakind.h>

#include <QObject>
#include <QStringList>

#include <array>

class RealConsole;
class QGroupBox;
class QSpinBox;
struct TaskReport;

/// Uses the page "Quota management" as an administrator does, and says what it shows.
class GeneralPage : public QObject
{
    Q_OBJECT

public:
    enum class Counted
    {
        Space,
        Files
    };
    using Grace = std::array<int, 4>; ///< weeks, days, hours, minutes

    /// What came of Apply.
    struct Applied
    {
        bool succeeded = false;
        QString message;     ///< of the task
        QStringList details; ///< of the task: what ran, how it ended, and what it printed
        QStringList boxes;   ///< the texts of the boxes that asked or warned
        qint64 milliseconds = 0;
    };

    explicit GeneralPage(RealConsole &console);

    /// Opens the page. False where it does not come.
    bool open();
    /// Reads the page again.
    bool refresh();

    QStringList devices() const;
    /// Chooses the device with the arrow keys. False where it is not listed or cannot be chosen now.
    bool choose(const QString &device);
    QString filesystem() const;

    bool canSwitch(QuotaKind kind) const;
    bool isOn(QuotaKind kind) const;
    /// Presses the box, if it is not so already. False where it stays as it was.
    bool setOn(QuotaKind kind, bool on);

    qint64 graceSeconds(QuotaKind kind, Counted counted) const;
    /// Types into the four boxes. False where they are not enabled or do not take it.
    bool setGrace(QuotaKind kind, Counted counted, const Grace &grace);

    /// The lines that say what the system says of a kind, and of the device.
    QStringList facts(QuotaKind kind) const;
    QStringList deviceFacts() const;

    /// The texts of the boxes that asked or warned since the last call, or the last Apply.
    QStringList takeBoxes() { return _boxes.takeTexts(); }
    /// From now on answers the question about a reboot with "Yes".
    void allowReboot() { _boxes.prefer(QMessageBox::Yes); }
    /// Clicks Apply and waits until the page was read again. A failure with a message where there is nothing to apply.
    Applied apply();

private:
    template<class Widget>
    Widget *find(const QString &name) const;
    QGroupBox *settings(QuotaKind kind) const;
    std::array<QSpinBox *, 4> spinBoxes(QuotaKind kind, Counted counted) const;
    QStringList texts(const QString &list) const;
    bool click(const QString &action);
    void noteDetail(quint64 id, const QString &text);
    void noteEnd(const TaskReport &task);

    RealConsole &_console;
    MessageBoxes _boxes;
    QStringList _details; // of all tasks since the last Apply
    Applied _applied;
};
