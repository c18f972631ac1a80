// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QMessageBox>
#include <QObject>

#include <random>

/// Answers every dialog of this process at random, at once or when the tasks have ended meanwhile.
class Answers : public QObject
{
    Q_OBJECT

public:
    explicit Answers(std::mt19937 &random);

Q_SIGNALS:
    /// Directly before the button is pressed.
    void chosen(QMessageBox *box, QAbstractButton *button);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void answer(QDialog *dialog);

    std::mt19937 &_random;
};
