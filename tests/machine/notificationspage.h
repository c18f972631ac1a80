// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "consolepage.h"

/// Uses the page "Notifications" as an administrator does, and says what it shows.
class NotificationsPage : public ConsolePage
{
    Q_OBJECT

public:
    /// The three texts, by the names of their fields.
    enum class Text
    {
        Configuration,
        Administrators,
        Devices
    };

    explicit NotificationsPage(RealConsole &console);

    QStringList tasks() const;
    /// Clicks the button. False where it cannot be clicked now.
    bool addTask();
    bool deleteTask();
    /// Clicks the box "Groups".
    void toggleGroups();
    /// Chooses the expert mode and types the line. False where it is not taken.
    bool chooseExpertMode(const QString &line);
    /// Pastes the lines at the end of a text.
    void append(Text text, const QString &lines);
    QString text(Text text) const;

    /// The notes about the tasks that are shown now.
    QStringList notes() const;
    /// Answers the questions that come from here on with Yes.
    void agree() { boxes().prefer(QMessageBox::Yes); }

private:
    QString nameOf(Text text) const;
    bool click(const QString &button);
};
