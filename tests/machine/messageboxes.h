// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QObject>
#include <QStringList>

/// Answers every message box of this process as soon as it shows: with its default button, else with its first.
class MessageBoxes : public QObject
{
    Q_OBJECT

public:
    MessageBoxes();

    /// The texts of the boxes answered since the last call.
    QStringList takeTexts();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    QStringList _texts;
};
