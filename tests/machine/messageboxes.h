// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QMessageBox>
#include <QObject>
#include <QStringList>

/// Answers every message box of this process as soon as it shows: with the preferred button, its default button, or its
/// first, whichever of these it has.
class MessageBoxes : public QObject
{
    Q_OBJECT

public:
    MessageBoxes();

    void prefer(QMessageBox::StandardButton button) { _preferred = button; }

    /// The texts of the boxes answered since the last call.
    QStringList takeTexts();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    QMessageBox::StandardButton _preferred = QMessageBox::NoButton;
    QStringList _texts;
};
